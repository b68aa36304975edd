// SPDX-License-Identifier: Apache-2.0
// FuzzSql: the input is a statement, a criterion, a default value or a validation rule.
//
// Layout: 1 byte what it is (see below); the text.
// Claims: every text ends with a result or a numbered error; whatever a statement did, the file is
//         undamaged; a SELECT writes nothing.
#include "jet/check/IntegrityChecker.h"
#include "jet/dao/DBEngine.h"
#include "jet/sql/Parser.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/fuzz/SeedFile.h"

namespace {

constexpr base::Date kToday{38061};
constexpr std::size_t kLongest = 4000;
constexpr int kMostRows = 300;

class Statement {
public:
    explicit Statement(const std::string& text)
        : text_(text), engine_({[] { return kToday; }}, files_)
    {
        files_.Create(fuzz::kPath)->Write(0, Sound());
        database_ = engine_.DefaultWorkspace().OpenDatabase(fuzz::kPath);
    }

    void Select()
    {
        static_cast<void>(fuzz::NumberOf([&] {
            dao::Recordset rows = database_.OpenRecordset(text_);
            for (int row = 0; row < kMostRows && !rows.Eof(); ++row) {
                for (int field = 0; field < rows.FieldCount(); ++field)
                    static_cast<void>(rows[field].Value());
                rows.MoveNext();
            }
        }));
        fuzz::Require(files_.Content(fuzz::kPath) == Sound(), "a SELECT writes nothing");
    }

    void Find()
    {
        static_cast<void>(fuzz::NumberOf([&] {
            dao::Recordset rows = database_.OpenRecordset("SELECT * FROM Kinds ORDER BY Name");
            rows.FindFirst(text_);
            rows.FindNext(text_);
        }));
    }

    void Execute()
    {
        const int number = fuzz::NumberOf([&] { database_.Execute(text_, dao::kFailOnError); });
        fuzz::Require(!fuzz::SaysDamaged(number), "a sound file is not called damaged");
        fuzz::Require(jet::check::CheckIntegrity(files_, fuzz::kPath).Clean(),
                      "no statement damages the file");
    }

private:
    static const std::vector<std::byte>& Sound()
    {
        return fuzz::SeedFile::Of(jet::format::kJet4).bytes;
    }

    const std::string& text_;
    jet::io::MemoryFileSystem files_;
    dao::DBEngine engine_;
    dao::Database database_;
};

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    if (size > kLongest) return 0;
    fuzz::Input input(data, size);
    const unsigned what = input.Byte();
    const std::string text = input.RestAsText();
    switch (what % 4) {
    case 0:
        static_cast<void>(
            fuzz::NumberOf([&] { static_cast<void>(jet::sql::ParseDefault(text, kToday)); }));
        static_cast<void>(
            fuzz::NumberOf([&] { static_cast<void>(jet::sql::ParseRule(text, "Name", kToday)); }));
        break;
    case 1:
        Statement(text).Find();
        break;
    case 2:
        Statement(text).Execute();
        break;
    default:
        Statement(text).Select();
        break;
    }
    return 0;
}
