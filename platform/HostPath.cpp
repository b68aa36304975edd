// SPDX-License-Identifier: Apache-2.0
#include "platform/HostPath.h"

#include "base/Text.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace platform {

namespace {

namespace fs = std::filesystem;

bool IsThere(const fs::path& path)
{
    std::error_code ignored;
    return fs::exists(fs::symlink_status(path, ignored));
}

// The entry of `folder` named `name` but for case; the first one in byte order.
std::optional<fs::path> EntryNamed(const fs::path& folder, const std::string& name)
{
    std::error_code failed;
    std::optional<fs::path> found;
    fs::directory_iterator entry(folder.empty() ? fs::path(".") : folder, failed);
    for (; !failed && entry != fs::directory_iterator(); entry.increment(failed)) {
        const fs::path candidate = entry->path().filename();
        if (base::SameName(candidate.string(), name) && (!found || candidate < *found))
            found = candidate;
    }
    return found;
}

}  // namespace

std::string HostPath(std::string_view path)
{
    std::string host(path);
    const char separator = fs::path::preferred_separator;
    std::replace(host.begin(), host.end(), separator == '/' ? '\\' : '/', separator);
    return host;
}

std::string ExistingPath(std::string_view path)
{
    const fs::path given(path);
    if (given.empty() || IsThere(given)) return std::string(path);
    fs::path found = given.root_path();
    bool lost = false;
    for (const fs::path& part : given.relative_path()) {
        if (!lost && !IsThere(found / part)) {
            const std::optional<fs::path> other = EntryNamed(found, part.string());
            lost = !other.has_value();
            found /= other.value_or(part);
        } else {
            found /= part;
        }
    }
    return found.string();
}

}  // namespace platform
