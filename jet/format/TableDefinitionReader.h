// SPDX-License-Identifier: Apache-2.0
// TableDefinitionReader: a table definition read from the bytes of its pages.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/CodePage.h"
#include "jet/format/FileVersion.h"
#include "jet/format/TableDefinition.h"

namespace jet::format {

// One page of a definition's chain. Requires: the page outlives the view.
// Errors: 3343 when the page is of another kind.
class DefinitionPage {
public:
    explicit DefinitionPage(Span page);

    // PageNumber::None behind the last page.
    [[nodiscard]] PageNumber Next() const;
    // Of the whole definition; told by the first page only. Units: bytes.
    [[nodiscard]] std::uint32_t Length() const;
    // What the page adds to the joined bytes when it is not the first.
    [[nodiscard]] Span Content() const;

private:
    Span page_;
};

// Reads the joined bytes: the first page whole, then the content of each further page.
// Rule:   `page` and `pages` of the answer are left to the caller. A primary key is unique and, but
//         for the engine's own tables, required, whatever the flags of its tree say.
//         `codePage` is the file's: that of the columns that tell none of their own.
// Errors: 3343 when the definition contradicts itself.
// Source: docs/format/table-definition.md
[[nodiscard]] TableDefinition ReadTableDefinition(Span joined, const FileVersion& version,
                                                  std::uint16_t codePage = kWindows1252);

}  // namespace jet::format
