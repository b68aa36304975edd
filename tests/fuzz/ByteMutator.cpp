// SPDX-License-Identifier: Apache-2.0
// ByteMutator: changes, adds, moves and takes out bytes anywhere in an input.
#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <random>

namespace {

class Mutation {
public:
    Mutation(std::uint8_t* data, std::size_t size, std::size_t maxSize, unsigned seed)
        : data_(data), size_(size), maxSize_(maxSize), random_(seed)
    {
    }

    void Change()
    {
        const std::size_t at = Below(size_ + 1);
        const std::size_t length = std::min(1 + Below(8), size_ - at);
        switch (Below(4)) {
        case 0:
            return Insert(at, static_cast<std::uint8_t>(random_()));
        case 1:
            std::copy(data_ + at + length, data_ + size_, data_ + at);
            size_ -= length;
            return;
        case 2:
            std::rotate(data_ + at, data_ + at + length, data_ + size_);
            return;
        default:
            if (at < size_) data_[at] = static_cast<std::uint8_t>(random_());
        }
    }

    [[nodiscard]] std::size_t Size() const { return size_; }
    [[nodiscard]] std::size_t Below(std::size_t limit) { return random_() % limit; }

private:
    void Insert(std::size_t at, std::uint8_t byte)
    {
        if (size_ == maxSize_) return;
        std::copy_backward(data_ + at, data_ + size_, data_ + size_ + 1);
        data_[at] = byte;
        ++size_;
    }

    std::uint8_t* data_;
    std::size_t size_, maxSize_;
    std::mt19937 random_;
};

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t maxSize, unsigned int seed)
{
    Mutation mutation(data, size, maxSize, seed);
    for (std::size_t changes = 1 + mutation.Below(5); changes > 0; --changes)
        mutation.Change();
    return mutation.Size();
}
