// SPDX-License-Identifier: Apache-2.0
// FuzzOpen: the input is a whole database file. It is checked, read whole, then written to.
//
// Claims: every call ends with a result or a numbered error; reading writes nothing; what the
//         integrity check calls undamaged can be read, can be written, and is undamaged afterwards.
#include "jet/check/IntegrityChecker.h"
#include "jet/dao/DBEngine.h"
#include "jet/io/MemoryFile.h"
#include "tests/fuzz/Fuzz.h"

#include <vector>

namespace {

constexpr const char* kFile = "shop.mdb";
constexpr std::size_t kLargest = 1 << 20;
constexpr int kMostRows = 2000;

// Whether the check finds no damage; a file that it refuses to open is damaged.
bool IsUndamaged(jet::io::FileSystem& files)
{
    bool clean = false;
    static_cast<void>(
        fuzz::NumberOf([&] { clean = jet::check::CheckIntegrity(files, kFile).Clean(); }));
    return clean;
}

void ReadRows(dao::Recordset& rows)
{
    for (int row = 0; row < kMostRows && !rows.Eof(); ++row) {
        for (int field = 0; field < rows.FieldCount(); ++field)
            static_cast<void>(rows[field].Value());
        rows.MoveNext();
    }
}

void ReadTable(dao::Database& database, const std::string& table)
{
    static_cast<void>(database.TableDef(table));
    dao::Recordset rows = database.OpenRecordset(table);
    ReadRows(rows);
}

void WriteTable(dao::Database& database, const std::string& table)
{
    dao::Recordset rows = database.OpenRecordset(table, dao::RecordsetType::Dynaset);
    if (rows.Eof()) return;
    rows.Edit();
    rows[0] = rows[0].Value();
    if (rows.FieldCount() > 1) rows[1] = "another text";
    rows.Update();
    rows.Delete();
    rows.AddNew();
    if (rows.FieldCount() > 1) rows[1] = "a new row";
    rows.Update();
}

// Runs `use` on every table that is not the engine's own. What ends with the word "damaged" is a
// finding in a file that the check calls undamaged.
template <class Use>
void EachTable(jet::io::MemoryFileSystem& files, bool undamaged, Use use)
{
    dao::DBEngine engine({[] { return base::Date{38061}; }}, files);
    dao::Database database;
    std::vector<std::string> tables;
    const auto call = [undamaged](auto&& action) {
        const int number = fuzz::NumberOf(action);
        fuzz::Require(!undamaged || !fuzz::SaysDamaged(number), "an undamaged file can be used");
    };
    call([&] {
        database = engine.DefaultWorkspace().OpenDatabase(kFile);
        tables = database.TableNames();
    });
    for (const std::string& table : tables)
        if (table.rfind("MSys", 0) != 0) call([&] { use(database, table); });
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > kLargest) return 0;
    const fuzz::Span input = fuzz::Input(data, size).Rest();
    jet::io::MemoryFileSystem files;
    files.Create(kFile)->Write(0, input);
    const bool undamaged = IsUndamaged(files);
    EachTable(files, undamaged, ReadTable);
    fuzz::Require(jet::format::SameBytes(files.Content(kFile), input), "reading writes nothing");
    EachTable(files, undamaged, WriteTable);
    fuzz::Require(!undamaged || IsUndamaged(files), "writing damages nothing");
    return 0;
}
