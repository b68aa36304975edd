// SPDX-License-Identifier: Apache-2.0
#include "bench/StationShop.h"

#include "app/Dispatch.h"
#include "app/frmLodrin.h"
#include "base/Convert.h"

#include <stdexcept>

namespace bench {

void StationShop::Start()
{
    world_.emplace(folder_);
    world_->fakes.clock.Set(Today());
    world_->fakes.prompts.TakeAnyBox();
    world_->fakes.files.Write("C:/Lodrin/Lodrin.ini",
                              "[FileLoc]\r\nLodrin=" + folder_.string() + "\r\n");
    world_->fakes.files.Write((folder_ / "Kelvaro.mdb").string(), "");
    lodrin::Dispatch(world_->shop, lodrin::Form_Load);
    lodrin::Dispatch(world_->shop, lodrin::Form_Activate);
    RequireNoReports();
    if (Names().empty() || OpenOrders().empty()) throw std::logic_error("the window stays empty");
}

std::vector<std::string> StationShop::Names() const
{
    const platform::Grid& board = world_->shop.window.grdEmp;
    std::vector<std::string> names;
    for (int row = 1; row <= board.RowCount(); ++row)
        names.push_back(board.Shown(row, lodrin::LDEmp::Name.column));
    return names;
}

std::vector<std::int32_t> StationShop::OpenOrders() const
{
    const platform::ComboBox& list = world_->shop.window.cboRO;
    std::vector<std::int32_t> numbers;
    for (int entry = 0; entry < list.ListCount(); ++entry)
        numbers.push_back(base::ValLong(list.List(entry).substr(0, list.List(entry).find(' '))));
    return numbers;
}

std::size_t StationShop::JobsShown() const
{
    return static_cast<std::size_t>(world_->shop.window.lstHistory.ListCount());
}

void StationShop::ChangeJob(const std::string& name, std::int32_t order)
{
    const std::string number = world_->Board(name, lodrin::LDEmp::EmpID);
    const auto profiles = world_->Rows("SELECT * FROM Profile WHERE ProfileNumber = " + number);
    world_->fakes.prompts.TakeAnyInput(base::TextOf(profiles.front()["PIN"]));
    world_->Picks("BL", "Paint").Starts(order);
    RequireNoReports();
    if (world_->Board(name, lodrin::LDEmp::WONumber) != std::to_string(order))
        throw std::logic_error(name + " did not change to " + std::to_string(order));
}

void StationShop::RequireNoReports() const
{
    const std::vector<std::string> reports = world_->Reports();
    if (!reports.empty()) throw std::logic_error("the program reports " + reports.front());
}

}  // namespace bench
