// SPDX-License-Identifier: Apache-2.0
// Fuzz: what every fuzz target shares: its input piece by piece, and what counts as an answer.
#pragma once

#include "base/NumberedError.h"
#include "jet/format/Bytes.h"

#include <algorithm>
#include <concepts>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

// A target: called with one input after the other. A finding ends the program.
extern "C" int LLVMFuzzerTestOneInput(const std::uint8_t* data, std::size_t size);

namespace fuzz {

using jet::format::Span;

// An input, taken from its beginning. Rule: what is not there any more reads as zero or nothing.
class Input {
public:
    Input(const std::uint8_t* data, std::size_t size)
        : bytes_(std::as_bytes(std::span<const std::uint8_t>(data, size)))
    {
    }

    [[nodiscard]] Span Take(std::size_t most)
    {
        const Span taken = bytes_.first(std::min(most, bytes_.size()));
        bytes_ = bytes_.subspan(taken.size());
        return taken;
    }
    [[nodiscard]] unsigned Byte()
    {
        const Span taken = Take(1);
        return taken.empty() ? 0 : std::to_integer<unsigned>(taken[0]);
    }
    [[nodiscard]] unsigned Word() { return Byte() | Byte() << 8U; }
    [[nodiscard]] Span Rest() { return Take(bytes_.size()); }
    [[nodiscard]] std::string RestAsText()
    {
        std::string text;
        for (const std::byte byte : Rest())
            text += static_cast<char>(byte);
        return text;
    }

private:
    Span bytes_;
};

// Ends the program with a finding unless `holds`.
inline void Require(bool holds, const char* claim)
{
    if (holds) return;
    std::fprintf(stderr, "finding: not true that %s\n", claim);
    std::abort();
}

// Runs one call; the number of the error it ends with, 0 for a result.
// Rule: any other exception is a finding; it is let through.
[[nodiscard]] int NumberOf(std::invocable auto&& call)
{
    try {
        call();
    } catch (const base::NumberedError& error) {
        return error.Number();
    }
    return 0;
}

// The errors that say: these bytes are damaged.
[[nodiscard]] inline bool SaysDamaged(int number)
{
    return number == 3343 || number == 3049;
}

}  // namespace fuzz
