// SPDX-License-Identifier: Apache-2.0
#include "data/modBuildLD.h"

#include "app/Dispatch.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "app/modGlobal.h"
#include "base/NumberedError.h"
#include "data/Kelvaro.h"
#include "data/Schema.h"
#include "data/Tables.h"

#include <optional>

namespace lodrin {

namespace {

constexpr const char* kNoDatabase = "could not find database Ostrel at ";
constexpr int kObjectNotSet = 91;

// A session of the builder's own, and two handles on the file in it.
struct Session {
    std::optional<dao::Workspace> workspace;
    dao::Database first, second;

    [[nodiscard]] dao::Workspace& Workspace()
    {
        if (!workspace) throw base::NumberedError(kObjectNotSet);
        return *workspace;
    }
};

void OpenSession(const ResumeNext& attempt, Session& session, Shop& shop, const std::string& file)
{
    const auto open = [&] {
        return session.Workspace().OpenDatabase(shop.platform.paths.ToHost(file));
    };
    attempt([&] { session.workspace = shop.engine.CreateWorkspace("", "admin", ""); });
    attempt([&] { session.first = open(); });
    attempt([&] { DoEvents(shop); });
    attempt([&] { session.second = open(); });
}

// The default of a date is none: no text is a date.
std::string DefaultOf(dao::FieldType type)
{
    switch (type) {
    case dao::FieldType::Text:
        return "\"\"";
    case dao::FieldType::Date:
        return "";
    default:
        return "0";
    }
}

dao::FieldDef CreateField(const FieldSchema& schema, bool first)
{
    dao::FieldDef field = dao::TableDef::CreateField(schema.name, schema.type, schema.size);
    if (first) {
        field.attributes = dao::kAutoIncrField;
        return field;
    }
    field.defaultValue = DefaultOf(schema.type);
    field.allowZeroLength = schema.type == dao::FieldType::Text;
    return field;
}

// A table that is there already stays as it is: the append fails, and the trap knows why.
void BuildTable(const ResumeNext& attempt, Shop& shop, dao::Database& database,
                const TableSchema& schema)
{
    attempt([&] { shop.forms.procMsg.Label1.SetCaption(schema.step); });
    dao::TableDef table{std::string(schema.table)};
    for (const FieldSchema& field : schema.fields)
        attempt([&] { table.Append(CreateField(field, &field == &schema.fields.front())); });
    shop.values.tableExists = 0;
    attempt([&] { database.Append(table); });
}

}  // namespace

void BuildLD(Shop& shop, const std::string& folder)
{
    const ResumeNext attempt(shop, "Sub modBuildLD!BuildLD()");

    // Without the management system's database there is nothing to work in.
    shop.values.LastErrNumber = 0;
    const std::string file = KelvaroIn(folder);
    const auto isMissing = [&] { return !FileExists(shop.platform, file); };
    if (attempt.Test(isMissing, IfItFails::TakeBranch)) {
        attempt([&] { Say(shop, kNoDatabase + folder); });
        attempt([&] { shop.engine.DefaultWorkspace().Close(); });
        shop.platform.program.End();
    }

    // Each table is made, or found to be there; the last one through the second handle.
    Session session;
    OpenSession(attempt, session, shop, file);
    attempt([&] { shop.dialogs.ShowProcMsg(shop); });
    for (const TableSchema& schema : OwnTables()) {
        const bool isLast = schema.table == Status::table;
        BuildTable(attempt, shop, isLast ? session.second : session.first, schema);
    }

    attempt([&] { DoEvents(shop); });
    attempt([&] { session.first = dao::Database(); });
    attempt([&] { session.Workspace().Close(); });
    attempt([&] { shop.dialogs.UnloadProcMsg(shop); });
}

}  // namespace lodrin
