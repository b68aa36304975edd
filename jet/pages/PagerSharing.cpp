// SPDX-License-Identifier: Apache-2.0
// Pager beside other users: whole readings, locks held longer than a commit, tables in use.
#include "base/NumberedError.h"
#include "jet/pages/PagerState.h"

#include <algorithm>

namespace jet::pages {

using locks::Region;

namespace {

// True as long as this object lives.
class Flag {
public:
    explicit Flag(bool& flag) : flag_(flag) { flag_ = true; }
    Flag(const Flag&) = delete;
    Flag& operator=(const Flag&) = delete;
    ~Flag() { flag_ = false; }

private:
    bool& flag_;
};

}  // namespace

std::shared_ptr<const PageBytes>
Pager::State::Used(PageNumber page, const std::shared_ptr<const PageBytes>& bytes) const
{
    if (openSet != nullptr) openSet->used.emplace(page, bytes);
    return bytes;
}

// Keeps the programs of this engine from writing while it lives.
class Pager::QuietTime {
public:
    explicit QuietTime(State& state) : state_(state)
    {
        if (state.readOnly) return;
        try {
            state.journal.Lock();
        } catch (const base::NumberedError&) {
            return;  // then as well as it can be done
        }
    }
    QuietTime(const QuietTime&) = delete;
    QuietTime& operator=(const QuietTime&) = delete;
    ~QuietTime() { state_.journal.Unlock(); }

private:
    State& state_;
};

void Pager::ReadWhole(Look look, const std::function<void()>& read)
{
    State& state = *state_;
    if (state.readingWhole || state.openSet != nullptr) return read();
    const auto isOld = [&] {
        return std::chrono::steady_clock::now() - state.lastLook > state.trust;
    };
    if (look == Look::Always || isOld()) Refresh();
    for (int looks = 1; looks < locks::kTries; ++looks) {
        if (TryReadWhole(read)) return;
        state.pause(locks::PauseAfter(looks));
        Refresh();
    }
    const QuietTime quiet(state);
    Refresh();
    read();
}

// Whether nobody else wrote before the reading was done.
bool Pager::TryReadWhole(const std::function<void()>& read)
{
    State& state = *state_;
    if (state.othersWrote && !state.former) return false;
    const std::uint64_t before = state.loads;
    try {
        const Flag reading(state.readingWhole);
        read();
    } catch (const base::NumberedError&) {
        if (state.loads == before || state.Words() == state.words) throw;
        return false;
    }
    return state.loads == before || state.Words() == state.words;
}

void Pager::ActFor(locks::LockFile::Owner session)
{
    state_->session = session;
}

locks::PageLocks Pager::LockPage(PageNumber page)
{
    locks::PageLocks lock(state_->users);
    if (state_->users) state_->users->RequireNamed();
    for (int tries = 1;; ++tries) {
        const auto conflict = lock.TryLock(page, state_->session);
        if (!conflict) return lock;
        if (conflict->holder == locks::Conflict::Holder::OwnProcess || tries == locks::kTries)
            throw locks::PageIsLocked(*conflict);
        state_->pause(locks::PauseAfter(tries));
    }
}

namespace {

// A table that this process has open, as others see it.
class TableInUse {
public:
    TableInUse(std::shared_ptr<locks::LockFile> users, PageNumber table)
        : users_(std::move(users)), table_(table)
    {
    }
    TableInUse(const TableInUse&) = delete;
    TableInUse& operator=(const TableInUse&) = delete;
    ~TableInUse()
    {
        for (const Region region : regions_)
            users_->EndUse(region, table_);
    }

    [[nodiscard]] std::optional<locks::Conflict> TryAdd(Region region)
    {
        if (auto conflict = users_->TryUse(region, table_)) return conflict;
        regions_.push_back(region);
        return std::nullopt;
    }

private:
    std::shared_ptr<locks::LockFile> users_;
    PageNumber table_;
    std::vector<Region> regions_;
};

// Tries as long and as often as Jet does.
template <class TryToLock, class ToError>
void Insist(const locks::Pause& pause, TryToLock tryToLock, ToError error)
{
    for (int tries = 1;; ++tries) {
        const std::optional<locks::Conflict> conflict = tryToLock();
        if (!conflict) return;
        if (tries == locks::kTries) throw error(*conflict);
        pause(locks::PauseAfter(tries));
    }
}

}  // namespace

std::shared_ptr<const void> Pager::UseTable(PageNumber definition, const std::string& name)
{
    if (!state_->users) return nullptr;
    const auto use = std::make_shared<TableInUse>(state_->users, definition);
    const auto add = [&](Region region, auto error) {
        Insist(
            state_->pause, [&] { return use->TryAdd(region); },
            [&](const locks::Conflict& conflict) { return error(name, conflict); });
    };
    add(Region::TableReaders, locks::TableIsKept);
    if (!state_->readOnly) add(Region::TableWriters, locks::TableIsDenied);
    return use;
}

std::shared_ptr<const void> Pager::KeepTable(PageNumber definition, const std::string& name)
{
    const std::shared_ptr<locks::LockFile> users = state_->users;
    if (!users) return nullptr;
    users->RequireNamed();
    Insist(
        state_->pause, [&] { return users->TryKeep(definition); },
        [&](const locks::Conflict& conflict) { return locks::TableIsDenied(name, conflict); });
    return {static_cast<const void*>(users.get()),
            [users, definition](const void*) { users->EndKeep(definition); }};
}

void Pager::RequireWritable(PageNumber definition, const std::string& name) const
{
    if (!state_->users) return;
    if (const auto conflict = state_->users->FindDenial(definition))
        throw locks::TableIsDenied(name, *conflict);
}

}  // namespace jet::pages
