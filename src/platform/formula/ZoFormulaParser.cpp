#include "ZoFormulaParser.h"

#include "ZoFormulaGrammar.h"

using namespace zo::formula;

namespace {

// Counts the parser's levels of nesting for as long as it lives.
class DepthGuard {
public:
    explicit DepthGuard(int& depth) : m_depth(depth) { ++m_depth; }
    ~DepthGuard() { --m_depth; }
    DepthGuard(DepthGuard const&) = delete;
    DepthGuard& operator=(DepthGuard const&) = delete;

private:
    int& m_depth;
};

} // namespace

ZoFormulaParser::ZoFormulaParser(std::wstring_view text, Options const& options, ZoFormulaProgram& program,
                                 ZoFormulaFinding& syntax, ZoFormulaFinding& deferred)
    : m_text(text), m_options(options), m_program(program), m_syntax(syntax), m_deferred(deferred), m_lexer(text),
      m_argumentRoots(program.argumentRoots)
{
}

bool ZoFormulaParser::Parse()
{
    m_program.Clear();
    m_syntax = ZoFormulaFinding();
    m_deferred = ZoFormulaFinding();
    if (m_text.size() > kZoFormulaMaxLength)
        return Fail(kZoTextTooLong, 0, 0);
    Advance();
    if (m_token.kind == ZoTok::End)
        return Fail(kZoTextEmpty, 0, 0);
    if (!Expression(0))
        return false;
    if (m_token.kind != ZoTok::End)
        return Fail(kZoTextTrailing, m_token);
    return true;
}

bool ZoFormulaParser::Fail(unsigned text, ZoToken const& token)
{
    return Fail(token.kind == ZoTok::Bad ? token.badText : text, token.pos, token.len);
}

bool ZoFormulaParser::Fail(unsigned text, std::uint32_t pos, std::uint32_t len)
{
    m_syntax = ZoFormulaFinding();
    m_syntax.code = text == kZoTextTooDeep ? kZoFormulaTooDeep : kZoFormulaSyntax;
    m_syntax.text = text;
    m_syntax.pos = pos;
    m_syntax.len = len;
    return false;
}

void ZoFormulaParser::Defer(int code, unsigned text, std::uint32_t pos, std::uint32_t len)
{
    if (m_deferred)
        return;
    m_deferred.code = code;
    m_deferred.text = text;
    m_deferred.pos = pos;
    m_deferred.len = len;
}

std::uint32_t ZoFormulaParser::Emit(ZoFormulaNode const& node)
{
    m_program.nodes.push_back(node);
    return Root();
}

bool ZoFormulaParser::Expression(int minPrecedence)
{
    DepthGuard const guard(m_depth);
    if (m_depth > kZoFormulaMaxDepth)
        return Fail(kZoTextTooDeep, m_token.pos, m_token.len);
    if (!Operand())
        return false;
    std::uint32_t left = Root();
    bool leftIsComparison = false;
    for (;;) {
        int const precedence = Precedence(m_token.kind);
        if (precedence == 0 || precedence < minPrecedence)
            return true;
        bool const comparison = precedence == kComparisonPrecedence;
        if (comparison && leftIsComparison)
            return Fail(kZoTextChainedComparison, m_token);
        ZoToken const op = m_token;
        Advance();
        // "^" groups from the right, the others from the left.
        if (!Expression(precedence == kPowerPrecedence ? precedence : precedence + 1))
            return false;
        Binary(op, left);
        left = Root();
        leftIsComparison = comparison;
    }
}

bool ZoFormulaParser::Operand()
{
    ZoToken const token = m_token;
    switch (token.kind) {
    case ZoTok::Number: {
        ZoFormulaNode node;
        node.op = ZoOp::Number;
        node.flags = kZoNodeConstant;
        node.pos = token.pos;
        node.len = token.len;
        node.number = token.number;
        Emit(node);
        Advance();
        return true;
    }
    case ZoTok::True:
    case ZoTok::False: {
        ZoFormulaNode node;
        node.op = ZoOp::Number;
        node.type = ZoFormulaType::Logical;
        node.flags = kZoNodeConstant;
        node.pos = token.pos;
        node.len = token.len;
        node.number = token.kind == ZoTok::True ? 1 : 0;
        Emit(node);
        Advance();
        return true;
    }
    case ZoTok::Text:
        TextLiteral();
        Advance();
        return true;
    case ZoTok::Variable:
        if (!Reference())
            return false;
        Advance();
        return true;
    case ZoTok::Module:
        return Module();
    case ZoTok::Name:
        Advance();
        if (m_token.kind != ZoTok::Open)
            return Fail(kZoTextBareName, token);
        return Call(token);
    case ZoTok::Open:
        return Parenthesis();
    case ZoTok::Minus:
    case ZoTok::Plus:
        Advance();
        if (!Expression(kPowerPrecedence))
            return false;
        Unary(token.kind == ZoTok::Minus ? ZoOp::Negate : ZoOp::Plus, token);
        return true;
    case ZoTok::Not:
        Advance();
        if (!Expression(kComparisonPrecedence))
            return false;
        Unary(ZoOp::Not, token);
        return true;
    case ZoTok::End:
        return Fail(kZoTextUnexpectedEnd, token.pos, 0);
    default:
        return Fail(kZoTextValueExpected, token);
    }
}

bool ZoFormulaParser::Parenthesis()
{
    ZoToken const open = m_token;
    Advance();
    if (!Expression(0))
        return false;
    if (m_token.kind == ZoTok::End)
        return Fail(kZoTextUnclosedParenthesis, open);
    if (m_token.kind != ZoTok::Close)
        return Fail(kZoTextCloseExpected, m_token);
    Advance();
    return true;
}

bool ZoFormulaParser::Arguments(std::uint32_t& count)
{
    ZoToken const open = m_token;
    Advance();
    count = 0;
    if (m_token.kind == ZoTok::Close) {
        Advance();
        return true;
    }
    for (;;) {
        if (!Expression(0))
            return false;
        m_argumentRoots.push_back(Root());
        ++count;
        if (m_token.kind == ZoTok::Comma) {
            Advance();
            continue;
        }
        if (m_token.kind == ZoTok::Close) {
            Advance();
            return true;
        }
        if (m_token.kind == ZoTok::End)
            return Fail(kZoTextUnclosedParenthesis, open);
        return Fail(kZoTextArgumentSeparator, m_token);
    }
}

bool ZoFormulaParser::Call(ZoToken const& name)
{
    std::uint32_t count = 0;
    if (!Arguments(count))
        return false;
    ZoFormulaNode node;
    node.op = ZoOp::Call;
    node.pos = name.pos;
    node.len = name.len;
    node.argc = count;
    CheckCall(node, name, count);
    m_argumentRoots.resize(m_argumentRoots.size() - count);
    Emit(node);
    return true;
}

bool ZoFormulaParser::Module()
{
    ZoToken const token = m_token;
    Advance();
    std::uint32_t count = 0;
    if (m_token.kind == ZoTok::Open) {
        if (!Arguments(count))
            return false;
        m_argumentRoots.resize(m_argumentRoots.size() - count);
    }
    ZoFormulaNode node;
    node.op = ZoOp::Module;
    node.pos = token.pos;
    node.len = token.len;
    node.argc = count;
    Emit(node);
    if (!m_program.hasModule) {
        m_program.hasModule = true;
        m_program.modulePos = token.pos;
        m_program.moduleLen = token.len;
    }
    return true;
}

