// SPDX-License-Identifier: Apache-2.0
#include "jet/table/LongValues.h"

#include "jet/format/DataPage.h"
#include "jet/format/RowPointer.h"
#include "tests/jet/table/TableFixture.h"

namespace {

using namespace std::string_literals;
using jet::format::LongValueForm;
using jet::format::LongValueHeader;
using jet::format::PageNumber;
using tests::Assignments;
using tests::Column;
using tests::ColumnType;
using tests::ErrorOf;
using tests::RowId;
using tests::RowValues;
using tests::Value;

// Bytes that a version keeps in the row, in one piece, and in a piece of a chain; bytes of a page
// that a full piece leaves free, and of a character.
struct Sizes {
    const jet::format::FileVersion* version;
    std::size_t inRow, single, piece;
    std::uint16_t left;
    std::size_t character;
};

class LongValuesTest : public tests::TableFixture, public testing::WithParamInterface<Sizes> {
protected:
    LongValuesTest() : TableFixture(*GetParam().version)
    {
        jet::catalog::NewTable design;
        design.name = "Letters";
        design.columns = {Column("ID", ColumnType::Long), Column("Text", ColumnType::Memo),
                          Column("Picture", ColumnType::Ole)};
        letters_ = Make(design);
    }

    RowId Add(const Value& text, const Value& picture = {})
    {
        return letters_->Insert(Assignments({1, text, picture}));
    }
    Value Text(RowId row)
    {
        return tests::ValuesOf(*letters_, letters_->View(letters_->Fetch(row).value()))[1];
    }
    Value Picture(RowId row)
    {
        return tests::ValuesOf(*letters_, letters_->View(letters_->Fetch(row).value()))[2];
    }
    LongValueHeader HeaderOf(RowId row, std::size_t column = 1)
    {
        const auto stored = letters_->Fetch(row).value();
        return jet::format::ReadLongValueHeader(letters_->View(stored).Field(column));
    }
    std::vector<PageNumber> OwnedPages(std::size_t column = 1)
    {
        const auto& definition = letters_->Definition().columns[column];
        return jet::pages::UsageMap(*pager_, definition.ownedPages.value()).Pages();
    }
    std::vector<PageNumber> PagesWithRoom()
    {
        const auto& definition = letters_->Definition().columns[1];
        return jet::pages::UsageMap(*pager_, definition.freePages.value()).Pages();
    }
    void Rewrite(RowId row, const Value& text)
    {
        const std::vector<jet::table::Assignment> values{{1, text}};
        letters_->Update(row, values);
    }

    std::unique_ptr<tests::NativeTable> letters_;
};

INSTANTIATE_TEST_SUITE_P(Versions, LongValuesTest,
                         testing::Values(Sizes{&jet::format::kJet3, 32, 1731, 2032, 0, 1},
                                         Sizes{&jet::format::kJet4, 64, 3777, 4072, 4, 2}),
                         [](const auto& each) {
                             return "Jet" + std::string(1, each.param.version->name[0]);
                         });

TEST_P(LongValuesTest, ShortMemoStaysInItsRowCompressed)
{
    const RowId row = Add("some data");
    const std::uint32_t mark = GetParam().character == 2 ? 2 : 0;
    EXPECT_EQ(HeaderOf(row), (LongValueHeader{LongValueForm::InRow, 9 + mark, {}, 0}));
    EXPECT_EQ(Text(row), Value("some data"));
    EXPECT_TRUE(OwnedPages().empty());
}

TEST_P(LongValuesTest, InTheRowCountsBytesBeforeCompression)
{
    const std::size_t most = GetParam().inRow;
    EXPECT_EQ(HeaderOf(Add(std::string(32, 'x'))).form, LongValueForm::InRow);
    EXPECT_EQ(HeaderOf(Add(std::string(33, 'x'))).form, LongValueForm::Single);
    EXPECT_EQ(HeaderOf(Add({}, base::Bytes(most)), 2).form, LongValueForm::InRow);
    EXPECT_EQ(HeaderOf(Add({}, base::Bytes(most + 1)), 2).form, LongValueForm::Single);
}

TEST_P(LongValuesTest, EmptyIsNoNull)
{
    const RowId row = Add("", base::Bytes());
    EXPECT_EQ(Text(row), Value(""));
    EXPECT_EQ(Picture(row), Value(base::Bytes()));
    const RowId null = Add({});
    EXPECT_TRUE(Text(null).IsNull());
    EXPECT_TRUE(Picture(null).IsNull());
}

TEST_P(LongValuesTest, SinglesShareAPageAndAreNotCompressed)
{
    const RowId first = Add(std::string(100, 'a'));
    const RowId second = Add(std::string(1700, 'b'));
    EXPECT_EQ(HeaderOf(first).length, 100 * GetParam().character);
    EXPECT_EQ(HeaderOf(second).form, LongValueForm::Single);
    EXPECT_EQ(OwnedPages().size(), 1U);
    EXPECT_EQ(HeaderOf(first).first.page, HeaderOf(second).first.page);
    EXPECT_EQ(Text(first), Value(std::string(100, 'a')));
    EXPECT_EQ(Text(second), Value(std::string(1700, 'b')));
}

TEST_P(LongValuesTest, LargestSingle)
{
    const std::size_t most = GetParam().single;
    EXPECT_EQ(HeaderOf(Add({}, base::Bytes(most)), 2).form, LongValueForm::Single);
    EXPECT_EQ(HeaderOf(Add({}, base::Bytes(most + 1)), 2).form, LongValueForm::Chain);
}

TEST_P(LongValuesTest, ChainHasAPageForEachPiece)
{
    const std::string text(35000, 'c');
    const std::size_t length = 35000 * GetParam().character, piece = GetParam().piece;
    const RowId row = Add(text);
    EXPECT_EQ(HeaderOf(row).form, LongValueForm::Chain);
    EXPECT_EQ(HeaderOf(row).length, length);
    EXPECT_EQ(HeaderOf(row).stamp, 0U);
    EXPECT_EQ(OwnedPages().size(), (length + piece - 1) / piece);
    EXPECT_TRUE(PagesWithRoom().empty());
    EXPECT_EQ(Text(row), Value(text));
    const auto page = pager_->Read(HeaderOf(row).first.page);
    EXPECT_EQ(jet::format::DataPage(page.Bytes()).FreeBytes(), GetParam().left);
}

TEST_P(LongValuesTest, RewrittenValueFreesItsPages)
{
    const RowId row = Add(std::string(35000, 'c'));
    const std::uint32_t pages = pager_->PageCount();
    for (const std::size_t length : {0UL, 60UL, 2000UL, 5000UL, 35000UL, 10UL}) {
        Rewrite(row, std::string(length, 'd'));
        EXPECT_EQ(Text(row), Value(std::string(length, 'd')));
    }
    EXPECT_TRUE(OwnedPages().empty());
    // Whatever was needed again came out of the pages given back before.
    EXPECT_EQ(pager_->PageCount(), pages);
}

TEST_P(LongValuesTest, NullFreesTheValue)
{
    const RowId row = Add(std::string(35000, 'c'), base::Bytes(100));
    Rewrite(row, {});
    EXPECT_TRUE(OwnedPages().empty());
    EXPECT_TRUE(Text(row).IsNull());
    EXPECT_EQ(Picture(row), Value(base::Bytes(100)));
}

TEST_P(LongValuesTest, DeletedRowFreesItsValues)
{
    const RowId row = Add(std::string(35000, 'c'), base::Bytes(1000));
    letters_->Delete(row);
    EXPECT_TRUE(OwnedPages(1).empty());
    EXPECT_TRUE(OwnedPages(2).empty());
}

TEST_P(LongValuesTest, FreedSingleMakesRoomForOthers)
{
    std::vector<RowId> rows;
    for (int i = 0; i < 6; ++i)
        rows.push_back(Add(std::string(900, 'a')));
    EXPECT_EQ(OwnedPages().size(), 3U);
    letters_->Delete(rows[0]);
    EXPECT_EQ(PagesWithRoom().front(), OwnedPages().front());
    Add(std::string(900, 'b'));
    EXPECT_EQ(OwnedPages().size(), 3U);
}

TEST_P(LongValuesTest, OtherFieldsChangeWithoutTouchingTheValue)
{
    const RowId row = Add(std::string(5000, 'c'));
    const LongValueHeader before = HeaderOf(row);
    const std::vector<jet::table::Assignment> values{{0, 9}};
    letters_->Update(row, values);
    EXPECT_EQ(HeaderOf(row), before);
    EXPECT_EQ(Text(row), Value(std::string(5000, 'c')));
}

TEST_P(LongValuesTest, ShortValuesLeaveARowThatWouldBeTooLong)
{
    jet::catalog::NewTable design;
    design.name = "Many";
    RowValues values;
    for (int i = 0; i < 60; ++i) {
        design.columns.push_back(Column(("M" + std::to_string(i)).c_str(), ColumnType::Memo));
        // With a letter that keeps Jet 4 from compressing it.
        values.emplace_back((GetParam().character == 2 ? "\xCE\xB1"s : "b"s) +
                            std::string(31, static_cast<char>('A' + i % 26)));
    }
    const auto many = Make(design);
    const RowId row = many->Insert(Assignments(values));
    EXPECT_EQ(tests::ValuesOf(*many, many->View(many->Fetch(row).value())), values);
    EXPECT_LE(many->Fetch(row)->bytes.size(), GetParam().version->rowLimit);
}

TEST_P(LongValuesTest, ChainInACircleIsDamage)
{
    const RowId row = Add(std::string(35000, 'c'));
    const RowId first = HeaderOf(row).first;
    {
        // The first piece names itself as the next one.
        jet::pages::WriteSet changes(*pager_);
        const auto piece = jet::format::RowBytes(changes.Change(first.page), first.slot);
        jet::format::WriteRowPointer(piece, 0, first);
        changes.Commit();
    }
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Text(row)); }), 3343);
    EXPECT_EQ(ErrorOf([&] { letters_->Delete(row); }), 3343);
    EXPECT_TRUE(letters_->Fetch(row).has_value());
}

TEST_P(LongValuesTest, CutChainIsDamageOfThatValueOnly)
{
    const RowId other = Add("short");
    const RowId row = Add(std::string(35000, 'c'));
    const RowId first = HeaderOf(row).first;
    {
        jet::pages::WriteSet changes(*pager_);
        const auto piece = jet::format::RowBytes(changes.Change(first.page), first.slot);
        jet::format::WriteRowPointer(piece, 0, {});
        changes.Commit();
    }
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(Text(row)); }), 3343);
    EXPECT_EQ(Text(other), Value("short"));
}

TEST_P(LongValuesTest, LengthBeyondTheFileIsDamage)
{
    std::vector<std::byte> field(jet::format::kLongValueHeaderSize);
    jet::format::WriteLongValueHeader(field,
                                      {LongValueForm::Chain, 0x3FFFFFFF, {PageNumber{2}, 0}, 0});
    EXPECT_EQ(ErrorOf([&] { static_cast<void>(jet::table::ReadLongValue(*pager_, field)); }), 3343);
}

}  // namespace
