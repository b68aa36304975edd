// SPDX-License-Identifier: Apache-2.0
// Pager: the pages of one open database file, read through a cache and changed through a WriteSet.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/FileVersion.h"
#include "jet/format/PageNumber.h"
#include "jet/format/Protection.h"
#include "jet/io/File.h"
#include "jet/pages/Journal.h"

#include <memory>
#include <span>
#include <string>
#include <string_view>

namespace jet::pages {

using format::PageNumber;

class WriteSet;

// One page's bytes; keeps them alive while it exists. A write set that is stored makes a new Page
// and leaves this one as it was; a page read inside an open set shows the set's further changes.
class Page {
public:
    explicit Page(std::shared_ptr<const std::vector<std::byte>> bytes) : bytes_(std::move(bytes)) {}
    [[nodiscard]] format::Span Bytes() const { return *bytes_; }

private:
    std::shared_ptr<const std::vector<std::byte>> bytes_;
};

// The one instance per process and file.
class Pager {
public:
    // Opens a database; rolls back a write set that a stopped process left unfinished.
    // Errors: 3024, 3044, 3051, 3343 (no Jet file), 3031 (another password), and those of Journal.
    [[nodiscard]] static std::shared_ptr<Pager> Open(io::FileSystem& files, const std::string& path,
                                                     io::OpenMode mode,
                                                     std::string_view password = {});

    // A new file of two pages: the header and the map of free pages. The catalog fills the rest.
    // Errors: 3204 when the file exists, 3044, 3051, 3031 for a password that is too long.
    [[nodiscard]] static std::shared_ptr<Pager> Create(io::FileSystem& files,
                                                       const std::string& path,
                                                       const format::FileVersion& version,
                                                       const format::Protection& protection = {});

    ~Pager();
    Pager(const Pager&) = delete;
    Pager& operator=(const Pager&) = delete;

    // For who opens a file that is open already. Errors: 3031 when the file has another password.
    void RequirePassword(std::string_view password) const;

    [[nodiscard]] const format::FileVersion& Version() const;
    [[nodiscard]] const std::string& Path() const;
    [[nodiscard]] bool ReadOnly() const;
    // Pages of the file, those of an open write set included.
    [[nodiscard]] std::uint32_t PageCount() const;

    // The page as the open write set has it, otherwise as it is stored.
    // Errors: 3343 when there is no such page, 3043.
    [[nodiscard]] Page Read(PageNumber page) const;

    // Says which pages will be asked for next, in this order, so that they are fetched together.
    // Rule: a page that cannot be read ahead is no error.
    void Expect(std::span<const PageNumber> next) const;

    // Counts what may have changed pages: our committed write sets and those of others that we
    // noticed.
    [[nodiscard]] std::uint64_t ChangeCount() const;

    // Notices what others wrote since: their pages are read afresh from here on.
    void Refresh();

    // What was done with the journal of a stopped process: when this file was opened, or when a
    // write set found one later.
    [[nodiscard]] Recovery Recovered() const;

private:
    friend class WriteSet;
    struct State;
    static void Settle(State& state);
    explicit Pager(std::unique_ptr<State> state);
    std::unique_ptr<State> state_;
};

}  // namespace jet::pages
