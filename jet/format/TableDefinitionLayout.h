// SPDX-License-Identifier: Apache-2.0
// TableDefinitionLayout: where a table definition keeps its parts.
#pragma once

#include "jet/format/Layout.h"

#include <cstddef>
#include <cstdint>

namespace jet::format {

// The joined bytes of a definition: the first page whole, then each further page without its
// header.                                                    docs/format/table-definition.md
//
//   part             width   meaning
//   (kind)           2       02 01
//   pageMark         2       Jet 3: the letters VC
//   freeBytes        2       Jet 4, last page only: bytes that hold nothing, less 8
//   next             4       the next page of the chain, 0 none
//   length           4       of the joined bytes, end mark included
//   mark             4       Jet 4: 1625
//   rowCount         4       rows stored
//   autoNumber       4       last counter value given out
//   increment        4       of the counter; in Jet 3 always 1
//   tableKind        1       'N' ordinary, 'S' of the engine
//   columnCounter    2       columns ever made
//   variableCounter  2       variable columns ever made
//   columns          2       columns described
//   namedIndexes     4       named indexes described
//   indexes          4       trees described
//   ownedPages       4       row pointer of the map of owned pages
//   freePages        4       row pointer of the map of pages with room
//   statistics       8, 12   entry counts, one for each tree; then the descriptions follow
//                    each
struct TableDefinitionLayout {
    std::size_t pageMark, freeBytes, mark, rowCount, autoNumber, increment, tableKind,
        columnCounter, variableCounter, columns, namedIndexes, indexes, ownedPages, freePages,
        statistics, statisticsSize;
};
// Where the parts lie that all versions have in one place.
inline constexpr std::size_t kDefinitionNext = 4, kDefinitionLength = 8, kDefinitionPageHeader = 8;
inline constexpr TableDefinitionLayout kTableDefinitionJet3{.pageMark = 2,
                                                            .freeBytes = kAbsent,
                                                            .mark = kAbsent,
                                                            .rowCount = 12,
                                                            .autoNumber = 16,
                                                            .increment = kAbsent,
                                                            .tableKind = 20,
                                                            .columnCounter = 21,
                                                            .variableCounter = 23,
                                                            .columns = 25,
                                                            .namedIndexes = 27,
                                                            .indexes = 31,
                                                            .ownedPages = 35,
                                                            .freePages = 39,
                                                            .statistics = 43,
                                                            .statisticsSize = 8};
inline constexpr TableDefinitionLayout kTableDefinitionJet4{.pageMark = kAbsent,
                                                            .freeBytes = 2,
                                                            .mark = 12,
                                                            .rowCount = 16,
                                                            .autoNumber = 20,
                                                            .increment = 24,
                                                            .tableKind = 40,
                                                            .columnCounter = 41,
                                                            .variableCounter = 43,
                                                            .columns = 45,
                                                            .namedIndexes = 47,
                                                            .indexes = 51,
                                                            .ownedPages = 55,
                                                            .freePages = 59,
                                                            .statistics = 63,
                                                            .statisticsSize = 12};

// One column.
//
//   part           width   meaning
//   type           1       ColumnType
//   mark           4       Jet 4: 1625
//   number         2       bit in the null mask
//   variableIndex  2       place among the variable columns
//   ordinal        2       place in the field order
//   country        2       Jet 3: as the header page tells it
//   language       2       of the sort order
//   codePage       2       Jet 3: of the texts
//   precision      1       of a Numeric; behind it its scale
//   sortVersion    1       Jet 4: of the sort order
//   flags          1       ColumnFlag
//   extraFlags     1       Jet 4: 1: text may be stored compressed
//   fixedOffset    2       from the start of the fixed part
//   length         2       bytes
struct ColumnLayout {
    std::size_t type, mark, number, variableIndex, ordinal, country, language, codePage, precision,
        sortVersion, flags, extraFlags, fixedOffset, length, size;
};
inline constexpr ColumnLayout kColumnJet3{.type = 0,
                                          .mark = kAbsent,
                                          .number = 1,
                                          .variableIndex = 3,
                                          .ordinal = 5,
                                          .country = 7,
                                          .language = 9,
                                          .codePage = 11,
                                          .precision = 11,
                                          .sortVersion = kAbsent,
                                          .flags = 13,
                                          .extraFlags = kAbsent,
                                          .fixedOffset = 14,
                                          .length = 16,
                                          .size = 18};
inline constexpr ColumnLayout kColumnJet4{.type = 0,
                                          .mark = 1,
                                          .number = 5,
                                          .variableIndex = 7,
                                          .ordinal = 9,
                                          .country = kAbsent,
                                          .language = 11,
                                          .codePage = kAbsent,
                                          .precision = 11,
                                          .sortVersion = 14,
                                          .flags = 15,
                                          .extraFlags = 16,
                                          .fixedOffset = 21,
                                          .length = 23,
                                          .size = 25};

// One tree: ten places of a column number and its direction, then its map, root and flags.
struct IndexLayout {
    std::size_t mark, columns, columnPlaces, columnSize, usageMap, root, flags, size;
};
inline constexpr IndexLayout kIndexJet3{.mark = kAbsent,
                                        .columns = 0,
                                        .columnPlaces = 10,
                                        .columnSize = 3,
                                        .usageMap = 30,
                                        .root = 34,
                                        .flags = 38,
                                        .size = 39};
inline constexpr IndexLayout kIndexJet4{.mark = 0,
                                        .columns = 4,
                                        .columnPlaces = 10,
                                        .columnSize = 3,
                                        .usageMap = 34,
                                        .root = 38,
                                        .flags = 46,
                                        .size = 52};

// One named index.
struct NamedIndexLayout {
    std::size_t mark, number, tree, relationKind, relatedIndex, relatedTable, cascadeUpdates,
        cascadeDeletes, kind, size;
};
inline constexpr NamedIndexLayout kNamedIndexJet3{.mark = kAbsent,
                                                  .number = 0,
                                                  .tree = 4,
                                                  .relationKind = 8,
                                                  .relatedIndex = 9,
                                                  .relatedTable = 13,
                                                  .cascadeUpdates = 17,
                                                  .cascadeDeletes = 18,
                                                  .kind = 19,
                                                  .size = 20};
inline constexpr NamedIndexLayout kNamedIndexJet4{.mark = 0,
                                                  .number = 4,
                                                  .tree = 8,
                                                  .relationKind = 12,
                                                  .relatedIndex = 13,
                                                  .relatedTable = 17,
                                                  .cascadeUpdates = 21,
                                                  .cascadeDeletes = 22,
                                                  .kind = 23,
                                                  .size = 28};

// Maps of one memo or OLE column: its number and two row pointers. The list ends with kNoColumn.
struct LongValueMapLayout {
    std::size_t column, owned, free, size;
};
inline constexpr LongValueMapLayout kLongValueMap{.column = 0, .owned = 2, .free = 6, .size = 10};

// All of them, and the width of a name's length.
struct DefinitionLayout {
    TableDefinitionLayout table;
    ColumnLayout column;
    IndexLayout index;
    NamedIndexLayout namedIndex;
    std::size_t nameLength;
    bool systemColumnsByName;  // columns of system tables stand by name, not by number
};
inline constexpr DefinitionLayout kDefinitionJet3{.table = kTableDefinitionJet3,
                                                  .column = kColumnJet3,
                                                  .index = kIndexJet3,
                                                  .namedIndex = kNamedIndexJet3,
                                                  .nameLength = 1,
                                                  .systemColumnsByName = false};
inline constexpr DefinitionLayout kDefinitionJet4{.table = kTableDefinitionJet4,
                                                  .column = kColumnJet4,
                                                  .index = kIndexJet4,
                                                  .namedIndex = kNamedIndexJet4,
                                                  .nameLength = 2,
                                                  .systemColumnsByName = true};

inline constexpr std::uint16_t kDefinitionPage = 0x0102;  // the first two bytes of each page
inline constexpr std::uint16_t kNoColumn = 0xFFFF;
inline constexpr std::uint8_t kSystemTableKind = 0x53;
inline constexpr std::uint8_t kColumnFixed = 0x01, kColumnAutoNumber = 0x04, kColumnAutoGuid = 0x40;
inline constexpr std::uint8_t kColumnCompressed = 0x01;  // of the extra flags
inline constexpr std::uint8_t kIndexUnique = 0x01, kIndexIgnoreNulls = 0x02, kIndexRequired = 0x08;
// Kinds of a named index, and the sides of a relationship: the table that others refer to, and the
// one that refers to it.
inline constexpr std::uint8_t kPrimaryKey = 1, kRelationship = 2;
inline constexpr std::uint8_t kReferencedSide = 1, kReferencingSide = 2;
// What happens to the referring rows.
inline constexpr std::uint8_t kRestrict = 0, kCascade = 1, kSetNull = 2;

}  // namespace jet::format
