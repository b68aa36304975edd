// SPDX-License-Identifier: Apache-2.0
#include "jet/sql/Lexer.h"

#include "base/Text.h"

namespace jet::sql {

namespace {

bool IsDigit(char c)
{
    return c >= '0' && c <= '9';
}

bool IsHexDigit(char c)
{
    return IsDigit(c) || (c >= 'A' && c <= 'F') || (c >= 'a' && c <= 'f');
}

// Bytes above 0x7F belong to letters of other alphabets.
bool StartsName(char c)
{
    return (c >= 'A' && c <= 'Z') || (c >= 'a' && c <= 'z') || c == '_' ||
           static_cast<unsigned char>(c) >= 0x80;
}

bool ContinuesName(char c)
{
    return StartsName(c) || IsDigit(c);
}

bool IsBlank(char c)
{
    return c == ' ' || c == '\t' || c == '\r' || c == '\n';
}

class Lexer {
public:
    explicit Lexer(std::string_view text) : text_(text) {}

    std::vector<Token> Run()
    {
        while (true) {
            while (at_ < text_.size() && IsBlank(text_[at_]))
                ++at_;
            Token token = Next();
            token.end = at_;
            tokens_.push_back(std::move(token));
            if (tokens_.back().kind == TokenKind::End) return std::move(tokens_);
        }
    }

private:
    [[nodiscard]] char Peek(std::size_t ahead = 0) const
    {
        return at_ + ahead < text_.size() ? text_[at_ + ahead] : '\0';
    }

    Token Next()
    {
        if (at_ >= text_.size()) return {TokenKind::End, at_, at_, {}};
        const char c = Peek();
        if (c == '\'' || c == '"') return Quoted(c);
        if (c == '#') return Enclosed('#', TokenKind::Date, TokenKind::OpenDate);
        if (c == '[') return Enclosed(']', TokenKind::BracketedName, TokenKind::OpenBracket);
        if (StartsName(c)) return Name();
        if (IsDigit(c) || (c == '.' && IsDigit(Peek(1)) && !AfterName())) return Number();
        if (c == '&' && IsRadixNumber()) return RadixNumber();
        return Symbol();
    }

    // In `Table.1` the point is a qualifier's.
    [[nodiscard]] bool AfterName() const
    {
        return !tokens_.empty() && tokens_.back().end == at_ &&
               (tokens_.back().kind == TokenKind::Name ||
                tokens_.back().kind == TokenKind::BracketedName);
    }

    // The delimiter doubled stands for itself.
    Token Quoted(char quote)
    {
        Token token{TokenKind::Text, at_, at_, {}};
        for (++at_; at_ < text_.size(); ++at_) {
            if (Peek() == quote) {
                ++at_;
                if (Peek() != quote) return token;
            }
            token.text += Peek();
        }
        token.kind = TokenKind::OpenText;
        return token;
    }

    Token Enclosed(char close, TokenKind closed, TokenKind open)
    {
        const std::size_t begin = at_++;
        const std::size_t end = text_.find(close, at_);
        const bool found = end != std::string_view::npos;
        Token token{found ? closed : open, begin, begin, std::string(text_.substr(at_, end - at_))};
        at_ = found ? end + 1 : text_.size();
        return token;
    }

    Token Name()
    {
        const std::size_t begin = at_;
        while (ContinuesName(Peek()))
            ++at_;
        return {TokenKind::Name, begin, at_, std::string(text_.substr(begin, at_ - begin))};
    }

    Token Number()
    {
        const std::size_t begin = at_;
        TokenKind kind = TokenKind::Number;
        while (IsDigit(Peek()))
            ++at_;
        if (Peek() == '.') ++at_;
        while (IsDigit(Peek()))
            ++at_;
        if (Peek() == 'e' || Peek() == 'E') {
            const std::size_t digits = Peek(1) == '+' || Peek(1) == '-' ? 2 : 1;
            if (!IsDigit(Peek(digits))) kind = TokenKind::BadNumber;
            at_ += digits;
            while (IsDigit(Peek()))
                ++at_;
        }
        if (Peek() == '.') kind = TokenKind::BadNumber;
        at_ = std::min(at_, text_.size());
        return {kind, begin, at_, std::string(text_.substr(begin, at_ - begin))};
    }

    [[nodiscard]] bool IsRadixNumber() const
    {
        const char radix = Peek(1);
        if (radix == 'H' || radix == 'h') return IsHexDigit(Peek(2));
        return (radix == 'O' || radix == 'o') && Peek(2) >= '0' && Peek(2) <= '7';
    }

    Token RadixNumber()
    {
        const std::size_t begin = at_;
        const bool hex = Peek(1) == 'H' || Peek(1) == 'h';
        at_ += 2;
        while (hex ? IsHexDigit(Peek()) : (Peek() >= '0' && Peek() <= '7'))
            ++at_;
        return {TokenKind::Number, begin, at_, std::string(text_.substr(begin, at_ - begin))};
    }

    Token Symbol()
    {
        const std::string_view pair = text_.substr(at_, 2);
        const bool isPair = pair == "<>" || pair == "<=" || pair == ">=";
        const std::string_view symbol = text_.substr(at_, isPair ? 2 : 1);
        const bool known =
            isPair || std::string_view("(),;.!=<>+-*/\\^&").find(symbol) != std::string_view::npos;
        const std::size_t begin = at_;
        at_ += symbol.size();
        return {known ? TokenKind::Symbol : TokenKind::Other, begin, at_, std::string(symbol)};
    }

    std::string_view text_;
    std::size_t at_ = 0;
    std::vector<Token> tokens_;
};

}  // namespace

bool Token::Is(std::string_view symbolOrWord) const
{
    if (kind == TokenKind::Symbol) return text == symbolOrWord;
    return kind == TokenKind::Name && base::SameName(text, symbolOrWord);
}

std::vector<Token> Tokenize(std::string_view text)
{
    return Lexer(text).Run();
}

}  // namespace jet::sql
