// SPDX-License-Identifier: Apache-2.0
// FuzzProfile: the input is a settings file, and what is asked of it.
//
// Layout: three lines: section, key, value; behind them the file.
// Claims: reading and writing never fail; a read value has the size allowed at most; a written
//         value is read back; a new key leaves every byte of the file.
#include "platform/Profile.h"
#include "platform/fake/MemoryFiles.h"
#include "tests/fuzz/Fuzz.h"

namespace {

constexpr std::string_view kPath = "settings.ini";

std::string TakeLine(std::string& text)
{
    const std::size_t end = text.find('\n');
    const std::string line = text.substr(0, end);
    text.erase(0, end == std::string::npos ? text.size() : end + 1);
    return line;
}

bool IsPlain(const std::string& text)
{
    constexpr std::string_view special{"\r\n\0[]=;\"' \t", 11};
    return !text.empty() && text.find_first_of(special) == std::string::npos;
}

// Whether leaving one stretch out of `whole` gives `part`.
bool IsWithoutOneStretch(std::string_view part, std::string_view whole)
{
    std::size_t same = 0, sameAtEnd = 0;
    const std::size_t most = std::min(part.size(), whole.size());
    while (same < most && part[same] == whole[same])
        ++same;
    while (sameAtEnd < most &&
           part[part.size() - 1 - sameAtEnd] == whole[whole.size() - 1 - sameAtEnd])
        ++sameAtEnd;
    return same + sameAtEnd >= part.size();
}

}  // namespace

extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size)
{
    std::string file = fuzz::Input(data, size).RestAsText();
    const std::string section = TakeLine(file), key = TakeLine(file), value = TakeLine(file);
    platform::MemoryFiles files;
    files.Write(kPath, file);
    for (const std::size_t most : {std::size_t{0}, std::size_t{1}, std::size_t{20}, size + 1}) {
        const std::string read =
            platform::ReadProfile(files, kPath, section, key, "fallback", most);
        fuzz::Require(read.size() < std::max<std::size_t>(most, 1), "a value has its size at most");
    }
    fuzz::Require(files.Read(kPath) == file, "reading writes nothing");
    const bool missing = platform::ReadProfile(files, kPath, section, key, "?", size + 2) !=
                         platform::ReadProfile(files, kPath, section, key, "!", size + 2);
    fuzz::Require(platform::WriteProfile(files, kPath, section, key, value), "it can be written");
    if (!IsPlain(section) || !IsPlain(key) || !IsPlain(value)) return 0;
    fuzz::Require(platform::ReadProfile(files, kPath, section, key, "", size + 1) == value,
                  "a written value is read back");
    if (missing) fuzz::Require(IsWithoutOneStretch(file, files.Read(kPath)), "the rest is kept");
    return 0;
}
