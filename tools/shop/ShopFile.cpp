// SPDX-License-Identifier: Apache-2.0
#include "tools/shop/ShopFile.h"

#include "base/NumberedError.h"
#include "jet/format/FileVersion.h"

#include <cmath>
#include <optional>
#include <unordered_map>

namespace tools::shop {

namespace {

using jet::format::ColumnType;
using jet::table::Assignment;
using jet::table::NativeTable;

// Rows that go into one write set: enough that a commit costs little, few enough to stay in memory.
constexpr int kRowsTogether = 4000;

double NumberOf(const base::Decimal& decimal)
{
    double number = 0;
    for (std::size_t i = decimal.magnitude.size(); i-- > 0;)
        number = number * 4294967296.0 + decimal.magnitude[i];
    return (decimal.negative ? -number : number) / std::pow(10.0, decimal.scale);
}

// A number as the field's own type.
base::Value Fitted(const base::Value& value, ColumnType type)
{
    if (const base::Decimal* exact = value.As<base::Decimal>();
        exact != nullptr && type == ColumnType::Double)
        return NumberOf(*exact);
    const std::int32_t* number = value.As<std::int32_t>();
    if (number == nullptr) return value;
    switch (type) {
    case ColumnType::Byte:
        return static_cast<std::uint8_t>(*number);
    case ColumnType::Integer:
        return static_cast<std::int16_t>(*number);
    case ColumnType::Single:
        return static_cast<float>(*number);
    case ColumnType::Double:
        return static_cast<double>(*number);
    default:
        return value;
    }
}

}  // namespace

struct ShopFile::Table {
    Table(const std::shared_ptr<jet::pages::Pager>& pager, jet::format::PageNumber page)
        : rows(pager, page)
    {
        const auto& columns = rows.Definition().columns;
        for (std::size_t i = 0; i < columns.size(); ++i) {
            places.emplace(columns[i].name, i);
            if (columns[i].autoNumber) counter = i;
        }
    }

    NativeTable rows;
    std::unordered_map<std::string_view, std::size_t> places;
    std::optional<std::size_t> counter;
    std::int32_t lastCounter = 0;
};

ShopFile::ShopFile(jet::io::FileSystem& files, const std::string& path,
                   const jet::format::FileVersion& format,
                   const jet::format::Protection& protection, base::Date today)
    : today_(today)
{
    jet::catalog::Catalog::CreateDatabase(files, path, format, protection);
    pager_ = jet::pages::Pager::Open(files, path, jet::io::OpenMode::ReadWrite);
    catalog_ = std::make_unique<jet::catalog::Catalog>(pager_);
}

ShopFile::~ShopFile() = default;

void ShopFile::Create(const jet::catalog::NewTable& table)
{
    Finish();
    jet::catalog::NewTable wish = table;
    for (jet::catalog::NewColumn& column : wish.columns)
        if (static_cast<std::uint8_t>(column.type) > pager_->Version().lastColumnType)
            column.type = ColumnType::Double;
    catalog_->Create(wish, today_);
}

ShopFile::Table& ShopFile::Of(std::string_view name)
{
    const auto known = tables_.find(name);
    if (known != tables_.end()) return *known->second;
    const auto entry = catalog_->Find(name);
    if (!entry) throw base::NumberedError(3078, {std::string(name)});
    const jet::format::PageNumber page{static_cast<std::uint32_t>(entry->id)};
    return *tables_.emplace(std::string(name), std::make_unique<Table>(pager_, page)).first->second;
}

jet::table::RowId ShopFile::Add(std::string_view name, const RowValues& row)
{
    Table& table = Of(name);
    std::vector<Assignment> values;
    values.reserve(row.size() + 1);
    if (table.counter) values.push_back({*table.counter, ++table.lastCounter});
    for (const auto& [field, value] : row) {
        const auto place = table.places.find(field);
        if (place == table.places.end()) throw base::NumberedError(3265).At(field);
        const ColumnType type = table.rows.Definition().columns[place->second].type;
        values.push_back({place->second, Fitted(value, type)});
    }
    if (!changes_) changes_ = std::make_unique<jet::pages::WriteSet>(*pager_);
    const jet::table::RowId id = table.rows.Insert(*changes_, values);
    if (++collected_ == kRowsTogether) Finish();
    return id;
}

void ShopFile::Delete(std::string_view name, jet::table::RowId row)
{
    Finish();
    Of(name).rows.Delete(row);
}

std::int32_t ShopFile::LastCounter(std::string_view name)
{
    return Of(name).lastCounter;
}

void ShopFile::Finish()
{
    if (changes_) changes_->Commit();
    changes_.reset();
    collected_ = 0;
}

}  // namespace tools::shop
