// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/SystemTables.h"

#include "base/NumberedError.h"

#include <algorithm>
#include <array>
#include <limits>

namespace jet::catalog {

namespace {

using table::Assignment;
using table::NativeTable;

// The first bytes of account ids before they are masked.
constexpr std::array<std::byte, 2> kAdmin{std::byte{0x03}, std::byte{0x01}};
constexpr std::array<std::byte, 2> kCreator{std::byte{0x02}, std::byte{0x04}};

class Row {
public:
    explicit Row(const NativeTable& table) : table_(table) {}

    Row& Set(std::string_view column, base::Value value)
    {
        values_.push_back({PlaceOf(table_, column), std::move(value)});
        return *this;
    }
    [[nodiscard]] const std::vector<Assignment>& Values() const { return values_; }

private:
    const NativeTable& table_;
    std::vector<Assignment> values_;
};

// The placeholder's id in this file: every id is masked with one stream of bytes, which the known
// id of the standard owner lays bare.
base::Bytes CreatorId(const base::Bytes& owner)
{
    if (owner.size() != kAdmin.size()) return {};
    base::Bytes creator;
    for (std::size_t i = 0; i < owner.size(); ++i)
        creator.push_back(owner[i] ^ kAdmin[i] ^ kCreator[i]);
    return creator;
}

void Join(std::vector<RightsRow>& rows, RightsRow row)
{
    const auto known = std::find_if(rows.begin(), rows.end(), [&](const RightsRow& other) {
        return other.account == row.account;
    });
    if (known == rows.end())
        rows.push_back(std::move(row));
    else
        known->rights |= row.rights;
}

}  // namespace

std::size_t PlaceOf(const NativeTable& table, std::string_view column)
{
    const auto place = table.Definition().FindColumn(column);
    if (!place) throw base::NumberedError(3343).At("system table lacks " + std::string(column));
    return *place;
}

void InsertObject(pages::WriteSet& changes, NativeTable& objects, const ObjectRow& row)
{
    Row values(objects);
    values.Set("Id", row.id)
        .Set("ParentId", row.parent)
        .Set("Name", row.name)
        .Set("Type", static_cast<std::int16_t>(row.type))
        .Set("DateCreate", row.created)
        .Set("DateUpdate", row.created)
        .Set("Owner", row.owner)
        .Set("Flags", static_cast<std::int32_t>(row.flags));
    if (!row.properties.empty()) values.Set("LvProp", row.properties);
    if (!row.database.empty()) values.Set("Database", row.database);
    if (!row.connect.empty()) values.Set("Connect", row.connect);
    if (!row.foreignName.empty()) values.Set("ForeignName", row.foreignName);
    objects.Insert(changes, values.Values());
}

std::vector<format::RowId> RowsWith(const NativeTable& table, std::string_view column,
                                    const base::Value& value)
{
    const std::size_t place = PlaceOf(table, column);
    std::vector<format::RowId> found;
    const auto rows = table.Scan();
    while (rows->Next())
        if (table.ValueOf(rows->Row(), place) == value) found.push_back(rows->Id());
    return found;
}

void DeleteObject(pages::WriteSet& changes, NativeTable& objects, NativeTable& rights,
                  std::int32_t id)
{
    for (const format::RowId row : RowsWith(rights, "ObjectId", id))
        rights.Delete(changes, row);
    for (const format::RowId row : RowsWith(objects, "Id", id))
        objects.Delete(changes, row);
}

void InsertRights(pages::WriteSet& changes, NativeTable& rights, const RightsRow& row)
{
    Row values(rights);
    values.Set("ObjectId", row.object)
        .Set("SID", row.account)
        .Set("ACM", row.rights)
        .Set("FInheritable", row.inheritable);
    rights.Insert(changes, values.Values());
}

std::int32_t NextObjectId(const NativeTable& objects)
{
    constexpr std::int32_t kFirst = std::numeric_limits<std::int32_t>::min();
    const std::size_t id = PlaceOf(objects, "Id");
    std::int32_t next = kFirst;
    const auto rows = objects.Scan();
    while (rows->Next()) {
        const auto known = ContentOf<std::int32_t>(objects, rows->Row(), id);
        if (known < 0) next = std::max(next, known + 1);
    }
    return next;
}

void InsertInheritedRights(pages::WriteSet& changes, NativeTable& rights, std::int32_t object,
                           std::int32_t container, const base::Bytes& owner)
{
    for (RightsRow& row : InheritedRights(rights, container, owner)) {
        row.object = object;
        InsertRights(changes, rights, row);
    }
}

base::Bytes OwnerOfDatabase(const NativeTable& objects)
{
    const std::size_t id = PlaceOf(objects, "Id");
    const auto rows = objects.Scan();
    while (rows->Next())
        if (ContentOf<std::int32_t>(objects, rows->Row(), id) == kDatabaseObject)
            return ContentOf<base::Bytes>(objects, rows->Row(), PlaceOf(objects, "Owner"));
    throw base::NumberedError(3343).At("no row MSysDb in MSysObjects");
}

std::vector<RightsRow> InheritedRights(const NativeTable& rights, std::int32_t container,
                                       const base::Bytes& owner)
{
    const std::size_t object = PlaceOf(rights, "ObjectId"), sid = PlaceOf(rights, "SID"),
                      acm = PlaceOf(rights, "ACM"), inheritable = PlaceOf(rights, "FInheritable");
    const base::Bytes creator = CreatorId(owner);
    std::vector<RightsRow> inherited;
    const auto rows = rights.Scan();
    while (rows->Next()) {
        const format::RowView& row = rows->Row();
        if (ContentOf<std::int32_t>(rights, row, object) != container) continue;
        if (!ContentOf<bool>(rights, row, inheritable)) continue;
        base::Bytes account = ContentOf<base::Bytes>(rights, row, sid);
        if (account == creator) account = owner;
        Join(inherited, {.object = 0,
                         .account = std::move(account),
                         .rights = ContentOf<std::int32_t>(rights, row, acm),
                         .inheritable = false});
    }
    return inherited;
}

}  // namespace jet::catalog
