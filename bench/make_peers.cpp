// SPDX-License-Identifier: Apache-2.0
// make_peers: puts the rows of a shop into SQLite, once without an index and once with those that a
// person would add.
//
//     make_peers SIZE CACHE      beside CACHE/SIZE/Kelvaro.mdb
#include "bench/Sqlite.h"

#include <filesystem>

namespace {

using dao::FieldType;

std::string KindOf(FieldType type)
{
    switch (type) {
    case FieldType::Text:
    case FieldType::Memo:
        return "TEXT";
    case FieldType::Boolean:
    case FieldType::Byte:
    case FieldType::Integer:
    case FieldType::Long:
        return "INTEGER";
    default:
        return "REAL";
    }
}

// The table with its first field, the counter, as its key.
std::string Creation(const std::string& table, dao::Recordset& rows)
{
    std::string fields;
    for (int i = 0; i < rows.FieldCount(); ++i) {
        fields += fields.empty() ? "" : ", ";
        fields += "\"" + rows.FieldName(i) + "\" " + KindOf(rows.TypeOf(i));
        if (i == 0) fields += " PRIMARY KEY";
    }
    return "CREATE TABLE " + table + " (" + fields + ")";
}

void Put(sqlite3_stmt* row, int at, const base::Value& value)
{
    if (const auto* const text = value.As<std::string>())
        sqlite3_bind_text(row, at, text->data(), static_cast<int>(text->size()), SQLITE_TRANSIENT);
    else if (const auto* const whole = value.As<std::int32_t>())
        sqlite3_bind_int(row, at, *whole);
    else if (const auto* const number = value.As<double>())
        sqlite3_bind_double(row, at, *number);
    else if (const auto* const date = value.As<base::Date>())
        sqlite3_bind_double(row, at, date->days);
    else if (const auto* const truth = value.As<bool>())
        sqlite3_bind_int(row, at, *truth ? 1 : 0);
    else if (const auto* const money = value.As<base::Currency>())
        sqlite3_bind_double(row, at, static_cast<double>(money->scaled) / 10000);
    else if (const auto* const small = value.As<std::int16_t>())
        sqlite3_bind_int(row, at, *small);
    else if (const auto* const byte = value.As<std::uint8_t>())
        sqlite3_bind_int(row, at, *byte);
    else
        sqlite3_bind_null(row, at);
}

void Copy(dao::Database& from, bench::Sqlite& to, const std::string& table)
{
    dao::Recordset rows = from.OpenRecordset("SELECT * FROM " + table);
    to.Run(Creation(table, rows));
    std::string marks = "?";
    for (int i = 1; i < rows.FieldCount(); ++i)
        marks += ",?";
    bench::SqliteStatement insert = to.Prepare("INSERT INTO " + table + " VALUES (" + marks + ")");
    for (; !rows.Eof(); rows.MoveNext()) {
        for (int i = 0; i < rows.FieldCount(); ++i)
            Put(insert.Handle(), i + 1, rows[i].Value());
        insert.Step();
        insert.Reset();
    }
}

void Fill(const bench::BenchShop& shop, const std::string& path,
          std::initializer_list<const char*> tables, const char* indexes)
{
    std::filesystem::remove(path);
    bench::OurShop ours(shop.Mdb());
    bench::Sqlite sqlite(path);
    sqlite.Run("PRAGMA synchronous = OFF; PRAGMA journal_mode = OFF; BEGIN");
    for (const char* table : tables)
        Copy(ours.Database(), sqlite, table);
    sqlite.Run(indexes);
    sqlite.Run("COMMIT");
}

int Make(const bench::BenchShop& shop)
{
    Fill(shop, shop.Plain(), {"LDHistory", "WorkOrder"}, "");
    // Those of Labor and WorkOrder are the ones that the shop's own file has.
    Fill(shop, shop.Indexed(), {"LDHistory", "WorkOrder", "Labor"},
         "CREATE INDEX HistoryDay ON LDHistory (EmpID, WorkDate);"
         "CREATE INDEX OrderNumber ON WorkOrder (WorkOrderNumber);"
         "CREATE INDEX OrderProfile ON WorkOrder (ProfileNumber);"
         "CREATE INDEX OrderPromised ON WorkOrder (DatePromised DESC, WorkOrderNumber);"
         "CREATE INDEX OrderType ON WorkOrder (WOType, WorkOrderNumber);"
         "CREATE INDEX LaborEmployee ON Labor (EmployeeID, FlagDate);"
         "CREATE INDEX LaborEntry ON Labor (WONumber);"
         "CREATE INDEX LaborOrder ON Labor (WorkOrder);"
         "CREATE INDEX LaborBatch ON Labor (PayBatch);");
    return 0;
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Make);
}
