#include "ZoFormulaGrammar.h"

namespace zo::formula {

int Precedence(ZoTok kind)
{
    switch (kind) {
    case ZoTok::Or: return kOrPrecedence;
    case ZoTok::And: return kAndPrecedence;
    case ZoTok::Equal:
    case ZoTok::NotEqual:
    case ZoTok::Less:
    case ZoTok::LessEqual:
    case ZoTok::Greater:
    case ZoTok::GreaterEqual: return kComparisonPrecedence;
    case ZoTok::Plus:
    case ZoTok::Minus: return 5;
    case ZoTok::Star:
    case ZoTok::Slash:
    case ZoTok::Percent: return 6;
    case ZoTok::Caret: return kPowerPrecedence;
    default: return 0;
    }
}

ZoOp BinaryOp(ZoTok kind)
{
    switch (kind) {
    case ZoTok::Plus: return ZoOp::Add;
    case ZoTok::Minus: return ZoOp::Subtract;
    case ZoTok::Star: return ZoOp::Multiply;
    case ZoTok::Slash: return ZoOp::Divide;
    case ZoTok::Percent: return ZoOp::Modulo;
    case ZoTok::Caret: return ZoOp::Power;
    case ZoTok::Equal: return ZoOp::Equal;
    case ZoTok::NotEqual: return ZoOp::NotEqual;
    case ZoTok::Less: return ZoOp::Less;
    case ZoTok::LessEqual: return ZoOp::LessEqual;
    case ZoTok::Greater: return ZoOp::Greater;
    case ZoTok::GreaterEqual: return ZoOp::GreaterEqual;
    case ZoTok::And: return ZoOp::And;
    default: return ZoOp::Or;
    }
}

} // namespace zo::formula
