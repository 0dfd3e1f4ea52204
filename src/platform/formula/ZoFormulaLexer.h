#pragma once
#include <cstdint>
#include <string_view>

// The tokens of the formula language (docs/formulas.md).
enum class ZoTok : std::uint8_t {
    End, Number, Text, Variable, Module, Name,
    Open, Close, Comma,
    Plus, Minus, Star, Slash, Percent, Caret,
    Equal, NotEqual, Less, LessEqual, Greater, GreaterEqual,
    And, Or, Not, True, False,
    Bad, // a lexical fault: badText says which
};

struct ZoToken {
    ZoTok kind = ZoTok::End;
    std::uint32_t pos = 0; // first character, counted from 0
    std::uint32_t len = 0;
    double number = 0;     // Number
    unsigned badText = 0;  // Bad: the id of the message that describes the fault
};

// Cuts a formula into tokens, one call at a time, without allocating. Blanks (space, tab,
// line breaks, no-break space) separate tokens. After a Bad token it goes on behind it;
// after End it keeps answering End. Texts must be shorter than 4 G characters.
class ZoFormulaLexer {
public:
    explicit ZoFormulaLexer(std::wstring_view text) : m_text(text) {}
    ZoToken Next();

private:
    ZoToken NumberToken(std::uint32_t start);
    ZoToken QuotedToken(std::uint32_t start);
    ZoToken BracketToken(std::uint32_t start);
    ZoToken ModuleToken(std::uint32_t start);
    ZoToken WordToken(std::uint32_t start);
    ZoToken Bad(std::uint32_t start, std::uint32_t end, unsigned text);
    bool IsWordChar(std::size_t i) const;

    std::wstring_view m_text;
    std::uint32_t m_pos = 0;
};
