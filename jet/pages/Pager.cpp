// SPDX-License-Identifier: Apache-2.0
#include "jet/pages/Pager.h"

#include "base/NumberedError.h"
#include "jet/format/DataPage.h"
#include "jet/format/HeaderPage.h"
#include "jet/format/PageEncoding.h"
#include "jet/io/StdFile.h"
#include "jet/pages/MapRow.h"
#include "jet/pages/PagerState.h"

#include <thread>

namespace jet::pages {

namespace {

// Page 1 of a new file: the map of free pages (all behind the first two), and an empty second map.
PageBytes MakeMapPage(const format::FileVersion& version)
{
    PageBytes page(version.pageSize);
    format::FormatDataPage(page, 1);
    std::vector<std::byte> map(version.mapRow);
    std::fill(map.begin() + kMapHead, map.end(), std::byte{0xFF});
    map[kMapHead] = std::byte{0xFC};
    format::AppendRow(page, map);
    format::AppendRow(page, std::vector<std::byte>(version.mapRow));
    return page;
}

// The version, and with it the page's size, is not known before.
format::HeaderPage ReadHeader(const io::File& file)
{
    PageBytes page(
        static_cast<std::size_t>(std::min<std::uint64_t>(file.Size(), format::kJet4.pageSize)));
    file.Read(0, page);
    return format::ReadHeaderPage(page);
}

void RequireWholePages(std::uint64_t size, std::size_t pageSize)
{
    if (size < 2 * pageSize) throw base::NumberedError(3343).At("shorter than two pages");
}

// A file without a password opens for any.
void RequireSame(const format::Protection& protection, std::string_view password)
{
    if (!protection.password.empty() && protection.password != password)
        throw base::NumberedError(3031);
}

// The default of a wish that was not made.
locks::Pause PauseOf(const Sharing& sharing)
{
    if (sharing.pause) return sharing.pause;
    return [](std::chrono::milliseconds length) { std::this_thread::sleep_for(length); };
}

locks::User SelfOf(const Sharing& sharing)
{
    locks::User self = sharing.self;
    if (self.machine.empty()) self.machine = io::MachineName();
    return self;
}

}  // namespace

void PageCache::Put(PageNumber page, std::shared_ptr<const PageBytes> bytes)
{
    const std::size_t group = Raw(page) / kGroup;
    if (group >= groups_.size()) groups_.resize(group + 1);
    if (!groups_[group]) groups_[group] = std::make_unique<Group>();
    Slot& slot = (*groups_[group])[Raw(page) % kGroup];
    if (!slot.bytes) {
        if (count_ >= limit_) MakeRoom();
        ++count_;
    }
    slot = {std::move(bytes), true};
}

void PageCache::Clear()
{
    groups_.clear();
    count_ = 0;
}

void PageCache::MakeRoom()
{
    while (true) {
        if (hand_ / kGroup >= groups_.size()) hand_ = 0;
        const std::unique_ptr<Group>& group = groups_[hand_ / kGroup];
        if (!group) {
            hand_ = (hand_ / kGroup + 1) * kGroup;
            continue;
        }
        Slot& slot = (*group)[hand_++ % kGroup];
        if (!slot.bytes) continue;
        if (!slot.used) {
            slot.bytes.reset();
            --count_;
            return;
        }
        slot.used = false;
    }
}

bool Pager::State::WasWalkedTwice(PageNumber page)
{
    if (Raw(page) >= walks.size()) walks.resize(pageCount);
    std::uint8_t& count = walks[Raw(page)];
    if (count == 2) return true;
    ++count;
    return false;
}

PageBytes Pager::State::Load(PageNumber page) const
{
    PageBytes bytes = LoadStored(page);
    format::ApplyPageEncoding(bytes, page, protection.encodingKey);
    return bytes;
}

PageBytes Pager::State::StoredForm(PageNumber page, PageBytes bytes) const
{
    format::ApplyPageEncoding(bytes, page, protection.encodingKey);
    return bytes;
}

PageBytes Pager::State::LoadStored(PageNumber page) const
{
    if (former) {
        const auto found = former->pages.find(page);
        if (found != former->pages.end()) return found->second;
    }
    PageBytes bytes(version.pageSize);
    file->Read(std::uint64_t{Raw(page)} * version.pageSize, bytes);
    return bytes;
}

void Pager::State::Store(PageNumber page, const PageBytes& bytes)
{
    file->Write(std::uint64_t{Raw(page)} * version.pageSize, StoredForm(page, bytes));
}

void Pager::State::StoreWord(std::uint16_t word)
{
    StoreCommitWord(*file, version, Place(), word);
    file->Flush();
}

void Pager::State::Note(const CommitWords& seen)
{
    words = seen;
    othersWrote = SomebodyWrites(seen);
}

void Pager::State::NoteOthers(const CommitWords& now)
{
    const std::optional<ChangeLog> log = journal.Told();
    // A file that grew without a word is nobody's whom we know.
    const bool nobodys = explained == now;
    changes.Add(log && !nobodys ? log->RowPagesBetween(explained, now) : std::nullopt);
    for (std::size_t user = 0; user < format::kCommitWords; ++user)
        if (now.Of(user) != kWritingNow) explained.Set(user, now.Of(user));
}

bool Pager::State::SomebodyWrites(const CommitWords& now) const
{
    for (std::size_t user = 0; user < format::kCommitWords; ++user)
        if (now.Of(user) == kWritingNow && user != Place()) return true;
    return false;
}

bool Pager::State::SomebodyStopped(const CommitWords& now) const
{
    for (std::size_t user = 0; user < format::kCommitWords; ++user) {
        if (now.Of(user) != kWritingNow || (users && user == Place())) continue;
        if (!users || !users->IsTaken(user)) return true;
    }
    return false;
}

void Pager::State::Mend()
{
    if (!halfWritten) return;
    StoreWord(kWritingNow);
    journal.Undo(*file);
    // Others may have read pages of the set that failed, and the word that would have confirmed it.
    const std::uint16_t word = NextCommitWord(NextCommitWord(words.Of(Place())));
    StoreWord(word);
    words.Set(Place(), word);
    explained.Set(Place(), word);
    journal.End();
    halfWritten = false;
    halfWrittenPages.Clear();
    CountPages();
    if (openSet == nullptr) journal.Unlock();
}

void Pager::State::RollBackOthers()
{
    const Recovery done = journal.Recover(*file, version, users);
    if (done == Recovery::Nothing) return;
    recovered = done;
    cache.Clear();
}

void Pager::State::CountPages()
{
    const std::uint64_t size = former ? former->size : file->Size();
    pageCount = static_cast<std::uint32_t>(size / version.pageSize);
}

// What a stopped process left unfinished is undone, or looked past by one who may not write.
void Pager::Settle(State& state)
{
    if (!state.journal.Exists()) return;
    if (state.readOnly) {
        state.former = state.journal.Former(*state.file, state.version);
        return;
    }
    try {
        state.journal.Lock();
    } catch (const base::NumberedError& error) {
        if (error.Number() == 3218) return;  // its writer lives
        throw;
    }
    try {
        state.RollBackOthers();
    } catch (const base::NumberedError&) {
        state.journal.Unlock();
        throw;
    }
    state.journal.Unlock();
}

namespace {

// The first user who is not there although his word says that he writes or has met damage.
std::optional<std::size_t> SuspectIn(const CommitWords& words, const locks::LockFile& users,
                                     bool lookedPast)
{
    for (std::size_t user = 0; user < format::kCommitWords; ++user) {
        const std::uint16_t word = words.Of(user);
        if (word >= format::kFirstCommitWord || users.IsTaken(user)) continue;
        if (!lookedPast || word != kWritingNow) return user;
    }
    return std::nullopt;
}

}  // namespace

// A user who was stopped while he wrote may have left half of a row; nobody shall build on that.
void Pager::RequireSound(const State& state)
{
    if (!state.users) return;
    const CommitWords words = state.Words();
    const auto user = SuspectIn(words, *state.users, state.former.has_value());
    if (!user) return;
    throw base::NumberedError(words.Of(*user) == kMetDamage ? 3428 : 3343, {state.path})
        .At("user " + std::to_string(*user) + " was stopped while he wrote");
}

std::shared_ptr<Pager> Pager::Open(io::FileSystem& files, const std::string& path,
                                   io::OpenMode mode, std::string_view password,
                                   const Sharing& sharing)
{
    std::unique_ptr<io::File> file = files.Open(path, mode);
    const format::HeaderPage header = ReadHeader(*file);
    RequireSame(header.protection, password);
    RequireWholePages(file->Size(), header.version->pageSize);

    const bool readOnly = mode == io::OpenMode::ReadOnly;
    auto state = std::make_unique<State>(files, files.Canonical(path), header, PauseOf(sharing));
    state->readOnly = readOnly;
    state->file = std::move(file);
    state->trust = sharing.trust;
    const Sharing::Use use =
        sharing.use.value_or(readOnly ? Sharing::Use::Looking : Sharing::Use::Shared);
    if (use == Sharing::Use::Looking)
        state->cache = PageCache(kPagesOfALooker);
    else
        state->users = std::make_shared<locks::LockFile>(files, state->path, SelfOf(sharing),
                                                         use == Sharing::Use::Alone, state->pause);
    Settle(*state);
    // One of ours who is stopped in this instant is settled on a further look.
    for (int look = 0; look < 2 && state->users &&
                       SuspectIn(state->Words(), *state->users, state->former.has_value());
         ++look) {
        state->pause(locks::kPause);
        Settle(*state);
    }
    RequireSound(*state);
    state->CountPages();
    state->Note(state->Words());
    state->explained = state->words;
    state->lastLook = std::chrono::steady_clock::now();
    return std::shared_ptr<Pager>(new Pager(std::move(state)));
}

std::shared_ptr<Pager> Pager::Create(io::FileSystem& files, const std::string& path,
                                     const format::FileVersion& version,
                                     const format::Protection& protection)
{
    const std::vector<std::byte> header = format::MakeHeaderPage(version, protection);
    PageBytes map = MakeMapPage(version);
    format::ApplyPageEncoding(map, PageNumber{1}, protection.encodingKey);
    {
        const std::unique_ptr<io::File> file = files.Create(path);
        file->Write(0, header);
        file->Write(version.pageSize, map);
        file->Flush();
    }
    return Open(files, path, io::OpenMode::ReadWrite, protection.password);
}

Pager::Pager(std::unique_ptr<State> state) : state_(std::move(state)) {}

Pager::~Pager()
{
    if (!state_->readOnly && !state_->halfWritten)
        state_->journal.Leave(*state_->file, state_->version);
}

void Pager::RequirePassword(std::string_view password) const
{
    RequireSame(state_->protection, password);
}

std::uint16_t Pager::CodePage() const
{
    return state_->codePage;
}

const format::FileVersion& Pager::Version() const
{
    return state_->version;
}

const std::string& Pager::Path() const
{
    return state_->path;
}

bool Pager::ReadOnly() const
{
    return state_->readOnly;
}

std::uint32_t Pager::PageCount() const
{
    return state_->openSet != nullptr ? state_->openSet->pageCount : state_->pageCount;
}

Page Pager::Read(PageNumber page) const
{
    if (state_->openSet != nullptr) {
        const auto found = state_->openSet->changed.find(page);
        if (found != state_->openSet->changed.end()) return Page(found->second);
    }
    if (const auto* kept = state_->cache.Find(page)) return Page(state_->Used(page, *kept));
    state_->Mend();
    if (Raw(page) >= state_->pageCount) {
        throw base::NumberedError(3343).At("no page " + std::to_string(Raw(page)));
    }
    auto loaded = std::make_shared<const PageBytes>(state_->Load(page));
    ++state_->loads;
    state_->cache.Put(page, loaded);
    return Page(state_->Used(page, loaded));
}

void Pager::Announce(PageNumber page) const
{
    constexpr std::size_t cacheLine = 64;  // bytes
    const auto* kept = state_->cache.Find(page);
    if (kept == nullptr) return;
    const PageBytes& bytes = **kept;
    for (std::size_t at = 0; at < bytes.size(); at += cacheLine)
        __builtin_prefetch(bytes.data() + at);
}

std::size_t Pager::ReadTogether(std::span<const PageNumber> pages, PageBytes& into) const
{
    // What an open set has changed, and what an unfinished one must not show, is asked for singly.
    if (state_->openSet != nullptr || state_->halfWritten || state_->former) return 0;
    // To read what lies between costs more than to read each page of its own.
    std::size_t count = 0;
    while (count < pages.size() && Raw(pages[count]) == Raw(pages.front()) + count &&
           Raw(pages[count]) < state_->pageCount && state_->cache.Find(pages[count]) == nullptr)
        ++count;
    if (count == 0 || (count == 1 && state_->WasWalkedTwice(pages.front()))) return 0;
    const std::size_t pageSize = state_->version.pageSize;
    into.resize(count * pageSize);
    try {
        state_->file->Read(std::uint64_t{Raw(pages.front())} * pageSize, into);
    } catch (const base::NumberedError&) {
        return 0;  // whoever comes to the page that cannot be read is told
    }
    ++state_->loads;
    for (std::size_t i = 0; i < count; ++i)
        format::ApplyPageEncoding(std::span(into).subspan(i * pageSize, pageSize), pages[i],
                                  state_->protection.encodingKey);
    return count;
}

std::uint64_t Pager::ChangeCount() const
{
    return state_->changes.Count();
}

std::uint64_t Pager::LastUnknownChange() const
{
    return state_->changes.LastUnknown();
}

std::optional<std::vector<PageNumber>> Pager::RowPagesChangedSince(std::uint64_t count) const
{
    return state_->changes.Since(count);
}

std::uint64_t Pager::OwnCommits() const
{
    return state_->ownCommits;
}

void Pager::Refresh()
{
    state_->Mend();
    // A copy put in its place leaves us with a file that nobody else will ever read.
    if (!state_->file->IsNamed(state_->path)) {
        throw base::NumberedError(3043).At("another file has taken the place of " + state_->path);
    }
    CommitWords words = state_->Words();
    if (!state_->journal.IsLocked() && state_->SomebodyStopped(words)) {
        Settle(*state_);
        words = state_->Words();
    }
    state_->lastLook = std::chrono::steady_clock::now();
    // Pages of one who is writing may be his old ones or his new ones.
    if (words == state_->words && !state_->othersWrote) {
        const std::uint32_t known = state_->pageCount;
        state_->CountPages();
        if (known == state_->pageCount) return;
    }
    if (!state_->SomebodyStopped(words)) state_->former.reset();
    state_->CountPages();
    state_->Note(words);
    state_->cache.Clear();
    state_->NoteOthers(words);
}

bool Pager::IsChanging() const
{
    return state_->openSet != nullptr;
}

Recovery Pager::Recovered() const
{
    return state_->recovered;
}

}  // namespace jet::pages
