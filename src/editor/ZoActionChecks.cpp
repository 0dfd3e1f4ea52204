#include "editor/ZoActionChecks.h"

#include "actions/ZoForceActionCheck.h"
#include "platform/drivers/ZoVariable.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"

namespace {

std::optional<ZoActionFault> Fault(int kind, ZoBasicString<wchar_t> detail)
{
    return ZoActionFault{kind, std::move(detail)};
}

// "Variable: detail" or "Value: detail".
std::optional<ZoActionFault> ForceFault(unsigned partTextId, ZoBasicString<wchar_t> const& detail)
{
    return Fault(kZoActionForce, ZoLoadString(partTextId) + L": " + detail);
}

bool HasNonEmptyChild(ZoActionNode const& action, wchar_t const* tag)
{
    ZoActionNode const* child = action.Child(tag);
    return child && child->Size() > 0;
}

std::optional<ZoActionFault> NameRequired(ZoActionNode const& action, int kind, unsigned textId)
{
    if (action.Value(L"name", L"").empty())
        return Fault(kind, ZoLoadString(textId));
    return std::nullopt;
}

unsigned MomentLabel(int moment)
{
    static constexpr unsigned kLabels[] = {32831, 32832, 32833, 32834};
    return moment >= 0 && moment < 4 ? kLabels[moment] : 0;
}

unsigned KindLabel(int kind)
{
    switch (kind) {
    case kZoActionForce: return 32850;
    case kZoActionDevice: return 34112;
    case kZoActionScreen: return 767;
    case kZoActionReport: return 32401;
    case kZoActionMail: return 34141;
    default: return 0;
    }
}

ZoBasicString<wchar_t> LabelOrQuestionMark(unsigned textId)
{
    return textId ? ZoLoadString(textId) : ZoBasicString<wchar_t>(L"?");
}

} // namespace

// The variable is checked first (it must be one writable device variable of the catalog,
// without a period filter), then the value, which must suit that variable. The checks are
// those of the force action editor; only the wording of the faults is the event's own.
std::optional<ZoActionFault> ZoCheckForceAction(ZoEvaluator& evaluator, ZoActionNode const& action)
{
    return ZoCheckForceAction(evaluator, action.Value(L"variable", L""), action.Value(L"value", L""));
}

std::optional<ZoActionFault> ZoCheckForceAction(ZoEvaluator& evaluator, std::wstring_view variable,
                                                std::wstring_view value)
{
    if (variable.empty())
        return ForceFault(607, ZoLoadString(32449));
    if (value.empty())
        return ForceFault(608, ZoLoadString(32449));

    ZoDriverVariable target;
    ZoForceCheck check = ZoCheckForceVariable(evaluator, variable, target);
    switch (check.fault) {
    case ZoForceFault::None: break;
    case ZoForceFault::Module:
    case ZoForceFault::Evaluator: return ForceFault(607, evaluator.ErrorMsg(check.code));
    default: return ForceFault(607, ZoLoadString(32452));
    }

    check = ZoCheckForceValue(evaluator, value, target);
    switch (check.fault) {
    case ZoForceFault::None: return std::nullopt;
    case ZoForceFault::Syntax:
    case ZoForceFault::Evaluator:
        return ForceFault(608, ZoLoadString(32838) + L": " + evaluator.ErrorMsg(check.code));
    case ZoForceFault::Module: return ForceFault(608, ZoLoadString(32838) + L": " + ZoLoadString(37540));
    default: return ForceFault(608, ZoLoadString(32838));
    }
}

std::optional<ZoActionFault> ZoCheckDeviceAction(ZoActionNode const& action)
{
    return NameRequired(action, kZoActionDevice, 32085);
}

std::optional<ZoActionFault> ZoCheckScreenAction(ZoActionNode const& action)
{
    return NameRequired(action, kZoActionScreen, 34117);
}

std::optional<ZoActionFault> ZoCheckReportAction(ZoActionNode const& action)
{
    return NameRequired(action, kZoActionReport, 34118);
}

// A mail needs a message and a recipient: an address, a user or a mailing list.
std::optional<ZoActionFault> ZoCheckMailAction(ZoActionNode const& action)
{
    if (action.Value(L"message", L"").empty())
        return Fault(kZoActionMail, ZoLoadString(34174));
    if (!ZoActionHasRecipient(action, L"address", L"mailLists"))
        return Fault(kZoActionMail, ZoLoadString(34175));
    return std::nullopt;
}

bool ZoActionHasRecipient(ZoActionNode const& action, wchar_t const* freeKey, wchar_t const* listsTag)
{
    return !action.Value(freeKey, L"").empty() || HasNonEmptyChild(action, L"users")
        || HasNonEmptyChild(action, listsTag);
}

int ZoMomentsToCheck(ZoActionNode const& event)
{
    return event.Value(L"notify", L"") == L"T" ? 4 : 3;
}

void ActionErrorMsg(ZoBasicString<wchar_t>& out, int list, int moment, int kind, wchar_t const* detail)
{
    out = ZoLoadString(list == 0 ? 34106 : 34107);
    out += L"\n";
    out += ZoFormatN(1024, ZoLoadString(32882).c_str(), LabelOrQuestionMark(MomentLabel(moment)).c_str(),
                     LabelOrQuestionMark(KindLabel(kind)).c_str());
    out += L"\n";
    out += detail ? detail : L"";
}

void ActionErrorMsg(ZoBasicString<wchar_t>& out, int list, int moment, int kind, unsigned detailTextId)
{
    ActionErrorMsg(out, list, moment, kind, ZoLoadString(detailTextId).c_str());
}
