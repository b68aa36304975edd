// SPDX-License-Identifier: Apache-2.0
// Orders: the list of open repair orders, as floor/cboRO.cpp fills it.
#include "base/Convert.h"
#include "bench/AfterOpening.h"
#include "bench/Machine.h"
#include "bench/Sqlite.h"

namespace {

constexpr const char* kOpenRepairOrders =
    "SELECT * FROM WorkOrder WHERE WOType In('WorkOrder', 'Estimate') AND Archived = FALSE "
    "ORDER BY WorkOrderNumber";
constexpr double kTarget = 0.5;

bench::Reading OurList(bench::OurShop& shop)
{
    bench::Reading reading;
    dao::Recordset orders = shop.Database().OpenRecordset(kOpenRepairOrders);
    if (orders.RecordCount() <= 0) return reading;
    for (orders.MoveFirst(); !orders.Eof(); orders.MoveNext()) {
        bench::AddField(reading, orders["WorkOrderNumber"]);
        bench::AddField(reading, orders["ServiceItemDescriptionL1"]);
        ++reading.rows;
    }
    return reading;
}

bench::Reading SqlitesList(const bench::Sqlite& database)
{
    constexpr int kNumber = 1;
    constexpr int kVehicle = 9;
    bench::SqliteStatement orders = database.Prepare(kOpenRepairOrders);
    bench::Reading reading;
    for (; orders.Step(); ++reading.rows) {
        orders.AddField(reading, kNumber);
        orders.AddField(reading, kVehicle);
    }
    return reading;
}

int Ask(const bench::BenchShop& shop)
{
    bench::Races races(shop.size);
    races.Run({'g', "the list of open repair orders, first after opening", 9},
              {bench::AfterOpening<bench::OurShop>("Lodrin", shop.Mdb(), OurList),
               bench::AfterOpening<bench::Sqlite>("SQLite, no index", shop.Plain(), SqlitesList,
                                                  kTarget)});

    bench::OurShop ours(shop.Mdb());
    const bench::Sqlite peer(shop.Plain());
    const bench::TablePages pages(shop.Mdb(), "WorkOrder");
    races.Run({'g', "the list of open repair orders, later", 9},
              {{"Lodrin", [&] { return OurList(ours); }},
               {"SQLite, no index", [&] { return SqlitesList(peer); }, kTarget},
               pages.Reading()});
    return races.ExitCode();
}

}  // namespace

int main(int count, char** words)
{
    return bench::Main(count, words, Ask);
}
