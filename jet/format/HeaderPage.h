// SPDX-License-Identifier: Apache-2.0
// HeaderPage: page 0, which tells the file's version and holds one commit word per user.
#pragma once

#include "jet/format/FileVersion.h"
#include "jet/format/Layout.h"
#include "jet/format/PageNumber.h"
#include "jet/format/Protection.h"
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
//   country       2       Jet 3: 0 or 1
//   codePage      2       1252; in Jet 3 of all texts
//   encodingKey   4       0: pages are stored plain
//   password      20, 40  filled up with zeros; Jet 4: masked with the creation date
//   build         4       of the engine that made the file
//   language      2       of the sort order
//   sortVersion   1       of the sort order; Jet 4
//   created       8       date and time the file was made; Jet 4
//   mark          8       the same in every file; Jet 4
//   commitWords   512     one word per user
struct HeaderPageLayout {
    std::size_t maskSize, country, codePage, encodingKey, password, passwordSize, build, language,
        sortVersion, created, mark, commitWords;
    std::uint32_t newBuild;  // of a new file
    // Account ids of a new file are masked with it; it belongs to the date of creation.
    std::array<std::uint8_t, 2> newAccountMask;
};
// Where the parts lie that all versions have in one place.
inline constexpr std::size_t kSignatureAt = 0x04, kVersionAt = 0x14, kFreePagesAt = 0x18,
                             kSystemTablesAt = 0x20;
inline constexpr HeaderPageLayout kHeaderPageJet3{.maskSize = 126,
                                                  .country = 0x38,
                                                  .codePage = 0x3C,
                                                  .encodingKey = 0x3E,
                                                  .password = 0x42,
                                                  .passwordSize = 20,
                                                  .build = 0x56,
                                                  .language = 0x3A,
                                                  .sortVersion = kAbsent,
                                                  .created = kAbsent,
                                                  .mark = kAbsent,
                                                  .commitWords = 0x600,
                                                  .newBuild = 3428,
                                                  .newAccountMask = {}};
inline constexpr HeaderPageLayout kHeaderPageJet4{.maskSize = 128,
                                                  .country = kAbsent,
                                                  .codePage = 0x3C,
                                                  .encodingKey = 0x3E,
                                                  .password = 0x42,
                                                  .passwordSize = 40,
                                                  .build = 0x6A,
                                                  .language = 0x6E,
                                                  .sortVersion = 0x71,
                                                  .created = 0x72,
                                                  .mark = 0x98,
                                                  .commitWords = 0xE00,
                                                  .newBuild = 9756,
                                                  .newAccountMask = {0x67, 0x8A}};
inline constexpr std::size_t kCommitWordBytes = 512;

struct HeaderPage {
    const FileVersion* version = nullptr;
    RowId freePages, secondMap;                // usage maps of the whole file
    std::array<PageNumber, 4> systemTables{};  // their definitions
    Protection protection;
    std::uint16_t codePage = 0;  // of all texts that tell none of their own; kUtf16 in Jet 4
    SortOrder sortOrder;
};

// The header page of an existing file. `page` may be longer or shorter than a page.
// Errors: 3343 for anything that is no file of these versions.
[[nodiscard]] HeaderPage ReadHeaderPage(Span page);

// The code page that a header page names, which a version with UTF-16 texts does not use.
// Requires: `page` is the header page of such a file.
[[nodiscard]] std::uint16_t HeaderCodePageOf(Span page, const FileVersion& version);

// The header page of a new file. Errors: 3031 for a password that does not fit, 3421 for one that
// the code page cannot hold.
// Rule: every file of ours carries one date of creation, because the ids of the accounts in its
//       system tables are masked with it.
[[nodiscard]] std::vector<std::byte> MakeHeaderPage(const FileVersion& version,
                                                    const Protection& protection = {});

// The commit word of a user; 0 is the one who has the file to himself.
// Rule: below kFirstCommitWord the user was stopped while he wrote.
inline constexpr std::uint16_t kFirstCommitWord = 0x0100;
inline constexpr std::size_t kCommitWords = kCommitWordBytes / 2;
[[nodiscard]] std::uint16_t CommitWordOf(Span page, const FileVersion& version, std::size_t user);

}  // namespace jet::format
