// SPDX-License-Identifier: Apache-2.0
// TableDefinitionWriter: the definition pages of a newly made table, and of one that gets an index.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/FileVersion.h"
#include "jet/format/TableDefinition.h"

#include <vector>

namespace jet::format {

struct TableDefinitionLayout;

// Encodes a definition once; its pages are then written one by one.
//
//     TableDefinitionWriter writer(definition, version);
//     for (std::size_t i = 0; i < writer.PageCount(); ++i)
//         writer.WritePage(i, nextOf(i), pageOf(i));
//
// Requires: there are columns; numbers, offsets, maps and roots are set; namedIndexes stand in the
//           sort order of their names.
// Rule:     columns are written in the order in which they stand. Index statistics are those of
//           indexes over no rows. What the format leaves undefined is written as 0.
// Errors:   3421 for a name that the code page of the columns cannot hold.
// Source:   docs/format/catalog.md
class TableDefinitionWriter {
public:
    TableDefinitionWriter(const TableDefinition& table, const FileVersion& version);
    // The pages of a definition whose joined bytes are there.
    TableDefinitionWriter(std::vector<std::byte> joined, const FileVersion& version);

    [[nodiscard]] std::size_t PageCount() const;
    // Fills page `place` of the chain whole; `next` is None on the last.
    void WritePage(std::size_t place, PageNumber next, MutableSpan page) const;

    // The joined bytes: the first page's, then each further page's without its header.
    [[nodiscard]] Span Joined() const { return joined_; }

private:
    const TableDefinitionLayout* layout_;
    std::vector<std::byte> joined_;
    std::size_t pageSize_;
};

// Put a tree over no rows behind the trees of a definition's joined bytes, and a named index at
// `place` among its named ones. Everything else of the definition stays byte for byte.
// Requires: joined.size() is the length that the definition says. `anyColumn` of the table tells
//           the form of its texts.
// Errors:   3343 when the definition contradicts itself, 3421 for a name that cannot be held.
void AddTree(std::vector<std::byte>& joined, const IndexDefinition& tree,
             const FileVersion& version);
void AddNamedIndex(std::vector<std::byte>& joined, const NamedIndex& index, std::size_t place,
                   const ColumnDefinition& anyColumn, const FileVersion& version);

// Take them out again, by their place. Rule: the numbers by which named indexes tell their trees
// stay true; a tree that goes must have no named index. Errors: 3343 as above.
void RemoveTree(std::vector<std::byte>& joined, std::size_t tree, const FileVersion& version);
void RemoveNamedIndex(std::vector<std::byte>& joined, std::size_t place,
                      const FileVersion& version);

}  // namespace jet::format
