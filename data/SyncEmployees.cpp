// SPDX-License-Identifier: Apache-2.0
#include "data/SyncEmployees.h"

#include "app/Dispatch.h"
#include "app/ForEachRecord.h"
#include "app/OpenRecords.h"
#include "app/ResumeNext.h"
#include "app/Shop.h"
#include "base/Convert.h"
#include "data/Tables.h"
#include "floor/FindRecord.h"

#include <string>

namespace lodrin {

namespace {

constexpr const char* kProfiles = "SELECT * FROM Profile WHERE Type = 'Employee' ORDER BY LastName";
constexpr const char* kPreparing = "Synchronizing LD - Preparing to execute process";
constexpr const char* kProcessing = "Synchronizing LD - Processing employees";
constexpr const char* kAdding = "Synchronizing LD - Adding employee: ";
constexpr const char* kNothingChanged =
    "No employees found to add or update to the employee list.  Ensure employee data exists in the "
    "Tarvex Management system and try again.";
constexpr const char* kChanged =
    "New Employees have been added to the Lodrin Database and existing employees have been "
    "updated.Please Exit the program and then restart Lodrin.  Note.... All data will remain as "
    "shown, you do NOT need to stop any times or end any jobs.";

// Smith, Ann.
std::string DisplayName(dao::Recordset& profile)
{
    return base::TextOf(profile[Profile::LastName]) + ", " +
           base::TextOf(profile[Profile::FirstName]);
}

// False when the search failed: nobody is renamed or deleted on the answer to the search before.
bool SearchesNumber(const ResumeNext& attempt, dao::Recordset& records, const char* criterion,
                    const dao::Field& number)
{
    return Searches(attempt, records, [&] { return criterion + base::TextOf(number); });
}

class Synchronisation {
public:
    Synchronisation(const ResumeNext& attempt, Shop& shop, dao::Recordset& profiles)
        : attempt_(attempt), step_(shop.forms.procMsg.Label1), employees_(shop.state.employees),
          profiles_(profiles)
    {
    }

    // Everybody the management system knows is on the list, under his name of today.
    void AddAndRename()
    {
        ForEachRecord(attempt_, profiles_, [this] {
            if (!SearchesNumber(attempt_, employees_,
                                "EmpID = ", profiles_[Profile::ProfileNumber]))
                return;
            if (attempt_.Test([this] { return !employees_.NoMatch(); }, IfItFails::TakeBranch))
                Rename();
            else
                Add();
        });
    }

    // Nobody else is.
    void Remove()
    {
        if (!attempt_.Test([this] { return employees_.RecordCount() > 0; }, IfItFails::TakeBranch))
            return;
        attempt_([this] { employees_.MoveFirst(); });
        attempt_([this] { profiles_.MoveFirst(); });
        ForEachRecord(attempt_, employees_, [this] {
            if (!SearchesNumber(attempt_, profiles_,
                                "ProfileNumber = ", employees_[LDEmp::EmpID.name]))
                return;
            // Only a search that answered "no" deletes a row.
            if (attempt_.Test([this] { return profiles_.NoMatch(); }, IfItFails::SkipBranch))
                attempt_([this] { employees_.Delete(); });
        });
    }

    [[nodiscard]] bool Changed() const { return changed_; }

private:
    void Rename()
    {
        attempt_([this] { step_.SetCaption(kProcessing); });
        const auto hasAnotherName = [this] {
            return base::Differs(employees_[LDEmp::Name.name], DisplayName(profiles_));
        };
        if (!attempt_.Test(hasAnotherName, IfItFails::TakeBranch)) return;
        changed_ = true;
        attempt_([this] { employees_.Edit(); });
        attempt_([this] { employees_[LDEmp::Name.name] = DisplayName(profiles_); });
        attempt_([this] { employees_.Update(); });
    }

    void Add()
    {
        attempt_([this] {
            step_.SetCaption(kAdding + base::TextOf(profiles_[Profile::FirstName]) + " " +
                             base::TextOf(profiles_[Profile::LastName]));
        });
        changed_ = true;
        attempt_([this] { employees_.AddNew(); });
        attempt_([this] { employees_[LDEmp::EmpID.name] = profiles_[Profile::ProfileNumber]; });
        attempt_([this] { employees_[LDEmp::Name.name] = DisplayName(profiles_); });
        attempt_([this] { employees_.Update(); });
    }

    const ResumeNext& attempt_;
    platform::Label& step_;
    dao::Recordset& employees_;
    dao::Recordset& profiles_;
    bool changed_ = false;
};

}  // namespace

void SyncEmployees(Shop& shop)
{
    const ResumeNext attempt(shop, "Sub frmLodrin!SyncEmployees()");
    MainWindowState& state = shop.state;

    attempt([&] { shop.dialogs.ShowProcMsg(shop); });
    attempt([&] { shop.forms.procMsg.Label1.SetCaption(kPreparing); });
    shop.values.LastErrNumber = 0;

    // The management system's employees. An empty list, or one out of reach, empties no board.
    dao::Recordset profiles;
    OpenRecords(attempt, state, state.database, profiles, kProfiles);
    Synchronisation synchronisation(attempt, shop, profiles);
    if (attempt.Test([&] { return profiles.RecordCount() > 0; }, IfItFails::SkipBranch)) {
        synchronisation.AddAndRename();
        synchronisation.Remove();
    }
    attempt([&] { profiles.Close(); });
    attempt([&] { shop.dialogs.UnloadProcMsg(shop); });

    // The board is not rebuilt: he is told to start the program again.
    attempt([&] { Say(shop, synchronisation.Changed() ? kChanged : kNothingChanged); });
}

void mnuSyncEmp_Click(Shop& shop)
{
    SyncEmployees(shop);
}

}  // namespace lodrin
