// SPDX-License-Identifier: Apache-2.0
#include "tests/support/FileKind.h"

#include "jet/dao/DBEngine.h"

#include <cstdlib>
#include <stdexcept>
#include <string_view>

namespace tests {

std::string NameOf(FileKind kind)
{
    const std::string version = IsJet3(kind) ? "Jet3" : "Jet4";
    return kind == FileKind::Jet3 || kind == FileKind::Jet4 ? version : "Encoded" + version;
}

bool IsJet3(FileKind kind)
{
    return kind == FileKind::Jet3 || kind == FileKind::EncodedJet3;
}

void CreateDatabase(dao::DBEngine& engine, const std::string& path, FileKind kind)
{
    const bool plain = kind == FileKind::Jet3 || kind == FileKind::Jet4;
    engine.CreateDatabase(path,
                          IsJet3(kind) ? dao::DatabaseVersion::Jet3 : dao::DatabaseVersion::Jet4,
                          plain ? dao::DatabaseEncoding::Plain : dao::DatabaseEncoding::Encoded);
}

FileKind ShopKind()
{
    const char* const wish = std::getenv("LODRIN_TEST_SHOP");
    const std::string_view word = wish == nullptr ? "jet4" : wish;
    if (word == "jet3") return FileKind::Jet3;
    if (word == "jet4") return FileKind::Jet4;
    if (word == "encoded") return FileKind::EncodedJet4;
    if (word == "encoded3") return FileKind::EncodedJet3;
    throw std::logic_error("no kind of shop: " + std::string(word));
}

}  // namespace tests
