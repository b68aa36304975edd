// SPDX-License-Identifier: Apache-2.0
#include "jet/format/FileVersion.h"

#include "jet/format/CodePage.h"
#include "jet/format/Collation97.h"
#include "jet/format/DataPage.h"
#include "jet/format/HeaderPage.h"
#include "jet/format/IndexPage.h"
#include "jet/format/LongValueHeader.h"
#include "jet/format/RowLayout.h"
#include "jet/format/TableDefinition.h"
#include "jet/format/TableDefinitionLayout.h"

namespace jet::format {

constinit const FileVersion kJet3{.code = 0,
                                  .name = "3.0",
                                  .pageSize = 2048,
                                  .rowLimit = 2012,
                                  .fileLimit = std::uint64_t{1} << 30,
                                  .mapRow = 133,
                                  .bytesPerCharacter = 1,
                                  .sortVersion = kJet3Tables,
                                  .codePage = kWindows1252,
                                  .country = 1,
                                  .longestBinary = 255,
                                  .lastColumnType = static_cast<std::uint8_t>(ColumnType::Guid),
                                  .indexAlways = 0,
                                  .pointersKeepLength = false,
                                  .header = &kHeaderPageJet3,
                                  .dataPage = &kDataPageJet3,
                                  .row = &kRowJet3,
                                  .definition = &kDefinitionJet3,
                                  .indexPage = &kIndexPageJet3,
                                  .longValue = &kLongValueJet3};

constinit const FileVersion kJet4{.code = 1,
                                  .name = "4.0",
                                  .pageSize = 4096,
                                  .rowLimit = 4060,
                                  .fileLimit = std::uint64_t{1} << 31,
                                  .mapRow = 69,
                                  .bytesPerCharacter = 2,
                                  .sortVersion = 0,
                                  .codePage = kUtf16,
                                  .country = 0,
                                  .longestBinary = 510,
                                  .lastColumnType = static_cast<std::uint8_t>(ColumnType::Numeric),
                                  .indexAlways = 0x80,
                                  .pointersKeepLength = true,
                                  .header = &kHeaderPageJet4,
                                  .dataPage = &kDataPageJet4,
                                  .row = &kRowJet4,
                                  .definition = &kDefinitionJet4,
                                  .indexPage = &kIndexPageJet4,
                                  .longValue = &kLongValueJet4};

}  // namespace jet::format
