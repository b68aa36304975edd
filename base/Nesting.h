// SPDX-License-Identifier: Apache-2.0
// Nesting: how deep something that may call itself stands at this moment.
#pragma once

#include <cstddef>

namespace base {

// One level more while it lives. Requires: `depth` outlives it.
class Nesting {
public:
    explicit Nesting(std::size_t& depth) : depth_(depth) { ++depth_; }
    ~Nesting() { --depth_; }
    Nesting(const Nesting&) = delete;
    Nesting& operator=(const Nesting&) = delete;

private:
    std::size_t& depth_;
};

}  // namespace base
