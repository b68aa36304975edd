// SPDX-License-Identifier: Apache-2.0
// BenchShop: where a shop to be measured lies, and how it is opened and read.
#pragma once

#include "bench/Reading.h"
#include "jet/dao/DBEngine.h"

#include <filesystem>
#include <limits>
#include <string>
#include <vector>

namespace bench {

inline constexpr int kAll = std::numeric_limits<int>::max();

// The shop's today, noon: March 16, 2026. bench/run gives make_shop the same day.
[[nodiscard]] base::Date Today();

// The files of one size in the cache of bench/run.
struct BenchShop {
    std::string size;              // "S", "M", "L"
    std::filesystem::path folder;  // of that size

    // From the words of the command line: SIZE CACHE.
    // Errors: std::runtime_error for wrong usage.
    static BenchShop Of(int count, char** words);

    [[nodiscard]] std::string Mdb() const { return folder / "Kelvaro.mdb"; }
    // The same rows in SQLite: without an index, and with those a person would add.
    [[nodiscard]] std::string Plain() const { return folder / "plain.sqlite"; }
    [[nodiscard]] std::string Indexed() const { return folder / "indexed.sqlite"; }
};

// A copy of a file, to be changed; gone with this object. Rule: it is on the disk when it is there.
class WorkingCopy {
public:
    explicit WorkingCopy(const std::filesystem::path& original);
    ~WorkingCopy();
    WorkingCopy(const WorkingCopy&) = delete;
    WorkingCopy& operator=(const WorkingCopy&) = delete;

    [[nodiscard]] std::string Path() const { return path_; }
    [[nodiscard]] std::filesystem::path Folder() const { return path_.parent_path(); }

private:
    std::filesystem::path path_;
};

// A file opened by an engine of its own.
class OurShop {
public:
    explicit OurShop(const std::string& path) : engine_({Today}), path_(path) { Open(); }
    // Requires: `files` outlives it.
    OurShop(const std::string& path, jet::io::FileSystem& files)
        : engine_({Today}, files), path_(path)
    {
        Open();
    }

    [[nodiscard]] dao::Database& Database() { return database_; }
    // The rows that a statement gives, `limit` of them at most, every field of each of them read.
    [[nodiscard]] Reading Read(const std::string& sql, int limit = kAll);

private:
    void Open() { database_ = engine_.DefaultWorkspace().OpenDatabase(path_); }

    dao::DBEngine engine_;
    std::string path_;
    dao::Database database_;
};

void AddField(Reading& reading, const base::Value& value);

// Runs a program's questions; an error is printed and fails it.
int Main(int count, char** words, int (*ask)(const BenchShop& shop));

}  // namespace bench
