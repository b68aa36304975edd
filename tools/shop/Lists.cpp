// SPDX-License-Identifier: Apache-2.0
#include "tools/shop/Lists.h"

#include "tools/shop/Words.h"

namespace tools::shop {

namespace {

struct Account {
    std::string_view code, description;
};
constexpr std::array kAccounts{Account{"1000", "Cash in bank - operating"},
                               Account{"1100", "Accounts receivable"},
                               Account{"1200", "Parts inventory"},
                               Account{"1500", "Shop equipment"},
                               Account{"2000", "Accounts payable"},
                               Account{"2200", "Sales tax payable"},
                               Account{"4000", "Labor sales - body"},
                               Account{"4010", "Labor sales - refinish"},
                               Account{"4100", "Parts sales"},
                               Account{"4200", "Paint material sales"},
                               Account{"4300", "Sublet sales"},
                               Account{"5000", "Cost of labor - body"},
                               Account{"5010", "Cost of labor - refinish"},
                               Account{"5100", "Cost of parts"},
                               Account{"6000", "Shop supplies"},
                               Account{"6100", "Rent"},
                               Account{"6200", "Utilities"},
                               Account{"6300", "Advertising"}};

void FillGenLedger(ShopFile& file, Dice& dice)
{
    for (const LaborType& type : kLaborTypes)
        file.Add("GenLedger", {{"GLCode", type.code},
                               {"GLDescription", type.name},
                               {"GLType", "Labor"},
                               {"GLLaborFlag", true},
                               {"Balance", Cents(0)}});
    for (const Account& account : kAccounts)
        file.Add("GenLedger", {{"GLCode", account.code},
                               {"GLDescription", account.description},
                               {"GLType", "Account"},
                               {"GLLaborFlag", false},
                               {"Balance", Cents(dice.Between(-900000, 4900000))}});
}

template <std::size_t N>
void FillLook(ShopFile& file, std::string_view type, const std::array<std::string_view, N>& words)
{
    int order = 0;
    for (const std::string_view word : words)
        file.Add("AutoLook", {{"Type", type}, {"Description", word}, {"SortOrder", ++order}});
}

}  // namespace

void FillManagementLists(ShopFile& file, Dice dice)
{
    FillGenLedger(file, dice);
    for (const Department& department : kDepartments)
        file.Add("Departments", {{"Description", department.name},
                                 {"Sequence", department.sequence},
                                 {"Active", true},
                                 {"TargetHours", dice.Between(2, 30)}});
    FillLook(file, "Progress", kProgress);
    FillLook(file, "Color", kColors);
    FillLook(file, "Insurance", kInsurers);
    FillLook(file, "Source", kSources);
}

void FillStatus(ShopFile& file)
{
    for (const LaborType& type : kLaborTypes) {
        const std::string_view shorter = type.name.substr(0, type.name.find(' '));
        file.Add("Status", {{"AcctType", "LDStatus"},
                            {"GLType", type.code},
                            {"GLDesc", type.name},
                            {"Description", shorter}});
    }
    for (const Account& status :
         {Account{"OR", "Ordered"}, Account{"RC", "Received"}, Account{"BO", "Back-ordered"}})
        file.Add("Status", {{"AcctType", "PartStatus"},
                            {"GLType", status.code},
                            {"GLDesc", status.description},
                            {"Description", status.description}});
}

}  // namespace tools::shop
