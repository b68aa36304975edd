// SPDX-License-Identifier: Apache-2.0
// make_shop: makes a sample shop, Kelvaro.mdb, to try the program on.
#include "base/Calendar.h"
#include "base/NumberedError.h"
#include "jet/io/MemoryFile.h"
#include "jet/io/StdFile.h"
#include "tools/shop/SampleShop.h"

#include <algorithm>
#include <charconv>
#include <chrono>
#include <ctime>
#include <filesystem>
#include <iostream>
#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace {

using tools::shop::SampleShop;

constexpr int kDone = 0, kFailed = 1, kMisused = 2;

constexpr std::string_view kUsage =
    R"(usage: make_shop [OPTION ...] DIR

Makes DIR/Kelvaro.mdb, a shop of invented people, vehicles and work, and prints its path
and, of up to 20 technicians, names and PINs. DIR is made when it is missing; a database
that is there already is never overwritten.

--fresh            without the tables of the clock, as before its first start
--employees N      technicians on the board (14)
--orders N         repair orders (an eighth of the history, at least 60, at most 2000)
--history N        finished jobs (900)
--no-papers        repair orders without notes, estimate lines, purchases, payments and
                   pictures: a smaller file
--seed S           another shop; the same number makes the same shop again (1)
--date YYYY-MM-DD  the shop's today (the clock's date)
--format F         of the file: jet4, as Access 2000 to 2003 write it, or jet3, as
                   Access 97 does (jet4)
--encoded          with pages that show no text to who looks into the file
--help

Exit code: 0 done, 1 the file cannot be made, 2 wrong usage.
)";

struct Wishes {
    SampleShop shop;
    std::string folder;
    [[nodiscard]] std::string Path() const
    {
        return (std::filesystem::path(folder) / "Kelvaro.mdb").string();
    }
    bool ordersGiven = false, dateGiven = false;
};

// A number of the command line, inside its limits.
template <class T>
std::optional<T> NumberIn(std::string_view text, T low, T high)
{
    T number{};
    const auto [end, failure] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (failure != std::errc() || end != text.data() + text.size()) return std::nullopt;
    if (number < low || number > high) return std::nullopt;
    return number;
}

std::optional<base::Date> DateIn(std::string_view text)
{
    if (text.size() != 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    const auto year = NumberIn(text.substr(0, 4), 1990, 2100);
    const auto month = NumberIn(text.substr(5, 2), 1, 12);
    const auto day = NumberIn(text.substr(8, 2), 1, 31);
    if (!year || !month || !day || !base::IsCalendarDate(*year, *month, *day)) return std::nullopt;
    return base::DateFrom({.year = *year, .month = *month, .day = *day});
}

base::Date Today()
{
    const std::time_t now = std::chrono::system_clock::to_time_t(std::chrono::system_clock::now());
    const std::tm parts = *std::localtime(&now);
    return base::DateFrom(
        {.year = parts.tm_year + 1900, .month = parts.tm_mon + 1, .day = parts.tm_mday});
}

// Puts a number where it belongs; false when the text is none.
template <class T>
bool Take(std::string_view text, T& into, T low, T high)
{
    const auto number = NumberIn(text, low, high);
    if (number) into = *number;
    return number.has_value();
}

const jet::format::FileVersion* FormatIn(std::string_view text)
{
    if (text == "jet3") return &jet::format::kJet3;
    return text == "jet4" ? &jet::format::kJet4 : nullptr;
}

// One option that has a value. False for an unknown option or an unsuitable value.
bool TakeOption(Wishes& wishes, std::string_view option, std::string_view value)
{
    SampleShop& shop = wishes.shop;
    if (option == "--employees") return Take(value, shop.employees, 1, 500);
    if (option == "--history") return Take(value, shop.history, 0, 5'000'000);
    if (option == "--seed") return Take(value, shop.seed, std::uint64_t{0}, ~std::uint64_t{0});
    if (option == "--orders") {
        wishes.ordersGiven = true;
        return Take(value, shop.orders, 1, 200'000);
    }
    if (option == "--format") return (shop.format = FormatIn(value)) != nullptr;
    if (option != "--date") return false;
    const auto date = DateIn(value);
    if (date) shop.today = *date;
    wishes.dateGiven = true;
    return date.has_value();
}

std::optional<Wishes> WishesOf(const std::vector<std::string_view>& arguments)
{
    Wishes wishes;
    for (std::size_t i = 0; i < arguments.size(); ++i) {
        if (arguments[i] == "--fresh") {
            wishes.shop.fresh = true;
        } else if (arguments[i] == "--no-papers") {
            wishes.shop.papers = false;
        } else if (arguments[i] == "--encoded") {
            wishes.shop.encoded = true;
        } else if (arguments[i].substr(0, 2) == "--") {
            if (i + 1 == arguments.size()) return std::nullopt;
            if (!TakeOption(wishes, arguments[i], arguments[i + 1])) return std::nullopt;
            ++i;
        } else if (wishes.folder.empty()) {
            wishes.folder = arguments[i];
        } else {
            return std::nullopt;
        }
    }
    if (wishes.folder.empty()) return std::nullopt;
    if (!wishes.ordersGiven) wishes.shop.orders = std::clamp(wishes.shop.history / 8, 60, 2000);
    if (!wishes.dateGiven) wishes.shop.today = Today();
    return wishes;
}

// Shown only when the work takes long enough to wonder.
class Reporter {
public:
    explicit Reporter(int history) : history_(history) {}
    void operator()(std::string_view what, int done) const
    {
        if (history_ < 20'000) return;
        std::cerr << "make_shop: " << what;
        if (done > 0) std::cerr << " " << done << " of " << history_;
        std::cerr << "\n";
    }

private:
    int history_;
};

// Whom to choose on the board of a small shop, and what to answer.
void TellPINs(const std::vector<tools::shop::Technician>& technicians)
{
    constexpr std::size_t kFew = 20;
    if (technicians.size() > kFew) return;
    for (const auto& [name, pin] : technicians)
        std::cout << "  " << name << ": " << (pin.empty() ? "no PIN" : "PIN " + pin) << "\n";
}

// The file is made in memory and written out whole, so that no half of it is ever seen.
void Make(const Wishes& wishes)
{
    std::filesystem::create_directories(wishes.folder);
    const std::string path = wishes.Path();
    jet::io::StdFileSystem disk;
    if (disk.Exists(path)) throw base::NumberedError(3204, {path});
    jet::io::MemoryFileSystem memory;
    const auto technicians =
        tools::shop::MakeSampleShop(memory, path, wishes.shop, Reporter(wishes.shop.history));
    const auto file = disk.Create(path);
    try {
        file->Write(0, memory.Content(path));
        file->Flush();
    } catch (const base::NumberedError&) {
        disk.Remove(path);
        throw;
    }
    std::cout << path << "\n";
    TellPINs(technicians);
}

}  // namespace

int main(int count, char** values)
{
    const std::vector<std::string_view> arguments(values + 1, values + count);
    if (std::find(arguments.begin(), arguments.end(), "--help") != arguments.end()) {
        std::cout << kUsage;
        return kDone;
    }
    const auto wishes = WishesOf(arguments);
    if (!wishes) {
        std::cerr << kUsage;
        return kMisused;
    }
    try {
        Make(*wishes);
        return kDone;
    } catch (const base::NumberedError& error) {
        std::cerr << "make_shop: " << wishes->Path() << ": " << error.what() << " ("
                  << error.Number() << ")\n";
    } catch (const std::filesystem::filesystem_error& error) {
        std::cerr << "make_shop: " << error.what() << "\n";
    }
    return kFailed;
}
