// SPDX-License-Identifier: Apache-2.0
// FuzzIndex: the input is pages of an index; they replace those of one index of the seed file.
//
// Layout: 1 byte format; the pages, one after the other.
// Claims: every call ends with a result or a numbered error; a page that was read can be written
//         anew and holds the same entries; taking an entry off a page and putting it back too.
#include "jet/format/IndexPage.h"
#include "jet/index/Index.h"
#include "jet/table/NativeTable.h"
#include "tests/fuzz/Fuzz.h"
#include "tests/fuzz/SeedFile.h"

#include <vector>

namespace {

using jet::format::IndexPageContent;
using jet::format::IndexPageLayout;
using jet::format::IndexPageView;
using jet::format::MutableSpan;
using jet::format::Span;

using Entries = std::vector<std::vector<std::byte>>;

Entries EntriesOf(Span page, const IndexPageLayout& layout)
{
    const IndexPageView view(page, layout);
    Entries entries;
    for (std::size_t at = 0; at < view.Count(); ++at)
        entries.emplace_back(view.Entry(at).begin(), view.Entry(at).end());
    return entries;
}

// Takes the middle entry off and puts it back, in place where the page allows it.
void EraseAndInsert(Span page, const IndexPageLayout& layout)
{
    const Entries entries = EntriesOf(page, layout);
    if (entries.empty()) return;
    const std::size_t at = entries.size() / 2;
    std::vector<std::byte> copy(page.begin(), page.end());
    if (!jet::format::EraseInPlace(copy, IndexPageView(copy, layout), at, layout)) return;
    Entries fewer = entries;
    fewer.erase(fewer.begin() + static_cast<std::ptrdiff_t>(at));
    fuzz::Require(EntriesOf(copy, layout) == fewer, "only the entry meant is taken off");
    if (!jet::format::InsertInPlace(copy, IndexPageView(copy, layout), at, entries[at], layout))
        return;
    fuzz::Require(EntriesOf(copy, layout) == entries, "the entry is where it was");
}

void WriteAnew(Span page, const IndexPageLayout& layout)
{
    const IndexPageView view(page, layout);
    const IndexPageContent content = IndexPageContent::Of(view);
    if (!jet::format::Fits(content.entries, content.IsLeaf(), layout)) return;
    std::vector<std::byte> anew(layout.pageSize);
    jet::format::WriteIndexPage(anew, content, layout);
    fuzz::Require(EntriesOf(anew, layout) == EntriesOf(page, layout), "a page is written as read");
}

void UsePage(Span page, const IndexPageLayout& layout)
{
    std::vector<std::byte> whole(page.begin(), page.end());
    whole.resize(layout.pageSize);
    static_cast<void>(fuzz::NumberOf([&] {
        const IndexPageView view(whole, layout);
        for (std::size_t at = 0; at <= view.Count(); ++at)
            if (!view.IsLeaf()) static_cast<void>(view.Child(at));
        static_cast<void>(view.LowerBound(std::vector<std::byte>(20, std::byte{0x60})));
        EraseAndInsert(whole, layout);
        WriteAnew(whole, layout);
    }));
}

// Lays the pages over those of the index.
void Plant(jet::io::MemoryFileSystem& files, const fuzz::SeedFile& seed, fuzz::Input& input)
{
    std::vector<std::byte> bytes = seed.bytes;
    const std::size_t size = seed.version->pageSize;
    for (const auto page : seed.byName) {
        const Span content = input.Take(size);
        const auto at = static_cast<std::ptrdiff_t>(Raw(page) * size);
        std::copy(content.begin(), content.end(), bytes.begin() + at);
        UsePage(content, jet::format::IndexPageLayoutOf(*seed.version));
    }
    files.Create(fuzz::kPath)->Write(0, bytes);
}

void Walk(jet::pages::Pager& pager, const jet::table::NativeTable& table)
{
    const jet::index::Index index(pager, table.Definition(), fuzz::NameIndex(table.Definition()));
    static_cast<void>(fuzz::NumberOf([&] {
        auto cursor = index.Walk();
        for (bool more = cursor.First(); more; more = cursor.Next())
            static_cast<void>(cursor.Row());
    }));
    static_cast<void>(fuzz::NumberOf([&] {
        auto cursor = index.Walk();
        for (bool more = cursor.Last(); more; more = cursor.Previous())
            static_cast<void>(cursor.Key());
    }));
}

void Use(jet::table::NativeTable& table)
{
    using jet::table::Assignment;
    const std::size_t name = fuzz::NameColumn(table.Definition());
    std::vector<jet::format::RowId> rows;
    const auto scan = table.Scan();
    while (scan->Next())
        rows.push_back(scan->Id());
    const std::vector<Assignment> key{{name, "A customer with a rather long name 1042"}};
    static_cast<void>(fuzz::NumberOf([&] { static_cast<void>(table.FindByKey(key)); }));
    for (const std::size_t row : {std::size_t{1}, rows.size() / 2, rows.size() - 1}) {
        static_cast<void>(fuzz::NumberOf([&] { table.Update(rows[row], key); }));
        static_cast<void>(fuzz::NumberOf([&] { table.Delete(rows[row]); }));
        static_cast<void>(fuzz::NumberOf([&] { static_cast<void>(table.Insert(key)); }));
    }
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    fuzz::Input input(data, size);
    const fuzz::SeedFile& seed = fuzz::SeedFile::Of(fuzz::VersionOf(input.Byte()));
    jet::io::MemoryFileSystem files;
    Plant(files, seed, input);
    const auto pager = jet::pages::Pager::Open(files, fuzz::kPath, jet::io::OpenMode::ReadWrite);
    jet::table::NativeTable table(pager, seed.table.page);
    Walk(*pager, table);
    Use(table);
    return 0;
}
