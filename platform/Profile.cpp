// SPDX-License-Identifier: Apache-2.0
#include "platform/Profile.h"

#include "base/NumberedError.h"
#include "base/Text.h"

#include <algorithm>
#include <optional>
#include <vector>

namespace platform {

namespace {

constexpr std::string_view kBlanks = " \t";
constexpr std::string_view kLineEnds = "\r\n";
constexpr std::string_view kNewLineEnd = "\r\n";
constexpr std::string_view kUtf8Mark = "\xEF\xBB\xBF";

std::string_view Trimmed(std::string_view text)
{
    const std::size_t first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos) return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

// One line of the file: its characters and, after them, its line end.
struct Line {
    std::size_t start = 0, size = 0, next = 0;
};

std::vector<Line> LinesOf(std::string_view content)
{
    std::vector<Line> lines;
    std::size_t start = content.substr(0, kUtf8Mark.size()) == kUtf8Mark ? kUtf8Mark.size() : 0;
    while (start < content.size()) {
        const std::size_t end = std::min(content.find_first_of(kLineEnds, start), content.size());
        std::size_t next = end;
        if (next < content.size())
            next += content.substr(next, kNewLineEnd.size()) == kNewLineEnd ? 2U : 1U;
        lines.push_back({start, end - start, next});
        start = next;
    }
    return lines;
}

// The name in brackets; nothing for a line that heads no section.
std::optional<std::string_view> SectionName(std::string_view line)
{
    const std::string_view text = Trimmed(line);
    const std::size_t close = text.find(']');
    if (text.empty() || text.front() != '[' || close == std::string_view::npos) return std::nullopt;
    return Trimmed(text.substr(1, close - 1));
}

// The key before the first "="; nothing for comments, headers and lines without "=".
std::optional<std::string_view> KeyName(std::string_view line)
{
    const std::string_view text = Trimmed(line);
    const std::size_t equals = text.find('=');
    if (equals == std::string_view::npos || text.front() == ';' || SectionName(line))
        return std::nullopt;
    return Trimmed(text.substr(0, equals));
}

// Where a section lies: its header and its last line that is not blank, and its key's line.
struct Place {
    std::optional<Line> lastUsed;  // nothing when the section is missing
    std::optional<Line> key;
};

// Searches the first section of that name, and only that one, for the first line of that key.
Place Find(std::string_view content, std::string_view section, std::string_view key)
{
    Place place;
    for (const Line& line : LinesOf(content)) {
        const std::string_view text = content.substr(line.start, line.size);
        if (const std::optional<std::string_view> name = SectionName(text)) {
            if (place.lastUsed) break;
            if (base::SameName(*name, Trimmed(section))) place.lastUsed = line;
            continue;
        }
        if (!place.lastUsed || Trimmed(text).empty()) continue;
        place.lastUsed = line;
        const std::optional<std::string_view> name = KeyName(text);
        if (!place.key && name && base::SameName(*name, Trimmed(key))) place.key = line;
    }
    return place;
}

std::string_view WithoutQuotes(std::string_view value)
{
    const bool quoted = value.size() >= 2 && value.front() == value.back() &&
                        (value.front() == '"' || value.front() == '\'');
    return quoted ? value.substr(1, value.size() - 2) : value;
}

std::string_view WithoutTrailingBlanks(std::string_view text)
{
    return text.substr(0, text.find_last_not_of(' ') + 1);
}

std::string_view ValueIn(std::string_view line)
{
    return WithoutQuotes(Trimmed(line.substr(line.find('=') + 1)));
}

// A missing or unreadable file holds nothing.
std::string ContentOf(const Files& files, std::string_view path)
{
    try {
        if (files.Exists(path)) return files.Read(path);
    } catch (const base::NumberedError&) {
        return {};
    }
    return {};
}

std::string WithKeySet(const std::string& content, std::string_view section, std::string_view key,
                       std::string_view value)
{
    const std::string entry = std::string(Trimmed(key)) + "=" + std::string(value);
    const Place place = Find(content, section, key);
    std::string written = content;
    if (place.key) {
        const std::string_view line =
            std::string_view(content).substr(place.key->start, place.key->size);
        const std::string kept(*KeyName(line));
        return written.replace(place.key->start, place.key->size, kept + "=" + std::string(value));
    }
    const Line after = place.lastUsed.value_or(Line{content.size(), 0, content.size()});
    std::string added;
    const bool lineIsOpen =
        after.next > 0 && kLineEnds.find(content[after.next - 1]) == std::string_view::npos;
    if (lineIsOpen && content != kUtf8Mark) added += kNewLineEnd;
    if (!place.lastUsed) added.append("[").append(Trimmed(section)).append("]").append(kNewLineEnd);
    added.append(entry).append(kNewLineEnd);
    return written.insert(after.next, added);
}

}  // namespace

std::string ReadProfile(const Files& files, std::string_view path, std::string_view section,
                        std::string_view key, std::string_view fallback, std::size_t size)
{
    if (size == 0) return {};
    const std::string content = ContentOf(files, path);
    const Place place = Find(content, section, key);
    std::string_view value = WithoutTrailingBlanks(fallback);
    if (place.key)
        value = ValueIn(std::string_view(content).substr(place.key->start, place.key->size));
    return std::string(value.substr(0, size - 1));
}

bool WriteProfile(Files& files, std::string_view path, std::string_view section,
                  std::string_view key, std::string_view value)
{
    const std::string_view written =
        value.substr(std::min(value.find_first_not_of(' '), value.size()));
    try {
        const std::string content = files.Exists(path) ? files.Read(path) : std::string();
        files.Write(path, WithKeySet(content, section, key, written));
    } catch (const base::NumberedError&) {
        return false;
    }
    return true;
}

}  // namespace platform
