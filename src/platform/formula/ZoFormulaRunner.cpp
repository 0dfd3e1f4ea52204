#include "ZoFormulaRunner.h"

#include "ZoFormulaFunctions.h"
#include "platform/drivers/ZoVariableInfo.h"

#include <algorithm>
#include <cmath>
#include <span>

namespace {

bool Holds(ZoOp op, double a, double b)
{
    switch (op) {
    case ZoOp::Equal: return a == b;
    case ZoOp::NotEqual: return a != b;
    case ZoOp::Less: return a < b;
    case ZoOp::LessEqual: return a <= b;
    case ZoOp::Greater: return a > b;
    default: return a >= b;
    }
}

bool Holds(ZoOp op, std::wstring_view a, std::wstring_view b)
{
    int const order = a.compare(b);
    return Holds(op, static_cast<double>(order), 0.0);
}

void SetFault(ZoFormulaFinding& fault, int code, unsigned text, ZoFormulaNode const& node)
{
    fault = ZoFormulaFinding();
    fault.code = code;
    fault.text = text;
    fault.pos = node.pos;
    fault.len = node.len;
}

} // namespace

ZoFormulaRunner::Result ZoFormulaRunner::Run(ZoFormulaProgram const& program, bool marks)
{
    Result result;
    m_numbers.clear();
    m_texts.clear();
    std::vector<ZoFormulaNode> const& nodes = program.nodes;
    for (std::uint32_t i = 0; i < nodes.size() && !result.fault; ++i) {
        ZoFormulaNode const& node = nodes[i];
        switch (node.op) {
        case ZoOp::Number:
            m_numbers.push_back(node.number);
            m_texts.emplace_back();
            break;
        case ZoOp::Text:
            m_numbers.push_back(0);
            m_texts.push_back(program.Literal(node.ref));
            break;
        case ZoOp::Variable: {
            ZoVariableInfo const* variable = program.references[node.ref].variable;
            m_numbers.push_back(variable ? ZoSampleValue(*variable) : 0.0);
            m_texts.emplace_back();
            break;
        }
        case ZoOp::Module:
            m_numbers.resize(m_numbers.size() - node.argc);
            m_texts.resize(m_texts.size() - node.argc);
            m_numbers.push_back(0);
            m_texts.emplace_back();
            break;
        case ZoOp::Negate:
            m_numbers.back() = -m_numbers.back();
            break;
        case ZoOp::Plus:
            break;
        case ZoOp::Not:
            m_numbers.back() = m_numbers.back() != 0 ? 0 : 1;
            break;
        case ZoOp::Equal:
        case ZoOp::NotEqual:
        case ZoOp::Less:
        case ZoOp::LessEqual:
        case ZoOp::Greater:
        case ZoOp::GreaterEqual:
            Compare(program, i, marks, result);
            break;
        case ZoOp::And:
        case ZoOp::Or: {
            double const b = m_numbers.back();
            m_numbers.pop_back();
            m_texts.pop_back();
            double& a = m_numbers.back();
            a = node.op == ZoOp::And ? (a != 0 && b != 0) : (a != 0 || b != 0);
            break;
        }
        case ZoOp::Call:
            CallFunction(node, result);
            break;
        default:
            Arithmetic(node, (nodes[i - 1].flags & kZoNodeConstant) != 0, result);
            break;
        }
    }
    if (!result.fault && !m_numbers.empty())
        result.value = m_numbers.back();
    return result;
}

void ZoFormulaRunner::Arithmetic(ZoFormulaNode const& node, bool constantRight, Result& result)
{
    double const b = m_numbers.back();
    m_numbers.pop_back();
    m_texts.pop_back();
    double& a = m_numbers.back();
    bool const constant = node.flags & kZoNodeConstant;
    // A constant zero divisor is a fault even when the dividend is a variable.
    if (constantRight && b == 0 && (node.op == ZoOp::Divide || node.op == ZoOp::Modulo)) {
        SetFault(result.fault, kZoFormulaDivisionByZero, kZoTextDivisionByZero, node);
        return;
    }
    double value = 0;
    switch (node.op) {
    case ZoOp::Add: value = a + b; break;
    case ZoOp::Subtract: value = a - b; break;
    case ZoOp::Multiply: value = a * b; break;
    case ZoOp::Divide: value = a / b; break;
    case ZoOp::Modulo: value = std::fmod(a, b); break;
    default: value = std::pow(a, b); break;
    }
    if (constant && !std::isfinite(value) && std::isfinite(a) && std::isfinite(b)) {
        SetFault(result.fault, kZoFormulaDomain, kZoTextDomain, node);
        result.fault.values[0] = a;
        result.fault.values[1] = b;
        result.fault.valueCount = 2;
        return;
    }
    a = value;
}

void ZoFormulaRunner::CallFunction(ZoFormulaNode const& node, Result& result)
{
    std::size_t const first = m_numbers.size() - node.argc;
    std::span<double const> const args(m_numbers.data() + first, node.argc);
    double value = ZoCallFunction(node.function, args);
    bool const finiteArgs = std::all_of(args.begin(), args.end(), [](double x) { return std::isfinite(x); });
    if ((node.flags & kZoNodeConstant) && !std::isfinite(value) && finiteArgs) {
        SetFault(result.fault, kZoFormulaDomain, kZoTextDomain, node);
        result.fault.valueCount = static_cast<int>(std::min<std::size_t>(args.size(), 3));
        std::copy_n(args.begin(), result.fault.valueCount, result.fault.values);
        return;
    }
    ZoFunctionKind const kind = ZoFunctionAt(node.function).kind;
    if (std::isnan(value) && kind == ZoFunctionKind::Test)
        value = 0;
    // if() hands on the text of the value it chose.
    std::wstring_view const text = kind == ZoFunctionKind::If ? m_texts[first + (args[0] != 0 ? 1 : 2)] : std::wstring_view();
    m_numbers.resize(first);
    m_texts.resize(first);
    m_numbers.push_back(value);
    m_texts.push_back(text);
}

void ZoFormulaRunner::Compare(ZoFormulaProgram const& program, std::uint32_t i, bool marks, Result& result)
{
    ZoFormulaNode const& node = program.nodes[i];
    ZoFormulaNode const& left = program.nodes[node.left];
    ZoFormulaNode const& right = program.nodes[i - 1];
    bool const texts = left.type == ZoFormulaType::Text && right.type == ZoFormulaType::Text;
    if (marks && !result.mark) {
        if (!texts && (node.op == ZoOp::Equal || node.op == ZoOp::NotEqual) && ((left.flags | right.flags) & kZoNodeReal))
            SetFault(result.mark, kZoFormulaMarked, kZoTextExactAnalog, node);
        else if (!texts)
            MarkRange(program, i, result);
    }
    bool holds = false;
    if (texts)
        holds = Holds(node.op, m_texts[m_texts.size() - 2], m_texts.back());
    else
        holds = Holds(node.op, m_numbers[m_numbers.size() - 2], m_numbers.back());
    m_numbers.pop_back();
    m_texts.pop_back();
    m_numbers.back() = holds ? 1 : 0;
    m_texts.back() = {};
}

void ZoFormulaRunner::MarkRange(ZoFormulaProgram const& program, std::uint32_t i, Result& result) const
{
    ZoFormulaNode const& node = program.nodes[i];
    auto ranged = [&program](ZoFormulaNode const& operand) -> ZoVariableInfo const* {
        if (operand.op != ZoOp::Variable)
            return nullptr;
        ZoFormulaReference const& reference = program.references[operand.ref];
        ZoVariableInfo const* variable = reference.variable;
        return variable && !reference.hasFilter && (variable->valueInfo.flags & kZoValueRange) ? variable : nullptr;
    };
    ZoFormulaNode const& left = program.nodes[node.left];
    ZoFormulaNode const& right = program.nodes[i - 1];
    ZoVariableInfo const* variable = nullptr;
    ZoFormulaNode const* variableNode = nullptr;
    bool variableLeft = true;
    double constant = 0;
    if ((variable = ranged(left)) && (right.flags & kZoNodeConstant)) {
        variableNode = &left;
        constant = m_numbers.back();
    } else if ((variable = ranged(right)) && (left.flags & kZoNodeConstant)) {
        variableNode = &right;
        variableLeft = false;
        constant = m_numbers[m_numbers.size() - 2];
    } else {
        return;
    }
    ZoValueInfo const& info = variable->valueInfo;
    auto at = [&](double x) { return variableLeft ? Holds(node.op, x, constant) : Holds(node.op, constant, x); };
    bool always = false;
    bool value = false;
    if (node.op == ZoOp::Equal || node.op == ZoOp::NotEqual) {
        bool const never = constant < info.min || constant > info.max ||
                           ((info.flags & kZoValueWhole) && std::trunc(constant) != constant);
        always = never;
        value = node.op == ZoOp::NotEqual;
    } else {
        value = at(info.min);
        always = value == at(info.max);
    }
    if (!always || std::isnan(constant))
        return;
    bool const low = std::isfinite(info.min);
    bool const high = std::isfinite(info.max);
    if (!low && !high)
        return;
    SetFault(result.mark, kZoFormulaMarked, low && high ? kZoTextAlwaysBetween : (low ? kZoTextAlwaysAtLeast : kZoTextAlwaysAtMost),
             node);
    result.mark.pos2 = variableNode->pos;
    result.mark.len2 = variableNode->len;
    result.mark.result = value;
    result.mark.values[0] = low ? info.min : info.max;
    result.mark.values[1] = info.max;
    result.mark.valueCount = low && high ? 2 : 1;
}
