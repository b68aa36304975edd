// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/CommitWords.h"

#include "jet/format/Bytes.h"

namespace jet::pages {

CommitWords::CommitWords(const io::File& database, const format::FileVersion& version)
{
    database.Read(version.header->commitWords, bytes_);
}

std::uint16_t CommitWords::Of(std::size_t user) const
{
    return format::ReadU16(bytes_, 2 * user);
}

void CommitWords::Set(std::size_t user, std::uint16_t word)
{
    format::WriteU16(bytes_, 2 * user, word);
}

void StoreCommitWord(io::File& database, const format::FileVersion& version, std::size_t user,
                     std::uint16_t word)
{
    std::array<std::byte, 2> bytes{};
    format::WriteU16(bytes, 0, word);
    database.Write(version.header->commitWords + 2 * user, bytes);
}

}  // namespace jet::pages
