// The parser's nodes: resolving variables, text literals, and the types of operators and
// functions.
#include "ZoFormulaParser.h"

#include "ZoFormulaFunctions.h"
#include "ZoFormulaGrammar.h"
#include "ZoVariableName.h"
#include "platform/drivers/ZoDeviceCatalog.h"

using namespace zo::formula;

namespace {

bool IsNumeric(ZoFormulaType type)
{
    return type == ZoFormulaType::Number || type == ZoFormulaType::Logical;
}

ZoFormulaType TypeOf(ZoVariableInfo const& variable, bool filtered)
{
    if (filtered)
        return ZoFormulaType::Number;
    switch (variable.kind) {
    case kZoDigital: return ZoFormulaType::Logical;
    case kZoText: return ZoFormulaType::Text;
    default: return ZoFormulaType::Number;
    }
}

} // namespace

void ZoFormulaParser::CheckCall(ZoFormulaNode& node, ZoToken const& name, std::uint32_t count)
{
    int const index = ZoFindFunction(m_text.substr(name.pos, name.len));
    if (index < 0) {
        Defer(kZoFormulaUnknownFunction, kZoTextUnknownFunction, name.pos, name.len);
        node.type = ZoFormulaType::Unknown;
        return;
    }
    ZoFunction const& function = ZoFunctionAt(static_cast<unsigned>(index));
    node.function = static_cast<std::uint8_t>(index);
    node.type = function.kind == ZoFunctionKind::Test ? ZoFormulaType::Logical : ZoFormulaType::Number;
    if (count < function.minArgs || (function.maxArgs != kZoManyArgs && count > function.maxArgs)) {
        if (!m_deferred) {
            Defer(kZoFormulaArgumentCount, kZoTextArgumentCount, name.pos, name.len);
            m_deferred.count = static_cast<int>(count);
            m_deferred.function = static_cast<unsigned>(index);
        }
        node.type = function.kind == ZoFunctionKind::If ? ZoFormulaType::Unknown : node.type;
        return;
    }
    std::uint32_t const* const roots = m_argumentRoots.data() + (m_argumentRoots.size() - count);
    bool constant = true;
    bool real = false;
    for (std::uint32_t i = 0; i < count; ++i) {
        ZoFormulaNode const& argument = m_program.nodes[roots[i]];
        constant = constant && (argument.flags & kZoNodeConstant);
        real = real || (argument.flags & kZoNodeReal);
        if (function.kind != ZoFunctionKind::If)
            RequireNumber(argument, name);
    }
    node.flags = static_cast<std::uint8_t>((constant ? kZoNodeConstant : 0) | (real && function.keepsReal ? kZoNodeReal : 0));
    if (function.kind != ZoFunctionKind::If)
        return;
    RequireLogical(m_program.nodes[roots[0]], name);
    ZoFormulaType const a = m_program.nodes[roots[1]].type;
    ZoFormulaType const b = m_program.nodes[roots[2]].type;
    if (a == ZoFormulaType::Unknown || b == ZoFormulaType::Unknown)
        node.type = a == ZoFormulaType::Unknown ? b : a;
    else if (a == b)
        node.type = a;
    else if (IsNumeric(a) && IsNumeric(b))
        node.type = ZoFormulaType::Number;
    else {
        if (!m_deferred) {
            Defer(kZoFormulaType, kZoTextBranchTypes, name.pos, name.len);
            m_deferred.types[0] = static_cast<int>(a);
            m_deferred.types[1] = static_cast<int>(b);
        }
        node.type = ZoFormulaType::Unknown;
    }
    node.flags = static_cast<std::uint8_t>(node.flags & ~kZoNodeReal);
    if ((m_program.nodes[roots[1]].flags | m_program.nodes[roots[2]].flags) & kZoNodeReal)
        node.flags |= kZoNodeReal;
}

bool ZoFormulaParser::Reference()
{
    ZoToken const& token = m_token;
    std::wstring_view const inside = m_text.substr(token.pos + 1, token.len - 2);
    ZoVariableNameParts parts;
    if (!ZoSplitVariableName(inside, parts))
        return Fail(kZoTextMalformedReference, token);
    auto offset = [this](std::wstring_view part) { return static_cast<std::uint32_t>(part.data() - m_text.data()); };
    ZoFormulaReference reference;
    reference.pos = token.pos;
    reference.len = token.len;
    reference.devicePos = offset(parts.device);
    reference.deviceLen = static_cast<std::uint32_t>(parts.device.size());
    reference.codePos = offset(parts.code);
    reference.codeLen = static_cast<std::uint32_t>(parts.code.size());
    reference.hasFilter = parts.hasFilter;
    if (m_options.catalog)
        reference.driver = m_options.catalog->Find(parts.device);
    if (reference.driver)
        reference.variable = reference.driver->FindVariable(parts.code);
    if (!reference.driver) {
        Defer(kZoFormulaUnknownDevice, kZoTextUnknownDevice, reference.devicePos, reference.deviceLen);
    } else if (!reference.variable) {
        if (!m_deferred) {
            Defer(kZoFormulaUnknownVariable, kZoTextUnknownVariable, reference.devicePos, reference.deviceLen);
            m_deferred.pos2 = reference.codePos;
            m_deferred.len2 = reference.codeLen;
        }
    }
    if (parts.hasFilter) {
        std::uint32_t const slash = reference.codePos + reference.codeLen;
        std::uint32_t const filterLen = token.pos + token.len - 1 - slash;
        if (!m_options.periods)
            Defer(kZoFormulaNoPeriods, kZoTextNoPeriods, slash, filterLen);
        else if (!ZoParsePeriod(parts.filter, reference.period))
            Defer(kZoFormulaBadPeriod, kZoTextBadPeriod, slash + 1, filterLen - 1);
        else if (reference.variable && !ZoIsNumericKind(reference.variable->kind))
            Defer(kZoFormulaPeriodNotNumeric, kZoTextPeriodNotNumeric, token.pos, token.len);
    }
    ZoFormulaNode node;
    node.op = ZoOp::Variable;
    node.pos = token.pos;
    node.len = token.len;
    node.ref = static_cast<std::uint32_t>(m_program.references.size());
    if (reference.variable) {
        node.type = TypeOf(*reference.variable, parts.hasFilter);
        if (parts.hasFilter || ZoIsRealKind(reference.variable->kind))
            node.flags = kZoNodeReal;
    } else {
        node.type = ZoFormulaType::Unknown;
    }
    m_program.references.push_back(reference);
    Emit(node);
    return true;
}

void ZoFormulaParser::TextLiteral()
{
    std::wstring_view const inside = m_text.substr(m_token.pos + 1, m_token.len - 2);
    ZoFormulaTextLiteral literal;
    literal.offset = static_cast<std::uint32_t>(m_program.texts.size());
    for (std::size_t i = 0; i < inside.size(); ++i) {
        m_program.texts.push_back(inside[i]);
        if (inside[i] == L'"')
            ++i; // the second quote of ""
    }
    literal.length = static_cast<std::uint32_t>(m_program.texts.size()) - literal.offset;
    ZoFormulaNode node;
    node.op = ZoOp::Text;
    node.type = ZoFormulaType::Text;
    node.flags = kZoNodeConstant;
    node.pos = m_token.pos;
    node.len = m_token.len;
    node.ref = static_cast<std::uint32_t>(m_program.literals.size());
    m_program.literals.push_back(literal);
    Emit(node);
}

void ZoFormulaParser::RequireLogical(ZoFormulaNode const& operand, ZoToken const& op)
{
    if (operand.type != ZoFormulaType::Number && operand.type != ZoFormulaType::Text)
        return;
    if (!m_deferred) {
        Defer(kZoFormulaType, kZoTextNeedsLogical, op.pos, op.len);
        m_deferred.types[0] = static_cast<int>(operand.type);
    }
}

void ZoFormulaParser::RequireNumber(ZoFormulaNode const& operand, ZoToken const& op)
{
    if (operand.type == ZoFormulaType::Text)
        Defer(kZoFormulaType, kZoTextNeedsNumbers, op.pos, op.len);
}

void ZoFormulaParser::Unary(ZoOp op, ZoToken const& token)
{
    ZoFormulaNode const& operand = m_program.nodes.back();
    ZoFormulaNode node;
    node.op = op;
    node.pos = token.pos;
    node.len = token.len;
    if (op == ZoOp::Not) {
        RequireLogical(operand, token);
        node.type = ZoFormulaType::Logical;
        node.flags = operand.flags & kZoNodeConstant;
    } else {
        RequireNumber(operand, token);
        node.type = ZoFormulaType::Number;
        node.flags = operand.flags;
    }
    Emit(node);
}

void ZoFormulaParser::Binary(ZoToken const& op, std::uint32_t left)
{
    ZoFormulaNode const& a = m_program.nodes[left];
    ZoFormulaNode const& b = m_program.nodes.back();
    ZoFormulaNode node;
    node.op = BinaryOp(op.kind);
    node.pos = op.pos;
    node.len = op.len;
    node.left = left;
    node.flags = a.flags & b.flags & kZoNodeConstant;
    switch (Precedence(op.kind)) {
    case kOrPrecedence:
    case kAndPrecedence:
        RequireLogical(a, op);
        RequireLogical(b, op);
        node.type = ZoFormulaType::Logical;
        break;
    case kComparisonPrecedence:
        if (a.type != ZoFormulaType::Unknown && b.type != ZoFormulaType::Unknown &&
            (a.type == ZoFormulaType::Text) != (b.type == ZoFormulaType::Text))
            Defer(kZoFormulaType, kZoTextTextWithNumber, op.pos, op.len);
        node.type = ZoFormulaType::Logical;
        break;
    default:
        RequireNumber(a, op);
        RequireNumber(b, op);
        node.type = ZoFormulaType::Number;
        node.flags |= (a.flags | b.flags) & kZoNodeReal;
        break;
    }
    Emit(node);
}
