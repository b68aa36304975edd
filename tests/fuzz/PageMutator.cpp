// SPDX-License-Identifier: Apache-2.0
// PageMutator: changes a few numbers of a database's pages where they mean something, and leaves
// the rest, so that most inputs get past the first look.
#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <random>

namespace {

// Where a file tells its format: 0 for Jet 3.
constexpr std::size_t kVersionAt = 0x14;

// The pages of an input: a whole file, or pages behind one byte that tells the format.
struct Pages {
    std::uint8_t* data;
    std::size_t size, pageSize;
};

Pages PagesOf(std::uint8_t* data, std::size_t size)
{
    constexpr std::size_t jet3 = 2048, jet4 = 4096;
    if (size % jet3 == 1) return {data + 1, size - 1, data[0] % 2 == 0 ? jet3 : jet4};
    return {data, size, data[kVersionAt] == 0 ? jet3 : jet4};
}

class Mutation {
public:
    Mutation(const Pages& pages, unsigned seed)
        : data_(pages.data), size_(pages.size), pageSize_(pages.pageSize), random_(seed)
    {
    }

    void Change()
    {
        const std::size_t width = std::size_t{1} << Below(3);
        const std::size_t at = std::min(Place(), size_ - width);
        if (Below(4) == 0)
            std::memmove(data_ + at, data_ + std::min(Place(), size_ - width), width);
        else if (Below(3) == 0)
            data_[at] = static_cast<std::uint8_t>(data_[at] ^ (1U << Below(8)));
        else
            Put(at, width, Number());
    }

    [[nodiscard]] std::size_t Below(std::size_t limit) { return random_() % limit; }
    // A length of whole pages.
    [[nodiscard]] std::size_t Cut()
    {
        return std::max<std::size_t>(pageSize_, size_ / pageSize_ * Below(9) / 8 * pageSize_);
    }

private:
    // Most of a page's meaning is at its beginning and its end.
    [[nodiscard]] std::size_t Place()
    {
        const std::size_t page = Below(size_ / pageSize_) * pageSize_;
        switch (Below(4)) {
        case 0:
            return page + Below(pageSize_);
        case 1:
            return page + pageSize_ - 1 - Below(200);
        case 2:
            return page + Below(32);
        default:
            return page + Below(600);
        }
    }

    [[nodiscard]] std::uint32_t Number()
    {
        constexpr std::array<std::uint32_t, 12> telling{
            0, 1, 2, 0x7F, 0xFF, 0x1FFF, 0x4000, 0x8000, 0xC000, 0xFFFF, 0xFFFFFFFF, 0x7FFFFFFF};
        if (Below(2) == 0) return telling[Below(telling.size())];
        const auto page = static_cast<std::uint32_t>(Below(size_ / pageSize_ + 2));
        return Below(2) == 0 ? page : page << 8U | static_cast<std::uint32_t>(Below(4));
    }

    void Put(std::size_t at, std::size_t width, std::uint32_t number)
    {
        for (std::size_t i = 0; i < width; ++i)
            data_[at + i] = static_cast<std::uint8_t>(number >> (8 * i));
    }

    std::uint8_t* data_;
    std::size_t size_, pageSize_;
    std::mt19937 random_;
};

}  // namespace

extern "C" std::size_t LLVMFuzzerCustomMutator(std::uint8_t* data, std::size_t size,
                                               std::size_t /*maxSize*/, unsigned int seed)
{
    if (size <= kVersionAt) return size;
    const Pages pages = PagesOf(data, size);
    if (pages.size < pages.pageSize) return size;
    Mutation mutation(pages, seed);
    if (mutation.Below(50) == 0) return size - pages.size + mutation.Cut();
    for (std::size_t changes = 1 + mutation.Below(4); changes > 0; --changes)
        mutation.Change();
    return size;
}
