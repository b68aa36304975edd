// SPDX-License-Identifier: Apache-2.0
// ReadDate: the part of Calendar that reads dates and times from text.
#include "base/Calendar.h"
#include "base/Text.h"

#include <array>
#include <cstddef>
#include <vector>

namespace base {

namespace {

struct Token {
    enum class Kind { Number, Word, Mark } kind;
    std::string text;
};

constexpr bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

constexpr bool IsLetter(char character)
{
    return character >= 'a' && character <= 'z';
}

// Numbers, lower-case words and single marks; blanks and commas only separate them.
std::vector<Token> Tokens(std::string_view text)
{
    const std::string line = LowerName(text);
    std::vector<Token> tokens;
    for (std::size_t at = 0; at < line.size();) {
        const std::size_t start = at;
        if (line[at] == ' ' || line[at] == ',') {
            ++at;
        } else if (IsDigit(line[at])) {
            while (at < line.size() && IsDigit(line[at]))
                ++at;
            tokens.push_back({Token::Kind::Number, line.substr(start, at - start)});
        } else if (IsLetter(line[at])) {
            while (at < line.size() && IsLetter(line[at]))
                ++at;
            tokens.push_back({Token::Kind::Word, line.substr(start, at - start)});
        } else {
            tokens.push_back({Token::Kind::Mark, line.substr(start, 1)});
            ++at;
        }
    }
    return tokens;
}

// Place of a name or its first three letters in a list, from 1; 0 when it is none of them.
template <std::size_t Count>
int PlaceOf(std::string_view word, const std::array<std::string_view, Count>& names)
{
    for (std::size_t place = 0; place < Count; ++place) {
        if (word == names[place] || word == names[place].substr(0, 3))
            return static_cast<int>(place) + 1;
    }
    return 0;
}

constexpr std::array<std::string_view, 12> kMonths{"january",   "february", "march",    "april",
                                                   "may",       "june",     "july",     "august",
                                                   "september", "october",  "november", "december"};
constexpr std::array<std::string_view, 7> kWeekdays{"monday", "tuesday",  "wednesday", "thursday",
                                                    "friday", "saturday", "sunday"};

class DateReader {
public:
    explicit DateReader(std::string_view text) : tokens_(Tokens(text)) {}

    std::optional<Date> Read()
    {
        if (PlaceOf(Word(0), kWeekdays) != 0) ++at_;
        const bool hasDate = TakeNumericDate() || TakeNamedDate();
        const bool hasTime = TakeTime();
        if (!valid_ || at_ != tokens_.size() || !(hasDate || hasTime)) return std::nullopt;
        return DateFrom(parts_);
    }

private:
    using Kind = Token::Kind;

    [[nodiscard]] std::string_view Ahead(std::size_t ahead, Kind kind) const
    {
        if (at_ + ahead >= tokens_.size() || tokens_[at_ + ahead].kind != kind) return {};
        return tokens_[at_ + ahead].text;
    }
    [[nodiscard]] std::string_view Word(std::size_t ahead) const
    {
        return Ahead(ahead, Kind::Word);
    }
    [[nodiscard]] std::string_view Mark(std::size_t ahead) const
    {
        return Ahead(ahead, Kind::Mark);
    }
    // -1 when there is no number there.
    [[nodiscard]] int Number(std::size_t ahead) const
    {
        const std::string_view digits = Ahead(ahead, Kind::Number);
        if (digits.empty()) return -1;
        constexpr int kTooLarge = 99999;
        int number = 0;
        for (const char digit : digits)
            number = number > kTooLarge ? number : number * 10 + (digit - '0');
        return number;
    }

    void SetDate(int year, std::size_t yearDigits, int month, int day)
    {
        if (yearDigits <= 2) year += year < 30 ? 2000 : 1900;
        // A day that can be no month was meant as the day.
        if (month > 12 && day <= 12) std::swap(month, day);
        valid_ = valid_ && IsCalendarDate(year, month, day);
        parts_.year = year;
        parts_.month = month;
        parts_.day = day;
    }

    // 3/15/2004, 3-15-04, 2004-03-15.
    bool TakeNumericDate()
    {
        const std::string_view mark = Mark(1);
        if ((mark != "/" && mark != "-") || Mark(3) != mark) return false;
        const int first = Number(0);
        const int second = Number(2);
        const int third = Number(4);
        if (first < 0 || second < 0 || third < 0) return false;
        const std::size_t firstDigits = Ahead(0, Kind::Number).size();
        if (firstDigits > 2)
            SetDate(first, firstDigits, second, third);
        else
            SetDate(third, Ahead(4, Kind::Number).size(), first, second);
        at_ += 5;
        return true;
    }

    // Mar 15, 2004, 15 March 2004, 15-Mar-2004.
    bool TakeNamedDate()
    {
        const bool hyphens = Mark(1) == "-" && Mark(3) == "-";
        const std::size_t step = hyphens ? 2 : 1;
        const bool monthFirst = !Word(0).empty();
        const int month = PlaceOf(Word(monthFirst ? 0 : step), kMonths);
        const int day = Number(monthFirst ? step : 0);
        const int year = Number(2 * step);
        if (month == 0 || day < 0 || year < 0) return false;
        valid_ = valid_ && day <= 31;
        SetDate(year, Ahead(2 * step, Kind::Number).size(), month, day);
        at_ += 2 * step + 1;
        return true;
    }

    // 9:05, 9:05:30, 9:05 AM, 9 PM.
    bool TakeTime()
    {
        const int hour = Number(0);
        std::size_t taken = 1;
        if (hour < 0) return false;
        parts_.hour = hour;
        TakeAfterColon(taken, parts_.minute);
        if (taken > 1) TakeAfterColon(taken, parts_.second);
        const bool withMinutes = taken > 1;
        const bool withHalf = TakeHalfOfDay(taken);
        valid_ = valid_ && hour < 24 && parts_.minute < 60 && parts_.second < 60;
        if (withMinutes || withHalf) at_ += taken;
        return withMinutes || withHalf;
    }

    // ":05" behind the tokens that were taken.
    void TakeAfterColon(std::size_t& taken, int& number)
    {
        if (Mark(taken) != ":" || Number(taken + 1) < 0) return;
        number = Number(taken + 1);
        taken += 2;
    }

    // AM or PM behind the tokens that were taken; 13:00 PM is 13:00.
    bool TakeHalfOfDay(std::size_t& taken)
    {
        const std::string_view half = Word(taken);
        if (half != "am" && half != "pm") return false;
        if (half == "am" && parts_.hour == 12) parts_.hour = 0;
        if (half == "pm" && parts_.hour < 12) parts_.hour += 12;
        ++taken;
        return true;
    }

    std::vector<Token> tokens_;
    std::size_t at_ = 0;
    DateParts parts_;
    bool valid_ = true;
};

}  // namespace

std::optional<Date> ReadDate(std::string_view text)
{
    return DateReader(text).Read();
}

}  // namespace base
