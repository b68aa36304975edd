// SPDX-License-Identifier: Apache-2.0
#include "jet/catalog/ConnectText.h"

#include "base/Text.h"

#include <algorithm>

namespace jet::catalog {

namespace {

constexpr std::string_view kOurKind = "MS Access";

// Takes the part before the next semicolon off the front.
std::string_view TakePart(std::string_view& connect)
{
    const std::string_view part = connect.substr(0, connect.find(';'));
    connect.remove_prefix(std::min(connect.size(), part.size() + 1));
    return part;
}

// Whether the part is "NAME=" and a value.
bool IsNamed(std::string_view part, std::string_view name)
{
    return part.size() > name.size() && part[name.size()] == '=' &&
           base::SameName(part.substr(0, name.size()), name);
}

}  // namespace

std::string_view PartOf(std::string_view connect, std::string_view name)
{
    while (!connect.empty()) {
        const std::string_view part = TakePart(connect);
        if (IsNamed(part, name)) return part.substr(name.size() + 1);
    }
    return {};
}

std::string WithoutPart(std::string_view connect, std::string_view name)
{
    std::string rest;
    bool first = true;
    while (!connect.empty()) {
        const std::string_view part = TakePart(connect);
        if (IsNamed(part, name)) continue;
        if (!first || part.find('=') != std::string_view::npos) rest += ';';
        rest += part;
        first = false;
    }
    return rest.find_first_not_of(';') == std::string::npos ? std::string() : rest;
}

std::string_view KindIn(std::string_view connect)
{
    const std::string_view kind = TakePart(connect);
    return kind.find('=') == std::string_view::npos ? kind : std::string_view();
}

bool LeadsToOurKind(std::string_view connect)
{
    const std::string kind = base::Trim(KindIn(connect));
    return kind.empty() || base::SameName(kind, kOurKind);
}

}  // namespace jet::catalog
