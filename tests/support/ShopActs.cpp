// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ShopActs.h"

#include "app/Dispatch.h"
#include "data/DBOpen.h"
#include "data/SyncEmployees.h"
#include "data/Tables.h"
#include "setup/mnuSetup.h"
#include "tests/support/ShopWorld.h"

#include <ostream>
#include <stdexcept>

namespace tests {

namespace {

using lodrin::WorkOrder;

// Bob has worked on 1001 since eight, Ann on 1003; she has a closed job, with its labor line. Dan
// has not begun. One man is new, one has another name, one has left; two accounts have no wording.
void MakeShop(ShopWorld& world)
{
    world.MakeDatabase();
    world.Given({Employee("Jones, Bob", 8), Employee("Smith, Ann", 7), Employee("Young, Dan", 10),
                 Employee("Miller, Cy", 9).With("Name", "MILLER, Cy"),
                 Employee("Adams, Zoe", 11).Without("LDEmp"),
                 Employee("Gone, Guy", 12).Without("Profile"), RepairOrder(1001),
                 RepairOrder(1002).With(WorkOrder::DeptSequence, std::int16_t{30}),
                 RepairOrder(1003), LedgerAccount("FL", "Frame Labor", true),
                 LedgerAccount("XL", "Extra Labor", true)});
    world.At("07:00 AM").Select("Smith, Ann").Picks("ML", "Detail").Starts(1001);
    world.At("08:00 AM").Picks("BL", "Paint").Starts(1003);
    world.Select("Jones, Bob").Picks("BL", "Body").Starts(1001);
}

void MakeManagementShop(ShopWorld& world)
{
    world.MakeManagementDatabase();
    world.Given({Employee("Jones, Bob", 8).Without("LDEmp"),
                 Employee("Smith, Ann", 7).Without("LDEmp"), RepairOrder(1001)});
}

ShopWorld& BobAtNine(ShopWorld& world)
{
    return world.At("09:00 AM").Select("Jones, Bob");
}

// The start of the program, as far as the database goes.
void Start(ShopWorld& world)
{
    world.fakes.files.Write(world.DatabasePath(), "");
    lodrin::DBOpen(world.shop);
}

void WordAccounts(ShopWorld& world)
{
    world.Open();
    world.dialogs.whileStatusIsOpen = [](lodrin::Shop& shop) {
        lodrin::DispatchInDialog(shop, [](lodrin::Shop& on) {
            if (on.forms.status->grdStatus.RowCount() > 0)
                (void)on.forms.status->StoreDescription(on, 1, "Metal");
        });
    };
    lodrin::Dispatch(world.shop, [](lodrin::Shop& on) { lodrin::mnuSetupItems_Click(on, 0); });
}

}  // namespace

const std::vector<ShopAct>& ShopActs()
{
    static const std::vector<ShopAct> acts{
        {"FirstJob", MakeShop,
         [](ShopWorld& world) {
             world.At("09:00 AM").Select("Young, Dan").Picks("RL", "Paint").Starts(1002);
         }},
        {"JobChange", MakeShop,
         [](ShopWorld& world) { BobAtNine(world).Picks("RL", "Paint").Starts(1002); }},
        {"Break", MakeShop,
         [](ShopWorld& world) { BobAtNine(world).ConfirmsProgress().GoesOnBreak(); }},
        {"EndOfDay", MakeShop,
         [](ShopWorld& world) { BobAtNine(world).IsSure().ConfirmsProgress().EndsDay(); }},
        {"ForgottenDays", MakeShop,
         [](ShopWorld& world) {
             world.On("03/16/2004");
             Start(world);
         }},
        {"SyncEmployees", MakeShop,
         [](ShopWorld& world) {
             world.Open();
             lodrin::mnuSyncEmp_Click(world.shop);
         }},
        {"StatusDescriptions", MakeShop, WordAccounts},
        {"BuildTables", MakeManagementShop, Start}};
    return acts;
}

const ShopAct& ShopActOf(std::string_view name)
{
    for (const ShopAct& act : ShopActs())
        if (name == act.name) return act;
    throw std::logic_error("no act: " + std::string(name));
}

void StartNextMorning(ShopWorld& world)
{
    world.fakes.prompts.TakeAnyBox();
    world.On("03/17/2004");
    Start(world);
}

void PrintTo(const ShopAct& act, std::ostream* out)
{
    *out << act.name;
}

}  // namespace tests
