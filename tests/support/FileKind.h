// SPDX-License-Identifier: Apache-2.0
// FileKind: the kinds of database file that tests run over.
#pragma once

#include <array>
#include <string>

namespace dao {
class DBEngine;
}

namespace tests {

enum class FileKind { Jet3, Jet4, EncodedJet3, EncodedJet4 };

inline constexpr std::array kFileKinds{FileKind::Jet3, FileKind::Jet4, FileKind::EncodedJet3,
                                       FileKind::EncodedJet4};

// How GoogleTest names a test over this kind.
[[nodiscard]] std::string NameOf(FileKind kind);

[[nodiscard]] bool IsJet3(FileKind kind);

// A new, empty database. Errors: those of DBEngine::CreateDatabase.
void CreateDatabase(dao::DBEngine& engine, const std::string& path, FileKind kind);

// The kind in which the shops of ShopWorld are made: LODRIN_TEST_SHOP in the environment says jet3,
// jet4 (which holds when it says nothing), encoded or encoded3, encoded files of Jet 4 and Jet 3.
// Rule: std::logic_error for any other word.
[[nodiscard]] FileKind ShopKind();

}  // namespace tests
