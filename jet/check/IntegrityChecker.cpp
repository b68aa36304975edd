// SPDX-License-Identifier: Apache-2.0
#include "jet/check/IntegrityChecker.h"

#include "jet/check/CatalogCheck.h"
#include "jet/check/DataPageCheck.h"
#include "jet/check/Inspection.h"
#include "jet/check/MapCheck.h"
#include "jet/check/TableCheck.h"
#include "jet/format/HeaderPage.h"
#include "jet/format/TableDefinitionLayout.h"

#include <algorithm>
#include <array>

namespace jet::check {

namespace {

// The code pages that Windows has for text; 0 for a language that has none.
bool IsCodePage(std::uint16_t number)
{
    if (number == 0) return true;
    constexpr std::array<std::uint16_t, 6> farEast{874, 932, 936, 949, 950, 1361};
    return (number >= 1250 && number <= 1258) ||
           std::find(farEast.begin(), farEast.end(), number) != farEast.end();
}

class FileInspector {
public:
    FileInspector(const pages::Pager& pager, CheckReport& report, const Progress& progress)
        : inspection_(pager, report), pager_(pager), progress_(progress)
    {
    }

    void Check()
    {
        CheckHeader();
        inspection_.Claim(PageNumber{0}, PageUse::Header, PageNumber::None);
        const std::vector<bool> isFree = ReadFreePages(inspection_);
        CheckTables();
        CheckCatalog(inspection_, tables_);
        CheckMapPages();
        CheckPages(isFree);
    }

private:
    void CheckHeader()
    {
        const format::HeaderPage& header = inspection_.Header();
        const format::HeaderPageLayout& at = *pager_.Version().header;
        if (header.freePages != kFreePages || header.secondMap != kSecondMap)
            FoundInHeader(format::kFreePagesAt, "the maps of the file are elsewhere");
        for (std::uint32_t i = 0; i < header.systemTables.size(); ++i) {
            if (header.systemTables[i] == PageNumber{2 + i}) continue;
            FoundInHeader(format::kSystemTablesAt + std::size_t{4} * i,
                          "a system table is elsewhere");
        }
        const std::uint16_t codePage =
            format::HeaderCodePageOf(pager_.Read(PageNumber::None).Bytes(), pager_.Version());
        if (!IsCodePage(codePage))
            FoundInHeader(at.codePage, std::to_string(codePage) + " is no code page");
        if (header.sortOrder.language == 0)
            FoundInHeader(at.language, "the sort order has no language");
        CheckCommitWords();
    }

    void CheckCommitWords()
    {
        const pages::Page page = pager_.Read(PageNumber::None);
        for (std::size_t user = 0; user < format::kCommitWords; ++user) {
            const std::uint16_t word = format::CommitWordOf(page.Bytes(), pager_.Version(), user);
            if (word >= format::kFirstCommitWord) continue;
            inspection_.Found(DefectKind::CommitPending, PageNumber::None,
                              pager_.Version().header->commitWords + 2 * user,
                              "user " + std::to_string(user) + " was stopped while writing (" +
                                  std::to_string(word) + ")");
        }
    }

    void FoundInHeader(std::size_t offset, const std::string& what)
    {
        inspection_.Found(DefectKind::HeaderField, PageNumber::None, offset, what);
    }

    void CheckTables()
    {
        auto& objects = tables_[kObjects] = CheckTable(inspection_, kObjects);
        if (!objects) return;
        const auto listed = ListedTables(inspection_, *objects);
        std::uint32_t done = 0;
        for (const PageNumber table : listed) {
            if (progress_) progress_(done++, static_cast<std::uint32_t>(listed.size()));
            // A page that serves something else is no first page of a definition.
            if (!tables_.contains(table)) tables_[table] = CheckTable(inspection_, table);
        }
        if (!std::binary_search(listed.begin(), listed.end(), kObjects))
            inspection_.Found(DefectKind::CatalogObject, kObjects, 0, "does not list itself");
    }

    void CheckMapPages()
    {
        for (std::uint32_t number = 1; number < pager_.PageCount(); ++number) {
            const PageNumber page{number};
            if (inspection_.UseOf(page) != PageUse::UsageMaps) continue;
            CheckDataPage(inspection_, page, pager_.Read(page).Bytes(), number == 1 ? 1 : 0);
        }
    }

    // Every page is either free or in use by one.
    void CheckPages(const std::vector<bool>& isFree)
    {
        for (std::uint32_t number = 0; number < pager_.PageCount(); ++number) {
            const PageNumber page{number};
            const bool used = inspection_.UseOf(page) != PageUse::Nothing;
            if (used && isFree[number])
                inspection_.Found(DefectKind::PageFreeButOwned, page, 0,
                                  "is in use and in the map of free pages");
            if (!used && !isFree[number]) FoundLost(page);
        }
    }

    void FoundLost(PageNumber page)
    {
        const std::uint16_t type = format::ReadU16(pager_.Read(page).Bytes(), 0);
        if (type == format::kDefinitionPage)
            return inspection_.Found(DefectKind::DefinitionUnlisted, page, 0,
                                     "is a table definition that no object names");
        inspection_.Found(DefectKind::PageLost, page, 0,
                          "is not free and serves nothing; it begins with " + std::to_string(type));
    }

    Inspection inspection_;
    const pages::Pager& pager_;
    const Progress& progress_;
    Tables tables_;
};

}  // namespace

bool CheckReport::Clean() const
{
    return notListed == 0 && std::none_of(defects.begin(), defects.end(), [](const Defect& defect) {
               return SeverityOf(defect.kind) == Severity::Damage;
           });
}

CheckReport CheckIntegrity(io::FileSystem& files, const std::string& path, const Progress& progress,
                           std::string_view password)
{
    CheckReport report;
    const auto pager = pages::Pager::Open(files, path, io::OpenMode::ReadOnly, password);
    report.pages = pager->PageCount();
    const std::uint64_t size = files.Open(path, io::OpenMode::ReadOnly)->Size();
    if (size % pager->Version().pageSize != 0) {
        report.defects.push_back({DefectKind::FileLength, PageNumber::None, 0,
                                  std::to_string(size) + " bytes are no whole pages"});
    }
    FileInspector(*pager, report, progress).Check();
    return report;
}

}  // namespace jet::check
