// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ExpectExport.h"

#include "base/Convert.h"
#include "base/Format.h"

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

namespace {

// As the independent reader writes the value; numbers but for their digits. It makes no difference
// between an empty text and none.
bool Reads(const std::string& exported, const base::Value& value)
{
    const std::string text = base::TextOf(value);
    if (value.IsNull() || text.empty()) return exported == kExportedNull || exported.empty();
    if (value.IsDate()) return exported == base::Format(value, "yyyy-mm-dd hh:nn:ss");
    if (text == "True" || text == "False") return exported == (text == "True" ? "1" : "0");
    if (value.IsText()) return exported == text;
    return std::abs(std::strtod(exported.c_str(), nullptr) - base::Val(value)) < 1e-6;
}

bool Reads(const ExportedRow& exported, const Record& row)
{
    return std::all_of(row.fields.begin(), row.fields.end(), [&](const auto& field) {
        return Reads(exported.at(field.first), field.second);
    });
}

// Rows that were told and not yet found among ours.
class ToldRows {
public:
    explicit ToldRows(std::vector<ExportedRow> rows)
        : rows_(std::move(rows)), found_(rows_.size(), false)
    {
    }

    // Takes one that reads so; it is looked for from where the last one stood.
    bool Take(const Record& row)
    {
        for (std::size_t i = 0; i < rows_.size(); ++i) {
            const std::size_t at = (next_ + i) % rows_.size();
            if (found_[at] || !Reads(rows_[at], row)) continue;
            found_[at] = true;
            next_ = at + 1;
            return true;
        }
        return false;
    }

private:
    std::vector<ExportedRow> rows_;
    std::vector<bool> found_;
    std::size_t next_ = 0;
};

}  // namespace

void ExpectReadsTheSame(const std::filesystem::path& file, const Contents& contents)
{
    for (const auto& [table, rows] : contents) {
        std::vector<ExportedRow> exported = MdbExport(file, table);
        EXPECT_EQ(exported.size(), rows.size()) << table;
        ToldRows told(std::move(exported));
        for (const Record& row : rows)
            EXPECT_TRUE(told.Take(row)) << table << " " << testing::PrintToString(row);
    }
}

}  // namespace tests
