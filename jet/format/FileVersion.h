// SPDX-License-Identifier: Apache-2.0
// FileVersion: what differs between the file formats, as values.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jet::format {

struct HeaderPageLayout;
struct DataPageLayout;
struct RowLayout;
struct DefinitionLayout;
struct IndexPageLayout;
struct LongValueLimits;

// Rule: a version is a set of values; no algorithm asks which version it works on when a value can
// say.
struct FileVersion {
    std::uint8_t code;              // byte 0x14 of the header page: 0 Jet 3, 1 Jet 4
    const char* name;               // as DAO names it: "3.0", "4.0"
    std::size_t pageSize;           // bytes; no two versions have the same
    std::uint32_t rowLimit;         // bytes of the largest row
    std::uint64_t fileLimit;        // bytes of the largest file
    std::size_t mapRow;             // bytes of a usage map's row when it is made
    std::size_t bytesPerCharacter;  // of a text column's length
    std::uint8_t sortVersion;       // of the tables of its "General" order
    std::uint16_t codePage;         // of the texts of a new file; 0 UTF-16
    std::uint16_t country;          // that a new file names
    int longestBinary;              // bytes of a binary column
    std::uint8_t lastColumnType;    // code of the last column type it knows
    std::uint8_t indexAlways;       // flags that every tree carries
    bool pointersKeepLength;        // a row that moved keeps its former length behind its pointer

    const HeaderPageLayout* header;
    const DataPageLayout* dataPage;
    const RowLayout* row;
    const DefinitionLayout* definition;
    const IndexPageLayout* indexPage;
    const LongValueLimits* longValue;
};

extern const FileVersion kJet3;  // Access 97
extern const FileVersion kJet4;  // Access 2000 to 2003

}  // namespace jet::format
