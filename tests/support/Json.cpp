// SPDX-License-Identifier: Apache-2.0
#include "tests/support/Json.h"

#include <charconv>
#include <stdexcept>

namespace tests {

namespace {

class Parser {
public:
    explicit Parser(std::string_view text) : text_(text) {}

    Json Whole()
    {
        Json json = Value();
        if (Peek() != '\0') Refuse();
        return json;
    }

private:
    [[noreturn]] void Refuse() const
    {
        throw std::runtime_error("no JSON at " + std::to_string(at_) + ": " + std::string(text_));
    }
    char Peek()
    {
        while (at_ < text_.size() && (text_[at_] == ' ' || text_[at_] == '\n'))
            ++at_;
        return at_ < text_.size() ? text_[at_] : '\0';
    }
    bool Take(char wanted)
    {
        if (Peek() != wanted) return false;
        ++at_;
        return true;
    }
    void Require(char wanted)
    {
        if (!Take(wanted)) Refuse();
    }
    bool TakeWord(std::string_view word)
    {
        if (text_.substr(at_, word.size()) != word) return false;
        at_ += word.size();
        return true;
    }

    Json Value()
    {
        switch (Peek()) {
        case '{':
            return {Object()};
        case '[':
            return {Array()};
        case '"':
            return {String()};
        default:
            break;
        }
        if (TakeWord("null")) return {};
        if (TakeWord("true")) return {true};
        if (TakeWord("false")) return {false};
        return {Number()};
    }

    JsonObject Object()
    {
        JsonObject object;
        Require('{');
        while (!Take('}')) {
            if (!object.empty()) Require(',');
            if (Peek() != '"') Refuse();
            std::string name = String();
            Require(':');
            object[name] = Value();
        }
        return object;
    }

    JsonArray Array()
    {
        JsonArray array;
        Require('[');
        while (!Take(']')) {
            if (!array.empty()) Require(',');
            array.push_back(Value());
        }
        return array;
    }

    double Number()
    {
        double number = 0;
        const char* begin = text_.data() + at_;
        const auto result = std::from_chars(begin, text_.data() + text_.size(), number);
        if (result.ec != std::errc()) Refuse();
        at_ += static_cast<std::size_t>(result.ptr - begin);
        return number;
    }

    std::string String()
    {
        std::string text;
        for (++at_; at_ < text_.size(); ++at_) {
            if (text_[at_] == '"') {
                ++at_;
                return text;
            }
            if (text_[at_] == '\\')
                Escape(text);
            else
                text += text_[at_];
        }
        Refuse();
    }

    void Escape(std::string& text)
    {
        constexpr std::string_view names = "bfnrt\"\\/", meanings = "\b\f\n\r\t\"\\/";
        const char name = text_.at(++at_);
        if (name == 'u') return AppendUnit(text, Unit());
        const std::size_t place = names.find(name);
        if (place == std::string_view::npos) Refuse();
        text += meanings[place];
    }

    unsigned Unit()
    {
        unsigned unit = 0;
        const char* begin = text_.data() + at_ + 1;
        if (at_ + 5 > text_.size() || std::from_chars(begin, begin + 4, unit, 16).ptr != begin + 4)
            Refuse();
        at_ += 4;
        return unit;
    }

    void AppendUnit(std::string& text, unsigned code)
    {
        if (code >= 0xD800 && code < 0xDC00 && text_.substr(at_ + 1, 2) == "\\u") {
            at_ += 2;
            code = 0x10000 + ((code - 0xD800) << 10) + (Unit() - 0xDC00);
        }
        const auto tail = [&text](unsigned bits) {
            text += static_cast<char>(0x80 | (bits & 0x3F));
        };
        if (code < 0x80) {
            text += static_cast<char>(code);
        } else if (code < 0x800) {
            text += static_cast<char>(0xC0 | (code >> 6));
            tail(code);
        } else if (code < 0x10000) {
            text += static_cast<char>(0xE0 | (code >> 12));
            tail(code >> 6);
            tail(code);
        } else {
            text += static_cast<char>(0xF0 | (code >> 18));
            tail(code >> 12);
            tail(code >> 6);
            tail(code);
        }
    }

    std::string_view text_;
    std::size_t at_ = 0;
};

}  // namespace

bool operator==(const Json& left, const Json& right)
{
    return left.content == right.content;
}

bool operator<(const Json& left, const Json& right)
{
    return left.content < right.content;
}

const Json& Json::operator[](const std::string& name) const
{
    return std::get<JsonObject>(content).at(name);
}

Json ParseJson(std::string_view text)
{
    return Parser(text).Whole();
}

}  // namespace tests
