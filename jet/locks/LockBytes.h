// SPDX-License-Identifier: Apache-2.0
// LockBytes: which bytes of the lock file stand for what.              docs/format/lock-file.md
#pragma once

#include "jet/format/PageNumber.h"
#include "jet/io/File.h"

#include <cstddef>
#include <cstdint>

namespace jet::locks {

using format::PageNumber;

// Users are numbered from 1; each has his own byte of every page in every region.
inline constexpr std::size_t kMostUsers = 255;

// The high digit of an offset. None of these bytes is ever stored: they lie far behind the file.
//
//   user           one byte per user, while he has the file open
//   pages          one byte: he reads the page; a range: he writes it
//   tableReaders   of the first page of a table's definition: he has the table open
//   tableWriters   he has it open and may write it
//   tableDenial    he lets nobody else write it
enum class Region : std::uint64_t {
    User = 0x10000000,
    Pages = 0x20000000,
    TableReaders = 0x40000000,
    TableWriters = 0x50000000,
    TableDenial = 0x60000000
};

inline constexpr std::uint64_t kBytesPerPage = 512;
// A range begins with all the bytes that users can have, so it meets every byte and every range.
inline constexpr std::uint64_t kRangeStart = 256;

[[nodiscard]] constexpr io::ByteRange UserByte(std::size_t user)
{
    return {static_cast<std::uint64_t>(Region::User) + user, 1};
}

inline constexpr io::ByteRange kAllUserBytes{static_cast<std::uint64_t>(Region::User) + 1,
                                             kMostUsers};

[[nodiscard]] constexpr std::uint64_t StartOf(Region region, PageNumber page)
{
    return static_cast<std::uint64_t>(region) + kBytesPerPage * Raw(page);
}

[[nodiscard]] constexpr io::ByteRange ByteOf(Region region, PageNumber page, std::size_t user)
{
    return {StartOf(region, page) + user, 1};
}

[[nodiscard]] constexpr io::ByteRange AllBytesOf(Region region, PageNumber page)
{
    return {StartOf(region, page) + 1, kMostUsers};
}

// Rule: the range's length tells whose it is.
[[nodiscard]] constexpr io::ByteRange RangeOf(Region region, PageNumber page, std::size_t user)
{
    return {StartOf(region, page) + 1, kRangeStart + user};
}

}  // namespace jet::locks
