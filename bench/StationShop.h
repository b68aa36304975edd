// SPDX-License-Identifier: Apache-2.0
// StationShop: the whole program without its windows, over a shop to be measured.
#pragma once

#include "bench/BenchShop.h"
#include "tests/support/ShopWorld.h"

#include <optional>
#include <string>
#include <vector>

namespace bench {

class StationShop {
public:
    // The shop's copy lies in `folder` and may be changed.
    explicit StationShop(const std::filesystem::path& folder) : folder_(folder) {}

    // The program starts anew and its board is filled. Errors: std::logic_error when the program
    // reports a failure or the board stays empty.
    void Start();
    // Closes what is open, so that the next start is a first one.
    void End() { world_.reset(); }

    // Who stands on the board, in its order.
    [[nodiscard]] std::vector<std::string> Names() const;
    void Choose(const std::string& name) { world_->Select(name); }
    // He changes to this repair order. Requires: chosen.
    void ChangeJob(const std::string& name, std::int32_t order);
    // Numbers of the list of repair orders.
    [[nodiscard]] std::vector<std::int32_t> OpenOrders() const;
    [[nodiscard]] std::size_t JobsShown() const;

private:
    void RequireNoReports() const;

    std::filesystem::path folder_;
    std::optional<tests::ShopWorld> world_;
};

}  // namespace bench
