// SPDX-License-Identifier: Apache-2.0
// Samples: real database files that tests use when they are present.
#pragma once

#include <filesystem>
#include <string>

namespace tests {

// The folder of sample databases (CMake option LODRIN_SAMPLES); it may not exist.
[[nodiscard]] std::filesystem::path SampleFolder();

// A folder of its own for one test, removed with the object.
class ScratchFolder {
public:
    ScratchFolder();
    ~ScratchFolder();
    ScratchFolder(const ScratchFolder&) = delete;
    ScratchFolder& operator=(const ScratchFolder&) = delete;

    [[nodiscard]] const std::filesystem::path& Path() const { return path_; }
    // A copy of a sample file in this folder, under its own name; writable.
    [[nodiscard]] std::filesystem::path Copy(const std::filesystem::path& sample) const;

private:
    std::filesystem::path path_;
};

}  // namespace tests

// Skips the test, saying why, when the sample file is not there.
#define SKIP_WITHOUT_SAMPLE(path)                                                                  \
    if (!std::filesystem::exists(path))                                                            \
    GTEST_SKIP() << "sample file not present: " << (path).string()
