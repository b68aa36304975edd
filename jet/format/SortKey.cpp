// SPDX-License-Identifier: Apache-2.0
#include "jet/format/SortKey.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/format/Collation.h"
#include "jet/format/Collation97.h"

#include <algorithm>
#include <array>
#include <optional>
#include <string>

namespace jet::format {

namespace {

using Class = CharacterWeight::Class;
using KeyBytes = std::vector<std::byte>;

constexpr std::byte kSectionEnd{1};
constexpr std::byte kKeyEnd{0};

enum class UnknownCharacters { Refuse, SortBehind };

// The parts of a key while a text is read.
class KeySections {
public:
    explicit KeySections(UnknownCharacters policy) : policy_(policy) {}

    void Add(char16_t unit, CharacterWeight weight);
    [[nodiscard]] KeyBytes Joined(bool reverseDiacritics);

private:
    void AddUnknown(char16_t unit);

    static void Put(KeyBytes& to, unsigned value) { to.push_back(static_cast<std::byte>(value)); }

    UnknownCharacters policy_;
    KeyBytes weights_, diacritics_, specials_;
};

void KeySections::Add(char16_t unit, CharacterWeight weight)
{
    switch (weight.kind) {
    case Class::Ignored:
        return;
    case Class::Unknown:
        return AddUnknown(unit);
    case Class::Special: {
        // Where it stands: positions before it, four apart.
        const std::size_t place = 0x8000 | (7 + 4 * diacritics_.size());
        Put(specials_, static_cast<unsigned>(place >> 8 & 0xFF));
        Put(specials_, static_cast<unsigned>(place & 0xFF));
        Put(specials_, 6);
        Put(specials_, weight.special);
        return;
    }
    case Class::Weight:
    case Class::Expansion:
        for (unsigned shift = 24; shift > 0; shift -= 8)
            if (weight.weights >> shift != 0) Put(weights_, weight.weights >> shift & 0xFFU);
        Put(weights_, weight.weights & 0xFFU);
        Put(diacritics_, weight.diacritic);
        if (weight.kind == Class::Expansion) Put(diacritics_, weight.diacritic);
    }
}

void KeySections::AddUnknown(char16_t unit)
{
    if (policy_ == UnknownCharacters::Refuse) throw base::NumberedError(3421);
    Put(weights_, 0xFF);
    Put(weights_, static_cast<unsigned>(unit) >> 8);
    Put(weights_, static_cast<unsigned>(unit) & 0xFF);
    Put(diacritics_, kNeutralDiacritic);
}

KeyBytes KeySections::Joined(bool reverseDiacritics)
{
    if (reverseDiacritics) std::reverse(diacritics_.begin(), diacritics_.end());
    while (!diacritics_.empty() && diacritics_.back() <= std::byte{kNeutralDiacritic})
        diacritics_.pop_back();
    KeyBytes key = std::move(weights_);
    key.push_back(kSectionEnd);
    key.insert(key.end(), diacritics_.begin(), diacritics_.end());
    if (!specials_.empty()) {
        // The sections of case and kana between them are empty.
        key.insert(key.end(), 3, kSectionEnd);
        key.insert(key.end(), specials_.begin(), specials_.end());
    }
    key.push_back(kKeyEnd);
    return key;
}

std::string_view WithoutTrailingBlanks(std::string_view text)
{
    while (!text.empty() && text.back() == ' ')
        text.remove_suffix(1);
    return text;
}

KeyBytes KeyOf(std::string_view text, const Collation& collation, UnknownCharacters policy)
{
    KeySections sections(policy);
    for (const char16_t unit : base::ToUtf16(WithoutTrailingBlanks(text)))
        sections.Add(unit, collation.Of(unit));
    return sections.Joined(collation.reverseDiacritics);
}

// Rule: a character that Windows-1252 lacks is a question mark there; what it was decides last.
KeyBytes KeyOfJet3(std::string_view text, UnknownCharacters policy)
{
    text = WithoutTrailingBlanks(text);
    const std::string stored = base::ToWindows1252(text);
    KeyBytes key = KeyOf97(stored);
    if (base::FromWindows1252(stored) == text) return key;
    if (policy == UnknownCharacters::Refuse) throw base::NumberedError(3421);
    for (const char16_t unit : base::ToUtf16(text)) {
        key.push_back(static_cast<std::byte>(unit >> 8));
        key.push_back(static_cast<std::byte>(unit & 0xFF));
    }
    return key;
}

// The weight of each ASCII character that has one and nothing else, otherwise 0. No weight of one
// byte begins a weight of two, so a one-byte weight compares rightly as its byte and a zero.
using PlainWeights = std::array<std::uint16_t, 256>;

std::uint16_t PlainWeight(std::uint32_t weight)
{
    return static_cast<std::uint16_t>(weight > 0xFF ? weight : weight << 8);
}

PlainWeights PlainWeightsOfJet4()
{
    PlainWeights plain{};
    for (std::size_t unit = 0; unit < 128; ++unit) {
        const CharacterWeight weight = kGeneralLegacy.latin1[unit];
        if (weight.kind == Class::Weight && weight.diacritic == kNeutralDiacritic)
            plain[unit] = PlainWeight(weight.weights);
    }
    return plain;
}

PlainWeights PlainWeightsOfJet3()
{
    PlainWeights plain{};
    for (std::size_t unit = 0; unit < 128; ++unit)
        plain[unit] = PlainWeight(kGeneral97[unit].weights);
    return plain;
}

// Rule: version 1 of "General" has other weights, in the same order.
const PlainWeights& PlainWeightsOf(SortOrder order)
{
    static const PlainWeights jet4 = PlainWeightsOfJet4();
    static const PlainWeights jet3 = PlainWeightsOfJet3();
    return order.version == kJet3Tables ? jet3 : jet4;
}

// Compares texts of plain ASCII characters without making keys; nothing when one holds another.
std::optional<std::weak_ordering> ComparePlain(std::string_view left, std::string_view right,
                                               const PlainWeights& plain)
{
    const auto weightAt = [&plain](std::string_view text, std::size_t at) {
        return plain[static_cast<unsigned char>(text[at])];
    };
    const std::size_t common = std::min(left.size(), right.size());
    for (std::size_t at = 0; at < common; ++at) {
        const std::uint16_t a = weightAt(left, at);
        const std::uint16_t b = weightAt(right, at);
        if (a == 0 || b == 0) return std::nullopt;
        if (a != b) return a <=> b;
    }
    if (left.size() == right.size()) return std::weak_ordering::equivalent;
    const std::string_view longer = left.size() > right.size() ? left : right;
    if (weightAt(longer, common) == 0) return std::nullopt;
    return left.size() <=> right.size();
}

}  // namespace

CharacterWeight Collation::Of(char16_t unit) const
{
    if (unit < latin1.size()) return latin1[unit];
    const auto found = std::lower_bound(
        far.begin(), far.end(), unit,
        [](const FarCharacter& entry, char16_t wanted) { return entry.unit < wanted; });
    return found != far.end() && found->unit == unit ? found->weight : CharacterWeight{};
}

const Collation* FindCollation(SortOrder order)
{
    if (order == SortOrder{.language = 1033, .version = 0}) return &kGeneralLegacy;
    if (order == SortOrder{.language = 1033, .version = 1}) return &kGeneral1;
    if (order == SortOrder{.language = 1036, .version = 0}) return &kFrenchLegacy;
    return nullptr;
}

std::vector<std::byte> SortKeyOf(std::string_view text, SortOrder order)
{
    if (order == kGeneral97Order) return KeyOfJet3(text, UnknownCharacters::Refuse);
    const Collation* collation = FindCollation(order);
    if (collation == nullptr) throw base::NumberedError(3251).At("sort order without tables");
    return KeyOf(text, *collation, UnknownCharacters::Refuse);
}

std::weak_ordering CompareText(std::string_view left, std::string_view right, SortOrder order)
{
    left = WithoutTrailingBlanks(left);
    right = WithoutTrailingBlanks(right);
    if (left == right) return std::weak_ordering::equivalent;
    if (const auto plain = ComparePlain(left, right, PlainWeightsOf(order))) return *plain;
    const auto keyOf = [order](std::string_view text) {
        if (order.version == kJet3Tables) return KeyOfJet3(text, UnknownCharacters::SortBehind);
        const Collation* found = FindCollation(order);
        return KeyOf(text, found != nullptr ? *found : kGeneralLegacy,
                     UnknownCharacters::SortBehind);
    };
    return keyOf(left) <=> keyOf(right);
}

}  // namespace jet::format
