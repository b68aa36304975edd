// SPDX-License-Identifier: Apache-2.0
// HeaderPage: page 0, which tells the file's version and holds one commit word per user.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/FileVersion.h"
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
//   freePages     4       row pointer of the map of free pages
//   codePage      2       1252
//   encodingKey   4       0: pages are stored plain
//   password      40      masked with the creation date
//   sortOrder     4       language id, 0, version
//   created       8       date and time the file was made
//   commitWords   512     one word per user
struct HeaderPageLayout {
    std::size_t signature, version, freePages, codePage, encodingKey, password, sortOrder, created,
        commitWords;
};
inline constexpr HeaderPageLayout kHeaderPageJet4{.signature = 0x04,
                                                  .version = 0x14,
                                                  .freePages = 0x18,
                                                  .codePage = 0x3C,
                                                  .encodingKey = 0x3E,
                                                  .password = 0x42,
                                                  .sortOrder = 0x6E,
                                                  .created = 0x72,
                                                  .commitWords = 0xE00};
inline constexpr std::size_t kCommitWordBytes = 512;

struct HeaderPage {
    std::uint32_t encodingKey = 0;
    bool passwordSet = false;
    SortOrder sortOrder;
};

// The header page of an existing file. `page` may be longer or shorter than a page.
// Errors: 3343 for anything that is no Jet 4 file.
[[nodiscard]] HeaderPage ReadHeaderPage(Span page);

// The header page of a new file. Units: `created` in days since 1899-12-30.
[[nodiscard]] std::vector<std::byte> MakeHeaderPage(const FileVersion& version, double created);

}  // namespace jet::format
