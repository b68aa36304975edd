// SPDX-License-Identifier: Apache-2.0
// SortOrderTest: tables whose texts are in an order or a code page that has no tables here.
#include "jet/catalog/TableDesign.h"
#include "jet/format/TableDefinitionLayout.h"
#include "tests/jet/table/TableFixture.h"
#include "tests/support/ErrorOf.h"

namespace {

using jet::format::FileVersion;
using jet::format::kJet3;
using jet::format::kJet4;
using tests::Assignments;
using tests::Column;
using tests::ColumnType;
using tests::ErrorOf;
using tests::NativeTable;
using tests::RowId;
using tests::RowValues;
using tests::Value;

constexpr std::uint16_t kJapanese = 1041, kRussian = 1049;

// Parts by number and name; the name has an index, the remark has none.
class SortOrderTest : public tests::TableFixture,
                      public testing::WithParamInterface<const FileVersion*> {
protected:
    SortOrderTest() : TableFixture(*GetParam())
    {
        jet::catalog::NewTable design;
        design.name = "Parts";
        design.columns = {Column("ID", ColumnType::Long), Column("Name", ColumnType::Text, 50),
                          Column("Remark", ColumnType::Text, 50)};
        design.indexes = {{.name = "Name", .columns = {{.column = "Name"}}}};
        parts_ = Make(design);
        first_ = parts_->Insert(Assignments({1, "bumper", "front"}));
        parts_->Insert(Assignments({2, "door", "left"}));
        // The file as a shop in another country has it.
        const jet::format::PageNumber page = parts_->Definition().page;
        SetLanguage(page, kJapanese);
        parts_ = std::make_unique<NativeTable>(pager_, page);
    }

    void SetLanguage(jet::format::PageNumber definition, std::uint16_t language)
    {
        const jet::format::DefinitionLayout& at = *GetParam()->definition;
        jet::pages::WriteSet changes(*pager_);
        for (std::size_t column = 0; column < 3; ++column)
            jet::format::WriteU16(changes.Change(definition),
                                  at.table.statistics + at.table.statisticsSize +
                                      column * at.column.size + at.column.language,
                                  language);
        changes.Commit();
    }

    // The number of a refused change, which leaves every byte as it was.
    int Refused(const std::function<void()>& change)
    {
        const std::vector<std::byte> before = files_.Content("test.mdb");
        const int number = ErrorOf(change);
        EXPECT_TRUE(files_.Content("test.mdb") == before);
        return number;
    }

    std::unique_ptr<NativeTable> parts_;
    RowId first_;
};
INSTANTIATE_TEST_SUITE_P(Versions, SortOrderTest, testing::Values(&kJet3, &kJet4),
                         [](const auto& each) {
                             return "Jet" + std::string(1, each.param->name[0]);
                         });

TEST_P(SortOrderTest, TableIsRead)
{
    EXPECT_EQ(parts_->Definition().columns[1].sortOrder.language, kJapanese);
    EXPECT_EQ(tests::ScannedColumn(*parts_, 1), (RowValues{"bumper", "door"}));
}

TEST_P(SortOrderTest, ChangesOfTheIndexAreRefusedAndNothingIsWritten)
{
    EXPECT_EQ(Refused([&] { parts_->Insert(Assignments({3, "hood", "black"})); }), 3251);
    EXPECT_EQ(Refused([&] {
                  parts_->Update(first_, std::vector<jet::table::Assignment>{{1, "x"}});
              }),
              3251);
    EXPECT_EQ(Refused([&] { parts_->Delete(first_); }), 3251);
    EXPECT_EQ(tests::ScannedColumn(*parts_, 1), (RowValues{"bumper", "door"}));
}

TEST_P(SortOrderTest, FieldsWithoutAnIndexAreWritten)
{
    const std::vector<jet::table::Assignment> values{{0, 7}, {2, "rear"}};
    parts_->Update(first_, values);
    EXPECT_EQ(tests::ScannedColumn(*parts_, 2), (RowValues{"rear", "left"}));
    EXPECT_EQ(tests::ScannedColumn(*parts_, 1), (RowValues{"bumper", "door"}));
    // The same name again changes no key.
    parts_->Update(first_, std::vector<jet::table::Assignment>{{1, "bumper"}, {2, "front"}});
    EXPECT_EQ(tests::ScannedColumn(*parts_, 2), (RowValues{"front", "left"}));
}

// Jet 3 keeps texts in the code page of the shop's country.
class CodePageTableTest : public tests::TableFixture {
protected:
    CodePageTableTest() : TableFixture(kJet3) {}

    std::unique_ptr<NativeTable> Parts(const jet::catalog::DatabaseText& text, bool indexed)
    {
        jet::catalog::NewTable design;
        design.name = "Parts";
        design.columns = {Column("Name", ColumnType::Text, 50), Column("Note", ColumnType::Memo)};
        if (indexed) design.indexes = {{.name = "Name", .columns = {{.column = "Name"}}}};
        return Make(design, text);
    }

    static jet::catalog::DatabaseText Text(std::uint16_t language, std::uint16_t codePage)
    {
        return {.order = {.language = language, .version = kJet3.sortVersion},
                .codePage = codePage,
                .country = 1};
    }
};

TEST_F(CodePageTableTest, TextsAreWrittenAndRead)
{
    const auto parts = Parts(Text(kRussian, 1251), false);
    const std::string longer = std::string(3000, 'x') + " Жук";
    parts->Insert(Assignments({"Дверь", "Жук"}));
    parts->Insert(Assignments({"door", longer}));
    EXPECT_EQ(tests::ScannedColumn(*parts, 0), (RowValues{"Дверь", "door"}));
    EXPECT_EQ(tests::ScannedColumn(*parts, 1), (RowValues{"Жук", longer}));
    EXPECT_EQ(ErrorOf([&] { parts->Insert(Assignments({"Zo\xC3\xAB", {}})); }), 3421);
}

TEST_F(CodePageTableTest, IndexIsNotWritten)
{
    // The language alone would have tables, but not for the bytes of this code page.
    for (const std::uint16_t language : {kRussian, std::uint16_t{1033}}) {
        const auto parts = Parts(Text(language, 1251), true);
        EXPECT_EQ(ErrorOf([&] { parts->Insert(Assignments({"Дверь", {}})); }), 3251);
        EXPECT_TRUE(tests::Scanned(*parts).empty());
    }
}

TEST_F(CodePageTableTest, CodePageOfTwoByteCharactersTakesNoNewTextButAscii)
{
    const auto parts = Parts(Text(kJapanese, 932), false);
    parts->Insert(Assignments({"door", "left"}));
    const std::vector<std::byte> before = files_.Content("test.mdb");
    EXPECT_EQ(ErrorOf([&] { parts->Insert(Assignments({"ドア", {}})); }), 3251);
    EXPECT_TRUE(files_.Content("test.mdb") == before);
    EXPECT_EQ(tests::ScannedColumn(*parts, 0), (RowValues{"door"}));
}

}  // namespace
