// SPDX-License-Identifier: Apache-2.0
// The plain-text SQL tests in tests/sql: each file is one test, run on an empty database in memory.
//
//     # a comment
//     table T                     a new table: one line a field, until an empty line
//     ID counter
//     Name text 20 zero           `zero`: may be empty text; `required`; `default EXPRESSION` last
//     index PK primary ID         also `unique` and plain `index NAME ID`
//
//     run                         a statement over one or more lines, until an empty line
//     INSERT INTO T (Name) VALUES ('a')
//
//     query                       the rows it must give come after ----
//     SELECT ID, Name FROM T
//     ----
//     1|a
//
//     error 3078                  a statement that fails; the lines after ---- are its text
//     SELECT * FROM Nope
#include "base/Convert.h"
#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/dao/DBEngine.h"
#include "jet/io/MemoryFile.h"
#include "tests/support/IntegrityExpectations.h"

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <sstream>
#include <string>
#include <vector>

namespace {

using dao::FieldType;

// One block of a file: its first line, then the lines before and after "----".
struct Block {
    int line = 0;
    std::string head;
    std::vector<std::string> body, expected;
    bool hasExpected = false;

    [[nodiscard]] std::string Statement() const
    {
        std::string text;
        for (const std::string& one : body)
            text += (text.empty() ? "" : "\n") + one;
        return text;
    }
};

std::vector<Block> BlocksOf(const std::filesystem::path& path)
{
    std::ifstream file(path);
    std::vector<Block> blocks;
    bool open = false;
    int number = 0;
    for (std::string line; std::getline(file, line);) {
        ++number;
        if (line.starts_with("#")) continue;
        if (line.empty()) {
            open = false;
        } else if (!open) {
            blocks.push_back({number, line, {}, {}, false});
            open = true;
        } else if (line == "----") {
            blocks.back().hasExpected = true;
        } else {
            Block& block = blocks.back();
            (block.hasExpected ? block.expected : block.body).push_back(line);
        }
    }
    return blocks;
}

std::string TextOf(const base::Value& value)
{
    if (value.IsNull()) return "NULL";
    const std::string text = base::TextOf(value);
    return value.IsText() && text.empty() ? "(empty)" : text;
}

class SqlFile : public testing::Test {
public:
    explicit SqlFile(std::filesystem::path path) : path_(std::move(path)) {}

    void TestBody() override
    {
        engine_.CreateDatabase("/sql.mdb");
        database_ = engine_.DefaultWorkspace().OpenDatabase("/sql.mdb");
        const std::vector<Block> blocks = BlocksOf(path_);
        EXPECT_FALSE(blocks.empty()) << path_;
        for (const Block& block : blocks) {
            const testing::ScopedTrace trace(path_.c_str(), block.line, block.Statement());
            Run(block);
        }
        EXPECT_SPOTLESS(files_, "/sql.mdb");
    }

private:
    void Run(const Block& block)
    {
        std::istringstream head(block.head);
        std::string kind, argument;
        head >> kind >> argument;
        try {
            if (kind == "table") {
                MakeTable(argument, block.body);
            } else if (kind == "run") {
                database_.Execute(block.Statement(), dao::kFailOnError);
            } else if (kind == "query") {
                EXPECT_EQ(RowsOf(block.Statement()), block.expected);
            } else if (kind == "error") {
                ExpectFailure(block, std::stoi(argument));
            } else {
                FAIL() << "unknown block: " << block.head;
            }
        } catch (const base::NumberedError& error) {
            FAIL() << error.Number() << " " << error.what();
        }
    }

    void ExpectFailure(const Block& block, int number)
    {
        const std::string statement = block.Statement();
        try {
            if (base::SameName(statement.substr(0, 6), "SELECT")) {
                (void)RowsOf(statement);
            } else {
                database_.Execute(statement, dao::kFailOnError);
            }
            FAIL() << "no error";
        } catch (const base::NumberedError& error) {
            EXPECT_EQ(error.Number(), number) << error.what();
            if (block.hasExpected) {
                EXPECT_EQ(std::vector<std::string>{error.what()}, block.expected);
            }
        }
    }

    std::vector<std::string> RowsOf(const std::string& sql)
    {
        std::vector<std::string> lines;
        dao::Recordset rows = database_.OpenRecordset(sql);
        for (; !rows.Eof(); rows.MoveNext()) {
            std::string line;
            for (int i = 0; i < rows.FieldCount(); ++i)
                line += (i > 0 ? "|" : "") + TextOf(rows[i]);
            lines.push_back(line);
        }
        return lines;
    }

    void MakeTable(const std::string& name, const std::vector<std::string>& lines)
    {
        dao::TableDef table(name);
        for (const std::string& line : lines) {
            if (line.starts_with("index ")) {
                table.Append(IndexOf(line));
            } else {
                table.Append(FieldOf(line));
            }
        }
        database_.Append(table);
    }

    static dao::FieldDef FieldOf(const std::string& line)
    {
        static const std::map<std::string, FieldType> types{
            {"yesno", FieldType::Boolean},   {"byte", FieldType::Byte},
            {"integer", FieldType::Integer}, {"long", FieldType::Long},
            {"counter", FieldType::Long},    {"currency", FieldType::Currency},
            {"single", FieldType::Single},   {"double", FieldType::Double},
            {"date", FieldType::Date},       {"text", FieldType::Text},
            {"memo", FieldType::Memo}};
        std::istringstream words(line);
        std::string name, type, word;
        words >> name >> type;
        dao::FieldDef field = dao::TableDef::CreateField(name, types.at(type));
        if (type == "counter") field.attributes = dao::kAutoIncrField;
        while (words >> word) {
            if (word == "zero") field.allowZeroLength = true;
            if (word == "required") field.required = true;
            if (word == "default") std::getline(words >> std::ws, field.defaultValue);
            if (word[0] >= '0' && word[0] <= '9') field.size = std::stoi(word);
        }
        return field;
    }

    static dao::IndexDef IndexOf(const std::string& line)
    {
        std::istringstream words(line);
        std::string word;
        dao::IndexDef index;
        words >> word >> index.name;
        while (words >> word) {
            if (word == "primary") {
                index.primary = index.unique = index.required = true;
            } else if (word == "unique") {
                index.unique = true;
            } else {
                index.fields.push_back({word, true});
            }
        }
        return index;
    }

    std::filesystem::path path_;
    jet::io::MemoryFileSystem files_;
    dao::DBEngine engine_{{[] { return base::Date{38061.375}; }}, files_};
    dao::Database database_;
};

// One test for each file, named after it.
bool RegisterFiles()
{
    std::vector<std::filesystem::path> paths;
    for (const auto& entry : std::filesystem::directory_iterator(LODRIN_SQL_TESTS))
        if (entry.path().extension() == ".test") paths.push_back(entry.path());
    std::sort(paths.begin(), paths.end());
    for (const std::filesystem::path& path : paths)
        testing::RegisterTest("SqlFile", path.stem().c_str(), nullptr, nullptr, path.c_str(), 1,
                              [path]() -> testing::Test* { return new SqlFile(path); });
    return true;
}

const bool kRegistered = RegisterFiles();

TEST(SqlFiles, AreThere)
{
    EXPECT_TRUE(kRegistered);
    EXPECT_FALSE(std::filesystem::is_empty(LODRIN_SQL_TESTS));
}

}  // namespace
