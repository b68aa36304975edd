// SPDX-License-Identifier: Apache-2.0
#include "tools/shop/Orders.h"

#include <cmath>

namespace tools::shop {

namespace {

std::int64_t PriceOf(Dice& dice, const PartName& part)
{
    return static_cast<std::int64_t>(part.price) * dice.Between(85, 125);
}

const PartName& SomePart(Dice& dice)
{
    return dice.PickOf(std::span<const PartName>(kParts));
}

base::Bytes SomeBytes(Dice& dice, int count)
{
    base::Bytes bytes;
    for (int i = 0; i < count; ++i)
        bytes.push_back(static_cast<std::byte>(dice.Between(0, 255)));
    return bytes;
}

}  // namespace

std::string PartNumberOf(const PartName& part)
{
    return std::string(part.prefix) + "-" + std::to_string(10000 + part.price);
}

PaperTotals WriteLines(ShopFile& file, Dice& dice, const Order& order)
{
    PaperTotals totals;
    const int lines = dice.Between(3, 14);
    for (int line = 1; line <= lines; ++line) {
        const bool replaces = dice.Percent(60);
        const PartName& part = SomePart(dice);
        const std::int64_t price = replaces ? PriceOf(dice, part) : 0;
        const double paint = dice.Percent(45) ? dice.Between(5, 35) / 10.0 : 0;
        RowValues row{{"EntryNumber", order.entry},
                      {"LineNumber", line},
                      {"Operation", replaces ? "Replace" : "Repair"},
                      {"Description", part.name},
                      {"PartType", replaces ? (dice.Percent(70) ? "New" : "Used") : ""},
                      {"Quantity", 1},
                      {"UnitPrice", Cents(price)},
                      {"LaborType", kLaborTypes[static_cast<std::size_t>(dice.Between(0, 6))].code},
                      {"LaborHours", dice.Between(2, 60) / 10.0},
                      {"PaintHours", paint},
                      {"Supplement", dice.Percent(10) ? 1 : 0},
                      {"Taxable", replaces},
                      {"Ordered", replaces && dice.Percent(80)}};
        if (replaces) {
            row.emplace_back("PartNumber", PartNumberOf(part));
            row.emplace_back("ListPrice", Cents(price * 11 / 10));
        }
        if (dice.Percent(6)) row.emplace_back("LineNote", dice.Pick(kRemarks));
        file.Add("EstimateLine", row);
        totals.parts += price;
        totals.paintHours += paint;
    }
    return totals;
}

void WritePurchases(ShopFile& file, Dice& dice, const People& people, const WorkingDays& days,
                    const Order& order)
{
    for (int i = dice.Between(0, 2); i > 0; --i) {
        const double ordered = days[order.opened] + 9.0 / 24;
        const std::int64_t subtotal = dice.Between(1500, 180000), freight = dice.Between(0, 4500);
        const bool received = order.opened + 5 < days.size();
        RowValues row{{"VendorNumber", dice.PickOf(std::span<const std::int32_t>(people.vendors))},
                      {"EntryNumber", order.entry},
                      {"Ordered", base::Date{ordered}},
                      {"Expected", base::Date{std::floor(ordered) + dice.Between(1, 6)}},
                      {"Subtotal", Cents(subtotal)},
                      {"Freight", Cents(freight)},
                      {"Total", Cents(subtotal + freight)},
                      {"Status", received ? "RC" : "OR"},
                      {"OrderedBy", dice.Pick(kFirstNames)}};
        if (received) {
            row.emplace_back("Received", base::Date{std::floor(ordered) + dice.Between(1, 5)});
            row.emplace_back("InvoiceNumber", std::to_string(dice.Between(100000, 999999)));
        }
        file.Add("PurchaseOrder", row);
    }
}

void WritePayment(ShopFile& file, Dice& dice, base::Date received, const Order& order,
                  std::int64_t cents)
{
    if (cents == 0) return;
    file.Add("Payment", {{"EntryNumber", order.entry},
                         {"Received", received},
                         {"Method", dice.Percent(75) ? "Insurance check" : "Card"},
                         {"Reference", std::to_string(dice.Between(10000, 99999))},
                         {"Amount", Cents(cents)},
                         {"Deposited", true}});
}

void WriteAttachments(ShopFile& file, Dice& dice, const WorkingDays& days, const Order& order)
{
    if (!dice.Percent(15)) return;
    file.Add("Attachment", {{"EntryNumber", order.entry},
                            {"Taken", base::Date{days[order.opened] + 8.5 / 24}},
                            {"Caption", SomePart(dice).name},
                            {"FileHash", SomeBytes(dice, 16)},
                            {"Thumbnail", SomeBytes(dice, dice.Between(40, 9000))}});
}

void WriteParts(ShopFile& file, Dice dice, const People& people, base::Date today)
{
    for (const PartName& part : kParts) {
        const std::int64_t list = static_cast<std::int64_t>(part.price) * 110;
        base::Decimal weight;
        weight.magnitude[0] = static_cast<std::uint32_t>(dice.Between(20, 38000));
        weight.scale = 3;
        file.Add("Part",
                 {{"PartNumber", PartNumberOf(part)},
                  {"Description", part.name},
                  {"VendorNumber", dice.PickOf(std::span<const std::int32_t>(people.vendors))},
                  {"Cost", Cents(list * 7 / 10)},
                  {"ListPrice", Cents(list)},
                  {"OnHand", dice.Between(0, 12)},
                  {"OnOrder", dice.Between(0, 3)},
                  {"ReorderPoint", 2},
                  {"Bin", "A" + std::to_string(dice.Between(1, 40))},
                  {"Weight", weight},
                  {"LastOrdered", base::Date{today.days - dice.Between(1, 300)}},
                  {"Discontinued", dice.Percent(8)}});
    }
}

}  // namespace tools::shop
