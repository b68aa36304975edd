// SPDX-License-Identifier: Apache-2.0
// LimitsTest: the most fields, the largest rows and the longest memos, in each kind of file.
#include "jet/io/StdFile.h"
#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/MdbExport.h"
#include "tests/support/Samples.h"

#include <fstream>

namespace dao {
namespace {

using base::Value;

constexpr int kMostFields = 255;

class LimitsTest : public DaoKindTest {
protected:
    std::filesystem::path Written()
    {
        const std::filesystem::path file = folder_.Path() / "limits.mdb";
        const std::vector<std::byte>& bytes = files.Content(kFile);
        std::ofstream(file, std::ios::binary)
            .write(reinterpret_cast<const char*>(bytes.data()),
                   static_cast<std::streamsize>(bytes.size()));
        return file;
    }

    void Reopen()
    {
        database.Close();
        database = engine.DefaultWorkspace().OpenDatabase(kFile);
    }

    tests::ScratchFolder folder_;
};
INSTANTIATE_TEST_SUITE_P(Kinds, LimitsTest, testing::ValuesIn(kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

// Every third field is a text, every third a long, every third a boolean.
FieldDef FieldNumber(int number)
{
    constexpr std::array types{FieldType::Text, FieldType::Long, FieldType::Boolean};
    return TableDef::CreateField("F" + std::to_string(number),
                                 types[static_cast<std::size_t>(number % 3)], 20);
}

Value ValueOf(int row, int field)
{
    const int number = row * 1000 + field;
    if (field % 3 == 0) return field % 6 == 0 ? Value("t" + std::to_string(number % 977)) : Value();
    if (field % 3 == 1) return std::int32_t{number};
    return number % 2 == 0;
}

TEST_P(LimitsTest, AllFieldsOfTheWidestTableAreKept)
{
    TableDef wide("Wide");
    for (int field = 0; field < kMostFields; ++field)
        wide.Append(FieldNumber(field));
    database.Append(wide);
    Recordset rows = Open("Wide");
    for (int row = 0; row < 25; ++row) {
        rows.AddNew();
        for (int field = 0; field < kMostFields; ++field)
            rows["F" + std::to_string(field)] = ValueOf(row, field);
        rows.Update();
    }
    Reopen();
    Recordset found = Open("Wide");
    for (int row = 0; row < 25; ++row, found.MoveNext())
        for (int field = 0; field < kMostFields; ++field)
            EXPECT_EQ(found["F" + std::to_string(field)].Value(), ValueOf(row, field))
                << row << " " << field;
    EXPECT_TRUE(found.Eof());
    if (!tests::MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
    const std::vector<tests::ExportedRow> others = tests::MdbExport(Written(), "Wide");
    ASSERT_EQ(others.size(), 25U);
    EXPECT_EQ(others[24].size(), 255U);
    EXPECT_EQ(others[24].at("F250"), "24250");
    EXPECT_EQ(others[24].at("F252"), "t" + std::to_string(24252 % 977));
    EXPECT_EQ(others[24].at("F248"), "1");
    EXPECT_EQ(others[24].at("F251"), "0");
}

// A row of texts alone: a number of columns, the texts, one offset more than there are texts, a
// count, a byte of nulls; in Jet 3 seven jumps.
TEST_P(LimitsTest, RowIsFilledAsFarAsItGoes)
{
    const bool jet3 = tests::IsJet3(GetParam());
    constexpr int texts = 8;
    const int room = jet3 ? 2012 - (1 + texts + 1 + 7 + 1 + 1) : 4060 - (2 + 2 * texts + 2 + 2 + 1);
    const int last = (jet3 ? room : room / 2) - (texts - 1) * 252;
    ASSERT_LT(last, 255);
    // Jet 4 counts two bytes a character when one of them keeps it from compressing the text.
    const std::string first = jet3 ? "x" : "\xCE\xB1";
    TableDef full("Full");
    for (int field = 0; field < texts; ++field)
        full.Append(TableDef::CreateField("F" + std::to_string(field), FieldType::Text, 255));
    database.Append(full);
    Recordset rows = Open("Full");
    const auto fill = [&](int lastLength) {
        for (int field = 0; field < texts; ++field) {
            const int length = field + 1 < texts ? 252 : lastLength;
            rows["F" + std::to_string(field)] =
                first + std::string(static_cast<std::size_t>(length - 1), 'y');
        }
        rows.Update();
    };
    rows.AddNew();
    EXPECT_EQ(ErrorOf([&] { fill(last + 1); }), 3047);
    rows.CancelUpdate();
    rows.AddNew();
    fill(last);
    Reopen();
    Recordset found = Open("Full");
    EXPECT_EQ(found["F0"].Value(), Value(first + std::string(251, 'y')));
    EXPECT_EQ(found["F7"].Value(),
              Value(first + std::string(static_cast<std::size_t>(last - 1), 'y')));
    if (!tests::MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
    const std::vector<tests::ExportedRow> others = tests::MdbExport(Written(), "Full");
    ASSERT_EQ(others.size(), 1U);
    EXPECT_EQ(others[0].at("F6"), first + std::string(251, 'y'));
    EXPECT_EQ(others[0].at("F7"), first + std::string(static_cast<std::size_t>(last - 1), 'y'));
}

std::string Text(std::size_t length)
{
    std::string text(length, ' ');
    for (std::size_t i = 0; i < length; ++i)
        text[i] = static_cast<char>('A' + (i * 7 + i / 1000) % 58);
    return text;
}

TEST_P(LimitsTest, LongMemosComeBack)
{
    TableDef letters("Letters");
    letters.Append(TableDef::CreateField("ID", FieldType::Long));
    letters.Append(TableDef::CreateField("Note", FieldType::Memo));
    database.Append(letters);
    // Encoding takes its time, and is the same for every page.
    const bool encoded = GetParam() != FileKind::Jet3 && GetParam() != FileKind::Jet4;
    const std::size_t most = encoded ? 400'000 : 16 * 1024 * 1024;
    const std::string page = Text(64 * 1024), book = Text(most);
    {
        Recordset rows = Open("Letters");
        for (const std::string* note : {&page, &book}) {
            rows.AddNew();
            rows["ID"] = static_cast<std::int32_t>(note->size());
            rows["Note"] = *note;
            rows.Update();
        }
    }
    Reopen();
    Recordset rows = Open("Letters");
    EXPECT_TRUE(rows["Note"].Value() == Value(page));
    rows.MoveNext();
    EXPECT_TRUE(rows["Note"].Value() == Value(book));
    // The book goes, and the pages it had serve the next.
    const std::size_t size = files.Content(kFile).size();
    rows.Delete();
    rows.AddNew();
    rows["ID"] = 1;
    const std::string letter = Text(160'000);
    rows["Note"] = letter;
    rows.Update();
    EXPECT_EQ(files.Content(kFile).size(), size);
    if (!tests::MdbExportIsInstalled()) GTEST_SKIP() << "mdb-export is not installed";
    const std::vector<tests::ExportedRow> others = tests::MdbExport(Written(), "Letters");
    ASSERT_EQ(others.size(), 2U);
    EXPECT_TRUE(others[0].at("Note") == page);
    EXPECT_TRUE(others[1].at("Note") == letter);
}

}  // namespace
}  // namespace dao
