// SPDX-License-Identifier: Apache-2.0
// The engine on damaged files: whatever is wrong with one, reading it ends with a result or a
// numbered error, after as many rows as the file can hold, and writes nothing.
#include "base/NumberedError.h"
#include "jet/dao/DBEngine.h"
#include "tests/jet/check/Damages.h"
#include "tests/support/ErrorOf.h"

#include <algorithm>
#include <array>
#include <gtest/gtest.h>
#include <random>

namespace {

using tests::Damage;
using tests::DamagedFile;
using tests::ErrorOf;

constexpr int kMostRows = 2000;  // a walk that goes further goes in a circle
constexpr int kDamaged = 3343;

// Damage that stops whoever reads the whole of Job. Other damage is passed unnoticed, or found by
// the check alone.
constexpr std::array<std::string_view, 29> kStopsReading{"DataPageOfAnotherType",
                                                         "DataPageOfAnotherOwner",
                                                         "MoreSlotsThanAPageMayHave",
                                                         "RowStartOutsideThePage",
                                                         "RowStartInTheSlots",
                                                         "RowsOverlap",
                                                         "OwnedMapNamesAPageOfAnIndex",
                                                         "OwnedMapNamesAPageBehindTheFile",
                                                         "MapOfUnknownForm",
                                                         "MapThatStartsBehindTheFile",
                                                         "MapNamesABitmapPageThatIsNone",
                                                         "DefinitionNamesAMapThatIsNotThere",
                                                         "DefinitionLongerThanItsPages",
                                                         "ColumnNumberBeyondTheCounter",
                                                         "DefinitionWithoutEndMark",
                                                         "MoreIndexesThanDescribed",
                                                         "SystemTableIsNoDefinition",
                                                         "VariableValueStartsBehindTheRow",
                                                         "MemoOfUnknownForm",
                                                         "PointerToARowThatDidNotMove",
                                                         "PointerBehindTheFile",
                                                         "PointerToItself",
                                                         "MemoRefersToNothing",
                                                         "ChainOfAMemoIsALoop",
                                                         "ChainOfAMemoLeavesTheFile",
                                                         "ChainOfAMemoEndsEarly",
                                                         "MemoRefersToARow",
                                                         "TableThatIsADataPage",
                                                         "ObjectThatIsNowhere"};

// What reading may end with: a result, damage, or a name that the damage took away.
constexpr std::array kAnswers{0, 3343, 3049, 3061, 3070, 3078};

template <class List, class T>
bool Contains(const List& list, const T& one)
{
    return std::find(list.begin(), list.end(), one) != list.end();
}

// Reads every value of a table, first to last, then searches by both of its indexes.
void ReadTable(dao::Database& database, const std::string& table)
{
    dao::Recordset rows = database.OpenRecordset(table, dao::RecordsetType::Dynaset);
    int read = 0;
    for (; read < kMostRows && !rows.Eof(); ++read, rows.MoveNext())
        for (int field = 0; field < rows.FieldCount(); ++field)
            static_cast<void>(rows[field].Value());
    EXPECT_LT(read, kMostRows) << table;
    if (table != "Job") return;
    rows.FindFirst("Id = 299");
    rows.FindFirst("Name = 'A customer with a rather long name 1298'");
}

class DamagedReadingTest : public testing::TestWithParam<tests::FileKind> {
protected:
    // The number that reading Job ends with, 0 for a result; other tables are read as well.
    int Read(DamagedFile& file)
    {
        file.Store();
        const std::vector<std::byte> before = file.Content();
        int number = 0;
        {
            dao::DBEngine engine({[] { return base::Date{38061}; }}, file.Files());
            dao::Database database;
            number = ErrorOf([&] {
                database = engine.DefaultWorkspace().OpenDatabase(DamagedFile::kPath);
                ReadTable(database, "Job");
            });
            static_cast<void>(ErrorOf([&] {
                for (const std::string& table : database.TableNames())
                    static_cast<void>(ErrorOf([&] { ReadTable(database, table); }));
            }));
        }
        EXPECT_TRUE(file.Content() == before) << "reading has written";
        return number;
    }
};

INSTANTIATE_TEST_SUITE_P(Kinds, DamagedReadingTest, testing::ValuesIn(tests::kFileKinds),
                         [](const auto& each) { return NameOf(each.param); });

TEST_P(DamagedReadingTest, EveryDamageEndsInAResultOrItsNumber)
{
    std::size_t stopped = 0;
    for (const Damage& damage : tests::Damages()) {
        SCOPED_TRACE(damage.name);
        DamagedFile file(GetParam());
        damage.plant(file);
        const int number = Read(file);
        EXPECT_TRUE(Contains(kAnswers, number)) << number;
        if (!Contains(kStopsReading, damage.name)) continue;
        EXPECT_EQ(number, kDamaged);
        ++stopped;
    }
    EXPECT_EQ(stopped, kStopsReading.size());
}

TEST_P(DamagedReadingTest, ASoundFileIsReadWhole)
{
    DamagedFile file(GetParam());
    EXPECT_EQ(Read(file), 0);
}

TEST_P(DamagedReadingTest, AFileCutShortIsRefusedOrReadSoFar)
{
    const std::size_t size = DamagedFile(GetParam()).Version().pageSize;
    for (const std::size_t length :
         {std::size_t{0}, std::size_t{1}, std::size_t{0x15}, size - 1, size, size + 1, 2 * size,
          3 * size, 10 * size + 7, 25 * size}) {
        DamagedFile file(GetParam());
        file.Content().resize(length);
        EXPECT_EQ(Read(file), kDamaged) << length;
    }
}

TEST_P(DamagedReadingTest, AFileOfAnotherKindIsRefused)
{
    DamagedFile file(GetParam());
    for (const std::string_view text : {"", "PK\x03\x04", "SQLite format 3", "Name;Hours\r\n"}) {
        std::fill(file.Content().begin(), file.Content().end(), std::byte{' '});
        std::transform(text.begin(), text.end(), file.Content().begin(),
                       [](char c) { return static_cast<std::byte>(c); });
        EXPECT_EQ(Read(file), kDamaged) << text;
    }
}

TEST_P(DamagedReadingTest, RandomBytesAreRefused)
{
    std::mt19937 random(7);
    DamagedFile file(GetParam());
    for (std::byte& byte : file.Content())
        byte = static_cast<std::byte>(random());
    EXPECT_EQ(Read(file), kDamaged);
}

// With the head of a sound file, random pages get as far as their first contradiction.
TEST_P(DamagedReadingTest, RandomPagesBehindASoundHeadEndInANumber)
{
    std::mt19937 random(11);
    const auto size = static_cast<std::ptrdiff_t>(DamagedFile(GetParam()).Version().pageSize);
    for (std::ptrdiff_t sound : {1, 2, 3, 12}) {
        DamagedFile file(GetParam());
        std::generate(file.Content().begin() + sound * size, file.Content().end(),
                      [&] { return static_cast<std::byte>(random()); });
        EXPECT_EQ(Read(file), kDamaged) << sound;
    }
}

}  // namespace
