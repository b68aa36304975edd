// SPDX-License-Identifier: Apache-2.0
#include "app/COSInfo.h"

namespace lodrin {

std::string COSInfo::WindowsDirectory() const
{
    return TrimNulls(paths_.WindowsDirectory());
}

std::string TrimNulls(std::string_view text)
{
    return std::string(text.substr(0, text.find('\0')));
}

}  // namespace lodrin
