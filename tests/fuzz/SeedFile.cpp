// SPDX-License-Identifier: Apache-2.0
#include "tests/fuzz/SeedFile.h"

#include "jet/catalog/Catalog.h"
#include "jet/pages/UsageMap.h"
#include "jet/table/DefinitionPages.h"
#include "jet/table/NativeTable.h"

#include <algorithm>
#include <stdexcept>
#include <utility>

namespace fuzz {

using jet::catalog::Catalog;
using jet::format::ColumnType;
using jet::format::FileVersion;
using jet::pages::Pager;
using jet::table::Assignment;
using jet::table::NativeTable;

namespace {

constexpr std::int32_t kRows = 120;
constexpr base::Date kMade{38061.375};

jet::catalog::NewColumn Column(const char* name, ColumnType type, int size = 0)
{
    jet::catalog::NewColumn column;
    column.name = name;
    column.type = type;
    column.size = size;
    return column;
}

jet::catalog::NewTable Wish(const FileVersion& version)
{
    auto id = Column("Id", ColumnType::Long);
    id.autoNumber = true;
    auto name = Column("Name", ColumnType::Text, 80);
    name.properties.required = true;
    auto hours = Column("Hours", ColumnType::Double);
    hours.properties.defaultValue = "0";
    hours.properties.rule = {">=0", "No hours below nothing."};
    jet::catalog::NewTable table{
        .name = kTable,
        .columns = {id, name, hours, Column("Note", ColumnType::Memo),
                    Column("Done", ColumnType::Boolean), Column("Tiny", ColumnType::Byte),
                    Column("Small", ColumnType::Integer), Column("Money", ColumnType::Currency),
                    Column("Share", ColumnType::Single), Column("Day", ColumnType::Date),
                    Column("Bits", ColumnType::Binary, 20), Column("Picture", ColumnType::Ole),
                    Column("Mark", ColumnType::Guid)},
        .indexes = {{.name = "PrimaryKey", .columns = {{.column = "Id"}}, .primary = true},
                    {.name = "ByName", .columns = {{.column = "Name"}}}}};
    if (version.lastColumnType >= static_cast<std::uint8_t>(ColumnType::Numeric))
        table.columns.push_back(Column("Exact", ColumnType::Numeric));
    return table;
}

base::Value Note(std::int32_t number)
{
    if (number % 4 == 0) return "short";
    if (number % 4 == 1) return base::Null{};
    return std::string(number == 2 ? 9000 : 100, 'n');
}

base::Value Content(ColumnType type, std::int32_t number)
{
    const auto small = static_cast<std::int16_t>(number);
    switch (type) {
    case ColumnType::Boolean:
        return number % 2 == 0;
    case ColumnType::Byte:
        return static_cast<std::uint8_t>(number);
    case ColumnType::Integer:
        return small;
    case ColumnType::Long:
        return number + 1;
    case ColumnType::Currency:
        return base::Currency{number * 12345};
    case ColumnType::Single:
        return static_cast<float>(number) / 4;
    case ColumnType::Double:
        return number / 8.0;
    case ColumnType::Date:
        return base::Date{38000.0 + number / 3.0};
    case ColumnType::Text:
        return "A customer with a rather long name " + std::to_string(1000 + number * 7 % 120);
    case ColumnType::Memo:
        return Note(number);
    case ColumnType::Binary:
    case ColumnType::Ole:
        return base::Bytes(static_cast<std::size_t>(number % 20), std::byte{0x5A});
    case ColumnType::Guid:
        return base::Guid{{1, 2, 3, static_cast<std::uint8_t>(number)}};
    case ColumnType::Numeric:
        return base::Decimal{number % 2 == 1, {static_cast<std::uint32_t>(number), 0, 0, 0}, 0};
    }
    return base::Null{};
}

std::vector<Assignment> RowOf(const jet::format::TableDefinition& table, std::int32_t number)
{
    std::vector<Assignment> row;
    for (std::size_t column = 0; column < table.columns.size(); ++column)
        row.push_back({column, Content(table.columns[column].type, number)});
    return row;
}

void FillRows(Pager& pager, NativeTable& table)
{
    jet::pages::WriteSet changes(pager);
    std::vector<jet::format::RowId> rows;
    for (std::int32_t i = 0; i < kRows; ++i)
        rows.push_back(table.Insert(changes, RowOf(table.Definition(), i)));
    const std::size_t name = NameColumn(table.Definition());
    table.Update(changes, rows[3], std::vector<Assignment>{{name, std::string(80, 'Z')}});
    table.Delete(changes, rows[5]);
    changes.Commit();
}

SeedFile Make(const FileVersion& version)
{
    SeedFile seed;
    seed.version = &version;
    jet::io::MemoryFileSystem files;
    Catalog::CreateDatabase(files, kPath, version);
    const auto pager = Pager::Open(files, kPath, jet::io::OpenMode::ReadWrite);
    Catalog(pager).Create(Wish(version), kMade);
    auto open = Catalog(pager).Open(kTable);
    FillRows(*pager, *open.rows);
    seed.table = open.rows->Definition();
    seed.definition = jet::table::JoinDefinition(*pager, seed.table.page).bytes;
    seed.byName = jet::pages::UsageMap(*pager, NameIndex(seed.table).usageMap).Pages();
    const auto rows = open.rows->Scan();
    while (rows->Next())
        seed.rows.emplace_back(rows->Row().Bytes().begin(), rows->Row().Bytes().end());
    seed.bytes = files.Content(kPath);
    return seed;
}

}  // namespace

const SeedFile& SeedFile::Of(const FileVersion& version)
{
    static const SeedFile jet3 = Make(jet::format::kJet3);
    static const SeedFile jet4 = Make(jet::format::kJet4);
    return version.code == jet3.version->code ? jet3 : jet4;
}

std::size_t NameColumn(const jet::format::TableDefinition& table)
{
    return table.FindColumn("Name").value();
}

const jet::format::IndexDefinition& NameIndex(const jet::format::TableDefinition& table)
{
    for (const jet::format::NamedIndex& index : table.namedIndexes)
        if (index.name == "ByName") return table.indexes[index.tree];
    throw std::logic_error("the seed file has no index ByName");
}

}  // namespace fuzz
