// SPDX-License-Identifier: Apache-2.0
#include "jet/format/CodePage.h"

#include "base/NumberedError.h"
#include "base/Text.h"

#include <algorithm>

namespace jet::format {

namespace {

void RequireTables(std::uint16_t codePage)
{
    if (codePage != kWindows1252)
        throw base::NumberedError(3251).At("code page " + std::to_string(codePage));
}

}  // namespace

std::string DecodeCodePage(Span bytes, std::uint16_t codePage)
{
    RequireTables(codePage);
    std::string narrow(bytes.size(), '\0');
    std::transform(bytes.begin(), bytes.end(), narrow.begin(),
                   [](std::byte byte) { return static_cast<char>(byte); });
    return base::FromWindows1252(narrow);
}

std::vector<std::byte> EncodeCodePage(std::string_view text, std::uint16_t codePage)
{
    RequireTables(codePage);
    const std::string narrow = base::ToWindows1252(text);
    if (base::FromWindows1252(narrow) != text)
        throw base::NumberedError(3421).At("text beyond code page " + std::to_string(codePage));
    std::vector<std::byte> bytes(narrow.size());
    std::transform(narrow.begin(), narrow.end(), bytes.begin(),
                   [](char character) { return static_cast<std::byte>(character); });
    return bytes;
}

}  // namespace jet::format
