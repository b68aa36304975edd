// SPDX-License-Identifier: Apache-2.0
#include "tests/support/FaultFileSystem.h"

#include "base/NumberedError.h"
#include "tests/support/UnflushedWrites.h"

#include <algorithm>
#include <set>

namespace tests {

using jet::io::File;
using jet::io::LockKind;
using jet::io::OpenMode;

namespace {

class FaultFile;

}  // namespace

struct FaultFileSystem::Plan {
    explicit Plan(jet::io::FileSystem& below) : unconfirmed(below) {}

    std::size_t operations = 0;
    std::optional<std::size_t> powerEnds;
    std::optional<std::size_t> failsFrom;
    std::size_t failures = 0;
    int failure = 3043;
    LastWrite last = LastWrite::Whole;
    Unflushed unflushed = Unflushed::Kept;
    bool dark = false;
    std::size_t boots = 0;
    UnflushedWrites unconfirmed;
    std::mt19937 dice;
    std::set<FaultFile*> open;

    void RequirePower(std::size_t boot) const
    {
        if (dark || boot != boots) throw base::NumberedError(3043).At("the power is out");
    }

    // Counts one operation; true when it is the one during which the power fails.
    bool Fails(std::size_t boot)
    {
        RequirePower(boot);
        const std::size_t now = operations++;
        if (failsFrom && now >= *failsFrom && now < *failsFrom + failures) {
            throw base::NumberedError(failure).At("planned failure");
        }
        if (powerEnds && now >= *powerEnds) dark = true;
        return dark;
    }

    [[nodiscard]] bool Remembers() const { return unflushed != Unflushed::Kept; }
    // An operation of names that is under way when the power fails may have been done.
    [[nodiscard]] bool NamesAtRisk() const { return unflushed == Unflushed::Shuffled; }
    [[nodiscard]] bool DoesTheLast() { return NamesAtRisk() && dice() % 2 == 0; }

    void Count(std::size_t boot)
    {
        if (Fails(boot)) RequirePower(boot);
    }
};

namespace {

class FaultFile : public File {
public:
    FaultFile(std::unique_ptr<File> below, std::string path,
              std::shared_ptr<FaultFileSystem::Plan> plan)
        : below_(std::move(below)), path_(std::move(path)), plan_(std::move(plan)),
          boot_(plan_->boots)
    {
        plan_->open.insert(this);
    }
    ~FaultFile() override { plan_->open.erase(this); }

    // A machine that starts again has no locks any more.
    void Close() { below_.reset(); }

    [[nodiscard]] std::uint64_t Size() const override
    {
        plan_->RequirePower(boot_);
        return below_->Size();
    }

    void Read(std::uint64_t offset, std::span<std::byte> into) const override
    {
        plan_->RequirePower(boot_);
        below_->Read(offset, into);
    }

    void Write(std::uint64_t offset, std::span<const std::byte> bytes) override
    {
        if (!plan_->Fails(boot_)) {
            Remember(offset, bytes);
            return below_->Write(offset, bytes);
        }
        if (plan_->last == LastWrite::Torn) {
            // A shuffled disk tears it as it likes.
            const auto stored = bytes.first(
                plan_->NamesAtRisk() ? bytes.size() : std::max<std::size_t>(1, bytes.size() / 2));
            Remember(offset, stored);
            below_->Write(offset, stored);
        }
        plan_->RequirePower(boot_);
    }

    void Truncate(std::uint64_t size) override
    {
        plan_->Count(boot_);
        if (plan_->Remembers() && IsNamed(path_)) plan_->unconfirmed.Truncate(path_, size);
        below_->Truncate(size);
    }

    void Flush() override
    {
        plan_->Count(boot_);
        below_->Flush();
        if (below_->IsNamed(path_)) plan_->unconfirmed.Flush(path_);
    }

    [[nodiscard]] bool IsNamed(const std::string& path) const override
    {
        plan_->RequirePower(boot_);
        return below_->IsNamed(path);
    }

    [[nodiscard]] bool TryLock(LockKind kind, std::uint64_t offset, std::uint64_t length) override
    {
        plan_->RequirePower(boot_);
        return below_->TryLock(kind, offset, length);
    }

    void Unlock(std::uint64_t offset, std::uint64_t length) override
    {
        plan_->RequirePower(boot_);
        below_->Unlock(offset, length);
    }

    [[nodiscard]] std::optional<jet::io::ByteRange> FindLock(std::uint64_t offset,
                                                             std::uint64_t length) const override
    {
        plan_->RequirePower(boot_);
        return below_->FindLock(offset, length);
    }

private:
    void Remember(std::uint64_t offset, std::span<const std::byte> bytes)
    {
        if (plan_->Remembers() && below_->IsNamed(path_))
            plan_->unconfirmed.Write(path_, offset, bytes);
    }

    std::unique_ptr<File> below_;
    std::string path_;
    std::shared_ptr<FaultFileSystem::Plan> plan_;
    std::size_t boot_;
};

}  // namespace

FaultFileSystem::FaultFileSystem(jet::io::FileSystem& below)
    : below_(below), plan_(std::make_shared<Plan>(below))
{
}

FaultFileSystem::~FaultFileSystem() = default;

void FaultFileSystem::PullThePlugAfter(std::size_t operations, LastWrite last, Unflushed unflushed)
{
    plan_->powerEnds = plan_->operations + operations;
    plan_->last = last;
    plan_->unflushed = unflushed;
    if (unflushed != Unflushed::Shuffled) plan_->unconfirmed.Forget();
}

void FaultFileSystem::PutUnflushedAtRisk(std::uint32_t seed)
{
    plan_->unflushed = Unflushed::Shuffled;
    plan_->dice.seed(seed);
}

void FaultFileSystem::FailOnce(std::size_t operations, int number)
{
    FailFrom(operations, 1);
    plan_->failure = number;
}

void FaultFileSystem::FailFrom(std::size_t operations, std::size_t failures)
{
    plan_->failsFrom = plan_->operations + operations;
    plan_->failures = failures;
    plan_->failure = 3043;
}

void FaultFileSystem::Reboot()
{
    plan_->dark = false;
    plan_->powerEnds.reset();
    plan_->failsFrom.reset();
    ++plan_->boots;
    for (FaultFile* const file : plan_->open)
        file->Close();
    if (plan_->unflushed == Unflushed::Shuffled)
        plan_->unconfirmed.Shuffle(plan_->dice);
    else
        plan_->unconfirmed.Lose();
    plan_->unflushed = Unflushed::Kept;
}

std::size_t FaultFileSystem::Operations() const
{
    return plan_->operations;
}

bool FaultFileSystem::PowerIsOut() const
{
    return plan_->dark;
}

std::unique_ptr<File> FaultFileSystem::Open(const std::string& path, OpenMode mode)
{
    plan_->RequirePower(plan_->boots);
    return std::make_unique<FaultFile>(below_.Open(path, mode), path, plan_);
}

std::unique_ptr<File> FaultFileSystem::Create(const std::string& path)
{
    const bool fails = plan_->Fails(plan_->boots);
    if (fails && !plan_->DoesTheLast()) plan_->RequirePower(plan_->boots);
    if (plan_->NamesAtRisk()) plan_->unconfirmed.Create(path);
    std::unique_ptr<File> file = below_.Create(path);
    plan_->RequirePower(plan_->boots);
    return std::make_unique<FaultFile>(std::move(file), path, plan_);
}

bool FaultFileSystem::Exists(const std::string& path) const
{
    plan_->RequirePower(plan_->boots);
    return below_.Exists(path);
}

void FaultFileSystem::Remove(const std::string& path)
{
    const bool fails = plan_->Fails(plan_->boots);
    if (fails && !plan_->DoesTheLast()) plan_->RequirePower(plan_->boots);
    if (plan_->NamesAtRisk()) plan_->unconfirmed.Remove(path);
    if (!plan_->NamesAtRisk()) plan_->unconfirmed.Flush(path);
    below_.Remove(path);
    plan_->RequirePower(plan_->boots);
}

void FaultFileSystem::Rename(const std::string& from, const std::string& to)
{
    const bool fails = plan_->Fails(plan_->boots);
    if (fails && !plan_->DoesTheLast()) plan_->RequirePower(plan_->boots);
    plan_->unconfirmed.Rename(from, to);
    below_.Rename(from, to);
    plan_->RequirePower(plan_->boots);
}

std::string FaultFileSystem::Canonical(const std::string& path) const
{
    return below_.Canonical(path);
}

}  // namespace tests
