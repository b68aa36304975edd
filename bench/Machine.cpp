// SPDX-License-Identifier: Apache-2.0
#include "bench/Machine.h"

#include "jet/catalog/Catalog.h"
#include "jet/format/DataPage.h"
#include "jet/io/StdFile.h"

#include <array>
#include <cstring>
#include <fcntl.h>
#include <stdexcept>
#include <sys/mman.h>
#include <sys/stat.h>
#include <unistd.h>

namespace bench {

namespace {

constexpr std::size_t kPageSize = 4096;

std::uint32_t DefinitionOf(const std::string& path, const std::string& table)
{
    jet::io::StdFileSystem files;
    const jet::catalog::Catalog catalog(
        jet::pages::Pager::Open(files, path, jet::io::OpenMode::ReadOnly));
    const auto entry = catalog.Find(table);
    if (!entry) throw std::runtime_error("no table " + table);
    return static_cast<std::uint32_t>(entry->id);
}

std::span<const std::byte> Mapped(const std::string& path)
{
    const int file = open(path.c_str(), O_RDONLY | O_CLOEXEC);
    struct stat status {};
    if (file < 0 || fstat(file, &status) != 0) throw std::runtime_error("cannot open " + path);
    const auto size = static_cast<std::size_t>(status.st_size);
    void* const begin = mmap(nullptr, size, PROT_READ, MAP_SHARED | MAP_POPULATE, file, 0);
    close(file);
    if (begin == MAP_FAILED) throw std::runtime_error("cannot map " + path);
    return {static_cast<const std::byte*>(begin), size};
}

std::uint64_t Added(std::span<const std::byte> page)
{
    std::uint64_t sum = 0;
    for (std::size_t at = 0; at < page.size(); at += sizeof sum) {
        std::uint64_t word = 0;
        std::memcpy(&word, page.data() + at, sizeof word);
        sum += word;
    }
    return sum;
}

}  // namespace

TablePages::TablePages(const std::string& path, const std::string& table) : file_(Mapped(path))
{
    const std::uint32_t owner = DefinitionOf(path, table);
    for (std::size_t at = 0; at + kPageSize <= file_.size(); at += kPageSize) {
        const auto page = file_.subspan(at, kPageSize);
        if (page[0] == std::byte{jet::format::kDataPageType} &&
            jet::format::ReadU32(page, jet::format::kDataPageJet4.owner) == owner)
            pages_.push_back(page);
    }
}

TablePages::~TablePages()
{
    munmap(const_cast<std::byte*>(file_.data()), file_.size());  // NOLINT: munmap has no const
}

Contender TablePages::Reading() const
{
    const auto read = [this] {
        std::uint64_t sum = 0;
        for (const auto page : pages_)
            sum += Added(page);
        // Used, so that it is worked out.
        return bench::Reading{.rows = static_cast<int>(sum & 1U), .sum = 0};
    };
    return {.name = "memory: its pages read once", .work = read, .compared = Compared::Nothing};
}

ScratchPages::ScratchPages(const std::string& folder) : path_(folder + "/scratch.pages")
{
    file_ = open(path_.c_str(), O_RDWR | O_CREAT | O_TRUNC | O_CLOEXEC, 0600);
    const std::vector<std::byte> zeros(kPageSize * 256);
    if (file_ < 0 || write(file_, zeros.data(), zeros.size()) < 0 || fsync(file_) != 0)
        throw std::runtime_error("cannot write " + path_);
}

ScratchPages::~ScratchPages()
{
    close(file_);
    unlink(path_.c_str());
}

Contender ScratchPages::OneWrite() const
{
    const auto put = [file = file_, count = 0]() mutable {
        std::array<std::byte, kPageSize> page{};
        page[0] = static_cast<std::byte>(++count);
        const ssize_t done = pwrite(file, page.data(), page.size(), (count % 256) * 4096L);
        return bench::Reading{.rows = static_cast<int>(done), .sum = 0};
    };
    return {.name = "the system: one page written", .work = put, .compared = Compared::Nothing};
}

Contender ScratchPages::OneFlush() const
{
    Contender flushed = OneWrite();
    flushed.name = "the disk: one page written and flushed";
    flushed.work = [file = file_, put = flushed.work] {
        const bench::Reading done = put();
        fdatasync(file);
        return done;
    };
    return flushed;
}

}  // namespace bench
