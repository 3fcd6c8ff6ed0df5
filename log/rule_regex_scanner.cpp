#include "log/rule_regex_scanner.h"

#include <cstring>

namespace vrl {
namespace rx {

namespace {

// Characters with a meaning of their own outside brackets. strchr also finds the terminating
// NUL, so a NUL in the expression takes the special path too (and ends up ordinary there).
constexpr const char* kSpecialChars = "^$\\.*+?()[]{}|";

// \0 \b \f \n \r \t \v; \b only inside brackets (outside it is the word boundary).
bool ControlEscape(char c, wchar_t* out) {
    static const char kFrom[] = "0bfnrtv";
    static const wchar_t kTo[] = {L'\0', L'\b', L'\f', L'\n', L'\r', L'\t', L'\v'};
    if (c == '\0') return false;
    const char* hit = std::strchr(kFrom, c);
    if (hit == nullptr) return false;
    *out = kTo[hit - kFrom];
    return true;
}

}  // namespace

Scanner::Scanner(const wchar_t* begin, const wchar_t* end, const std::ctype<wchar_t>& ctype)
    : cur_(begin), end_(end), ctype_(ctype) {
    Advance();
}

void Scanner::Advance() {
    if (cur_ == end_) {
        token_ = Tok::Eof;
        return;
    }
    switch (state_) {
    case State::Normal: ScanNormal(); break;
    case State::Bracket: ScanInBracket(); break;
    case State::Brace: ScanInBrace(); break;
    }
}

void Scanner::ScanNormal() {
    const wchar_t c = *cur_++;
    if (std::strchr(kSpecialChars, ctype_.narrow(c, ' ')) == nullptr) {
        Set(Tok::OrdChar, c);
        return;
    }
    if (c == L'\\') {
        if (cur_ == end_) throw Rejected{};
        EatEscape();
        return;
    }
    switch (c) {
    case L'(': ScanOpenParen(); return;
    case L')': token_ = Tok::GroupEnd; return;
    case L'[':
        state_ = State::Bracket;
        if (cur_ != end_ && *cur_ == L'^') {
            token_ = Tok::BracketNegBegin;
            ++cur_;
        } else {
            token_ = Tok::BracketBegin;
        }
        return;
    case L'{':
        state_ = State::Brace;
        token_ = Tok::IntervalBegin;
        return;
    case L'\0':
    case L']':
    case L'}': Set(Tok::OrdChar, c); return;
    default: break;
    }
    switch (ctype_.narrow(c, '\0')) {
    case '^': token_ = Tok::LineBegin; break;
    case '$': token_ = Tok::LineEnd; break;
    case '.': token_ = Tok::AnyChar; break;
    case '*': token_ = Tok::Star; break;
    case '+': token_ = Tok::Plus; break;
    case '?': token_ = Tok::Opt; break;
    case '|': token_ = Tok::Or; break;
    default: throw Rejected{};  // only a locale that narrows oddly gets here
    }
}

void Scanner::ScanOpenParen() {
    if (Peek() != L'?') {
        token_ = Tok::GroupBegin;
        return;
    }
    if (++cur_ == end_) throw Rejected{};
    const wchar_t kind = *cur_++;
    if (kind == L':') {
        token_ = Tok::NoGroupBegin;
    } else if (kind == L'=') {
        Set(Tok::LookaheadBegin, L'p');
    } else if (kind == L'!') {
        Set(Tok::LookaheadBegin, L'n');
    } else {
        throw Rejected{};
    }
}

void Scanner::ScanInBracket() {
    const wchar_t c = *cur_++;
    if (c == L'-') {
        token_ = Tok::BracketDash;
    } else if (c == L'[') {
        if (cur_ == end_) throw Rejected{};
        const wchar_t kind = *cur_;
        if (kind == L'.' || kind == L':' || kind == L'=') {
            token_ = kind == L'.' ? Tok::CollSymbol : kind == L':' ? Tok::ClassName : Tok::EquivClass;
            ++cur_;
            EatClass(kind);
        } else {
            Set(Tok::OrdChar, c);
        }
    } else if (c == L']') {
        token_ = Tok::BracketEnd;
        state_ = State::Normal;
    } else if (c == L'\\') {
        EatEscape();
    } else {
        Set(Tok::OrdChar, c);
    }
}

void Scanner::ScanInBrace() {
    const wchar_t c = *cur_++;
    if (IsDigit(c)) {
        Set(Tok::DupCount, c);
        while (cur_ != end_ && IsDigit(*cur_)) value_ += *cur_++;
    } else if (c == L',') {
        token_ = Tok::Comma;
    } else if (c == L'}') {
        state_ = State::Normal;
        token_ = Tok::IntervalEnd;
    } else {
        throw Rejected{};
    }
}

void Scanner::EatEscape() {
    if (cur_ == end_) throw Rejected{};
    const wchar_t c = *cur_++;
    wchar_t control = 0;
    if (ControlEscape(ctype_.narrow(c, '\0'), &control) && (c != L'b' || state_ == State::Bracket)) {
        Set(Tok::OrdChar, control);
    } else if (c == L'b' || c == L'B') {
        Set(Tok::WordBound, c == L'b' ? L'p' : L'n');
    } else if (c == L'd' || c == L'D' || c == L's' || c == L'S' || c == L'w' || c == L'W') {
        Set(Tok::QuotedClass, c);
    } else if (c == L'c') {
        if (cur_ == end_) throw Rejected{};
        Set(Tok::OrdChar, *cur_++);
    } else if (c == L'x' || c == L'u') {
        value_.clear();
        const int digits = c == L'x' ? 2 : 4;
        for (int i = 0; i < digits; ++i) {
            if (cur_ == end_ || !ctype_.is(std::ctype_base::xdigit, *cur_)) throw Rejected{};
            value_ += *cur_++;
        }
        token_ = Tok::HexNum;
    } else if (IsDigit(c)) {
        Set(Tok::Backref, c);
        while (cur_ != end_ && IsDigit(*cur_)) value_ += *cur_++;
    } else {
        Set(Tok::OrdChar, c);
    }
}

// [:name:], [.name.] or [=name=] after the opening "[x".
void Scanner::EatClass(wchar_t delimiter) {
    value_.clear();
    while (cur_ != end_ && *cur_ != delimiter) value_ += *cur_++;
    if (cur_ == end_ || *cur_++ != delimiter || cur_ == end_ || *cur_++ != L']') throw Rejected{};
}

}  // namespace rx
}  // namespace vrl
