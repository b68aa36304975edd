// SPDX-License-Identifier: Apache-2.0
// DaoFixture: a new database in memory, for tests of the public face.
#pragma once

#include "base/NumberedError.h"
#include "jet/dao/DBEngine.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/ErrorOf.h"
#include "tests/support/FileKind.h"

#include <array>
#include <functional>
#include <gtest/gtest.h>
#include <string>
#include <vector>

namespace dao {

inline constexpr const char* kFile = "/shop/Kelvaro.mdb";
inline constexpr base::Date kNow{38061.375};  // 15 March 2004, 9:00 AM

using tests::ErrorOf;
using tests::FileKind;
using tests::kFileKinds;
// Its number, a blank and its text.
[[nodiscard]] std::string FailureOf(const std::function<void()>& action);

// The values of one field from the first row to the last, as text; null is "<null>".
[[nodiscard]] std::vector<std::string> Column(Recordset& records, std::string_view field);

// A primary key over one field.
[[nodiscard]] IndexDef Primary(const char* field);

class DaoTest : public testing::Test {
protected:
    explicit DaoTest(FileKind kind = FileKind::Jet4);
    // The file that the test leaves has no defects.
    void TearDown() override;

    [[nodiscard]] Recordset Open(std::string_view source,
                                 RecordsetType type = RecordsetType::Default)
    {
        return database.OpenRecordset(source, type);
    }

    // How this test's engines meet the world outside, from a machine of that name.
    [[nodiscard]] EngineSettings SettingsOf(const std::string& machine);

    // LDEmp with the fields of the board: EmpEntry (counter), EmpID, Name(100), StartDay, WO#, Hrs,
    // Active, Note (memo).
    void MakeEmployees();
    // One employee.
    void Add(std::int32_t id, const base::Value& name);

    jet::io::MemoryFileSystem files;
    base::Date now = kNow;
    // Called instead of waiting for a lock; how often that was.
    std::function<void()> whileWaiting;
    int waits = 0;
    DBEngine engine;
    Database database;
};

// The same in each kind of file.
class DaoKindTest : public DaoTest, public testing::WithParamInterface<FileKind> {
protected:
    DaoKindTest() : DaoTest(GetParam()) {}
};

}  // namespace dao
