// SPDX-License-Identifier: Apache-2.0
// LongValueHeader: what a row keeps of a memo or OLE value, and where the value itself lies.
#pragma once

#include "jet/format/Bytes.h"
#include "jet/format/PageNumber.h"

namespace jet::format {

// In the row, as one row of a long-value page, or as a chain of rows, one a page.
enum class LongValueForm : std::uint8_t { Chain = 0, Single = 1, InRow = 2 };

// The bytes of a long value in its row.                          docs/format/long-value.md
//
//   part     width   meaning
//   length   4       of the stored value in bytes; the two top bits are its form
//   first    4       row pointer of the value or of its first piece
//   stamp    4       of a chain: equal to the stamp of its first page
//   value    varies  the value itself, when its form is InRow
inline constexpr std::size_t kLongValueHeaderSize = 12;

struct LongValueHeader {
    LongValueForm form = LongValueForm::InRow;
    std::uint32_t length = 0;
    RowId first;
    std::uint32_t stamp = 0;
    friend bool operator==(const LongValueHeader&, const LongValueHeader&) = default;
};

// Rule:   a field of no bytes is an empty value in the row.
// Errors: 3343 when the field is too short or its form is unknown.
[[nodiscard]] LongValueHeader ReadLongValueHeader(Span field);
void WriteLongValueHeader(MutableSpan field, const LongValueHeader& header);

// Largest lengths that are written in each form; any length is read in any form. Units: bytes.
// Rule: a value in the row is measured before compression.
struct LongValueLimits {
    std::size_t inRow, single, piece;
};
inline constexpr LongValueLimits kLongValueJet3{.inRow = 32, .single = 1731, .piece = 2032};
inline constexpr LongValueLimits kLongValueJet4{.inRow = 64, .single = 3777, .piece = 4072};

}  // namespace jet::format
