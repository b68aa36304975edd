// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Samples.h"

#include <cstdlib>
#include <stdexcept>

namespace tests {

std::filesystem::path SampleFolder()
{
    return LODRIN_SAMPLES;
}

ScratchFolder::ScratchFolder()
{
    std::string pattern = (std::filesystem::temp_directory_path() / "lodrin-test-XXXXXX").string();
    if (mkdtemp(pattern.data()) == nullptr) throw std::runtime_error("no scratch folder");
    path_ = pattern;
}

ScratchFolder::~ScratchFolder()
{
    std::error_code ignored;
    std::filesystem::remove_all(path_, ignored);
}

std::filesystem::path ScratchFolder::Copy(const std::filesystem::path& sample) const
{
    const std::filesystem::path copy = path_ / sample.filename();
    std::filesystem::copy_file(sample, copy);
    std::filesystem::permissions(copy, std::filesystem::perms::owner_write,
                                 std::filesystem::perm_options::add);
    return copy;
}

}  // namespace tests
