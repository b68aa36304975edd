// SPDX-License-Identifier: Apache-2.0
// PowerCutTest: stores of single records during which the machine stops, at every operation of its
// disk.
#include "tests/support/PowerCut.h"

#include "tests/jet/dao/DaoFixture.h"
#include "tests/support/IntegrityExpectations.h"
#include "tests/support/Records.h"

#include <deque>
#include <iterator>
#include <numeric>
#include <stdexcept>
#include <tuple>

namespace dao {
namespace {

using base::Value;
using tests::PowerCut;

constexpr const char* kTable = "Job";
constexpr std::int32_t kRows = 60;

// Long enough that an index page holds but some thirty, and different in its first letters.
std::string Owner(std::int32_t number)
{
    const std::string digits = std::to_string(number * 37 % 100);
    return digits + std::string(50, static_cast<char>('a' + number % 26)) + " owner";
}

std::string Memo(std::size_t length, char letter)
{
    return std::string(length, letter) + " end";
}

void Fill(Recordset& rows, std::int32_t number, const std::string& note)
{
    rows["Number"] = number;
    rows["Owner"] = Owner(number);
    rows["Note"] = note;
}

void FindJob(Recordset& rows, std::int32_t number)
{
    rows.FindFirst("Number = " + std::to_string(number));
    if (rows.NoMatch()) throw std::logic_error("no job " + std::to_string(number));
}

// One store. Each leaves the database in a state of its own.
using Store = std::function<void(Recordset&)>;

Store Insert(std::int32_t number, const std::string& note)
{
    return [=](Recordset& rows) {
        rows.AddNew();
        Fill(rows, number, note);
        rows.Update();
    };
}

// Takes the record to new places in all indexes but the counter's.
Store Renumber(std::int32_t number, std::int32_t to, const std::string& note)
{
    return [=](Recordset& rows) {
        FindJob(rows, number);
        rows.Edit();
        Fill(rows, to, note);
        rows.Update();
    };
}

Store Remark(std::int32_t number, const std::string& note)
{
    return [=](Recordset& rows) {
        FindJob(rows, number);
        rows.Edit();
        rows["Note"] = note;
        rows.Update();
    };
}

Store Delete(std::int32_t number)
{
    return [=](Recordset& rows) {
        FindJob(rows, number);
        rows.Delete();
    };
}

// A note lies in its record while short, on a page with others when longer, on pages of its own
// when long: these take it from each to each.
const std::vector<Store>& Stores()
{
    static const std::vector<Store> stores{
        Insert(501, "short"),
        Insert(502, Memo(9000, 'w')),
        Insert(503, Memo(1500, 'x')),
        Remark(5, Memo(1800, 'm')),
        Remark(5, Memo(7000, 'n')),
        Remark(5, "short again"),
        Remark(9, Memo(9000, 'o')),
        Renumber(20, 520, Memo(2000, 'p')),
        Renumber(502, 2, Memo(200, 'q')),
        Delete(9),
        Delete(503),
        Delete(1),
    };
    return stores;
}

using CutAndKind = std::tuple<PowerCut, FileKind>;

class PowerCutTest : public DaoTest, public testing::WithParamInterface<CutAndKind> {
protected:
    PowerCutTest() : DaoTest(std::get<1>(GetParam()))
    {
        MakeJobs();
        Recordset rows = Open(kTable);
        for (std::int32_t i = 1; i <= kRows; ++i) {
            if (i != 2) Insert(i, Memo(static_cast<std::size_t>(i) * 2, 'a'))(rows);
        }
        rows.Close();
        database.Close();
        RecordStates();
    }

    void MakeJobs()
    {
        TableDef table(kTable);
        FieldDef counter = TableDef::CreateField("Entry", FieldType::Long);
        counter.attributes = kAutoIncrField;
        table.Append(counter);
        table.Append(TableDef::CreateField("Number", FieldType::Long));
        table.Append(TableDef::CreateField("Owner", FieldType::Text, 100));
        table.Append(TableDef::CreateField("Note", FieldType::Memo));
        table.Append(IndexDef{
            .name = "PrimaryKey", .fields = {{.field = "Entry"}}, .primary = true, .unique = true});
        table.Append(IndexDef{.name = "Number", .fields = {{.field = "Number"}}, .unique = true});
        table.Append(IndexDef{.name = "Owner", .fields = {{.field = "Owner"}}});
        table.Append(
            IndexDef{.name = "Both",
                     .fields = {{.field = "Owner", .ascending = false}, {.field = "Number"}}});
        database.Append(table);
    }

    // What the table and the file are before the first store and after each.
    void RecordStates()
    {
        tests::CopyDatabase(files, kFile, states_.emplace_back().file);
        states_.back().rows = RowsIn(states_.back().file);
        for (const Store& store : Stores()) {
            jet::io::MemoryFileSystem& before = states_.back().file;
            State& after = states_.emplace_back();
            tests::CopyDatabase(before, kFile, after.file);
            Opened(after.file).Do(store);
            after.rows = RowsIn(after.file);
        }
    }

    // An engine of its own on the table.
    struct Opened {
        explicit Opened(jet::io::FileSystem& on)
            : own({[] { return kNow; }}, on), opened(own.DefaultWorkspace().OpenDatabase(kFile)),
              rows(opened.OpenRecordset(std::string("SELECT * FROM ") + kTable))
        {
        }
        void Do(const Store& store) { store(rows); }

        DBEngine own;
        Database opened;
        Recordset rows;
    };

    static std::vector<tests::Record> RowsIn(jet::io::FileSystem& on)
    {
        Opened reader(on);
        return tests::RowsOf(reader.rows);
    }

    // How many bytes changed since that state. The first page is left out: its words count commits.
    static std::ptrdiff_t ChangedBytes(jet::io::MemoryFileSystem& found,
                                       jet::io::MemoryFileSystem& before)
    {
        const std::ptrdiff_t page = tests::IsJet3(std::get<1>(GetParam())) ? 2048 : 4096;
        const std::vector<std::byte>& now = found.Content(kFile);
        const std::vector<std::byte>& then = before.Content(kFile);
        EXPECT_EQ(now.size(), then.size());
        if (now.size() != then.size()) return std::ssize(now);
        return std::inner_product(now.begin() + page, now.end(), then.begin() + page,
                                  std::ptrdiff_t{0}, std::plus<>(), std::not_equal_to<>());
    }

    // A store that was taken back leaves no byte. Only a counter's number that was handed out for a
    // new record stays used; its lowest byte shows that.
    void ExpectTakenBack(std::size_t store, jet::io::MemoryFileSystem& found)
    {
        const bool inserts = states_[store + 1].rows.size() > states_[store].rows.size();
        EXPECT_LE(ChangedBytes(found, states_[store].file), inserts ? 1 : 0);
    }

    // Stops the machine at an operation of one store, and copies what it finds at its next start.
    // The store before has left its journal to be written over. Whether the store returned.
    bool CutAt(std::size_t store, std::size_t operation, jet::io::MemoryFileSystem& found)
    {
        const std::size_t first = store == 0 ? 0 : store - 1;
        jet::io::MemoryFileSystem memory;
        tests::CopyDatabase(states_[first].file, kFile, memory);
        tests::FaultFileSystem disk(memory);
        Opened stopping(disk);
        if (first < store) stopping.Do(Stores()[first]);
        const PowerCut& cut = std::get<0>(GetParam());
        disk.PullThePlugAfter(operation, cut.last, cut.unflushed);
        const int number = ErrorOf([&] { stopping.Do(Stores()[store]); });
        // The end of the journal is nobody's loss.
        EXPECT_TRUE(number == 3043 ? disk.PowerIsOut() : number == 0) << number;
        disk.Reboot();
        tests::CopyDatabase(memory, kFile, found);
        return number == 0;
    }

    // Whether the found file holds the store, which it does wholly or not at all.
    [[nodiscard]] bool Holds(std::size_t store, jet::io::MemoryFileSystem& found)
    {
        const std::vector<tests::Record> rows = RowsIn(found);
        EXPECT_FALSE(found.Exists(std::string(kFile) + ".journal.set-aside"));
        EXPECT_SPOTLESS(found, kFile);
        if (rows == states_[store].rows) {
            ExpectTakenBack(store, found);
            return false;
        }
        EXPECT_EQ(rows, states_[store + 1].rows);
        return true;
    }

    struct State {
        jet::io::MemoryFileSystem file;
        std::vector<tests::Record> rows;
    };
    std::deque<State> states_;
};

INSTANTIATE_TEST_SUITE_P(Cuts, PowerCutTest,
                         testing::Values(CutAndKind{tests::kPowerCuts[0], FileKind::Jet4},
                                         CutAndKind{tests::kPowerCuts[1], FileKind::Jet4},
                                         CutAndKind{tests::kPowerCuts[2], FileKind::Jet4},
                                         // The one that leaves half pages.
                                         CutAndKind{tests::kPowerCuts[1], FileKind::Jet3},
                                         CutAndKind{tests::kPowerCuts[1], FileKind::EncodedJet4}),
                         [](const auto& each) {
                             return tests::NameOf(std::get<0>(each.param)) +
                                    NameOf(std::get<1>(each.param));
                         });

TEST_P(PowerCutTest, EveryStoreIsThereWholeOrNotAtAll)
{
    for (std::size_t store = 0; store < Stores().size(); ++store) {
        std::size_t undone = 0;
        std::size_t operation = 0;
        for (bool returned = false; !returned; ++operation) {
            SCOPED_TRACE("store " + std::to_string(store) + " operation " +
                         std::to_string(operation));
            ASSERT_LT(operation, 100U);
            jet::io::MemoryFileSystem found;
            returned = CutAt(store, operation, found);
            const bool held = Holds(store, found);
            EXPECT_TRUE(held || !returned) << "what returned is lost";
            if (!held) ++undone;
            if (testing::Test::HasFailure()) return;
        }
        // At least: journal stored, flushed; word, a page, word, each stored and flushed.
        EXPECT_GT(operation, 8U) << "store " << store;
        EXPECT_GT(undone, 3U) << "store " << store;
    }
}

TEST_P(PowerCutTest, EachStoreChangesTheTable)
{
    for (std::size_t i = 1; i < states_.size(); ++i)
        EXPECT_NE(states_[i].rows, states_[i - 1].rows) << "store " << i;
}

}  // namespace
}  // namespace dao
