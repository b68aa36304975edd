// SPDX-License-Identifier: Apache-2.0
#include "tests/jet/check/DamageFixture.h"

#include "jet/catalog/Catalog.h"
#include "jet/format/DataPage.h"
#include "jet/format/PageEncoding.h"
#include "jet/pages/UsageMap.h"
#include "jet/table/NativeTable.h"

#include <algorithm>
#include <stdexcept>

namespace tests {

using jet::catalog::Catalog;
using jet::format::ColumnType;
using jet::format::FileVersion;
using jet::pages::Pager;
using jet::table::Assignment;
using jet::table::NativeTable;

namespace {

constexpr std::int32_t kRows = 300;
constexpr std::size_t kMoved = 5;

jet::catalog::NewColumn Column(const char* name, ColumnType type)
{
    jet::catalog::NewColumn column;
    column.name = name;
    column.type = type;
    return column;
}

jet::catalog::NewTable Wish()
{
    auto id = Column("Id", ColumnType::Long);
    id.autoNumber = true;
    auto name = Column("Name", ColumnType::Text);
    name.size = 80;
    name.properties.required = true;
    name.properties.rule.text = "A job has the name of its customer.";
    return {.name = "Job",
            .columns = {id, name, Column("Note", ColumnType::Memo)},
            .indexes = {{.name = "PrimaryKey", .columns = {{.column = "Id"}}, .primary = true},
                        {.name = "ByName", .columns = {{.column = "Name"}}}}};
}

// 0 in the row, 1 on one page, 2 over several, 3 none at all.
base::Value Note(std::int32_t number)
{
    switch (number % 4) {
    case 0:
        return "short";
    case 1:
        return std::string(500, 'm');
    case 2:
        return std::string(number < 40 ? 6000 : 100, 'l');
    default:
        return base::Null{};
    }
}

std::string Name(std::int32_t number)
{
    return "A customer with a rather long name " + std::to_string(1000 + number);
}

std::shared_ptr<Pager> OpenFile(jet::io::FileSystem& files)
{
    return Pager::Open(files, DamagedFile::kPath, jet::io::OpenMode::ReadWrite);
}

PageNumber DefinitionOf(const std::shared_ptr<Pager>& pager, const char* table)
{
    const auto entry = Catalog(pager).Find(table);
    return PageNumber{static_cast<std::uint32_t>(entry.value().id)};
}

// All rows in storage order but the last, which is deleted again; one moves away.
std::vector<RowId> FillRows(Pager& pager, NativeTable& job)
{
    const std::size_t id = job.Definition().FindColumn("Id").value();
    const std::size_t name = job.Definition().FindColumn("Name").value();
    const std::size_t note = job.Definition().FindColumn("Note").value();
    std::vector<RowId> rows;
    jet::pages::WriteSet changes(pager);
    for (std::int32_t i = 0; i < kRows; ++i) {
        const std::vector<Assignment> values{{id, i + 1}, {name, Name(i)}, {note, Note(i)}};
        rows.push_back(job.Insert(changes, values));
    }
    job.Update(changes, rows[kMoved], std::vector<Assignment>{{name, std::string(80, 'Z')}});
    job.Delete(changes, rows.back());
    rows.pop_back();
    changes.Commit();
    return rows;
}

}  // namespace

DamagedFile::DamagedFile(FileKind kind)
    : kind_(kind), version_(IsJet3(kind) ? jet::format::kJet3 : jet::format::kJet4),
      sound_(SoundOf(version_))
{
    files_.Create(kPath)->Write(0, sound_.bytes);
    for (const RowId row : sound_.rows)
        rows_.push_back(PlaceOf(row));
    moved_ = PlaceOf(sound_.moved);
}

const DamagedFile::Sound& DamagedFile::SoundOf(const FileVersion& version)
{
    static const Sound jet3 = MakeSound(jet::format::kJet3);
    static const Sound jet4 = MakeSound(jet::format::kJet4);
    return version.code == jet::format::kJet3.code ? jet3 : jet4;
}

DamagedFile::Sound DamagedFile::MakeSound(const FileVersion& version)
{
    Sound sound;
    jet::io::MemoryFileSystem files;
    Catalog::CreateDatabase(files, kPath, version);
    const auto pager = OpenFile(files);
    Catalog(pager).Create(Wish(), base::Date{40000});
    Catalog(pager).Create(
        {.name = "Jot", .columns = {Column("Id", ColumnType::Long)}, .indexes = {}},
        base::Date{40000});
    const PageNumber page = DefinitionOf(pager, "Job");
    NativeTable job(pager, page);
    sound.rows = FillRows(*pager, job);
    sound.moved = sound.rows[kMoved];
    sound.job = NativeTable(pager, page).Definition();
    sound.objects = NativeTable(pager, PageNumber{2}).Definition();
    sound.jobPages = jet::pages::UsageMap(*pager, sound.job.ownedPages).Pages();
    sound.bytes = files.Content(kPath);
    return sound;
}

// The head of the sound file has no key (0), so what is added to it under its mask becomes the key.
void DamagedFile::Store()
{
    if (stored_ || kind_ == FileKind::Jet3 || kind_ == FileKind::Jet4) return;
    stored_ = true;
    constexpr std::uint32_t key = 0x5A17C0DE;
    const jet::format::MutableSpan all(Content());
    const std::size_t keyAt = version_.header->encodingKey;
    if (all.size() < keyAt + sizeof key) return;
    jet::format::WriteU32(all, keyAt, jet::format::ReadU32(all, keyAt) ^ key);
    const std::size_t size = version_.pageSize;
    for (std::uint32_t page = 0; page * size < all.size(); ++page) {
        const std::size_t at = page * size;
        jet::format::ApplyPageEncoding(all.subspan(at, std::min(size, all.size() - at)),
                                       PageNumber{page}, key);
    }
}

jet::check::CheckReport DamagedFile::Check()
{
    Store();
    return jet::check::CheckIntegrity(files_, kPath);
}

const jet::format::IndexDefinition& DamagedFile::Tree(const std::string& name) const
{
    for (const jet::format::NamedIndex& index : Job().namedIndexes)
        if (index.name == name) return Job().indexes[index.tree];
    throw std::logic_error("no index " + name);
}

std::size_t DamagedFile::NoteAt(const RowPlace& row)
{
    const jet::format::Span bytes = jet::format::Slice(PageAt(row.id.page), row.offset, row.length);
    const jet::format::RowView view(bytes, Job());
    const jet::format::Span field = view.Field(Job().FindColumn("Note").value());
    return row.offset + static_cast<std::size_t>(field.data() - bytes.data());
}

RowPlace DamagedFile::PlaceOf(RowId row)
{
    const jet::format::Span page = PageAt(row.page);
    const jet::format::Span bytes = jet::format::DataPage(page).Row(row.slot);
    return {row, static_cast<std::size_t>(bytes.data() - page.data()), bytes.size()};
}

RowPlace DamagedFile::ObjectRow(const std::string& name)
{
    const auto pager = OpenFile(files_);
    const NativeTable objects(pager, PageNumber{2});
    const auto rows = objects.Scan();
    while (rows->Next()) {
        const base::Value value =
            objects.ValueOf(rows->Row(), objects.Definition().FindColumn("Name").value());
        if (value == base::Value(name)) return PlaceOf(rows->Id());
    }
    throw std::logic_error("no object " + name);
}

PageNumber DamagedFile::FirstLeaf(const std::string& tree)
{
    PageNumber page = Tree(tree).root;
    while (true) {
        const jet::format::IndexPageView view(PageAt(page), *version_.indexPage);
        if (view.IsLeaf()) return page;
        page = view.Child(0);
    }
}

jet::format::MutableSpan DamagedFile::PageAt(PageNumber page)
{
    return jet::format::MutableSpan(Content()).subspan(Raw(page) * version_.pageSize,
                                                       version_.pageSize);
}

void DamagedFile::Put8(PageNumber page, std::size_t offset, std::uint8_t value)
{
    jet::format::WriteU8(PageAt(page), offset, value);
}

void DamagedFile::Put16(PageNumber page, std::size_t offset, std::uint16_t value)
{
    jet::format::WriteU16(PageAt(page), offset, value);
}

void DamagedFile::Put32(PageNumber page, std::size_t offset, std::uint32_t value)
{
    jet::format::WriteU32(PageAt(page), offset, value);
}

void DamagedFile::PutNumber(PageNumber page, std::size_t offset, std::uint16_t value)
{
    if (version_.row->number == 1)
        Put8(page, offset, static_cast<std::uint8_t>(value));
    else
        Put16(page, offset, value);
}

std::uint16_t DamagedFile::Get16(PageNumber page, std::size_t offset)
{
    return jet::format::ReadU16(PageAt(page), offset);
}

void DamagedFile::SetInMap(RowId map, PageNumber page, bool member)
{
    const RowPlace row = PlaceOf(map);
    const std::uint32_t start = jet::format::ReadU32(PageAt(map.page), row.offset + 1);
    const std::size_t bit = Raw(page) - start;
    const std::size_t at = row.offset + 5 + bit / 8;
    if (bit / 8 + 5 >= row.length) throw std::logic_error("page beyond the map");
    const auto old = jet::format::ReadU8(PageAt(map.page), at);
    const auto mask = static_cast<std::uint8_t>(1U << (bit % 8));
    Put8(map.page, at, static_cast<std::uint8_t>(member ? old | mask : old & ~mask));
}

}  // namespace tests
