// SPDX-License-Identifier: Apache-2.0
#include "app/modGlobal.h"

#include "base/Convert.h"
#include "base/NumberedError.h"
#include "base/Text.h"
#include "platform/Profile.h"

#include <cstddef>
#include <cstdint>

namespace lodrin {

namespace {

constexpr std::int16_t kFirstBufferSize = 256;

std::string HostPathOf(const platform::Paths& paths, std::string_view file)
{
    const bool hasFolder = file.find_first_of("\\/") != std::string_view::npos;
    if (hasFolder) return paths.ToHost(file);
    return paths.ToHost(paths.WindowsDirectory() + "\\" + std::string(file));
}

bool IsUtf8(const std::string& bytes)
{
    return base::FromUtf16(base::ToUtf16(bytes)) == bytes;
}

}  // namespace

std::string ReadIniString(const platform::Services& services, std::string_view section,
                          std::string_view key, std::string_view defaultValue,
                          std::string_view file)
{
    const std::string path = HostPathOf(services.paths, file);
    // A value that fills the buffer, or all of it but one, may have been cut: take a larger one.
    std::int16_t size = kFirstBufferSize;
    while (true) {
        const auto buffer = static_cast<std::size_t>(size);
        std::string value =
            platform::ReadProfile(services.files, path, section, key, defaultValue, buffer);
        if (value.size() + 2 < buffer) return IsUtf8(value) ? value : base::FromWindows1252(value);
        size = base::ToInteger(2 * size);
    }
}

bool WriteIniString(const platform::Services& services, std::string_view section,
                    std::string_view key, std::string_view value, std::string_view file)
{
    return !platform::WriteProfile(services.files, HostPathOf(services.paths, file), section, key,
                                   value);
}

bool FileExists(const platform::Services& services, std::string_view path)
{
    try {
        return services.files.Exists(services.paths.ToHost(path));
    } catch (const base::NumberedError&) {
        return false;
    }
}

}  // namespace lodrin
