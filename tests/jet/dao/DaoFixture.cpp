// SPDX-License-Identifier: Apache-2.0
#include "tests/jet/dao/DaoFixture.h"

#include "base/Convert.h"
#include "tests/support/IntegrityExpectations.h"

namespace dao {

std::string FailureOf(const std::function<void()>& action)
{
    try {
        action();
    } catch (const base::NumberedError& error) {
        return std::to_string(error.Number()) + " " + error.what();
    }
    return {};
}

std::vector<std::string> Column(Recordset& records, std::string_view field)
{
    std::vector<std::string> values;
    if (records.RecordCount() == 0) return values;
    for (records.MoveFirst(); !records.Eof(); records.MoveNext()) {
        const base::Value value = records[field];
        values.push_back(value.IsNull() ? "<null>" : base::TextOf(value));
    }
    return values;
}

EngineSettings DaoTest::SettingsOf(const std::string& machine)
{
    return {.now = [this] { return now; },
            .machine = machine,
            .pause =
                [this](std::chrono::milliseconds) {
                    ++waits;
                    if (whileWaiting) whileWaiting();
                }};
}

IndexDef Primary(const char* field)
{
    IndexDef key;
    key.name = "PrimaryKey";
    key.fields.push_back({field, true});
    key.primary = true;
    return key;
}

DaoTest::DaoTest(FileKind kind) : engine(SettingsOf("FRONT-DESK"), files)
{
    tests::CreateDatabase(engine, kFile, kind);
    database = engine.DefaultWorkspace().OpenDatabase(kFile);
}

void DaoTest::TearDown()
{
    EXPECT_SPOTLESS(files, kFile);
}

void DaoTest::MakeEmployees()
{
    TableDef table("LDEmp");
    FieldDef counter = TableDef::CreateField("EmpEntry", FieldType::Long);
    counter.attributes = kAutoIncrField;
    table.Append(counter);
    table.Append(TableDef::CreateField("EmpID", FieldType::Long));
    FieldDef name = TableDef::CreateField("Name", FieldType::Text, 100);
    name.allowZeroLength = true;
    name.defaultValue = "\"\"";
    table.Append(name);
    table.Append(TableDef::CreateField("StartDay", FieldType::Date));
    table.Append(TableDef::CreateField("WO#", FieldType::Long));
    FieldDef hours = TableDef::CreateField("Hrs", FieldType::Double);
    hours.defaultValue = "0";
    table.Append(hours);
    table.Append(TableDef::CreateField("Active", FieldType::Boolean));
    FieldDef note = TableDef::CreateField("Note", FieldType::Memo);
    note.allowZeroLength = true;
    table.Append(note);
    database.Append(table);
}

void DaoTest::Add(std::int32_t id, const base::Value& name)
{
    Recordset rows = Open("LDEmp");
    rows.AddNew();
    rows["EmpID"] = id;
    rows["Name"] = name;
    rows.Update();
}

}  // namespace dao
