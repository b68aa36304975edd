// SPDX-License-Identifier: Apache-2.0
#include "jet/check/DefinitionCheck.h"

#include "base/NumberedError.h"
#include "base/Text.h"
#include "jet/format/SortKey.h"
#include "jet/format/TableDefinitionLayout.h"
#include "jet/format/TableDefinitionReader.h"
#include "jet/format/ValueCodec.h"

#include <algorithm>
#include <set>
#include <span>
#include <utility>

namespace jet::check {

namespace {

using format::TableDefinition;

struct Chain {
    std::vector<PageNumber> pages;
    std::vector<std::byte> joined;
};

// The chain of pages; nothing when a page of it is none.
std::optional<Chain> ReadChain(Inspection& inspection, PageNumber first)
{
    Chain chain;
    PageNumber from = first;
    for (PageNumber next = first; next != PageNumber::None;) {
        const auto page = inspection.Read(next, from, format::kDefinitionNext, "table definition");
        // A page that is claimed already would make the chain a loop.
        if (!page || !inspection.Claim(next, PageUse::Definition, first)) return std::nullopt;
        if (format::ReadU16(page->Bytes(), 0) != format::kDefinitionPage) {
            inspection.Found(chain.pages.empty() ? DefectKind::DefinitionPage
                                                 : DefectKind::DefinitionChain,
                             next, 0, "is no page of the table definition at " + PageText(first));
            return std::nullopt;
        }
        const format::DefinitionPage view(page->Bytes());
        const format::Span bytes = chain.pages.empty() ? page->Bytes() : view.Content();
        chain.joined.insert(chain.joined.end(), bytes.begin(), bytes.end());
        chain.pages.push_back(next);
        from = next;
        next = view.Next();
    }
    return chain;
}

// What a name is sorted by.
std::vector<std::byte> KeyOfName(const std::string& name, format::SortOrder order)
{
    try {
        return format::SortKeyOf(name, order);
    } catch (const base::NumberedError&) {
        const std::string lower = base::LowerName(name);
        const format::Span bytes = std::as_bytes(std::span(lower));
        return {bytes.begin(), bytes.end()};
    }
}

class DefinitionInspector {
public:
    DefinitionInspector(Inspection& inspection, const TableDefinition& table)
        : inspection_(inspection), table_(table)
    {
    }

    void Check()
    {
        CheckColumns();
        CheckIndexes();
    }

private:
    void Found(const std::string& what)
    {
        inspection_.Found(DefectKind::DefinitionContent, table_.page, 0, what);
    }

    void CheckColumns()
    {
        if (table_.columns.size() > table_.columnCounter) {
            Found(std::to_string(table_.columns.size()) + " columns, counter " +
                  std::to_string(table_.columnCounter));
        }
        std::set<std::string> names;
        for (const format::ColumnDefinition& column : table_.columns) {
            if (!names.insert(base::LowerName(column.name)).second)
                Found("two columns are called " + column.name);
            if (format::IsLongValue(column.type) != column.ownedPages.has_value())
                Found("column " + column.name + ": maps of long values and its type disagree");
        }
    }

    void CheckIndexes()
    {
        std::vector<bool> named(table_.indexes.size());
        std::vector<std::uint32_t> numbers;
        for (const format::NamedIndex& index : table_.namedIndexes) {
            named[index.tree] = true;
            numbers.push_back(index.number);
        }
        if (std::find(named.begin(), named.end(), false) != named.end())
            Found("an index has no name");
        std::sort(numbers.begin(), numbers.end());
        if (std::adjacent_find(numbers.begin(), numbers.end()) != numbers.end())
            Found("two named indexes have one number");
        CheckIndexNames();
        for (const format::IndexDefinition& index : table_.indexes)
            CheckTree(index);
    }

    // They stand in the order of the database's texts. Other writers do not keep it.
    void CheckIndexNames()
    {
        std::set<std::string> names;
        std::vector<std::byte> before;
        for (const format::NamedIndex& index : table_.namedIndexes) {
            // No name ends with blanks.
            if (!names.insert(base::LowerName(base::Trim(index.name))).second)
                Found("two indexes are called " + index.name);
            std::vector<std::byte> key = KeyOf(index.name);
            if (key < before)
                inspection_.Found(DefectKind::DefinitionIndexOrder, table_.page, 0,
                                  "index " + index.name + " stands behind one of a later name");
            before = std::move(key);
        }
    }

    void CheckTree(const format::IndexDefinition& index)
    {
        const std::uint8_t always = format::kJet4.indexAlways;
        if ((index.flags & always) != inspection_.Pager().Version().indexAlways)
            Found("an index has the flags " + std::to_string(index.flags));
        if (index.columns.empty()) Found("an index has no columns");
        for (const format::IndexColumn& column : index.columns) {
            if (!table_.FindNumber(column.columnNumber)) {
                Found("an index is over column " + std::to_string(column.columnNumber) +
                      ", which is not there");
            }
        }
    }

    [[nodiscard]] std::vector<std::byte> KeyOf(const std::string& name) const
    {
        return KeyOfName(name, inspection_.Header().sortOrder);
    }

    Inspection& inspection_;
    const TableDefinition& table_;
};

}  // namespace

std::optional<TableDefinition> CheckDefinition(Inspection& inspection, PageNumber first)
{
    const auto chain = ReadChain(inspection, first);
    if (!chain) return std::nullopt;
    const std::uint32_t length = format::ReadU32(chain->joined, format::kDefinitionLength);
    if (length > chain->joined.size() ||
        length < inspection.Pager().Version().definition->table.statistics + 2) {
        inspection.Found(DefectKind::DefinitionLength, first, format::kDefinitionLength,
                         "says " + std::to_string(length) + " bytes, its pages hold " +
                             std::to_string(chain->joined.size()));
        return std::nullopt;
    }
    try {
        auto table = format::ReadTableDefinition(format::Span(chain->joined).first(length),
                                                 inspection.Pager().Version(),
                                                 inspection.Pager().CodePage());
        if (format::ReadU16(chain->joined, length - 2) != format::kNoColumn)
            inspection.Found(DefectKind::DefinitionLength, first, format::kDefinitionLength,
                             "no end mark at its length of " + std::to_string(length));
        table.page = first;
        table.pages = chain->pages;
        DefinitionInspector(inspection, table).Check();
        return table;
    } catch (const base::NumberedError& error) {
        inspection.Found(DefectKind::DefinitionContent, first, 0, error.Detail());
        return std::nullopt;
    }
}

}  // namespace jet::check
