// SPDX-License-Identifier: Apache-2.0
// UnflushedWrites: what a disk was told and has not confirmed, and what of it a power cut leaves.
#pragma once

#include "jet/io/File.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <random>
#include <span>
#include <string>
#include <vector>

namespace tests {

// Told of each operation before it is made; the flush of a file confirms its content and its name.
//
// Rule: files are known by their paths; one that is open although its name was taken away is not
//       told of.
class UnflushedWrites {
public:
    // Requires: `below` outlives it.
    explicit UnflushedWrites(jet::io::FileSystem& below) : below_(below) {}

    void Write(const std::string& path, std::uint64_t offset, std::span<const std::byte> bytes);
    void Truncate(const std::string& path, std::uint64_t size);
    void Create(const std::string& path);
    void Remove(const std::string& path);
    // Rule: a new name is safe when the renaming is over; see File.h.
    void Rename(const std::string& from, const std::string& to);
    void Flush(const std::string& path);
    // All of it is confirmed.
    void Forget();

    // Undoes every change of a file's content; names stay. Afterwards all is confirmed.
    void Lose();
    // The disk chooses: of all changes some are kept, each sector of 512 bytes for itself, and
    // stored in any order; a few bytes may be torn. A file grows without what was written there. A
    // name that was made or taken away is there or not. Afterwards all is confirmed.
    void Shuffle(std::mt19937& dice);

private:
    // One change of a file's content, and what it replaced.
    struct Change {
        bool cut = false;  // the file ends at `offset` afterwards
        std::uint64_t offset = 0;
        std::vector<std::byte> bytes = {};
        std::uint64_t sizeBefore = 0;
        std::vector<std::byte> before = {};
    };
    using Changes = std::vector<Change>;
    // One change, or what of it the disk stores or loses for itself.
    struct Piece {
        bool cut = false;
        std::uint64_t offset = 0;
        std::span<const std::byte> bytes = {};
    };
    // What a name led to before it was made or taken away.
    struct Former {
        bool there = false;
        std::vector<std::byte> bytes = {};
        Changes changes = {};
    };

    void Remember(const std::string& path, Change change);
    void Undo(const std::string& path, const Changes& changes);
    static std::vector<Piece> PiecesOf(const Changes& changes, std::mt19937& dice);
    void ChooseNames(std::mt19937& dice);
    void Choose(const std::string& path, const Changes& changes, std::mt19937& dice);

    jet::io::FileSystem& below_;
    std::map<std::string, Changes> changes_;
    std::map<std::string, std::vector<Former>> names_;
};

}  // namespace tests
