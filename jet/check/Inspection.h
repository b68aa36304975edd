// SPDX-License-Identifier: Apache-2.0
// Inspection: what all parts of one check share: the pages, what was found, and who owns what.
#pragma once

#include "jet/check/Defect.h"
#include "jet/check/IntegrityChecker.h"
#include "jet/format/HeaderPage.h"
#include "jet/pages/Pager.h"

#include <optional>
#include <set>
#include <string>
#include <vector>

namespace jet::check {

// What a page was found to be.
enum class PageUse : std::uint8_t {
    Nothing,
    Header,
    UsageMaps,
    Bitmap,
    Definition,
    Rows,
    LongValues,
    Index,
};

class Inspection {
public:
    Inspection(const pages::Pager& pager, CheckReport& report);

    [[nodiscard]] const pages::Pager& Pager() const { return pager_; }
    [[nodiscard]] std::size_t PageSize() const { return pager_.Version().pageSize; }
    [[nodiscard]] const format::HeaderPage& Header() const { return header_; }
    [[nodiscard]] CheckReport& Report() { return report_; }

    void Found(DefectKind kind, PageNumber page, std::size_t offset, std::string text);

    // A page of the file. Nothing (and a finding against `from`) when there is no such page.
    [[nodiscard]] std::optional<pages::Page> Read(PageNumber page, PageNumber from,
                                                  std::size_t offset, const std::string& what);

    // Notes that `page` is used so, for the table at `table`. False (and a finding) when it has
    // another use already. Rule: pages of usage maps may be noted many times.
    bool Claim(PageNumber page, PageUse use, PageNumber table);
    [[nodiscard]] PageUse UseOf(PageNumber page) const { return claims_[Raw(page)].use; }

    // Notes that a usage map lies at `where`; false (and a finding) when another one does.
    bool ClaimMap(RowId where);
    [[nodiscard]] const std::set<RowId>& Maps() const { return maps_; }

private:
    struct Owner {
        PageUse use = PageUse::Nothing;
        PageNumber table = PageNumber::None;
    };

    const pages::Pager& pager_;
    const format::HeaderPage header_;
    CheckReport& report_;
    std::vector<Owner> claims_;
    std::set<RowId> maps_;
};

// "page 7", "row 7:3": how places stand in the texts of defects.
[[nodiscard]] std::string PageText(PageNumber page);
[[nodiscard]] std::string RowText(RowId row);

}  // namespace jet::check
