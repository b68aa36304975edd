// SPDX-License-Identifier: Apache-2.0
#include "jet/format/HeaderPage.h"

#include "base/NumberedError.h"
#include "jet/format/CodePage.h"
#include "jet/format/Collation97.h"
#include "jet/format/PageEncoding.h"
#include "jet/format/RowPointer.h"
#include "jet/format/TextCompression.h"

#include <algorithm>
#include <cmath>
#include <string_view>

namespace jet::format {

namespace {

constexpr std::string_view kSignature{"Standard Jet DB\0", 16};
constexpr std::size_t kMaskStart = 0x18;

// The mask's key; the same in every file.
constexpr std::uint32_t kMaskKey = 0x6B39DAC7;

// When a new file says that it was made.
constexpr std::uint64_t kCreated = 0x40E4AB3E3BD3853E;  // a date, as its bits
constexpr std::uint64_t kMark = 0x00302E3400000654;     // 1620 and "4.0"

// Once removes the mask, once again puts it back.
void ApplyMask(MutableSpan page, const HeaderPageLayout& at)
{
    ApplyKeyStream(kMaskKey, page.subspan(kMaskStart, at.maskSize));
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

// Rule: Jet 4 tells one too, but its texts are UTF-16.
std::uint16_t ReadCodePage(Span plain, const FileVersion& version)
{
    if (version.codePage == kUtf16) return kUtf16;
    const std::uint16_t stored = ReadU16(plain, version.header->codePage);
    return stored == kUtf16 ? version.codePage : stored;
}

// The characters before the first that is zero.
std::string ReadPassword(Span plain, const FileVersion& version)
{
    const HeaderPageLayout& at = *version.header;
    const Span field = plain.subspan(at.password, at.passwordSize);
    const std::size_t width = version.bytesPerCharacter;
    std::size_t length = 0;
    while (length < field.size() && ReadNumber(field, length, width) != 0)
        length += width;
    if (length == 0) return {};
    return DecodeTextIn(ReadCodePage(plain, version), field.first(length));
}

void WritePassword(MutableSpan page, std::string_view password, const FileVersion& version)
{
    const std::vector<std::byte> stored = EncodeTextIn(version.codePage, password);
    if (stored.size() > version.header->passwordSize) throw base::NumberedError(3031);
    std::copy(stored.begin(), stored.end(),
              page.begin() + static_cast<std::ptrdiff_t>(version.header->password));
}

}  // namespace

HeaderPage ReadHeaderPage(Span page)
{
    if (page.size() <= kVersionAt) Foreign("shorter than a header page");
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
    header.protection = {.encodingKey = ReadU32(plain, at.encodingKey),
                         .password = ReadPassword(plain, *header.version)};
    header.codePage = ReadCodePage(plain, *header.version);
    header.sortOrder = {ReadU16(plain, at.language), ReadU8Or(plain, at.sortVersion, kJet3Tables)};
    return header;
}

std::uint16_t HeaderCodePageOf(Span page, const FileVersion& version)
{
    std::vector<std::byte> plain(page.begin(), page.end());
    ApplyMask(plain, *version.header);
    return ReadU16(plain, version.header->codePage);
}

std::vector<std::byte> MakeHeaderPage(const FileVersion& version, const Protection& protection)
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
    WriteU32(page, at.encodingKey, protection.encodingKey);
    WritePassword(page, protection.password, version);
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
