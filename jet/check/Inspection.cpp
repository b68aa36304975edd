// SPDX-License-Identifier: Apache-2.0
#include "jet/check/Inspection.h"

namespace jet::check {

namespace {

const char* UseText(PageUse use)
{
    switch (use) {
    case PageUse::Nothing:
        return "nothing";
    case PageUse::Header:
        return "the header";
    case PageUse::UsageMaps:
        return "usage maps";
    case PageUse::Bitmap:
        return "a bitmap page";
    case PageUse::Definition:
        return "a table definition";
    case PageUse::Rows:
        return "rows";
    case PageUse::LongValues:
        return "long values";
    case PageUse::Index:
        return "an index";
    }
    return "";
}

}  // namespace

Inspection::Inspection(const pages::Pager& pager, CheckReport& report)
    : pager_(pager), header_(format::ReadHeaderPage(pager.Read(PageNumber::None).Bytes())),
      report_(report), claims_(pager.PageCount())
{
}

void Inspection::Found(DefectKind kind, PageNumber page, std::size_t offset, std::string text)
{
    if (report_.defects.size() >= kMostDefects) {
        ++report_.notListed;
        return;
    }
    report_.defects.push_back({kind, page, offset, std::move(text)});
}

std::optional<pages::Page> Inspection::Read(PageNumber page, PageNumber from, std::size_t offset,
                                            const std::string& what)
{
    if (page != PageNumber::None && Raw(page) < claims_.size()) return pager_.Read(page);
    Found(DefectKind::PageOutside, from, offset,
          what + " names " + PageText(page) + " of a file of " + std::to_string(claims_.size()));
    return std::nullopt;
}

bool Inspection::Claim(PageNumber page, PageUse use, PageNumber table)
{
    Owner& owner = claims_[Raw(page)];
    if (owner.use == PageUse::Nothing) {
        owner = {use, table};
        return true;
    }
    if (use == PageUse::UsageMaps && owner.use == use) return true;
    Found(DefectKind::PageOwnedTwice, page, 0,
          std::string("holds ") + UseText(owner.use) + " for the table at " +
              PageText(owner.table) + " and " + UseText(use) + " for that at " + PageText(table));
    return false;
}

bool Inspection::ClaimMap(RowId where)
{
    if (maps_.insert(where).second) return true;
    Found(DefectKind::MapShared, where.page, 0, "usage map " + RowText(where) + " serves twice");
    return false;
}

std::string PageText(PageNumber page)
{
    return "page " + std::to_string(Raw(page));
}

std::string RowText(RowId row)
{
    return std::to_string(Raw(row.page)) + ":" + std::to_string(row.slot);
}

}  // namespace jet::check
