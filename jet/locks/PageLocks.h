// SPDX-License-Identifier: Apache-2.0
// PageLocks: the right to write some pages, as long as this object lives.
#pragma once

#include "jet/locks/LockFile.h"

#include <memory>
#include <utility>
#include <vector>

namespace jet::locks {

// Moves and does not copy. Without a lock file nobody else is there, and every lock is granted.
class PageLocks {
public:
    PageLocks() = default;
    explicit PageLocks(std::shared_ptr<LockFile> file) : file_(std::move(file)) {}
    PageLocks(PageLocks&& other) noexcept
        : file_(std::move(other.file_)), pages_(std::exchange(other.pages_, {}))
    {
    }
    PageLocks& operator=(PageLocks&& other) noexcept
    {
        Clear();
        file_ = std::move(other.file_);
        pages_ = std::exchange(other.pages_, {});
        return *this;
    }
    ~PageLocks() { Clear(); }

    [[nodiscard]] std::optional<Conflict> TryLock(PageNumber page, LockFile::Owner owner)
    {
        if (!file_) return std::nullopt;
        if (auto conflict = file_->TryLock(page, owner)) return conflict;
        pages_.push_back(page);
        return std::nullopt;
    }

    void Clear() noexcept
    {
        for (const PageNumber page : pages_)
            file_->Unlock(page);
        pages_.clear();
    }

private:
    std::shared_ptr<LockFile> file_;
    std::vector<PageNumber> pages_;
};

}  // namespace jet::locks
