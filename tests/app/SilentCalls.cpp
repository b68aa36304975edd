// SPDX-License-Identifier: Apache-2.0
#include "tests/app/SilentCalls.h"

namespace tests {

namespace {

constexpr const char* kJournal = ".journal";
constexpr const char* kUsers = ".ldb";

class Reading {
public:
    explicit Reading(const std::vector<DiskCall>& calls) : calls_(calls)
    {
        for (const DiskCall& each : calls)
            silences_.push_back(each.part);
    }

    // What is written to the journal without a flush, and what was asked of it just before.
    void Tidyings()
    {
        for (std::size_t last = 0; last < calls_.size(); ++last) {
            if (!Is(last, "Write", kJournal) || Is(last + 1, "Flush", kJournal)) continue;
            Keep(last, Silence::Tidying);
            for (std::size_t i = last;
                 i-- > 0 && (Is(i, "Size", kJournal) || Is(i, "Read", kJournal));)
                Keep(i, Silence::Tidying);
        }
    }

    // What is asked of journal and user list before the user list is taken away.
    void Closings()
    {
        for (std::size_t last = 0; last < calls_.size(); ++last) {
            if (!Is(last, "Remove", kUsers)) continue;
            for (std::size_t i = last + 1; i-- > 0 && (Is(i, "", kUsers) || Is(i, "", kJournal));)
                Keep(i, Silence::Closing);
        }
    }

    [[nodiscard]] const std::vector<Silence>& Silences() const { return silences_; }

private:
    [[nodiscard]] bool Is(std::size_t i, const std::string& function,
                          const std::string& ending) const
    {
        if (i >= calls_.size()) return false;
        const std::string& call = calls_[i].call;
        return call.starts_with(function) && call.ends_with(ending);
    }
    void Keep(std::size_t i, Silence silence)
    {
        if (silences_[i] == Silence::None) silences_[i] = silence;
    }

    const std::vector<DiskCall>& calls_;
    std::vector<Silence> silences_;
};

}  // namespace

std::vector<Silence> SilencesOf(const std::vector<DiskCall>& calls)
{
    Reading reading(calls);
    reading.Tidyings();
    reading.Closings();
    return reading.Silences();
}

}  // namespace tests
