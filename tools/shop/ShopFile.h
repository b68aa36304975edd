// SPDX-License-Identifier: Apache-2.0
// ShopFile: the database file a sample shop is written into, many rows at a time.
#pragma once

#include "jet/catalog/Catalog.h"
#include "jet/io/File.h"
#include "jet/table/NativeTable.h"

#include <initializer_list>
#include <map>
#include <memory>
#include <string>
#include <string_view>
#include <utility>
#include <vector>

namespace tools::shop {

using NamedValue = std::pair<std::string_view, base::Value>;
using RowValues = std::vector<NamedValue>;

// Money from hundredths.
[[nodiscard]] inline base::Currency Cents(std::int64_t cents)
{
    return {cents * 100};
}

class ShopFile {
public:
    // Makes a new, empty database. Errors: those of Catalog::CreateDatabase.
    ShopFile(jet::io::FileSystem& files, const std::string& path,
             const jet::format::FileVersion& format, const jet::format::Protection& protection,
             base::Date today);

    ~ShopFile();
    ShopFile(const ShopFile&) = delete;
    ShopFile& operator=(const ShopFile&) = delete;

    // Rule: a type that the format lacks becomes Double.
    void Create(const jet::catalog::NewTable& table);

    // Adds a row and returns its place; fields not named are null, counters count on.
    // Rule:   a number fits itself to the field's type.
    // Errors: 3265 for a name that is no field, and those of RowSource::Insert.
    jet::table::RowId Add(std::string_view table, const RowValues& row);
    void Delete(std::string_view table, jet::table::RowId row);
    // The number the last row added to the table has from its counter.
    [[nodiscard]] std::int32_t LastCounter(std::string_view table);

    // Writes what is still collected.
    void Finish();

private:
    struct Table;
    [[nodiscard]] Table& Of(std::string_view name);

    std::shared_ptr<jet::pages::Pager> pager_;
    std::unique_ptr<jet::catalog::Catalog> catalog_;
    base::Date today_;
    std::map<std::string, std::unique_ptr<Table>, std::less<>> tables_;
    std::unique_ptr<jet::pages::WriteSet> changes_;
    int collected_ = 0;  // rows in changes_
};

}  // namespace tools::shop
