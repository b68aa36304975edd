// SPDX-License-Identifier: Apache-2.0
// PropertyBlock: the named properties of a table and its fields, as the catalog stores them.
#pragma once

#include "jet/format/ByteWriter.h"
#include "jet/format/CodePage.h"
#include "jet/format/TableDefinition.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet::format {

// Flag of a property whose change needs the right to change the design.
inline constexpr std::uint8_t kDesignFlag = 1;

// One property's stored form.                              docs/format/properties.md
struct PropertyRecord {
    std::uint16_t name = 0;  // place in PropertyBlock::names
    std::uint8_t flag = 0;   // 1: needs the right to change the design
    std::uint8_t type = 0;   // a column type's code
    std::vector<std::byte> value;
};

// The properties of the object itself or of one of its fields.
struct PropertyOwner {
    enum class Kind : std::uint16_t { Object = 0, Field = 1 };
    Kind kind = Kind::Object;
    std::string name;  // of the field
    std::vector<PropertyRecord> records;
};

// Rule: parts of unknown kinds are passed over when it is read; a block without them is encoded as
//       it was, byte for byte, names that no property uses included. Only new blocks are stored.
class PropertyBlock {
public:
    // `codePage` of its texts.
    explicit PropertyBlock(std::uint16_t codePage = kUtf16) : codePage_(codePage) {}

    // `codePage` is that of the file; the block tells whether its texts are in it or in UTF-16.
    // Errors: 3343 when the block contradicts itself, or has a second list of names and then
    //         properties, which might mean either.
    [[nodiscard]] static PropertyBlock Parse(Span bytes, std::uint16_t codePage = kWindows1252);
    [[nodiscard]] std::vector<std::byte> Encode() const;

    [[nodiscard]] bool Empty() const { return owners_.empty(); }
    [[nodiscard]] const std::vector<std::string>& Names() const { return names_; }
    [[nodiscard]] const std::vector<PropertyOwner>& Owners() const { return owners_; }

    // The value of a field's property, of the object's own when `field` is empty; nothing when it
    // has none. Rule: case is ignored in both names.
    [[nodiscard]] std::optional<std::string> TextValue(std::string_view field,
                                                       std::string_view property) const;
    // False also when the property is not there.
    [[nodiscard]] bool BooleanValue(std::string_view field, std::string_view property) const;

    // Adds or replaces a property; of the object itself when `field` is empty.
    // Errors: 3271 when a name or value is too long to be stored, 3421 when the code page cannot
    //         hold it.
    void SetText(std::string_view field, std::string_view property, std::string_view value,
                 std::uint8_t flag = kDesignFlag);
    void SetMemo(std::string_view field, std::string_view property, std::string_view value);
    void SetBoolean(std::string_view field, std::string_view property, bool value);

private:
    [[nodiscard]] const PropertyRecord* Find(std::string_view field,
                                             std::string_view property) const;
    [[nodiscard]] std::uint16_t NameOf(std::string_view property);
    [[nodiscard]] PropertyOwner& OwnerOf(std::string_view field);
    void Set(std::string_view field, std::string_view property, ColumnType type,
             std::vector<std::byte> value, std::uint8_t flag = kDesignFlag);
    [[nodiscard]] std::string Decode(Span bytes) const;
    [[nodiscard]] std::vector<std::byte> EncodeText(std::string_view text) const;
    void ParseChunk(std::uint16_t type, Span payload);
    void ParseNames(Span payload);
    void ParseOwner(PropertyOwner::Kind kind, Span payload);

    std::uint16_t codePage_;
    std::vector<std::string> names_;
    std::vector<PropertyOwner> owners_;
    std::size_t nameLists_ = 0;  // met while reading
};

}  // namespace jet::format
