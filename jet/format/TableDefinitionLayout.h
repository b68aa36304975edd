// SPDX-License-Identifier: Apache-2.0
// TableDefinitionLayout: where a table definition keeps its parts.
#pragma once

#include <cstddef>
#include <cstdint>

namespace jet::format {

// The joined bytes of a definition: the first page whole, then each further page without its
// header.                                                    docs/format/table-definition.md
//
//   part             width   meaning
//   (kind)           2       02 01
//   freeBytes        2       last page only: bytes that hold nothing, less 8
//   next             4       the next page of the chain, 0 none
//   length           4       of the joined bytes, end mark included
//   rowCount         4       rows stored
//   autoNumber       4       last counter value given out
//   increment        4       of the counter
//   tableKind        1       'N' ordinary, 'S' of the engine
//   columnCounter    2       columns ever made
//   variableCounter  2       variable columns ever made
//   columns          2       columns described
//   namedIndexes     4       named indexes described
//   indexes          4       trees described
//   ownedPages       4       row pointer of the map of owned pages
//   freePages        4       row pointer of the map of pages with room
//   statistics       12 each entry counts, one for each tree; then the descriptions follow
struct TableDefinitionLayout {
    std::size_t pageHeader, next, length, rowCount, autoNumber, increment, tableKind, columnCounter,
        variableCounter, columns, namedIndexes, indexes, ownedPages, freePages, statistics,
        statisticsSize;
};
inline constexpr TableDefinitionLayout kTableDefinitionJet4{.pageHeader = 8,
                                                            .next = 4,
                                                            .length = 8,
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
//   number         2       bit in the null mask
//   variableIndex  2       place among the variable columns
//   ordinal        2       place in the field order
//   language       2       of the sort order; precision and scale of a Numeric
//   sortVersion    1       of the sort order
//   flags          1       ColumnFlag
//   extraFlags     1       1: text may be stored compressed
//   fixedOffset    2       from the start of the fixed part
//   length         2       bytes
struct ColumnLayout {
    std::size_t type, number, variableIndex, ordinal, language, sortVersion, flags, extraFlags,
        fixedOffset, length, size;
};
inline constexpr ColumnLayout kColumnJet4{.type = 0,
                                          .number = 5,
                                          .variableIndex = 7,
                                          .ordinal = 9,
                                          .language = 11,
                                          .sortVersion = 14,
                                          .flags = 15,
                                          .extraFlags = 16,
                                          .fixedOffset = 21,
                                          .length = 23,
                                          .size = 25};

// One tree: ten places of a column number and its direction, then its map, root and flags.
struct IndexLayout {
    std::size_t columns, columnPlaces, columnSize, usageMap, root, flags, size;
};
inline constexpr IndexLayout kIndexJet4{.columns = 4,
                                        .columnPlaces = 10,
                                        .columnSize = 3,
                                        .usageMap = 34,
                                        .root = 38,
                                        .flags = 46,
                                        .size = 52};

// One named index.
struct NamedIndexLayout {
    std::size_t number, tree, relationKind, relatedIndex, relatedTable, cascadeUpdates,
        cascadeDeletes, kind, size;
};
inline constexpr NamedIndexLayout kNamedIndexJet4{.number = 4,
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
inline constexpr LongValueMapLayout kLongValueMapJet4{
    .column = 0, .owned = 2, .free = 6, .size = 10};

inline constexpr std::uint16_t kDefinitionPage = 0x0102;  // the first two bytes of each page
inline constexpr std::uint16_t kNoColumn = 0xFFFF;
inline constexpr std::uint8_t kSystemTableKind = 0x53;
inline constexpr std::uint8_t kColumnFixed = 0x01, kColumnAutoNumber = 0x04, kColumnAutoGuid = 0x40;
inline constexpr std::uint8_t kColumnCompressed = 0x01;  // of the extra flags
inline constexpr std::uint8_t kIndexUnique = 0x01, kIndexIgnoreNulls = 0x02, kIndexRequired = 0x08;
inline constexpr std::uint8_t kPrimaryKey = 1;

}  // namespace jet::format
