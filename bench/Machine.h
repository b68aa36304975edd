// SPDX-License-Identifier: Apache-2.0
// Machine: what this machine can do at best, measured beside the engines.
#pragma once

#include "bench/Race.h"

#include <cstddef>
#include <span>
#include <string>
#include <vector>

namespace bench {

// The data pages of one table, found beforehand in a file mapped into memory.
class TablePages {
public:
    TablePages(const std::string& path, const std::string& table);
    ~TablePages();
    TablePages(const TablePages&) = delete;
    TablePages& operator=(const TablePages&) = delete;

    // Looks at every byte of every page once.
    [[nodiscard]] Contender Reading() const;

private:
    std::span<const std::byte> file_;
    std::vector<std::span<const std::byte>> pages_;
};

// A file of its own in this folder, written page by page.
class ScratchPages {
public:
    explicit ScratchPages(const std::string& folder);
    ~ScratchPages();
    ScratchPages(const ScratchPages&) = delete;
    ScratchPages& operator=(const ScratchPages&) = delete;

    [[nodiscard]] Contender OneWrite() const;
    // One write that survives a power cut.
    [[nodiscard]] Contender OneFlush() const;

private:
    std::string path_;
    int file_ = -1;
};

}  // namespace bench
