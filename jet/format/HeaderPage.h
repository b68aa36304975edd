// SPDX-License-Identifier: Apache-2.0
// HeaderPage: page 0, which tells the file's version and holds one commit word per user.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/FileVersion.h"
#include "jet/format/PageNumber.h"
#include "jet/format/TableDefinition.h"

#include <array>
#include <cstdint>
#include <vector>

namespace jet::format {

// Where the header page keeps its parts (offsets after the mask is removed).
// docs/format/header-page.md
//
//   part          width   meaning
//   signature     16      "Standard Jet DB", NUL
//   version       1       0 Jet 3, 1 Jet 4
//   freePages     4       row pointer of the map of free pages; behind it that of a second map
//   systemTables  4 x 4   definition pages of the four system tables
//   codePage      2       1252
//   encodingKey   4       0: pages are stored plain
//   password      40      masked with the creation date
//   build         4       of the engine that made the file
//   sortOrder     4       language id, 0, version
//   created       8       date and time the file was made
//   commitWords   512     one word per user
struct HeaderPageLayout {
    std::size_t signature, version, freePages, systemTables, codePage, encodingKey, password, build,
        sortOrder, created, commitWords;
};
inline constexpr HeaderPageLayout kHeaderPageJet4{.signature = 0x04,
                                                  .version = 0x14,
                                                  .freePages = 0x18,
                                                  .systemTables = 0x20,
                                                  .codePage = 0x3C,
                                                  .encodingKey = 0x3E,
                                                  .password = 0x42,
                                                  .build = 0x6A,
                                                  .sortOrder = 0x6E,
                                                  .created = 0x72,
                                                  .commitWords = 0xE00};
inline constexpr std::size_t kCommitWordBytes = 512;

struct HeaderPage {
    RowId freePages, secondMap;                // usage maps of the whole file
    std::array<PageNumber, 4> systemTables{};  // their definitions
    std::uint32_t encodingKey = 0;
    bool passwordSet = false;
    SortOrder sortOrder;
};

// The header page of an existing file. `page` may be longer or shorter than a page.
// Errors: 3343 for anything that is no Jet 4 file.
[[nodiscard]] HeaderPage ReadHeaderPage(Span page);

// The header page of a new file.
// Rule: every file of ours carries one date of creation, because the ids of the accounts in its
//       system tables are masked with it.
[[nodiscard]] std::vector<std::byte> MakeHeaderPage(const FileVersion& version);

// The commit word of a user; 0 is the one who has the file to himself.
// Rule: below kFirstCommitWord the user was stopped while he wrote.
inline constexpr std::uint16_t kFirstCommitWord = 0x0100;
inline constexpr std::size_t kCommitWords = kCommitWordBytes / 2;
[[nodiscard]] std::uint16_t CommitWordOf(Span page, std::size_t user);

}  // namespace jet::format
