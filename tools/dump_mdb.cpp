// SPDX-License-Identifier: Apache-2.0
// dump_mdb: prints what a database holds: its tables, or the rows of one as JSON.
#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/catalog/Catalog.h"
#include "jet/io/StdFile.h"
#include "tools/RowJson.h"
#include "tools/Schema.h"

#include <iostream>
#include <string_view>
#include <vector>

namespace {

using jet::catalog::Catalog;
using jet::catalog::CatalogEntry;
using jet::catalog::ObjectKind;

constexpr int kDone = 0, kFailed = 1, kMisused = 2;

constexpr std::string_view kUsage =
    R"(usage: dump_mdb [--system] FILE      the tables, fields and indexes, as text
       dump_mdb --json FILE          the same, one JSON object a table
       dump_mdb --json FILE TABLE    the rows of a table, one JSON object a row
       dump_mdb --help

--system      the engine's own tables too
--password P  of a file that has one

Exit code: 0 done, 1 the file or table cannot be read, 2 wrong usage.
)";

struct Wishes {
    bool json = false, system = false, help = false, misused = false;
    std::string password;
    std::vector<std::string> names;  // the file and the table
};

Wishes WishesOf(int count, char** arguments)
{
    Wishes wishes;
    for (int i = 1; i < count; ++i) {
        const std::string_view argument = arguments[i];
        if (argument == "--help" || argument == "-h")
            wishes.help = true;
        else if (argument == "--json")
            wishes.json = true;
        else if (argument == "--system")
            wishes.system = true;
        else if (argument == "--password" && i + 1 < count)
            wishes.password = arguments[++i];
        else if (argument.substr(0, 2) == "--")
            wishes.misused = true;
        else
            wishes.names.emplace_back(argument);
    }
    const std::size_t most = wishes.json && !wishes.system ? 2 : 1;
    if (wishes.names.empty() || wishes.names.size() > most) wishes.misused = true;
    return wishes;
}

// One line for an object that is no table of this file.
std::string OtherText(const CatalogEntry& entry)
{
    switch (entry.kind) {
    case ObjectKind::LinkedTable:
        return "link " + entry.name + "\n";
    case ObjectKind::OdbcTable:
        return "server table " + entry.name + "\n";
    case ObjectKind::Query:
        return "query " + entry.name + "\n";
    case ObjectKind::LocalTable:
    case ObjectKind::Other:
        break;
    }
    return {};
}

void DumpSchema(const jet::pages::Pager& pager, const Catalog& catalog, const Wishes& wishes)
{
    const std::size_t bytesPerCharacter = pager.Version().bytesPerCharacter;
    if (!wishes.json)
        std::cout << wishes.names[0] << ": Jet " << pager.Version().name << ", "
                  << pager.PageCount() << " pages of " << pager.Version().pageSize << " bytes\n";
    for (const CatalogEntry& entry : catalog.Entries()) {
        if (entry.system && !wishes.system) continue;
        if (entry.kind != ObjectKind::LocalTable) {
            if (!wishes.json) std::cout << OtherText(entry);
            continue;
        }
        const auto table = catalog.Open(entry.name);
        if (wishes.json)
            std::cout << tools::SchemaJson(table, bytesPerCharacter) << "\n";
        else
            std::cout << "\n" << tools::SchemaText(table, bytesPerCharacter);
    }
}

void DumpRows(const Catalog& catalog, const std::string& name)
{
    const auto table = catalog.Open(name);
    const auto rows = table.rows->Scan();
    while (rows->Next())
        std::cout << tools::RowJson(*table.rows, rows->Row()) << "\n";
}

void Dump(const Wishes& wishes)
{
    jet::io::StdFileSystem files;
    const auto pager = jet::pages::Pager::Open(files, wishes.names[0], jet::io::OpenMode::ReadOnly,
                                               wishes.password);
    const Catalog catalog(pager);
    if (wishes.names.size() == 2)
        DumpRows(catalog, wishes.names[1]);
    else
        DumpSchema(*pager, catalog, wishes);
}

}  // namespace

int main(int count, char** arguments)
{
    const Wishes wishes = WishesOf(count, arguments);
    if (wishes.help) {
        std::cout << kUsage;
        return kDone;
    }
    if (wishes.misused) {
        std::cerr << kUsage;
        return kMisused;
    }
    try {
        Dump(wishes);
        std::cout.flush();
        return std::cout ? kDone : kFailed;
    } catch (const base::NumberedError& error) {
        std::cout.flush();
        std::cerr << "dump_mdb: " << error.what() << " (" << error.Number() << ")\n";
        if (!error.Detail().empty()) std::cerr << "dump_mdb: " << error.Detail() << "\n";
        return kFailed;
    }
}
