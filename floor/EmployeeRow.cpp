// SPDX-License-Identifier: Apache-2.0
#include "floor/EmployeeRow.h"

#include "app/ResumeNext.h"
#include "floor/NoJob.h"

namespace lodrin {

void EmployeeRow::Edit()
{
    attempt_([&] { employee_.Edit(); });
    attempt_([&] { board_.allowEdit = true; });
}

void EmployeeRow::Write(const BoardField& field, const std::function<base::Value()>& value)
{
    attempt_([&] { employee_[field.name] = value(); });
    attempt_([&] { board_.SetCell(field.column, employee_[field.name]); });
}

void EmployeeRow::Write(const BoardField& field, const dao::Field& value)
{
    Write(field, [&] { return value.Value(); });
}

void EmployeeRow::ClearJob()
{
    // The board forgets the job also when the record does not: it has been closed, and must not be
    // closed a second time.
    ForNoJob([this](const BoardField& field, const base::Value& none) {
        attempt_([&] { employee_[field.name] = none; });
        attempt_([&] { board_.SetCell(field.column, none); });
    });
}

Stored EmployeeRow::Save()
{
    const Stored stored = StoreAndStay(attempt_, employee_);
    attempt_([&] { board_.allowEdit = false; });
    return stored;
}

}  // namespace lodrin
