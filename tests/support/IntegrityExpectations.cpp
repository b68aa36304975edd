// SPDX-License-Identifier: Apache-2.0
#include "tests/support/IntegrityExpectations.h"

#include "base/NumberedError.h"
#include "jet/check/IntegrityChecker.h"

#include <algorithm>

namespace tests {

namespace {

using jet::check::Defect;
using jet::check::Severity;

testing::AssertionResult Judge(jet::io::FileSystem& files, const std::string& path, bool remarks)
{
    constexpr std::size_t mostListed = 12;
    try {
        auto found = jet::check::CheckIntegrity(files, path).defects;
        const auto counts = [remarks](const Defect& defect) {
            return remarks || jet::check::SeverityOf(defect.kind) == Severity::Damage;
        };
        const auto end = std::stable_partition(found.begin(), found.end(), counts);
        if (end == found.begin()) return testing::AssertionSuccess() << path << " is sound";
        auto result = testing::AssertionFailure()
                      << path << ": " << (end - found.begin()) << " findings";
        const auto listed = std::min<std::ptrdiff_t>(end - found.begin(), mostListed);
        for (auto defect = found.begin(); defect != found.begin() + listed; ++defect)
            result << "\n  " << jet::check::NameOf(defect->kind) << " page " << Raw(defect->page)
                   << " offset " << defect->offset << ": " << defect->text;
        return result;
    } catch (const base::NumberedError& error) {
        return testing::AssertionFailure() << path << " cannot be checked: " << error.Number()
                                           << " " << error.what() << " " << error.Detail();
    }
}

}  // namespace

testing::AssertionResult IsClean(jet::io::FileSystem& files, const std::string& path)
{
    return Judge(files, path, false);
}

testing::AssertionResult IsSpotless(jet::io::FileSystem& files, const std::string& path)
{
    return Judge(files, path, true);
}

}  // namespace tests
