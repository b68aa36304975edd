// SPDX-License-Identifier: Apache-2.0
#include "jet/format/HeaderPage.h"

#include "base/NumberedError.h"
#include "jet/format/CodePage.h"
#include "jet/format/Collation97.h"
#include "jet/format/RowPointer.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace jet::format {

namespace {

constexpr std::string_view kSignature{"Standard Jet DB\0", 16};
constexpr std::size_t kMaskStart = 0x18;

// The same in every file: the key stream of RC4 under C7 DA 39 6B.
constexpr std::array<std::uint8_t, 128> kMask{
    0xB5, 0x6F, 0x03, 0x62, 0x61, 0x08, 0xC2, 0x55, 0xEB, 0xA9, 0x67, 0x72, 0x43, 0x3F, 0x00, 0x9C,
    0x7A, 0x9F, 0x90, 0xFF, 0x80, 0x9A, 0x31, 0xC5, 0x79, 0xBA, 0xED, 0x30, 0xBC, 0xDF, 0xCC, 0x9D,
    0x63, 0xD9, 0xE4, 0xC3, 0x7B, 0x42, 0xFB, 0x8A, 0xBC, 0x4E, 0x86, 0xFB, 0xEC, 0x37, 0x5D, 0x44,
    0x9C, 0xFA, 0xC6, 0x5E, 0x28, 0xE6, 0x13, 0xB6, 0x8A, 0x60, 0x54, 0x94, 0x7B, 0x36, 0xF5, 0x72,
    0xDF, 0xB1, 0x77, 0xF4, 0x13, 0x43, 0xCF, 0xAF, 0xB1, 0x33, 0x34, 0x61, 0x79, 0x5B, 0x92, 0xB5,
    0x7C, 0x2A, 0x05, 0xF1, 0x7C, 0x99, 0x01, 0x1B, 0x98, 0xFD, 0x12, 0x4F, 0x4A, 0x94, 0x6C, 0x3E,
    0x60, 0x26, 0x5F, 0x95, 0xF8, 0xD0, 0x89, 0x24, 0x85, 0x67, 0xC6, 0x1F, 0x27, 0x44, 0xD2, 0xEE,
    0xCF, 0x65, 0xED, 0xFF, 0x07, 0xC7, 0x46, 0xA1, 0x78, 0x16, 0x0C, 0xED, 0xE9, 0x2D, 0x62, 0xD4};

// When a new file says that it was made.
constexpr std::uint64_t kCreated = 0x40E4AB3E3BD3853E;  // a date, as its bits
constexpr std::uint64_t kMark = 0x00302E3400000654;     // 1620 and "4.0"

// Once removes the mask, once again puts it back.
void ApplyMask(MutableSpan page, const HeaderPageLayout& at)
{
    for (std::size_t i = 0; i < at.maskSize; ++i)
        page[kMaskStart + i] ^= std::byte{kMask[i]};
}

// Where a day of creation is kept, the password is masked with it again, four bytes repeated.
void ApplyPasswordMask(MutableSpan page, const HeaderPageLayout& at)
{
    if (at.created == kAbsent) return;
    const double created = ReadF64(page, at.created);
    const auto day =
        std::isfinite(created) && std::abs(created) < 2e9 ? static_cast<std::int32_t>(created) : 0;
    for (std::size_t i = 0; i < at.passwordSize; ++i) {
        page[at.password + i] ^=
            static_cast<std::byte>(static_cast<std::uint32_t>(day) >> (8 * (i % 4)));
    }
}

[[noreturn]] void Foreign(const char* why)
{
    throw base::NumberedError(3343).At(why);
}

// Errors: 3343.
const FileVersion& VersionOf(Span page)
{
    switch (ReadU8(page, kVersionAt)) {
    case 0:
        return kJet3;
    case 1:
        return kJet4;
    default:
        Foreign("page 0: a newer format");
    }
}

}  // namespace

HeaderPage ReadHeaderPage(Span page)
{
    if (page.size() < kMaskStart + kMask.size()) Foreign("shorter than a header page");
    const bool signed_ = std::equal(
        kSignature.begin(), kSignature.end(), page.begin() + kSignatureAt,
        [](char expected, std::byte found) { return static_cast<std::byte>(expected) == found; });
    if (!signed_ || ReadU32(page, 0) != 0x100) Foreign("page 0: no Jet signature");
    HeaderPage header;
    header.version = &VersionOf(page);
    if (page.size() < header.version->pageSize) Foreign("shorter than a page");

    const HeaderPageLayout& at = *header.version->header;
    std::vector<std::byte> plain(page.begin(), page.end());
    ApplyMask(plain, at);
    ApplyPasswordMask(plain, at);
    header.freePages = ReadRowPointer(plain, kFreePagesAt);
    header.secondMap = ReadRowPointer(plain, kFreePagesAt + kRowPointerSize);
    for (std::size_t i = 0; i < header.systemTables.size(); ++i)
        header.systemTables[i] = PageNumber{ReadU32(plain, kSystemTablesAt + 4 * i)};
    header.encodingKey = ReadU32(plain, at.encodingKey);
    header.passwordSet = ReadU16(plain, at.password) != 0;
    header.sortOrder = {ReadU16(plain, at.language), ReadU8Or(plain, at.sortVersion, kJet3Tables)};
    return header;
}

std::vector<std::byte> MakeHeaderPage(const FileVersion& version)
{
    const HeaderPageLayout& at = *version.header;
    std::vector<std::byte> page(version.pageSize);
    WriteU32(page, 0, 0x100);
    for (std::size_t i = 0; i < kSignature.size(); ++i)
        page[kSignatureAt + i] = static_cast<std::byte>(kSignature[i]);
    WriteU8(page, kVersionAt, version.code);
    WriteRowPointer(page, kFreePagesAt, {PageNumber{1}, 0});
    WriteRowPointer(page, kFreePagesAt + kRowPointerSize, {PageNumber{1}, 1});
    for (std::uint32_t i = 0; i < 4; ++i)
        WriteU32(page, kSystemTablesAt + std::size_t{4} * i, 2 + i);
    WriteIfPresent(page, at.country, version.country);
    WriteU16(page, at.codePage, kWindows1252);
    WriteU32(page, at.build, at.newBuild);
    WriteU16(page, at.language, SortOrder{}.language);
    WriteIfPresent(page, at.created, kCreated);
    ApplyPasswordMask(page, at);
    ApplyMask(page, at);
    WriteIfPresent(page, at.mark, kMark);
    for (std::size_t i = 0; i < kCommitWordBytes; i += 2)
        WriteU16(page, at.commitWords + i, kFirstCommitWord);
    return page;
}

std::uint16_t CommitWordOf(Span page, const FileVersion& version, std::size_t user)
{
    return ReadU16(page, version.header->commitWords + 2 * user);
}

}  // namespace jet::format
