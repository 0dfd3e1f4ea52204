#include "actions/ZoForceActionInput.h"

#include "actions/ZoActionDuplicates.h"
#include "actions/ZoForceActionCheck.h"
#include "platform/drivers/ZoValueInfo.h"
#include "platform/drivers/ZoVariable.h"
#include "platform/drivers/ZoVariableInfo.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"

namespace {

constexpr int kBuffer = 1024;

ZoForceInputFault Refuse(unsigned textId, ZoForceField field)
{
    return ZoForceInputFault{textId, ZoLoadString(textId), field};
}

// "The variable is not valid: <detail>" and the like, in a buffer of 1024 characters.
ZoForceInputFault Refuse(unsigned textId, ZoBasicString<wchar_t> const& detail, ZoForceField field)
{
    return ZoForceInputFault{textId, ZoFormatN(kBuffer, ZoLoadString(textId).c_str(), detail.c_str()), field};
}

std::optional<ZoForceInputFault> VariableFault(ZoForceCheck const& check, ZoEvaluator const& evaluator)
{
    constexpr unsigned kInvalid = 32842;
    switch (check.fault) {
    case ZoForceFault::None: return std::nullopt;
    case ZoForceFault::NotOneVariable: return Refuse(kInvalid, ZoLoadString(32446), ZoForceField::Variable);
    case ZoForceFault::Module: return Refuse(kInvalid, ZoLoadString(37540), ZoForceField::Variable);
    case ZoForceFault::Evaluator:
        return Refuse(kInvalid, evaluator.ErrorMsg(check.code), ZoForceField::Variable);
    default: return Refuse(kInvalid, ZoLoadString(32452), ZoForceField::Variable);
    }
}

std::optional<ZoForceInputFault> ValueFault(ZoForceCheck const& check, ZoEvaluator const& evaluator)
{
    constexpr unsigned kInvalid = 32843;
    switch (check.fault) {
    case ZoForceFault::None: return std::nullopt;
    case ZoForceFault::Syntax: return Refuse(kInvalid, ZoLoadString(32446), ZoForceField::Value);
    case ZoForceFault::Module: return Refuse(kInvalid, ZoLoadString(37540), ZoForceField::Value);
    case ZoForceFault::Evaluator:
        return Refuse(kInvalid,
                      check.code == kZoFormulaSyntax ? ZoLoadString(32446) : evaluator.ErrorMsg(check.code),
                      ZoForceField::Value);
    default: return Refuse(kInvalid, ZoLoadString(32838), ZoForceField::Value);
    }
}

} // namespace

std::optional<ZoForceInputFault> ZoCheckForceInput(ZoEvaluator& evaluator, XmlDocument::XmlNode const& action,
                                                   XmlDocument::XmlNode const* moment, std::wstring_view variable,
                                                   std::wstring_view value)
{
    if (variable.empty())
        return Refuse(32840, ZoForceField::Variable);
    ZoDriverVariable target;
    if (auto fault = VariableFault(ZoCheckForceVariable(evaluator, variable, target), evaluator))
        return fault;
    if (ZoIsForcedElsewhere(moment, action, variable))
        return Refuse(32839, ZoForceField::Variable);
    if (target.ValueInfo().flags & kZoValueNoCheck)
        return std::nullopt;
    if (value.empty())
        return Refuse(32841, ZoForceField::Value);
    return ValueFault(ZoCheckForceValue(evaluator, value, target), evaluator);
}

ZoBasicString<wchar_t> ZoForceValueLabel(std::wstring_view variable)
{
    ZoBasicString<wchar_t> const label = ZoLoadString(32110);
    ZoBasicString<wchar_t> about;
    ZoDriverVariable target;
    if (variable.empty()) {
        about = ZoLoadString(63301);
    } else if (!target.Setup(variable) || !target.Lock() || !target.Info()) {
        about = ZoLoadString(63302);
    } else if (target.ValueInfo().flags & kZoValueNoCheck) {
        return label;
    } else {
        ZoVariableInfo const& info = *target.Info();
        about = ZoFormat(ZoLoadString(63303).c_str(), ZoLoadString(62004 + static_cast<unsigned>(info.kind)).c_str(),
                         ZoDescribeValues(info).c_str());
    }
    return label + L" (" + about + L")";
}
