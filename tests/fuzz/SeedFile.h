// SPDX-License-Identifier: Apache-2.0
// SeedFile: the small sound database that fuzzing starts from.
#pragma once

#include "jet/format/FileVersion.h"
#include "jet/format/TableDefinition.h"
#include "jet/io/MemoryFile.h"

#include <vector>

namespace fuzz {

inline constexpr const char* kPath = "seed.mdb";
inline constexpr const char* kTable = "Kinds";

// What is known of the seed file; its table Kinds has:
//
//   Id       counter, primary key
//   Name     text, an index of two levels
//   Note     memo: in the row, on one page, a chain, null
//   ...      one column of each other kind that the format knows
//
// 120 rows; one was deleted, one has moved to another page.
struct SeedFile {
    const jet::format::FileVersion* version = nullptr;
    std::vector<std::byte> bytes;
    jet::format::TableDefinition table;
    std::vector<std::byte> definition;            // of Kinds, its pages joined
    std::vector<std::vector<std::byte>> rows;     // of Kinds, as stored
    std::vector<jet::format::PageNumber> byName;  // pages of the index over Name

    // Made once.
    [[nodiscard]] static const SeedFile& Of(const jet::format::FileVersion& version);
};

// Both formats; a byte of the input chooses one.
[[nodiscard]] inline const jet::format::FileVersion& VersionOf(unsigned choice)
{
    return choice % 2 == 0 ? jet::format::kJet3 : jet::format::kJet4;
}

// The place of Name among the columns of Kinds, and its index.
[[nodiscard]] std::size_t NameColumn(const jet::format::TableDefinition& table);
[[nodiscard]] const jet::format::IndexDefinition&
NameIndex(const jet::format::TableDefinition& table);

}  // namespace fuzz
