// SPDX-License-Identifier: Apache-2.0
// TortureTest: a table with many indexes filled, thinned and changed at random through dao; every
// index still agrees with the rows, and an independent reader sees the same rows.
#include "jet/check/IntegrityChecker.h"
#include "jet/dao/DBEngine.h"
#include "jet/io/MemoryFile.h"
#include "tests/jet/index/RowEntries.h"
#include "tests/support/Samples.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <filesystem>
#include <fstream>
#include <gtest/gtest.h>
#include <map>
#include <numeric>
#include <random>
#include <string>

namespace jet {
namespace {

using dao::FieldType;

// Checked containers and unoptimised code are an order of magnitude slower.
#ifdef NDEBUG
constexpr int kRows = 20000;
#else
constexpr int kRows = 4000;
#endif
constexpr const char* kFile = "torture.mdb";
constexpr const char* kTable = "Parts";

// What a row holds beside its number. Units: days.
struct Part {
    std::string name;
    std::int32_t place = 0;
    double day = 0;
};
using Parts = std::map<std::int32_t, Part>;

class TortureTest : public testing::TestWithParam<dao::DatabaseVersion> {
protected:
    TortureTest() : engine_({[] { return base::Date{46000}; }}, files_)
    {
        engine_.CreateDatabase(kFile, GetParam());
        database_ = engine_.DefaultWorkspace().OpenDatabase(kFile);
        MakeTable();
        rows_ = database_.OpenRecordset(kTable);
    }

    void MakeTable();
    Part RandomPart();
    void Write(std::int32_t number, const Part& part);
    void Append();
    void DeleteAThird();
    void ChangeAThird();
    void ExpectIndexesTrue();
    [[nodiscard]] Parts RowsByWalking();
    [[nodiscard]] std::filesystem::path Written(const std::filesystem::path& folder);

    io::MemoryFileSystem files_;
    dao::DBEngine engine_;
    dao::Database database_;
    dao::Recordset rows_;
    Parts model_;
    std::mt19937 random_{5};
};

dao::IndexDef IndexOn(std::string name, std::vector<dao::IndexDef::Part> fields)
{
    dao::IndexDef index;
    index.name = std::move(name);
    index.fields = std::move(fields);
    return index;
}

void TortureTest::MakeTable()
{
    dao::TableDef table{kTable};
    dao::FieldDef counter = dao::TableDef::CreateField("ID", FieldType::Long);
    counter.attributes = dao::kAutoIncrField;
    table.Append(counter);
    table.Append(dao::TableDef::CreateField("Number", FieldType::Long));
    table.Append(dao::TableDef::CreateField("Name", FieldType::Text, 60));
    table.Append(dao::TableDef::CreateField("Place", FieldType::Long));
    table.Append(dao::TableDef::CreateField("Day", FieldType::Date));
    dao::IndexDef primary = IndexOn("PrimaryKey", {{"ID"}});
    primary.primary = primary.unique = primary.required = true;
    table.Append(primary);
    dao::IndexDef number = IndexOn("Number", {{"Number"}});
    number.unique = true;
    table.Append(number);
    table.Append(IndexOn("Name", {{"Name"}}));
    table.Append(IndexOn("Day", {{"Day", false}}));
    table.Append(IndexOn("PlaceDayName", {{"Place", false}, {"Day", true}, {"Name", false}}));
    database_.Append(table);
}

// A name from a few beginnings, so that pages have common prefixes and equal keys.
Part TortureTest::RandomPart()
{
    static const char* const beginnings[] = {"Bumper cover front ", "Bumper cover rear ", "Hood",
                                             "Quarter panel outer left hand side ", "Ö"};
    Part part;
    part.name = beginnings[random_() % std::size(beginnings)] + std::to_string(random_() % 5000);
    part.place = static_cast<std::int32_t>(random_() % 50);
    part.day = 36526.0 + static_cast<double>(random_() % 3000);
    return part;
}

void TortureTest::Write(std::int32_t number, const Part& part)
{
    rows_["Number"] = number;
    rows_["Name"] = part.name;
    rows_["Place"] = part.place;
    rows_["Day"] = base::Date{part.day};
    rows_.Update();
    model_[number] = part;
}

void TortureTest::Append()
{
    std::vector<std::int32_t> numbers(kRows);
    std::iota(numbers.begin(), numbers.end(), -kRows / 2);
    std::shuffle(numbers.begin(), numbers.end(), random_);
    for (const std::int32_t number : numbers) {
        rows_.AddNew();
        Write(number, RandomPart());
    }
}

std::int32_t NumberOf(dao::Recordset& rows)
{
    return *rows["Number"].Value().As<std::int32_t>();
}

void TortureTest::DeleteAThird()
{
    for (rows_.MoveFirst(); !rows_.Eof(); rows_.MoveNext()) {
        if (random_() % 3 != 0) continue;
        model_.erase(NumberOf(rows_));
        rows_.Delete();
    }
}

// Some keep their number, some get a new one; names become longer or shorter.
void TortureTest::ChangeAThird()
{
    std::int32_t next = kRows;
    for (rows_.MoveFirst(); !rows_.Eof(); rows_.MoveNext()) {
        const std::int32_t number = NumberOf(rows_);
        if (random_() % 3 != 0 || number >= kRows) continue;
        rows_.Edit();
        if (random_() % 2 == 0) {
            Write(number, RandomPart());
        } else {
            model_.erase(number);
            Write(next++, RandomPart());
        }
    }
}

Parts TortureTest::RowsByWalking()
{
    Parts found;
    for (rows_.MoveFirst(); !rows_.Eof(); rows_.MoveNext()) {
        const base::Value name = rows_["Name"];
        const base::Value place = rows_["Place"];
        const base::Value day = rows_["Day"];
        found[NumberOf(rows_)] = {*name.As<std::string>(), *place.As<std::int32_t>(),
                                  day.As<base::Date>()->days};
    }
    return found;
}

bool operator==(const Part& left, const Part& right)
{
    return left.name == right.name && left.place == right.place && left.day == right.day;
}

void TortureTest::ExpectIndexesTrue()
{
    const auto pager = pages::Pager::Open(files_, kFile, io::OpenMode::ReadOnly);
    std::size_t indexes = 0;
    for (const format::PageNumber page : TablesOf(pager)) {
        const table::NativeTable table(pager, page);
        for (const format::IndexDefinition& definition : table.Definition().indexes) {
            EXPECT_EQ(FaultsOfIndex(*pager, table, definition), std::vector<std::string>{})
                << "table at page " << Raw(page);
            ++indexes;
        }
    }
    EXPECT_GE(indexes, 5U + 2U);
}

std::filesystem::path TortureTest::Written(const std::filesystem::path& folder)
{
    const std::vector<std::byte>& bytes = files_.Content(kFile);
    const std::filesystem::path path = folder / kFile;
    std::ofstream(path, std::ios::binary)
        .write(static_cast<const char*>(static_cast<const void*>(bytes.data())),
               static_cast<std::streamsize>(bytes.size()));
    return path;
}

// The lines that a program prints.
std::vector<std::string> OutputOf(const std::string& command)
{
    std::vector<std::string> lines;
    std::FILE* const pipe = popen(command.c_str(), "r");
    if (pipe == nullptr) return lines;
    std::string line;
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe)) {
        if (c != '\n') {
            line += static_cast<char>(c);
            continue;
        }
        lines.push_back(line);
        line.clear();
    }
    pclose(pipe);
    return lines;
}

// The lines that mdb-export must print, without the counter.
std::vector<std::string> LinesOf(const Parts& parts)
{
    std::vector<std::string> lines;
    for (const auto& [number, part] : parts) {
        lines.push_back(std::to_string(number) + "|" + part.name + "|" +
                        std::to_string(part.place) + "|" +
                        std::to_string(static_cast<int>(part.day)));
    }
    std::sort(lines.begin(), lines.end());
    return lines;
}

// "7|-3|Hood12|5|2001-09-11" without the counter and with the day as a serial.
std::string Comparable(const std::string& line)
{
    const std::size_t number = line.find('|') + 1;
    const std::size_t day = line.rfind('|') + 1;
    int year = 0;
    int month = 0;
    int date = 0;
    if (std::sscanf(line.c_str() + day, "%d-%d-%d", &year, &month, &date) != 3) return line;
    using namespace std::chrono;
    const sys_days found = std::chrono::year{year} / month / date;
    const sys_days zero = std::chrono::year{1899} / 12 / 30;
    return line.substr(number, day - number) + std::to_string((found - zero).count());
}

INSTANTIATE_TEST_SUITE_P(Versions, TortureTest,
                         testing::Values(dao::DatabaseVersion::Jet3, dao::DatabaseVersion::Jet4),
                         [](const auto& each) {
                             return std::string(each.param == dao::DatabaseVersion::Jet3 ? "Jet3"
                                                                                         : "Jet4");
                         });

#ifdef NDEBUG
TEST_P(TortureTest, TwentyThousandRowsAppendedThinnedAndChangedKeepEveryIndexTrue)
#else
TEST_P(TortureTest, DebugRunOfFourThousandRowsAppendedThinnedAndChangedKeepsEveryIndexTrue)
#endif
{
    Append();
    ExpectIndexesTrue();
    DeleteAThird();
    ChangeAThird();
    ExpectIndexesTrue();
    const check::CheckReport report = check::CheckIntegrity(files_, kFile);
    EXPECT_TRUE(report.Clean());
    for (const check::Defect& defect : report.defects)
        ADD_FAILURE() << "page " << Raw(defect.page) << ": " << defect.text;
    EXPECT_TRUE(RowsByWalking() == model_);
    EXPECT_EQ(rows_.RecordCount(), static_cast<int>(model_.size()));
    database_.Close();

    if (std::system("mdb-export --version > /dev/null 2>&1") != 0)
        GTEST_SKIP() << "mdb-export is not installed";
    const tests::ScratchFolder folder;
    const std::string path = Written(folder.Path()).string();
    std::vector<std::string> lines;
    for (const std::string& line :
         OutputOf("mdb-export -H -Q -d '|' -T %Y-%m-%d " + path + " " + kTable))
        lines.push_back(Comparable(line));
    std::sort(lines.begin(), lines.end());
    EXPECT_TRUE(lines == LinesOf(model_)) << lines.size() << " lines, " << model_.size() << " rows";
}

}  // namespace
}  // namespace jet
