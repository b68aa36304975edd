// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/DateLiteral.h"

#include "base/Calendar.h"
#include "base/Text.h"

#include <array>
#include <string>
#include <vector>

namespace jet::sql {

namespace {

constexpr std::array<std::string_view, 12> kMonths{"january",   "february", "march",    "april",
                                                   "may",       "june",     "july",     "august",
                                                   "september", "october",  "november", "december"};

// A run of digits or of letters; `colon` when a ':' stands before it.
struct Piece {
    bool letters = false, colon = false;
    std::string text;
    [[nodiscard]] int Number() const { return std::stoi(text); }
};

struct Clock {
    int hour = 0, minute = 0, second = 0;
};

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsLetter(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z');
}

// Nothing when a character stands where none may.
std::optional<std::vector<Piece>> Split(std::string_view text)
{
    std::vector<Piece> pieces;
    bool colon = false;
    for (std::size_t at = 0; at < text.size();) {
        const char c = text[at];
        if (!IsDigit(c) && !IsLetter(c)) {
            if (std::string_view(" /-:,\t").find(c) == std::string_view::npos) return std::nullopt;
            colon = colon || c == ':';
            ++at;
            continue;
        }
        const bool letters = IsLetter(c);
        const std::size_t begin = at;
        while (at < text.size() && (letters ? IsLetter(text[at]) : IsDigit(text[at])))
            ++at;
        if (at - begin > 9) return std::nullopt;
        pieces.push_back({letters, colon, base::LowerName(text.substr(begin, at - begin))});
        colon = false;
    }
    if (colon) return std::nullopt;
    return pieces;
}

bool IsMeridiem(const Piece& piece)
{
    return piece.letters &&
           (piece.text == "am" || piece.text == "pm" || piece.text == "a" || piece.text == "p");
}

// Takes the time's pieces out of `pieces`: those joined by ':' and AM or PM at the end.
// Nothing when they are no time.
std::optional<Clock> TakeTime(std::vector<Piece>& pieces)
{
    std::optional<bool> afternoon;
    if (!pieces.empty() && IsMeridiem(pieces.back())) {
        afternoon = pieces.back().text[0] == 'p';
        pieces.pop_back();
    }
    std::size_t first = pieces.size();
    while (first > 0 && pieces[first - 1].colon)
        --first;
    if (first < pieces.size() || afternoon) {
        if (first == 0) return std::nullopt;
        --first;
    }
    std::array<int, 3> units{};
    const std::size_t count = pieces.size() - first;
    if (count > units.size()) return std::nullopt;
    for (std::size_t i = 0; i < count; ++i) {
        if (pieces[first + i].letters) return std::nullopt;
        units[i] = pieces[first + i].Number();
    }
    pieces.resize(first);
    if (units[0] > 23 || units[1] > 59 || units[2] > 59) return std::nullopt;
    if (afternoon) {
        if (units[0] < 1 || units[0] > 12) return std::nullopt;
        units[0] = units[0] % 12 + (*afternoon ? 12 : 0);
    }
    return Clock{units[0], units[1], units[2]};
}

int FullYear(const Piece& piece)
{
    const int year = piece.Number();
    if (piece.text.size() > 2 || year > 99) return year;
    return year < 30 ? 2000 + year : 1900 + year;
}

std::optional<base::DateParts> Checked(int year, int month, int day)
{
    if (!base::IsCalendarDate(year, month, day)) return std::nullopt;
    return base::DateParts{year, month, day, 0, 0, 0};
}

std::optional<int> MonthNamed(std::string_view text)
{
    for (std::size_t i = 0; i < kMonths.size(); ++i) {
        if (text == kMonths[i] || text == kMonths[i].substr(0, 3)) return static_cast<int>(i) + 1;
    }
    return std::nullopt;
}

bool IsYearFirst(const Piece& piece)
{
    return piece.text.size() == 4 || piece.Number() > 31;
}

std::optional<base::DateParts> NamedMonth(const std::vector<Piece>& pieces, int thisYear)
{
    std::optional<int> month;
    std::vector<Piece> numbers;
    for (const Piece& piece : pieces) {
        if (!piece.letters) {
            numbers.push_back(piece);
        } else if (month || !(month = MonthNamed(piece.text))) {
            return std::nullopt;
        }
    }
    if (!month || numbers.empty()) return std::nullopt;
    if (numbers.size() == 1) {
        if (IsYearFirst(numbers[0])) return Checked(FullYear(numbers[0]), *month, 1);
        return Checked(thisYear, *month, numbers[0].Number());
    }
    const bool yearFirst = IsYearFirst(numbers[0]);
    return Checked(FullYear(numbers[yearFirst ? 0 : 1]), *month,
                   numbers[yearFirst ? 1 : 0].Number());
}

std::optional<base::DateParts> ThreeNumbers(const Piece& a, const Piece& b, const Piece& c)
{
    if (IsYearFirst(a)) return Checked(FullYear(a), b.Number(), c.Number());
    if (a.Number() > 12 && b.Number() <= 12) return Checked(FullYear(c), b.Number(), a.Number());
    return Checked(FullYear(c), a.Number(), b.Number());
}

std::optional<base::DateParts> DayOf(const std::vector<Piece>& pieces, int thisYear)
{
    if (pieces.size() < 2 || pieces.size() > 3) return std::nullopt;
    for (const Piece& piece : pieces) {
        if (piece.letters) return NamedMonth(pieces, thisYear);
    }
    if (pieces.size() == 3) return ThreeNumbers(pieces[0], pieces[1], pieces[2]);
    if (const auto date = Checked(thisYear, pieces[0].Number(), pieces[1].Number())) return date;
    return Checked(FullYear(pieces[1]), pieces[0].Number(), 1);
}

}  // namespace

std::optional<base::Date> ReadDateLiteral(std::string_view text, base::Date today)
{
    std::optional<std::vector<Piece>> pieces = Split(text);
    if (!pieces || pieces->empty()) return std::nullopt;
    const std::optional<Clock> clock = TakeTime(*pieces);
    if (!clock) return std::nullopt;
    base::DateParts parts;
    if (!pieces->empty()) {
        const auto day = DayOf(*pieces, base::PartsOf(today).year);
        if (!day) return std::nullopt;
        parts = *day;
    }
    parts.hour = clock->hour;
    parts.minute = clock->minute;
    parts.second = clock->second;
    return base::DateFrom(parts);
}

}  // namespace jet::sql
