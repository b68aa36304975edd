// SPDX-License-Identifier: Apache-2.0
// Recordset: the rows of a table or query, one of them current, edited one at a time.
#pragma once

#include "jet/dao/Field.h"
#include "jet/dao/Types.h"

#include <memory>
#include <string>
#include <string_view>

namespace dao {

// Moves and does not copy.
//
//     Recordset rows = database.OpenRecordset("SELECT * FROM LDEmp ORDER BY Name");
//     rows.FindFirst("EmpID = 7");
//     if (!rows.NoMatch()) {
//         rows.Edit();
//         rows["Name"] = "Smith, Ann";
//         rows.Update();
//     }
//
// Rule:   populated as it is walked. Any move, find or bookmark drops a pending edit.
// Errors: 91 for a set that was never opened, 3420 after Close or when its database is closed,
//         3021 no current record, 3167 the current record was deleted.
class Recordset {
public:
    struct State;
    Recordset();
    explicit Recordset(std::shared_ptr<State> state);
    Recordset(Recordset&&) noexcept;
    Recordset& operator=(Recordset&&) noexcept;
    ~Recordset();

    // False only for a set that was never opened; needs no error.
    [[nodiscard]] bool IsSet() const noexcept;

    [[nodiscard]] bool Bof() const;
    [[nodiscard]] bool Eof() const;
    [[nodiscard]] bool NoMatch() const;
    // Table-type: exact. Others: the rows reached so far; at least 1 when there is one.
    [[nodiscard]] int RecordCount() const;
    // Place of the current row from 0; -1 without one.
    [[nodiscard]] int AbsolutePosition() const;

    void MoveFirst();
    void MoveLast();
    void MoveNext();
    void MovePrevious();
    // Re-reads the current row; a pending edit is dropped.
    void Refresh();

    // Rule:   nothing found sets NoMatch and leaves the position.
    // Errors: 3077 syntax, 3070 unknown name, 3464 type mismatch, 3251 on a table-type set.
    void FindFirst(std::string_view criteria);
    void FindNext(std::string_view criteria);
    void FindLast(std::string_view criteria);
    void FindPrevious(std::string_view criteria);

    // Errors: 3021, 3167, 3027 not updatable, 3251 snapshot, 3197 changed by somebody else.
    void Edit();
    void AddNew();
    // Errors: 3020 without Edit or AddNew; with the edit kept: 3022, 3058 keys, 3314, 3315, 3316,
    //         3317 rules, 3320, 3344, 3388 a rule that cannot be worked out, 3047.
    void Update();
    void CancelUpdate();
    void Delete();

    [[nodiscard]] int FieldCount() const;
    // A field of the current row or the pending edit. Rule: case of the name is ignored.
    // Errors: 3265 unknown name, when the field is read or written.
    [[nodiscard]] Field operator[](std::string_view name);
    [[nodiscard]] Field operator[](int index);
    // Name, type and size of each field. Errors: 3265.
    [[nodiscard]] std::string FieldName(int index) const;
    [[nodiscard]] FieldType TypeOf(int index) const;
    [[nodiscard]] int SizeOf(int index) const;

    // Errors: 3021 no current record; setting: 3159 not of this set, 3167 deleted since.
    [[nodiscard]] BookmarkValue Bookmark() const;
    void SetBookmark(const BookmarkValue& bookmark);
    // Errors: 3021 before the first Update.
    [[nodiscard]] BookmarkValue LastModified() const;

    [[nodiscard]] dao::EditMode EditMode() const;
    [[nodiscard]] RecordsetType Type() const;
    [[nodiscard]] bool Updatable() const;

    void Requery();
    void Close();

private:
    friend class Field;
    std::shared_ptr<State> state_;
};

}  // namespace dao
