// SPDX-License-Identifier: Apache-2.0
// Catalog: the tables of a database by name, their field properties, and the making of new ones.
#pragma once

#include "base/NumberedError.h"
#include "jet/catalog/NewLink.h"
#include "jet/catalog/NewRelationship.h"
#include "jet/catalog/NewTable.h"
#include "jet/pages/WriteSet.h"
#include "jet/table/NativeTable.h"

#include <memory>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace jet::catalog {

// What a catalog row says of one object. Kinds other than tables are named so that a name can be
// refused, and left alone.
enum class ObjectKind { LocalTable, LinkedTable, OdbcTable, Query, Other };

struct CatalogEntry {
    std::int32_t id = 0;  // of a local table: its definition page
    std::string name;     // as stored
    ObjectKind kind = ObjectKind::Other;
    std::uint32_t flags = 0;
    bool system = false;
};

// A table opened by name.
struct OpenTable {
    CatalogEntry entry;
    std::unique_ptr<table::NativeTable> rows;
    std::vector<FieldProperties> properties;  // by place in rows->Definition().columns
    ValidationRule rule;                      // of whole rows
    // Why the properties cannot be read: then none of them is known, and no row may be stored that
    // they might refuse.
    std::optional<base::NumberedError> unread;
    std::size_t bytesPerCharacter = 2;  // of a text column's length
};

class Catalog {
public:
    explicit Catalog(std::shared_ptr<pages::Pager> pager);
    ~Catalog();

    // All objects, system ones included, in catalog order; read afresh.
    [[nodiscard]] std::vector<CatalogEntry> Entries() const;
    // Rule: case is ignored.
    [[nodiscard]] std::optional<CatalogEntry> Find(std::string_view name) const;
    // The table of this file whose definition begins on this page.
    [[nodiscard]] std::optional<CatalogEntry> Find(format::PageNumber page) const;

    // Rule:   a table whose properties cannot be read can be read itself.
    // Errors: 3078 no such table, 3343/3049.
    [[nodiscard]] OpenTable Open(std::string_view name) const;

    // Nothing when no link has that name.
    [[nodiscard]] std::optional<NewLink> Link(std::string_view name) const;
    // Creates the link at once; whether it leads anywhere is the caller's business.
    // Errors: 3010, 3012, 3125.
    void Create(const NewLink& link, base::Date now);
    // Takes the link out of this file; the other file stays as it is.
    // Errors: 3265 no such link, 3251 a table of this file.
    void DeleteLink(std::string_view name);

    [[nodiscard]] std::vector<NewRelationship> Relationships() const;
    // Creates the relationship at once; an enforced one gives both tables an index.
    // Errors: 3012 the name is taken, 3011 unknown table, 3018 unknown field, 3615 fields of
    //         different types, 3015 no unique index over the referenced fields, 3201 a row that
    //         refers to none, 3284 an index of that name, 3001 too many fields or indexes, 3125,
    //         3262 or 3009 another program has one of the tables open.
    void Create(const NewRelationship& relationship, base::Date now);
    // Takes the relationship out, and the indexes that nothing else needs.
    // Errors: 3265 no such relationship, 3262 or 3009 another program has one of the tables open.
    void DeleteRelationship(std::string_view name, base::Date now);

    // Creates the table at once, in one write set; `now` becomes its date of creation.
    // Errors: 3010 the name is taken by a table, 3012 by a query, 3264 no fields, 3125 bad name,
    //         3191 two fields of one name, 3259 unknown type, 3190 too many fields, 3017 a size too
    //         long, 3018 an index over an unknown field, 3283 two primary keys, 3284 two indexes of
    //         one name, 3001 too many indexes or fields in one, 3027 read-only.
    void Create(const NewTable& table, base::Date now);

    // A new, empty database with its system tables.
    // Errors: 3204 the file exists, 3044, 3051, 3031 for a password that is too long.
    static void CreateDatabase(io::FileSystem& files, const std::string& path,
                               const format::FileVersion& version,
                               const format::Protection& protection = {});

private:
    // Errors: 3010, 3012.
    void RequireFreeName(const std::string& name) const;

    std::shared_ptr<pages::Pager> pager_;
};

}  // namespace jet::catalog
