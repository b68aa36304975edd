// SPDX-License-Identifier: Apache-2.0
#include "tests/support/ShopTables.h"

#include "base/Calendar.h"
#include "base/Text.h"
#include "data/Schema.h"

#include <algorithm>
#include <stdexcept>

namespace tests {

namespace {

using dao::FieldDef;
using dao::FieldType;
using dao::TableDef;

FieldDef Number(std::string_view name, FieldType type)
{
    FieldDef field = TableDef::CreateField(name, type);
    field.defaultValue = "0";
    return field;
}

FieldDef Plain(std::string_view name, FieldType type)
{
    return TableDef::CreateField(name, type);
}

FieldDef Counter(std::string_view name)
{
    FieldDef field = TableDef::CreateField(name, FieldType::Long);
    field.attributes = dao::kAutoIncrField;
    return field;
}

FieldDef Text(std::string_view name, int size)
{
    FieldDef field = TableDef::CreateField(name, FieldType::Text, size);
    field.allowZeroLength = true;
    return field;
}

// Of the program's own tables: unset text reads as empty text.
FieldDef OwnText(std::string_view name, int size)
{
    FieldDef field = Text(name, size);
    field.defaultValue = "\"\"";
    return field;
}

TableDef Table(const std::string& name, std::vector<FieldDef> fields,
               const std::vector<std::string>& indexed = {})
{
    TableDef table(name);
    for (FieldDef& field : fields)
        table.Append(std::move(field));
    for (const std::string& field : indexed) {
        const bool first = field == indexed.front();
        table.Append(dao::IndexDef{.name = first ? "PrimaryKey" : field,
                                   .fields = {{field, true}},
                                   .primary = first,
                                   .unique = first});
    }
    return table;
}

TableDef WorkOrders()
{
    std::vector<FieldDef> fields{Plain("EntryNumber", FieldType::Long),
                                 Plain("WorkOrderNumber", FieldType::Long),
                                 Text("WOType", 20),
                                 Plain("Archived", FieldType::Boolean),
                                 Text("ProfileDescriptionL1", 100),
                                 Text("ServiceItemDescriptionL1", 150),
                                 Plain("BLTech", FieldType::Long),
                                 Plain("RLTech", FieldType::Long),
                                 Plain("DeptSequence", FieldType::Integer),
                                 Text("Progress", 50),
                                 Plain("Arrived", FieldType::Date),
                                 Plain("Started", FieldType::Date)};
    for (const std::string category :
         {"Body", "Refinish", "Frame", "Mech", "Struct", "Glass", "Other"}) {
        fields.push_back(Plain(category + "Worked", FieldType::Double));
        fields.push_back(Plain(category + "Cost", FieldType::Currency));
    }
    fields.push_back(Plain("AuditNotes", FieldType::Memo));
    return Table("WorkOrder", std::move(fields), {"EntryNumber", "WorkOrderNumber"});
}

TableDef LaborLines()
{
    return Table("Labor",
                 {Counter("LaborID"), Plain("EmployeeID", FieldType::Long),
                  Plain("WONumber", FieldType::Long), Plain("EmpRate", FieldType::Currency),
                  Text("LastName", 40), Text("FirstName", 30), Text("GLType", 10),
                  Plain("FlagDate", FieldType::Date), Plain("TimeIN", FieldType::Date),
                  Plain("TimeOut", FieldType::Date), Plain("HrsFlagged", FieldType::Double),
                  Plain("WorkOrder", FieldType::Long), Text("MiscDesc", 100),
                  Plain("Paid", FieldType::Boolean)},
                 {"LaborID", "EmployeeID", "WONumber"});
}

// One of the program's own tables, as the program makes it.
TableDef OwnTable(const lodrin::TableSchema& schema)
{
    TableDef table{std::string(schema.table)};
    for (const lodrin::FieldSchema& field : schema.fields) {
        if (table.Fields().empty())
            table.Append(Counter(field.name));
        else if (field.type == FieldType::Text)
            table.Append(OwnText(field.name, field.size));
        else if (field.type == FieldType::Date)
            table.Append(Plain(field.name, field.type));
        else
            table.Append(Number(field.name, field.type));
    }
    return table;
}

std::vector<TableDef> OwnTables()
{
    std::vector<TableDef> tables;
    for (const lodrin::TableSchema& schema : lodrin::OwnTables())
        tables.push_back(OwnTable(schema));
    return tables;
}

bool HasField(const std::string& table, std::string_view field)
{
    for (const auto* tables : {&ManagementTables(), &ProgramTables()}) {
        for (const TableDef& each : *tables) {
            if (each.Name() != table) continue;
            return std::any_of(
                each.Fields().begin(), each.Fields().end(),
                [&](const FieldDef& own) { return base::SameName(own.name, field); });
        }
    }
    return false;
}

}  // namespace

const std::vector<TableDef>& ManagementTables()
{
    static const std::vector<TableDef> tables{
        Table("Profile",
              {Plain("ProfileNumber", FieldType::Long), Text("Type", 20), Text("LastName", 40),
               Text("FirstName", 30), Text("PIN", 10), Plain("EmpRate", FieldType::Currency)},
              {"ProfileNumber", "LastName"}),
        WorkOrders(),
        LaborLines(),
        Table("GenLedger", {Text("GLCode", 10), Text("GLDescription", 75),
                            Plain("GLLaborFlag", FieldType::Boolean)}),
        Table("Departments",
              {Counter("DeptID"), Text("Description", 50), Plain("Sequence", FieldType::Integer)},
              {"DeptID"}),
        Table("AutoLook", {Counter("LookID"), Text("Type", 30), Text("Description", 100)},
              {"LookID", "Type"}),
    };
    return tables;
}

const std::vector<TableDef>& ProgramTables()
{
    static const std::vector<TableDef> tables = OwnTables();
    return tables;
}

ShopEntry ShopEntry::With(std::string_view field, const base::Value& value) const
{
    ShopEntry changed = *this;
    for (NewRow& row : changed.rows_) {
        if (!HasField(row.table, field)) continue;
        const auto own = std::find_if(row.values.begin(), row.values.end(), [&](const auto& each) {
            return base::SameName(each.first, field);
        });
        if (own != row.values.end())
            own->second = value;
        else
            row.values.emplace_back(field, value);
        return changed;
    }
    throw std::logic_error("no table of this entry has the field " + std::string(field));
}

ShopEntry ShopEntry::Without(std::string_view table) const
{
    std::vector<NewRow> kept;
    for (const NewRow& row : rows_) {
        if (row.table != table) kept.push_back(row);
    }
    return ShopEntry(std::move(kept));
}

ShopEntry Employee(const std::string& name, std::int32_t id)
{
    const std::size_t comma = name.find(", ");
    const std::string last = name.substr(0, comma);
    const std::string first = comma == std::string::npos ? "" : name.substr(comma + 2);
    return ShopEntry({{"Profile",
                       {{"ProfileNumber", id},
                        {"Type", "Employee"},
                        {"LastName", last},
                        {"FirstName", first},
                        {"EmpRate", base::Currency{200000}}}},
                      {"LDEmp", {{"EmpID", id}, {"Name", name}}}});
}

std::int32_t EntryOf(std::int32_t number)
{
    constexpr std::int32_t kEntriesAhead = 5000;
    return number + kEntriesAhead;
}

ShopEntry RepairOrder(std::int32_t number)
{
    NewRow row{"WorkOrder",
               {{"EntryNumber", EntryOf(number)},
                {"WorkOrderNumber", number},
                {"WOType", "WorkOrder"},
                {"Archived", false},
                {"ProfileDescriptionL1", "Customer " + std::to_string(number)},
                {"ServiceItemDescriptionL1", "1999 Ford " + std::to_string(number)}}};
    for (const std::string category :
         {"Body", "Refinish", "Frame", "Mech", "Struct", "Glass", "Other"}) {
        row.values.emplace_back(category + "Worked", 0.0);
        row.values.emplace_back(category + "Cost", base::Currency{});
    }
    return ShopEntry({std::move(row)});
}

ShopEntry ClosedJob(std::int32_t employee, std::int32_t number, base::Date day)
{
    return ShopEntry({{"LDHistory",
                       {{"EmpID", employee},
                        {"WorkDate", base::DatePartOf(day)},
                        {"JobStart", base::Date{8.0 / 24}},
                        {"JobEnd", base::Date{9.0 / 24}},
                        {"WONumb", number},
                        {"WOID", EntryOf(number)},
                        {"GLType", "BL"},
                        {"Hrs", 1.0},
                        {"VehDesc", "1999 Ford " + std::to_string(number)},
                        {"Customer", "Customer " + std::to_string(number)}}}});
}

ShopEntry LaborType(const std::string& code, const std::string& description)
{
    return ShopEntry({{"Status",
                       {{"AcctType", "LDStatus"},
                        {"GLType", code},
                        {"GLDesc", description},
                        {"Description", description}}}});
}

ShopEntry Department(const std::string& description, std::int16_t sequence)
{
    return ShopEntry({{"Departments", {{"Description", description}, {"Sequence", sequence}}}});
}

ShopEntry ProgressText(const std::string& description)
{
    return ShopEntry({{"AutoLook", {{"Type", "Progress"}, {"Description", description}}}});
}

ShopEntry LedgerAccount(const std::string& code, const std::string& description, bool labor)
{
    return ShopEntry(
        {{"GenLedger",
          {{"GLCode", code}, {"GLDescription", description}, {"GLLaborFlag", labor}}}});
}

}  // namespace tests
