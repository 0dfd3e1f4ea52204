// The rules over one event's identity, formulas and references.
#include "check/ZoCheckContext.h"
#include "platform/formula/ZoVariableName.h"
#include "check/ZoFormulaShape.h"

#include "editor/ZoFormulaFaults.h"
#include "editor/ZoFormulaStatus.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoIds.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

namespace zo::check {

namespace {

using Context = ZoProjectChecker::Context;

std::wstring Text(unsigned id)
{
    return ZoLoadString(id);
}

// The rule a formula fault is filed under, by the evaluator's code.
std::string_view FormulaRule(int code, std::wstring_view detail, ZoEvaluator const& evaluator)
{
    switch (code) {
    case kZoFormulaUnknownDevice: {
        // An events pseudo-device names an event: after a rename or a deletion, say so.
        std::wstring const& expr = evaluator.Expr();
        int const position = evaluator.ErrorPosition();
        // The position is that of the device's name.
        if (position > 0 && static_cast<std::size_t>(position) <= expr.size()
            && expr.compare(position - 1, 6, L"R$EVE_") == 0)
            return "unknown-event";
        return "unknown-device";
    }
    case kZoFormulaUnknownVariable: return "unknown-variable";
    case kZoFormulaModule: return "module-reference";
    case kZoFormulaType: return "formula-type";
    case kZoFormulaNoPeriods:
    case kZoFormulaBadPeriod:
    case kZoFormulaPeriodNotNumeric: return "formula-period";
    case kZoFormulaDivisionByZero:
    case kZoFormulaDomain: return "formula-value";
    case kZoFormulaOk: return detail == ZoLoadString(37540) ? "module-reference" : "formula-type";
    default: return "formula-syntax";
    }
}

// What a formula of the wrong kind gives, and what its field needs.
std::wstring KindMessage(ZoEvaluator& evaluator, ZoFormulaRole role)
{
    static constexpr unsigned kKinds[] = {64575, 64576, 64577}; // a number, a logical value, a text
    int const kind = evaluator.AnalizeExpression();
    unsigned const needed = role == ZoFormulaRole::Argument ? kKinds[0] : kKinds[1];
    if (kind < 0 || kind > 2)
        return ZoLoadString(32446);
    return ZoFormat(Text(64574).c_str(), Text(kKinds[kind]).c_str(), Text(needed).c_str());
}

// Checks one formula in the meaning the editor gives its field; false when it has a fault
// (the evaluator then holds nothing useful), true when it passed (with a mark reported).
bool CheckFormula(Context& context, EventUnderCheck const& event, ZoCheckField field, int index,
                  std::wstring_view text, ZoFormulaRole role)
{
    ZoEvaluator& evaluator = context.evaluator;
    if (auto const fault = ZoFormulaFault(evaluator, text, role)) {
        int const code = evaluator.ErrorCode();
        bool const sentence = code != kZoFormulaOk && code != kZoFormulaMarked && code != kZoFormulaModule;
        std::string_view const rule = FormulaRule(code, *fault, evaluator);
        std::wstring message = sentence ? evaluator.ErrorMsg(code) : *fault;
        if (rule == "formula-type" && !sentence)
            message = KindMessage(evaluator, role);
        // A module reference is checked when the project runs: worth knowing, not an error.
        ZoSeverity const severity = rule == "module-reference" ? ZoSeverity::Warning : ZoSeverity::Error;
        ZoFinding& finding = context.Add(event, severity, rule, field, std::move(message));
        finding.index = index;
        if (sentence)
            finding.column = evaluator.ErrorPosition();
        return false;
    }
    // "1" and "0" pass without the evaluator (which then still holds the last formula).
    if (double constant = 0; role != ZoFormulaRole::Argument && ZoIsLogicalConstant(text, constant))
        return true;
    if (evaluator.ErrorCode() == kZoFormulaMarked) {
        ZoFinding& finding = context.Add(event, ZoSeverity::Warning, "marked-comparison", field,
                                         evaluator.ErrorMsg(kZoFormulaMarked));
        finding.index = index;
        finding.column = evaluator.ErrorPosition();
    }
    return true;
}

// Whether the condition that just passed is a constant (it reads no variable); value: its
// value.
bool IsConstant(ZoEvaluator& evaluator, std::wstring_view condition, bool readsVariables, double& value)
{
    if (ZoIsLogicalConstant(condition, value))
        return true;
    if (readsVariables)
        return false;
    int type = 0;
    evaluator.Evaluate(value, type);
    return value == 1.0 || value == 0.0;
}

// The first analog or counter variable of the list ("DEVICE.CODE"), as "[DEVICE.CODE]".
std::wstring AnalogVariable(Context& context, std::vector<ZoBasicString<wchar_t>> const& variables)
{
    for (auto const& name : variables) {
        // A device's name may hold points: it ends at the last one.
        ZoVariableNameParts parts;
        if (!ZoSplitVariableName(name, parts))
            continue;
        ZoVariableInfo const* info = context.catalog->FindVariable(parts.device, parts.code);
        if (info && (info->kind == kZoAnalog || info->kind == kZoCounter))
            return L"[" + name + L"]";
    }
    return {};
}

bool IsZeroDelay(std::wstring const& delay)
{
    std::size_t const first = delay.find_first_not_of(L" \t");
    return first == std::wstring::npos || delay.substr(first, delay.find_last_not_of(L" \t") - first + 1) == L"0";
}

// Chattering, deadband and clearing: the rules of alarm rationalization that a
// configuration alone can answer.
void CheckAlarmShape(Context& context, EventUnderCheck const& event, std::wstring const& condition,
                     std::wstring const& analog)
{
    XmlNode const* stopNode = event.Child(KeyConditionStop);
    if (analog.empty() && !stopNode)
        return;
    std::wstring const stop = stopNode ? ZoFromUtf8(stopNode->TextUtf8()) : std::wstring();
    auto const threshold = ZoReadThreshold(condition);
    if (!analog.empty() && !stopNode && IsZeroDelay(event.Wide(KeyDelayActivate))) {
        context.Add(event, ZoSeverity::Warning, "chattering", ZoCheckField::Condition,
                    ZoFormat(Text(64547).c_str(), analog.c_str()));
    } else if (!analog.empty() && threshold && !stopNode) {
        context.Add(event, ZoSeverity::Warning, "no-deadband", ZoCheckField::StopCondition,
                    ZoFormat(Text(64548).c_str(), analog.c_str()));
    }
    if (!stopNode || stop.empty())
        return;
    auto const stopThreshold = ZoReadThreshold(stop);
    if (threshold && stopThreshold && !analog.empty() && ZoThresholdsComplement(*threshold, *stopThreshold)) {
        context.Add(event, ZoSeverity::Warning, "no-deadband", ZoCheckField::StopCondition, Text(64549));
        return;
    }
    bool const within = threshold && stopThreshold ? ZoThresholdWithin(*stopThreshold, *threshold)
                                                   : ZoNormalisedFormula(stop) == ZoNormalisedFormula(condition);
    if (within)
        context.Add(event, ZoSeverity::Warning, "never-clears", ZoCheckField::StopCondition, Text(64550));
}

void CheckConditions(Context& context, EventUnderCheck const& event)
{
    std::wstring const condition = event.Wide(KeyCondition);
    if (condition.empty()) {
        context.Add(event, ZoSeverity::Error, "no-condition", ZoCheckField::Condition, Text(64531));
    } else if (CheckFormula(context, event, ZoCheckField::Condition, 0, condition, ZoFormulaRole::Condition)) {
        std::vector<ZoBasicString<wchar_t>> variables;
        if (double constant = 0; !ZoIsLogicalConstant(condition, constant))
            context.evaluator.GetDeviceVariables(variables);
        std::wstring const analog = AnalogVariable(context, variables);
        if (double value = 0; IsConstant(context.evaluator, condition, !variables.empty(), value))
            context.Add(event, ZoSeverity::Warning, "constant-condition", ZoCheckField::Condition,
                        Text(value == 1.0 ? 64545 : 64546));
        else
            CheckAlarmShape(context, event, condition, analog);
    }
    if (XmlNode const* stop = event.Child(KeyConditionStop)) {
        std::wstring const text = ZoFromUtf8(stop->TextUtf8());
        if (text.empty())
            context.Add(event, ZoSeverity::Error, "no-condition", ZoCheckField::StopCondition, Text(33122));
        else
            CheckFormula(context, event, ZoCheckField::StopCondition, 0, text, ZoFormulaRole::StopCondition);
    }
}

void CheckDelaysAndArguments(Context& context, EventUnderCheck const& event)
{
    // An empty delay is saved as "0" by the editor: nothing to check.
    if (std::wstring const delay = event.Wide(KeyDelayActivate); !delay.empty())
        CheckFormula(context, event, ZoCheckField::DelayActivate, 0, delay, ZoFormulaRole::Argument);
    if (std::wstring const delay = event.Wide(KeyDelayDeactivate); !delay.empty())
        CheckFormula(context, event, ZoCheckField::DelayDeactivate, 0, delay, ZoFormulaRole::Argument);
    XmlNode const* arguments = event.Child(KeyArguments);
    if (!arguments)
        return;
    int number = 0;
    for (XmlNode const* argument = arguments->FirstChild(); argument; argument = argument->NextSibling()) {
        if (!argument->HasTag(L"argument"))
            continue;
        ++number;
        CheckFormula(context, event, ZoCheckField::Argument, number, WideValue(*argument, L"value"),
                     ZoFormulaRole::Argument);
    }
}

int CountChildren(XmlNode const* container, wchar_t const* tag)
{
    int count = 0;
    for (XmlNode const* child = container ? container->FirstChild() : nullptr; child; child = child->NextSibling())
        count += child->HasTag(tag) ? 1 : 0;
    return count;
}

// The placeholders of one annotation text: "%aN" needs argument N, "%gN" the N-th group
// that resolves, "%s" a stop condition.
void CheckPlaceholders(Context& context, EventUnderCheck const& event, ZoCheckField field, EventKey key,
                       int arguments, int groups, bool hasStop)
{
    if (event.Utf8(key).find('%') == std::string_view::npos)
        return;
    std::wstring const text = event.Wide(key);
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != L'%')
            continue;
        wchar_t const letter = text[i + 1];
        if (letter == L'%') {
            ++i;
            continue;
        }
        if (letter == L's' && !hasStop) {
            context.Add(event, ZoSeverity::Warning, "annotation-placeholder", field, ZoFormat(Text(64542).c_str()));
            continue;
        }
        if (letter != L'a' && letter != L'g')
            continue;
        std::size_t end = i + 2;
        int number = 0;
        while (end < text.size() && text[end] >= L'0' && text[end] <= L'9' && number < 100000)
            number = number * 10 + (text[end++] - L'0');
        int const available = letter == L'a' ? arguments : groups;
        if (end == i + 2 || number < 1 || number > available)
            context.Add(event, ZoSeverity::Warning, "annotation-placeholder", field,
                        ZoFormat(Text(letter == L'a' ? 64540 : 64541).c_str(), text.substr(i, end - i).c_str(),
                                 number, available));
        i = end - 1;
    }
}

} // namespace

void CheckEventIdentity(Context& context, EventUnderCheck const& event)
{
    if (event.name.empty())
        context.Add(event, ZoSeverity::Error, "invalid-name", ZoCheckField::Name, Text(64530));
    else if (!IsValidId(event.name.c_str(), true))
        context.Add(event, ZoSeverity::Error, "invalid-name", ZoCheckField::Name, Text(32764));
    if (!event.name.empty()) {
        auto const same = context.eventNames.find(event.Utf8(KeyName));
        if (same != context.eventNames.end() && same->second > 1)
            context.Add(event, ZoSeverity::Error, "duplicate-name", ZoCheckField::Name,
                        ZoFormat(Text(64532).c_str(), same->second));
    }
    auto const registered = context.registrations.find(event.Utf8(KeyId));
    int const count = registered == context.registrations.end() ? 0 : registered->second.count;
    if (registered != context.registrations.end())
        registered->second.matched = true;
    if (count == 0)
        context.Add(event, ZoSeverity::Error, "not-registered", ZoCheckField::Identity, Text(64534));
    else if (count > 1)
        context.Add(event, ZoSeverity::Error, "registered-twice", ZoCheckField::Identity,
                    ZoFormat(Text(64535).c_str(), count));
}

void CheckEventFormulas(Context& context, EventUnderCheck const& event)
{
    CheckConditions(context, event);
    CheckDelaysAndArguments(context, event);
}

void CheckEventReferences(Context& context, EventUnderCheck const& event)
{
    if (!event.Utf8(KeyTimeTable).empty()) {
        std::wstring const table = event.Wide(KeyTimeTable);
        if (context.timeTables.KindOf(table) == ZoTimeTableResolution::Kind::None)
            context.Add(event, ZoSeverity::Warning, "unknown-time-table", ZoCheckField::TimeTable,
                        ZoFormat(Text(64537).c_str(), table.c_str()));
        else if (!context.TableAllowsAny(table))
            context.Add(event, ZoSeverity::Warning, "never-fires", ZoCheckField::TimeTable,
                        ZoFormat(Text(64544).c_str(), context.from.toString(Qt::ISODate).toStdWString().c_str(),
                                 context.to.toString(Qt::ISODate).toStdWString().c_str()));
    }
    int groups = 0;
    if (XmlNode const* memberships = event.Child(KeyEventsGroups)) {
        for (XmlNode const* group = memberships->FirstChild(); group; group = group->NextSibling()) {
            if (!group->HasTag(L"eventsGroup"))
                continue;
            if (context.groupIds.contains(group->TextUtf8()))
                ++groups;
            else
                context.Add(event, ZoSeverity::Warning, "unknown-group", ZoCheckField::Groups,
                            ZoFormat(Text(64538).c_str(), ZoFromUtf8(group->TextUtf8()).c_str()));
        }
    }
    int const arguments = CountChildren(event.Child(KeyArguments), L"argument");
    bool const hasStop = event.Child(KeyConditionStop) != nullptr;
    CheckPlaceholders(context, event, ZoCheckField::Annotation, KeyAnnotation, arguments, groups, hasStop);
    CheckPlaceholders(context, event, ZoCheckField::DeaAnnotation, KeyDeaAnnotation, arguments, groups, hasStop);
    CheckPlaceholders(context, event, ZoCheckField::AckAnnotation, KeyAckAnnotation, arguments, groups, hasStop);
}

} // namespace zo::check
