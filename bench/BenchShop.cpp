// SPDX-License-Identifier: Apache-2.0
#include "bench/BenchShop.h"

#include "base/NumberedError.h"

#include <cstdio>
#include <exception>
#include <fcntl.h>
#include <stdexcept>
#include <unistd.h>

namespace bench {

base::Date Today()
{
    constexpr double kMarch16 = 46097;
    return {kMarch16 + 0.5};
}

BenchShop BenchShop::Of(int count, char** words)
{
    if (count != 3) throw std::runtime_error("usage: " + std::string(words[0]) + " SIZE CACHE");
    const std::string size = words[1];
    return {size, std::filesystem::path(words[2]) / size};
}

WorkingCopy::WorkingCopy(const std::filesystem::path& original)
{
    const std::filesystem::path folder =
        original.parent_path() / ("copy-" + std::to_string(getpid()));
    std::filesystem::create_directories(folder);
    path_ = folder / original.filename();
    std::filesystem::copy_file(original, path_, std::filesystem::copy_options::overwrite_existing);
    const int file = open(path_.c_str(), O_RDONLY | O_CLOEXEC);
    if (file < 0 || fsync(file) != 0) throw std::runtime_error("cannot copy " + path_.string());
    close(file);
}

WorkingCopy::~WorkingCopy()
{
    std::error_code ignored;
    std::filesystem::remove(path_, ignored);
    std::filesystem::remove(path_.string() + "-journal", ignored);
    std::filesystem::remove(Folder(), ignored);
}

void AddField(Reading& reading, const base::Value& value)
{
    if (const auto* const text = value.As<std::string>()) return reading.AddText(text->size());
    if (const auto* const date = value.As<base::Date>()) return reading.AddNumber(date->days);
    if (const auto* const whole = value.As<std::int32_t>()) return reading.AddNumber(*whole);
    if (const auto* const number = value.As<double>()) return reading.AddNumber(*number);
    if (!value.IsNull()) throw std::logic_error("a kind of value that no question reads");
}

Reading OurShop::Read(const std::string& sql, int limit)
{
    dao::Recordset rows = database_.OpenRecordset(sql);
    const int fields = rows.FieldCount();
    Reading reading;
    for (; reading.rows < limit && !rows.Eof(); rows.MoveNext()) {
        for (int field = 0; field < fields; ++field)
            AddField(reading, rows[field].Value());
        ++reading.rows;
    }
    return reading;
}

int Main(int count, char** words, int (*ask)(const BenchShop& shop))
{
    try {
        return ask(BenchShop::Of(count, words));
    } catch (const base::NumberedError& error) {
        std::printf("FAILED: error %d: %s\n", error.Number(), error.what());
    } catch (const std::exception& error) {
        std::printf("FAILED: %s\n", error.what());
    }
    return 1;
}

}  // namespace bench
