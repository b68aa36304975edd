// SPDX-License-Identifier: Apache-2.0
// Database: one opened database; record sets and action statements start here.
#pragma once

#include "jet/dao/Recordset.h"
#include "jet/dao/RelationDef.h"
#include "jet/dao/TableDef.h"

#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dao {

// Moves and does not copy. Errors (all members): 91 never opened, 3420 closed.
class Database {
public:
    struct State;
    Database();
    explicit Database(std::shared_ptr<State> state);
    Database(Database&&) noexcept;
    Database& operator=(Database&&) noexcept;
    ~Database();

    // False only for a database that was never opened; needs no error.
    [[nodiscard]] bool IsSet() const noexcept;

    [[nodiscard]] std::string Name() const;     // path as opened
    [[nodiscard]] std::string Version() const;  // "3.0", "4.0"
    [[nodiscard]] bool Updatable() const;
    // Whether a stopped process left changes in the file that could not be undone, because others
    // had written since; what they replaced stands beside the file, under the name of its journal
    // and ".set-aside". Rule: told by the instance that found it, until its last database closes.
    [[nodiscard]] bool HasSetJournalAside() const;

    // Names of all tables, system tables and links of every kind included.
    [[nodiscard]] std::vector<std::string> TableNames() const;
    // A copy of a table's definition. Errors: 3265 no such table.
    [[nodiscard]] dao::TableDef TableDef(std::string_view name) const;
    // Creates the table in the file at once, or the link to one of another file.
    // Errors: those of opening the other file, 3011 no such table there, 3170 a file of another
    //         kind, 3031 another password; 3010, 3012, 3125, 3191, 3259, 3264, 3320, 3355, 3027.
    void Append(const dao::TableDef& table);
    // Takes a link out of this file at once; the table it leads to stays where it is, and whoever
    // has it open goes on. Errors: 3265 no such table, 3251 a table of this file itself or of a
    // server, 3027.
    void DeleteTableDef(std::string_view name);

    [[nodiscard]] std::vector<RelationDef> Relations() const;
    // Creates the relationship in the file at once.
    // Rule:   an enforced one needs a unique index over the fields of `table`.
    // Errors: 3012, 3011, 3018, 3615, 3015, 3201, 3284, 3001, 3125, 3027; 3262 or 3009 another
    //         program has one of the tables open.
    void Append(const RelationDef& relation);
    // Takes the relationship out at once, with the indexes that nothing else needs.
    // Errors: 3265 no such relationship, 3027; 3262 or 3009 another program has one of the tables
    //         open.
    void DeleteRelation(std::string_view name);

    // `source` is a table's name or SQL text.
    // Rule:   a table's name gives a table-type set, a SELECT a dynaset, unless `type` says
    //         otherwise.
    // Errors: 3078 unknown table, 3061 unknown names, 3075 and other syntax errors, 3464, 3219.
    [[nodiscard]] Recordset OpenRecordset(std::string_view source,
                                          RecordsetType type = RecordsetType::Default,
                                          int options = 0);

    // Runs an action statement.
    // Rule:   without kFailOnError a row that cannot be changed is passed over silently.
    void Execute(std::string_view sql, int options = 0);
    [[nodiscard]] int RecordsAffected() const;

    // Closes its record sets; their pending edits are lost.
    void Close();

private:
    std::shared_ptr<State> state_;
};

}  // namespace dao
