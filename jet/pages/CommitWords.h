// SPDX-License-Identifier: Apache-2.0
// CommitWords: the words of page 0 in which each user tells the others that he writes.
#pragma once

#include "jet/format/FileVersion.h"
#include "jet/format/HeaderPage.h"
#include "jet/io/File.h"

#include <array>
#include <cstdint>

namespace jet::pages {

// Below the first counter value a word says more than how often its user wrote.
inline constexpr std::uint16_t kWritingNow = 0x0000;
inline constexpr std::uint16_t kMetDamage = 0x0001;

// All of them, as they were at one moment.
class CommitWords {
public:
    CommitWords() = default;
    // Errors: 3043.
    CommitWords(const io::File& database, const format::FileVersion& version);

    [[nodiscard]] std::uint16_t Of(std::size_t user) const;
    void Set(std::size_t user, std::uint16_t word);
    friend bool operator==(const CommitWords&, const CommitWords&) = default;

private:
    std::array<std::byte, format::kCommitWordBytes> bytes_{};
};

// Writes one user's word, two bytes in place.
// Rule: nothing else of page 0 is ever written: the other words belong to others.
void StoreCommitWord(io::File& database, const format::FileVersion& version, std::size_t user,
                     std::uint16_t word);

// What the counter says after one more commit.
[[nodiscard]] constexpr std::uint16_t NextCommitWord(std::uint16_t word)
{
    const bool starts = word < format::kFirstCommitWord || word == 0xFFFF;
    return starts ? format::kFirstCommitWord : static_cast<std::uint16_t>(word + 1);
}

}  // namespace jet::pages
