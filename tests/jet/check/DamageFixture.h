// SPDX-License-Identifier: Apache-2.0
// DamageFixture: a sound file of a few tables in either format, and hands that spoil it byte by
// byte.
#pragma once

#include "jet/check/IntegrityChecker.h"
#include "jet/format/Bytes.h"
#include "jet/format/FileVersion.h"
#include "jet/format/IndexPage.h"
#include "jet/format/TableDefinition.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/FileKind.h"

#include <string>
#include <vector>

namespace tests {

using jet::format::PageNumber;
using jet::format::RowId;

// A row's own bytes in the file.
struct RowPlace {
    RowId id;
    std::size_t offset = 0;  // in its page
    std::size_t length = 0;
};

// A file with the system tables, an empty table "Jot" and a table "Job":
//
//   Id      counter, primary key
//   Name    text of 40 characters, an index of several pages
//   Note    memo: every fourth in the row, on a page of its kind, over several pages, null
//
// 300 rows; one has moved to another page, one was deleted.
class DamagedFile {
public:
    explicit DamagedFile(FileKind kind);

    static constexpr const char* kPath = "shop.mdb";

    [[nodiscard]] jet::io::MemoryFileSystem& Files() { return files_; }
    // Stores it as its kind has it. Rule: until then its pages are plain in either kind, to be
    // spoilt by the hands below; afterwards they are spoilt no more.
    void Store();
    // What is found in the stored file.
    [[nodiscard]] jet::check::CheckReport Check();
    [[nodiscard]] std::vector<std::byte>& Content() { return files_.Content(kPath); }
    // The bytes before anything was spoilt.
    [[nodiscard]] const std::vector<std::byte>& SoundContent() const { return sound_.bytes; }
    [[nodiscard]] const jet::format::FileVersion& Version() const { return version_; }
    [[nodiscard]] PageNumber PageCount()
    {
        return PageNumber{static_cast<std::uint32_t>(Content().size() / version_.pageSize)};
    }

    // The definition of a table as it is before it is spoilt.
    [[nodiscard]] const jet::format::TableDefinition& Job() const { return sound_.job; }
    [[nodiscard]] const jet::format::TableDefinition& Objects() const { return sound_.objects; }
    // A tree of Job by the name of its index.
    [[nodiscard]] const jet::format::IndexDefinition& Tree(const std::string& name) const;
    [[nodiscard]] const std::vector<PageNumber>& JobPages() const { return sound_.jobPages; }
    // Rows of Job in storage order, the moved one left out; and the moved one at its first place.
    [[nodiscard]] const std::vector<RowPlace>& Rows() const { return rows_; }
    [[nodiscard]] RowPlace Moved() const { return moved_; }
    // The first row whose memo has this form: 0 in the row, 1 on one page, 2 over several, 3 null.
    [[nodiscard]] const RowPlace& RowWithNote(std::size_t form, std::size_t skip = 0) const
    {
        return rows_[form + 4 * skip];
    }
    // Where the header of a row's memo lies in its page. Requires: it is not null.
    [[nodiscard]] std::size_t NoteAt(const RowPlace& row);
    // The place of a row's bytes.
    [[nodiscard]] RowPlace PlaceOf(RowId row);
    // The catalog row of an object.
    [[nodiscard]] RowPlace ObjectRow(const std::string& name);
    // The first leaf of a tree, and the node above it when there is one.
    [[nodiscard]] PageNumber FirstLeaf(const std::string& tree);

    [[nodiscard]] jet::format::MutableSpan PageAt(PageNumber page);
    void Put8(PageNumber page, std::size_t offset, std::uint8_t value);
    void Put16(PageNumber page, std::size_t offset, std::uint16_t value);
    void Put32(PageNumber page, std::size_t offset, std::uint32_t value);
    // A number of the row layout: one byte in Jet 3, two in Jet 4.
    void PutNumber(PageNumber page, std::size_t offset, std::uint16_t value);
    [[nodiscard]] std::uint16_t Get16(PageNumber page, std::size_t offset);
    // Sets or clears a page in a usage map, inline form.
    void SetInMap(RowId map, PageNumber page, bool member);
    // Where the map's row begins in its page.
    [[nodiscard]] std::size_t MapAt(RowId map) { return PlaceOf(map).offset; }

private:
    // The sound file, made once.
    struct Sound {
        std::vector<std::byte> bytes;
        jet::format::TableDefinition job, objects;
        std::vector<PageNumber> jobPages;
        std::vector<RowId> rows;
        RowId moved;
    };
    static const Sound& SoundOf(const jet::format::FileVersion& version);
    static Sound MakeSound(const jet::format::FileVersion& version);

    const FileKind kind_;
    const jet::format::FileVersion& version_;
    const Sound& sound_;
    bool stored_ = false;
    jet::io::MemoryFileSystem files_;
    std::vector<RowPlace> rows_;
    RowPlace moved_;
};

}  // namespace tests
