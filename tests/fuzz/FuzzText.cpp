// SPDX-License-Identifier: Apache-2.0
// FuzzText: the input is text as files hold it, or a block of properties.
//
// Layout: 1 byte what it is (see below); the bytes.
// Claims: reading ends with a result or a numbered error; what was read and is stored again reads
//         the same; comparing texts agrees with comparing their keys.
#include "jet/format/CodePage.h"
#include "jet/format/PropertyBlock.h"
#include "jet/format/SortKey.h"
#include "jet/format/TextCompression.h"
#include "tests/fuzz/Fuzz.h"

#include <array>

namespace {

using jet::format::SortOrder;
using jet::format::Span;

constexpr std::array kOrders{SortOrder{1033, 0}, SortOrder{1033, 97}, SortOrder{1036, 0},
                             SortOrder{1031, 1}};

void ReadStored(Span bytes)
{
    const std::string text = jet::format::DecodeText(bytes);
    for (const auto form :
         {jet::format::TextForm::Plain, jet::format::TextForm::CompressedIfShorter}) {
        const auto stored = jet::format::EncodeText(text, form);
        fuzz::Require(jet::format::DecodeText(stored) == text, "stored text reads the same");
    }
}

void ReadCodePage(Span bytes)
{
    constexpr std::uint16_t codePage = jet::format::kWindows1252;
    const std::string text = jet::format::DecodeCodePage(bytes, codePage);
    const auto stored = jet::format::EncodeCodePage(text, codePage);
    fuzz::Require(jet::format::DecodeCodePage(stored, codePage) == text, "a code page is kept");
}

void MakeKeys(Span bytes, SortOrder order)
{
    const std::size_t half = bytes.size() / 4 * 2;
    const std::string left = jet::format::DecodeText(bytes.first(half));
    const std::string right = jet::format::DecodeText(bytes.subspan(half));
    const auto compared = jet::format::CompareText(left, right, order);
    const auto back = jet::format::CompareText(right, left, order);
    fuzz::Require((compared < 0) == (back > 0) && (compared == 0) == (back == 0),
                  "the order of two texts has two sides");
    const auto leftKey = jet::format::SortKeyOf(left, order);
    const auto rightKey = jet::format::SortKeyOf(right, order);
    fuzz::Require((compared < 0) == (leftKey < rightKey) &&
                      (compared == 0) == (leftKey == rightKey),
                  "texts compare as their keys");
}

void ReadProperties(Span bytes)
{
    const auto block = jet::format::PropertyBlock::Parse(bytes);
    for (const auto& owner : block.Owners()) {
        static_cast<void>(block.TextValue(owner.name, "DefaultValue"));
        static_cast<void>(block.BooleanValue(owner.name, "Required"));
    }
    const auto stored = block.Encode();
    fuzz::Require(jet::format::PropertyBlock::Parse(stored).Encode() == stored,
                  "properties stored again are the same");
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    const unsigned what = input.Byte();
    const Span bytes = input.Rest();
    static_cast<void>(fuzz::NumberOf([&] {
        switch (what % 8) {
        case 0:
            return ReadStored(bytes);
        case 1:
            return ReadCodePage(bytes);
        case 2:
            return ReadProperties(bytes);
        default:
            return MakeKeys(bytes, kOrders[what % kOrders.size()]);
        }
    }));
    return 0;
}
