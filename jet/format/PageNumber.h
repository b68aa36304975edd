// SPDX-License-Identifier: Apache-2.0
// PageNumber, RowId: where a page and a row lie in the file.
#pragma once

#include <compare>
#include <cstdint>
#include <functional>

namespace jet::format {

// A page by its place in the file. 0 is the header page and stands for "none" in page links.
enum class PageNumber : std::uint32_t { None = 0 };

[[nodiscard]] constexpr std::uint32_t Raw(PageNumber page)
{
    return static_cast<std::uint32_t>(page);
}

// A row by its original slot: growing never changes it.
struct RowId {
    PageNumber page = PageNumber::None;
    std::uint16_t slot = 0;
    friend constexpr auto operator<=>(const RowId&, const RowId&) = default;
};

}  // namespace jet::format

template <>
struct std::hash<jet::format::RowId> {
    std::size_t operator()(const jet::format::RowId& row) const noexcept
    {
        return std::hash<std::uint64_t>()((std::uint64_t{Raw(row.page)} << 16) | row.slot);
    }
};
