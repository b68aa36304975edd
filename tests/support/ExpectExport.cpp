// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ExpectExport.h"

#include <algorithm>
#include <cmath>
#include <cstdlib>
#include <gtest/gtest.h>
#include <stdexcept>

namespace tests {

namespace {

bool Same(const std::string& left, const std::string& right)
{
    if (left == right) return true;
    char* leftEnd = nullptr;
    char* rightEnd = nullptr;
    const double leftNumber = std::strtod(left.c_str(), &leftEnd);
    const double rightNumber = std::strtod(right.c_str(), &rightEnd);
    return !left.empty() && !right.empty() && *leftEnd == '\0' && *rightEnd == '\0' &&
           std::abs(leftNumber - rightNumber) < 1e-9;
}

}  // namespace

void ExpectFields(const ExportedRow& row, const ExportedRow& expected)
{
    for (const auto& field : expected) {
        const auto found = row.find(field.first);
        ASSERT_NE(found, row.end()) << field.first;
        EXPECT_TRUE(Same(found->second, field.second))
            << field.first << ": " << found->second << " instead of " << field.second;
    }
}

void ExpectChange(const ExportedRow& former, const ExportedRow& row, const ExportedRow& expected)
{
    const ExportedRow changed = ChangedFields(former, row);
    ExpectFields(changed, expected);
    for (const auto& field : changed)
        EXPECT_EQ(expected.count(field.first), 1U) << field.first << " changed unexpectedly";
}

const ExportedRow& RowWith(const std::vector<ExportedRow>& rows, const std::string& field,
                           const std::string& value)
{
    for (const ExportedRow& row : rows) {
        if (row.at(field) == value) return row;
    }
    throw std::runtime_error("no row with " + field + " = " + value);
}

void ExpectSameTables(const std::filesystem::path& before, const std::filesystem::path& after,
                      const std::vector<std::string>& except)
{
    for (const std::string& table : MdbTables(before)) {
        if (std::find(except.begin(), except.end(), table) != except.end()) continue;
        EXPECT_EQ(MdbExport(before, table), MdbExport(after, table)) << table;
    }
}

}  // namespace tests
