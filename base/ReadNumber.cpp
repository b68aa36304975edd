// SPDX-License-Identifier: Apache-2.0
#include "base/ReadNumber.h"

#include "base/NumberedError.h"

#include <algorithm>
#include <charconv>
#include <cstdint>
#include <cstdlib>
#include <optional>
#include <string>

namespace base {

namespace {

constexpr bool IsDigit(char character)
{
    return character >= '0' && character <= '9';
}

// A decimal number picked out of a text, ready for std::from_chars.
struct Spelling {
    std::string integer, fraction, exponent;

    [[nodiscard]] bool HasDigits() const { return !integer.empty() || !fraction.empty(); }
};

// Errors: 6 beyond the range of a double; what is too small to be told from 0 is 0.
double ValueOf(const Spelling& number)
{
    const std::string text = "0" + number.integer + "." + number.fraction + "0" +
                             (number.exponent.empty() ? "" : "e" + number.exponent);
    double value = 0;
    const auto read = std::from_chars(text.data(), text.data() + text.size(), value);
    if (read.ec != std::errc::result_out_of_range) return value;
    // The exponent alone may not say whether the number is too large or too small.
    const std::string digits = number.integer + number.fraction;
    const auto firstDigit = static_cast<long>(digits.find_first_not_of('0'));
    const std::size_t exponentSize = number.exponent.size();
    const bool negative = exponentSize > 0 && number.exponent.front() == '-';
    const long exponent = exponentSize == 0  ? 0
                          : exponentSize > 9 ? 999999999
                                             : std::labs(std::stol(number.exponent));
    const long size = static_cast<long>(number.integer.size()) - firstDigit;
    if (size + (negative ? -exponent : exponent) > 0) throw NumberedError(6);
    return 0;
}

class NumberReader {
public:
    explicit NumberReader(std::string_view text) : text_(text) {}

    [[nodiscard]] bool AtEnd() const { return at_ == text_.size(); }
    bool Take(std::string_view anyOf)
    {
        if (AtEnd() || anyOf.find(text_[at_]) == std::string_view::npos) return false;
        ++at_;
        return true;
    }
    [[nodiscard]] char Last() const { return text_[at_ - 1]; }

    // Digits, with commas between them where they are allowed.
    std::string TakeDigits(bool withCommas = false)
    {
        std::string digits;
        while (!AtEnd() &&
               (IsDigit(text_[at_]) || (withCommas && !digits.empty() && text_[at_] == ','))) {
            if (IsDigit(text_[at_])) digits += text_[at_];
            ++at_;
        }
        return digits;
    }

    // An exponent with its letter; nothing is taken when no digit follows.
    std::string TakeExponent(std::string_view letters)
    {
        const std::size_t before = at_;
        if (!Take(letters)) return {};
        std::string exponent;
        if (Take("+-") && Last() == '-') exponent = "-";
        const std::string digits = TakeDigits();
        if (digits.empty()) {
            at_ = before;
            return {};
        }
        return exponent + digits;
    }

    // The digits after "&H" or "&O"; nothing when the text does not go on so.
    std::optional<std::uint32_t> TakeRadix()
    {
        const std::string_view rest = text_.substr(at_);
        if (rest.size() < 3 || rest[0] != '&') return std::nullopt;
        const bool hexadecimal = rest[1] == 'H' || rest[1] == 'h';
        if (!hexadecimal && rest[1] != 'O' && rest[1] != 'o') return std::nullopt;
        std::uint32_t value = 0;
        const auto read = std::from_chars(rest.data() + 2, rest.data() + rest.size(), value,
                                          hexadecimal ? 16 : 8);
        if (read.ec == std::errc::result_out_of_range) throw NumberedError(6);
        if (read.ec != std::errc()) return std::nullopt;
        at_ = static_cast<std::size_t>(read.ptr - text_.data());
        return value;
    }

private:
    std::string_view text_;
    std::size_t at_ = 0;
};

// What may stand before and after the digits, each at most once.
class Surroundings {
public:
    void TakeBefore(NumberReader& reader)
    {
        while (reader.Take(" \t+-($"))
            Note(reader.Last());
    }
    void TakeAfter(NumberReader& reader)
    {
        while (reader.Take(" \t+-)$"))
            Note(reader.Last());
    }
    [[nodiscard]] bool Valid() const
    {
        return dollars_ <= 1 && signs_ + opened_ <= 1 && opened_ == closed_;
    }
    [[nodiscard]] bool Negative() const { return negative_; }

private:
    void Note(char mark)
    {
        if (mark == '$') ++dollars_;
        if (mark == '+' || mark == '-') ++signs_;
        if (mark == '(') ++opened_;
        if (mark == ')') ++closed_;
        if (mark == '-' || mark == '(') negative_ = true;
    }

    int dollars_ = 0, signs_ = 0, opened_ = 0, closed_ = 0;
    bool negative_ = false;
};

// A number of 16 bits or less is a signed 16-bit number, any other a signed 32-bit one.
double SignedByWidth(std::uint32_t value)
{
    if (value <= 0xFFFF) return static_cast<std::int16_t>(value);
    return static_cast<std::int32_t>(value);
}

std::string WithoutBlanks(std::string_view text)
{
    std::string result(text);
    const auto blank = [](char c) { return c == ' ' || c == '\t' || c == '\n'; };
    result.erase(std::remove_if(result.begin(), result.end(), blank), result.end());
    return result;
}

}  // namespace

double ReadNumber(std::string_view text)
{
    NumberReader reader(text);
    Surroundings around;
    around.TakeBefore(reader);
    double value = 0;
    if (const auto radix = reader.TakeRadix()) {
        value = static_cast<std::int32_t>(*radix);
    } else {
        Spelling number;
        number.integer = reader.TakeDigits(true);
        if (reader.Take(".")) number.fraction = reader.TakeDigits();
        if (!number.HasDigits()) throw NumberedError(13);
        number.exponent = reader.TakeExponent("eE");
        value = ValueOf(number);
    }
    around.TakeAfter(reader);
    if (!reader.AtEnd() || !around.Valid()) throw NumberedError(13);
    return around.Negative() ? -value : value;
}

double ReadLeadingNumber(std::string_view text)
{
    const std::string packed = WithoutBlanks(text);
    NumberReader reader(packed);
    if (const auto radix = reader.TakeRadix()) return SignedByWidth(*radix);
    const bool negative = reader.Take("+-") && reader.Last() == '-';
    Spelling number;
    number.integer = reader.TakeDigits();
    if (reader.Take(".")) number.fraction = reader.TakeDigits();
    if (!number.HasDigits()) return 0;
    number.exponent = reader.TakeExponent("eEdD");
    return negative ? -ValueOf(number) : ValueOf(number);
}

}  // namespace base
