#pragma once
// Tokens of an ECMAScript expression, read the way the standard library's std::wregex reads
// them (for instance \cX stands for X itself, ']' and '}' are ordinary characters, and a
// backreference takes every digit that follows the backslash).

#include <locale>
#include <string>
#include <string_view>

namespace vrl {
namespace rx {

// Thrown for an expression std::wregex would refuse; Compile turns it into "does not compile".
struct Rejected {};

enum class Tok {
    OrdChar,
    HexNum,
    Backref,
    GroupBegin,
    NoGroupBegin,
    LookaheadBegin,  // value "n" when negative
    GroupEnd,
    BracketBegin,
    BracketNegBegin,
    BracketEnd,
    BracketDash,
    IntervalBegin,
    IntervalEnd,
    Comma,
    DupCount,
    QuotedClass,
    ClassName,
    CollSymbol,
    EquivClass,
    Opt,
    Or,
    Star,
    Plus,
    LineBegin,
    LineEnd,
    AnyChar,
    WordBound,  // value "n" for \B
    Eof,
};

class Scanner {
public:
    Scanner(const wchar_t* begin, const wchar_t* end, const std::ctype<wchar_t>& ctype);

    void Advance();
    Tok Token() const { return token_; }
    const std::wstring& Value() const { return value_; }
    bool InBracket() const { return state_ == State::Bracket; }

private:
    enum class State { Normal, Brace, Bracket };

    void ScanNormal();
    void ScanOpenParen();
    void ScanInBracket();
    void ScanInBrace();
    void EatEscape();
    void EatClass(wchar_t delimiter);
    void Set(Tok token, wchar_t c) {
        token_ = token;
        value_.assign(1, c);
    }
    // The character under the cursor, NUL at the end (std::wstring keeps a NUL there).
    wchar_t Peek() const { return cur_ != end_ ? *cur_ : L'\0'; }
    bool IsDigit(wchar_t c) const { return ctype_.is(std::ctype_base::digit, c); }

    const wchar_t* cur_;
    const wchar_t* end_;
    const std::ctype<wchar_t>& ctype_;
    State state_ = State::Normal;
    Tok token_ = Tok::Eof;
    std::wstring value_;
};

}  // namespace rx
}  // namespace vrl
