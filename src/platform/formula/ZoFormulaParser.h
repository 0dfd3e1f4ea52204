#pragma once
#include "ZoFormulaCodes.h"
#include "ZoFormulaLexer.h"
#include "ZoFormulaProgram.h"

#include <string_view>

class ZoDeviceCatalog;

// Analyses a formula into a program: a Pratt parser (one token of look-ahead, one
// recursion per level of nesting, capped at kZoFormulaMaxDepth) that checks types and
// resolves device variables as it goes, in time linear in the text.
//
// A syntax fault stops the analysis (syntax). Anything else found wrong (an unknown name,
// a type, a period filter) is kept in deferred, the first one only, and analysis goes on
// with a type that matches anything, so that the formula's kind is still known.
class ZoFormulaParser {
public:
    struct Options {
        ZoDeviceCatalog const* catalog = nullptr; // null: every device is unknown
        bool periods = true;                      // period filters allowed
    };

    ZoFormulaParser(std::wstring_view text, Options const& options, ZoFormulaProgram& program,
                    ZoFormulaFinding& syntax, ZoFormulaFinding& deferred);
    ZoFormulaParser(ZoFormulaParser const&) = delete;
    ZoFormulaParser& operator=(ZoFormulaParser const&) = delete;
    // False on a syntax fault. On success the program's last node is the root.
    bool Parse();

private:
    bool Expression(int minPrecedence);
    bool Operand();
    bool Parenthesis();
    bool Arguments(std::uint32_t& count);
    bool Call(ZoToken const& name);
    bool Module();
    bool Reference();
    void TextLiteral();
    void Binary(ZoToken const& op, std::uint32_t left);
    void Unary(ZoOp op, ZoToken const& token);
    void CheckCall(ZoFormulaNode& node, ZoToken const& name, std::uint32_t count);
    void RequireLogical(ZoFormulaNode const& operand, ZoToken const& op);
    void RequireNumber(ZoFormulaNode const& operand, ZoToken const& op);

    void Advance() { m_token = m_lexer.Next(); }
    bool Fail(unsigned text, ZoToken const& token);
    bool Fail(unsigned text, std::uint32_t pos, std::uint32_t len);
    void Defer(int code, unsigned text, std::uint32_t pos, std::uint32_t len);
    std::uint32_t Emit(ZoFormulaNode const& node);
    std::uint32_t Root() const { return static_cast<std::uint32_t>(m_program.nodes.size() - 1); }

    std::wstring_view m_text;
    Options m_options;
    ZoFormulaProgram& m_program;
    ZoFormulaFinding& m_syntax;
    ZoFormulaFinding& m_deferred;
    ZoFormulaLexer m_lexer;
    ZoToken m_token;
    int m_depth = 0;
    std::vector<std::uint32_t>& m_argumentRoots; // of the calls being read, innermost last
};
