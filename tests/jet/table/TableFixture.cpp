// SPDX-License-Identifier: Apache-2.0
#include "tests/jet/table/TableFixture.h"

#include "base/NumberedError.h"
#include "jet/catalog/TableMaker.h"

namespace tests {

TableFixture::TableFixture(const jet::format::FileVersion& version)
    : pager_(jet::pages::Pager::Create(files_, "test.mdb", version))
{
}

std::unique_ptr<NativeTable> TableFixture::Make(const jet::catalog::NewTable& design)
{
    return Make(design, jet::catalog::NewDatabaseText(pager_->Version()));
}

std::unique_ptr<NativeTable> TableFixture::Make(const jet::catalog::NewTable& design,
                                                const jet::catalog::DatabaseText& text)
{
    jet::format::TableDefinition table = jet::catalog::DesignOf(design, text, pager_->Version());
    jet::pages::WriteSet changes(*pager_);
    table.page = changes.Allocate();
    jet::catalog::MapPages maps(changes);
    jet::catalog::MakeMapsAndRoots(changes, maps, table);
    jet::catalog::WriteDefinition(changes, table);
    changes.Commit();
    return std::make_unique<NativeTable>(pager_, table.page);
}

jet::catalog::NewColumn Column(const char* name, ColumnType type, int size)
{
    jet::catalog::NewColumn column;
    column.name = name;
    column.type = type;
    column.size = size;
    return column;
}

std::vector<jet::table::Assignment> Assignments(const RowValues& values)
{
    std::vector<jet::table::Assignment> assignments;
    for (const Value& value : values)
        assignments.push_back({assignments.size(), value});
    return assignments;
}

RowValues ValuesOf(const NativeTable& table, const jet::format::RowView& row)
{
    RowValues values;
    for (std::size_t column = 0; column < table.Definition().columns.size(); ++column)
        values.push_back(table.ValueOf(row, column));
    return values;
}

std::vector<ScannedRow> Scanned(const NativeTable& table)
{
    std::vector<ScannedRow> scanned;
    for (const auto rows = table.Scan(); rows->Next();)
        scanned.push_back({rows->Id(), ValuesOf(table, rows->Row())});
    return scanned;
}

RowValues ScannedColumn(const NativeTable& table, std::size_t column)
{
    RowValues values;
    for (const auto rows = table.Scan(); rows->Next();)
        values.push_back(table.ValueOf(rows->Row(), column));
    return values;
}

}  // namespace tests
