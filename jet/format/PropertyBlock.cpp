// SPDX-License-Identifier: Apache-2.0
#include "jet/format/PropertyBlock.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/format/TextCompression.h"

#include <algorithm>
#include <array>

namespace jet::format {

namespace {

// A block is a mark and then chunks; a chunk is its length, its type and a payload.
//
//   part          width   meaning
//   mark          4       "MR2" 0: texts in UTF-16; "KKD" 0: in the code page
//   chunk length  4       of the whole chunk
//   chunk type    2       0x80 names; 0, 1 PropertyOwner::Kind; others are passed over
//   owner length  4       of the owner's part: 6 and the name's bytes
//   name length   2       bytes, 0 for the object itself
//   record length 2       of the whole record: 8 and the value's bytes
//   record flag   1
//   record type   1
//   record name   2       place in the names chunk
//   value length  2       bytes
constexpr std::size_t kMarkSize = 4, kChunkHeader = 6, kOwnerHeader = 6, kRecordHeader = 8;
constexpr std::uint16_t kNamesChunk = 0x80;
constexpr auto kLastOwnerKind = static_cast<std::uint16_t>(PropertyOwner::Kind::Field);
constexpr std::array<char, kMarkSize> kMarkUtf16{'M', 'R', '2', 0};
constexpr std::array<char, kMarkSize> kMarkCodePage{'K', 'K', 'D', 0};

[[noreturn]] void Damaged(const char* what)
{
    throw base::NumberedError(3343).At(std::string("property block: ") + what);
}

bool StartsWith(Span bytes, const std::array<char, kMarkSize>& mark)
{
    return bytes.size() >= mark.size() &&
           std::equal(mark.begin(), mark.end(), bytes.begin(),
                      [](char c, std::byte b) { return static_cast<std::byte>(c) == b; });
}

// Lengths inside a block have 16 bits.
std::uint16_t Short(std::size_t length)
{
    if (length > 0xFFFF) throw base::NumberedError(3271);
    return static_cast<std::uint16_t>(length);
}

void PutChunk(ByteWriter& out, std::uint16_t type, Span payload)
{
    out.U32(static_cast<std::uint32_t>(kChunkHeader + payload.size()));
    out.U16(type);
    out.Put(payload);
}

void PutRecord(ByteWriter& out, const PropertyRecord& record)
{
    out.U16(Short(kRecordHeader + record.value.size()));
    out.U8(record.flag);
    out.U8(record.type);
    out.U16(record.name);
    out.U16(Short(record.value.size()));
    out.Put(record.value);
}

bool IsOf(const PropertyOwner& owner, std::string_view field)
{
    if (owner.kind == PropertyOwner::Kind::Object) return field.empty();
    return !field.empty() && base::SameName(owner.name, field);
}

PropertyRecord ParseRecord(Span record)
{
    PropertyRecord parsed;
    parsed.flag = ReadU8(record, 2);
    parsed.type = ReadU8(record, 3);
    parsed.name = ReadU16(record, 4);
    const Span value = record.subspan(kRecordHeader);
    if (ReadU16(record, 6) != value.size()) Damaged("value length");
    parsed.value.assign(value.begin(), value.end());
    return parsed;
}

}  // namespace

std::string PropertyBlock::Decode(Span bytes) const
{
    if (codePage_ == kUtf16 && bytes.size() % 2 != 0) Damaged("half a character");
    return DecodeTextIn(codePage_, bytes);
}

std::vector<std::byte> PropertyBlock::EncodeText(std::string_view text) const
{
    return EncodeTextIn(codePage_, text);
}

PropertyBlock PropertyBlock::Parse(Span bytes, std::uint16_t codePage)
{
    const bool wide = StartsWith(bytes, kMarkUtf16);
    if (!wide && !StartsWith(bytes, kMarkCodePage)) Damaged("mark");
    PropertyBlock block(wide ? kUtf16 : codePage == kUtf16 ? kWindows1252 : codePage);
    for (std::size_t at = kMarkSize; at < bytes.size();) {
        const std::size_t length = ReadU32(bytes, at);
        if (length < kChunkHeader) Damaged("chunk length");
        const Span chunk = Slice(bytes, at, length);
        block.ParseChunk(ReadU16(chunk, 4), chunk.subspan(kChunkHeader));
        at += length;
    }
    return block;
}

void PropertyBlock::ParseChunk(std::uint16_t type, Span payload)
{
    if (type <= kLastOwnerKind) return ParseOwner(static_cast<PropertyOwner::Kind>(type), payload);
    if (type == kNamesChunk && ++nameLists_ == 1) ParseNames(payload);
}

void PropertyBlock::ParseNames(Span payload)
{
    if (!owners_.empty()) Damaged("names behind what they name");
    for (std::size_t at = 0; at < payload.size();) {
        const std::size_t length = ReadU16(payload, at);
        names_.push_back(Decode(Slice(payload, at + 2, length)));
        at += 2 + length;
    }
}

void PropertyBlock::ParseOwner(PropertyOwner::Kind kind, Span payload)
{
    const std::size_t header = ReadU32(payload, 0);
    const std::size_t nameLength = ReadU16(payload, 4);
    if (header != kOwnerHeader + nameLength) Damaged("owner length");
    if (nameLists_ > 1) Damaged("two lists of names");
    PropertyOwner owner{
        .kind = kind, .name = Decode(Slice(payload, kOwnerHeader, nameLength)), .records = {}};
    for (std::size_t at = header; at < payload.size();) {
        const std::size_t length = ReadU16(payload, at);
        if (length < kRecordHeader) Damaged("record length");
        owner.records.push_back(ParseRecord(Slice(payload, at, length)));
        if (owner.records.back().name >= names_.size()) Damaged("name of a property");
        at += length;
    }
    owners_.push_back(std::move(owner));
}

std::vector<std::byte> PropertyBlock::Encode() const
{
    ByteWriter out;
    for (const char c : codePage_ == kUtf16 ? kMarkUtf16 : kMarkCodePage)
        out.U8(static_cast<std::uint8_t>(c));
    ByteWriter names;
    for (const std::string& name : names_) {
        const std::vector<std::byte> text = EncodeText(name);
        names.U16(Short(text.size()));
        names.Put(text);
    }
    PutChunk(out, kNamesChunk, names.Written());
    for (const PropertyOwner& owner : owners_) {
        const std::vector<std::byte> name = EncodeText(owner.name);
        ByteWriter payload;
        payload.U32(static_cast<std::uint32_t>(kOwnerHeader + name.size()));
        payload.U16(Short(name.size()));
        payload.Put(name);
        for (const PropertyRecord& record : owner.records)
            PutRecord(payload, record);
        PutChunk(out, static_cast<std::uint16_t>(owner.kind), payload.Written());
    }
    return out.Take();
}

const PropertyRecord* PropertyBlock::Find(std::string_view field, std::string_view property) const
{
    for (const PropertyOwner& owner : owners_) {
        if (!IsOf(owner, field)) continue;
        for (const PropertyRecord& record : owner.records)
            if (base::SameName(names_[record.name], property)) return &record;
    }
    return nullptr;
}

std::optional<std::string> PropertyBlock::TextValue(std::string_view field,
                                                    std::string_view property) const
{
    const PropertyRecord* record = Find(field, property);
    if (record == nullptr) return std::nullopt;
    return Decode(record->value);
}

bool PropertyBlock::BooleanValue(std::string_view field, std::string_view property) const
{
    const PropertyRecord* record = Find(field, property);
    return record != nullptr && !record->value.empty() && record->value[0] != std::byte{0};
}

void PropertyBlock::SetText(std::string_view field, std::string_view property,
                            std::string_view value, std::uint8_t flag)
{
    Set(field, property, ColumnType::Text, EncodeText(value), flag);
}

void PropertyBlock::SetMemo(std::string_view field, std::string_view property,
                            std::string_view value)
{
    Set(field, property, ColumnType::Memo, EncodeText(value));
}

void PropertyBlock::SetBoolean(std::string_view field, std::string_view property, bool value)
{
    // True is 1 here, unlike everywhere else.
    Set(field, property, ColumnType::Boolean, {static_cast<std::byte>(value ? 1 : 0)});
}

std::uint16_t PropertyBlock::NameOf(std::string_view property)
{
    const auto same = [&](const std::string& known) { return base::SameName(known, property); };
    const auto place = std::find_if(names_.begin(), names_.end(), same);
    const auto number = static_cast<std::uint16_t>(place - names_.begin());
    if (place == names_.end()) names_.emplace_back(property);
    return number;
}

PropertyOwner& PropertyBlock::OwnerOf(std::string_view field)
{
    const auto same = [&](const PropertyOwner& known) { return IsOf(known, field); };
    const auto known = std::find_if(owners_.begin(), owners_.end(), same);
    if (known != owners_.end()) return *known;
    // The object's own properties stand first.
    if (field.empty()) return *owners_.insert(owners_.begin(), PropertyOwner{});
    owners_.push_back(
        {.kind = PropertyOwner::Kind::Field, .name = std::string(field), .records = {}});
    return owners_.back();
}

void PropertyBlock::Set(std::string_view field, std::string_view property, ColumnType type,
                        std::vector<std::byte> value, std::uint8_t flag)
{
    PropertyRecord record{.name = NameOf(property),
                          .flag = flag,
                          .type = static_cast<std::uint8_t>(type),
                          .value = std::move(value)};
    std::vector<PropertyRecord>& records = OwnerOf(field).records;
    const auto same = [&](const PropertyRecord& known) { return known.name == record.name; };
    const auto known = std::find_if(records.begin(), records.end(), same);
    if (known == records.end())
        records.push_back(std::move(record));
    else
        *known = std::move(record);
}

}  // namespace jet::format
