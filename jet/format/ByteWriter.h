// SPDX-License-Identifier: Apache-2.0
// ByteWriter: little-endian integers and bytes put one behind the other.
#pragma once

#include "jet/format/Bytes.h"

#include <vector>

namespace jet::format {

class ByteWriter {
public:
    void U8(std::uint8_t value) { bytes_.push_back(static_cast<std::byte>(value)); }
    void U16(std::uint16_t value) { Integer(value, 2); }
    void U32(std::uint32_t value) { Integer(value, 4); }
    // Zeros, to be written into before anything else is put.
    [[nodiscard]] MutableSpan Room(std::size_t count)
    {
        bytes_.resize(bytes_.size() + count);
        return MutableSpan(bytes_).last(count);
    }
    void Put(Span bytes) { bytes_.insert(bytes_.end(), bytes.begin(), bytes.end()); }

    [[nodiscard]] std::size_t Size() const { return bytes_.size(); }
    [[nodiscard]] MutableSpan Written() { return bytes_; }
    [[nodiscard]] std::vector<std::byte> Take() { return std::move(bytes_); }

private:
    void Integer(std::uint32_t value, int width)
    {
        for (int i = 0; i < width; ++i)
            U8(static_cast<std::uint8_t>((value >> (8 * i)) & 0xFF));
    }

    std::vector<std::byte> bytes_;
};

}  // namespace jet::format
