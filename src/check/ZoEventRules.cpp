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

// Judges one formula in the meaning the editor gives its field.
FormulaOutcome JudgeFormula(Context& context, std::wstring_view text, ZoFormulaRole role)
{
    context.NeedEventsIfNamed(text);
    ZoEvaluator& evaluator = context.evaluator;
    FormulaOutcome outcome;
    if (auto const fault = ZoFormulaFault(evaluator, text, role)) {
        int const code = evaluator.ErrorCode();
        bool const sentence = code != kZoFormulaOk && code != kZoFormulaMarked && code != kZoFormulaModule;
        outcome.passed = false;
        outcome.found = true;
        outcome.rule = FormulaRule(code, *fault, evaluator);
        outcome.message = sentence ? evaluator.ErrorMsg(code) : *fault;
        if (outcome.rule == "formula-type" && !sentence)
            outcome.message = KindMessage(evaluator, role);
        // A module reference is checked when the project runs: worth knowing, not an error.
        outcome.severity = outcome.rule == "module-reference" ? ZoSeverity::Warning : ZoSeverity::Error;
        if (sentence)
            outcome.column = evaluator.ErrorPosition();
        return outcome;
    }
    // "1" and "0" pass without the evaluator (which then still holds the last formula).
    if (double constant = 0; role != ZoFormulaRole::Argument && ZoIsLogicalConstant(text, constant))
        return outcome;
    if (evaluator.ErrorCode() == kZoFormulaMarked) {
        outcome.found = true;
        outcome.severity = ZoSeverity::Warning;
        outcome.rule = "marked-comparison";
        outcome.message = evaluator.ErrorMsg(kZoFormulaMarked);
        outcome.column = evaluator.ErrorPosition();
    }
    return outcome;
}

void ReportOutcome(Context& context, EventUnderCheck const& event, ZoCheckField field, int index,
                   FormulaOutcome const& outcome)
{
    if (!outcome.found)
        return;
    ZoFinding& finding = context.Add(event, outcome.severity, outcome.rule, field, outcome.message);
    finding.index = index;
    finding.column = outcome.column;
}

// Checks one formula in the meaning the editor gives its field; false when it has a fault
// (the evaluator then holds nothing useful), true when it passed (with a mark reported).
bool CheckFormula(Context& context, EventUnderCheck const& event, ZoCheckField field, int index,
                  std::wstring_view text, ZoFormulaRole role)
{
    FormulaOutcome const outcome = JudgeFormula(context, text, role);
    ReportOutcome(context, event, field, index, outcome);
    return outcome.passed;
}

// A delay: a number whose judgement depends on its text alone (and the catalog, which a
// check never changes), so that the few delays most projects repeat over thousands of
// events ("0", "5", "60") are judged once each. The first texts met are remembered, not
// all: a table of every distinct text would cost more to look up (out of the processor's
// caches) than judging it again.
void CheckDelay(Context& context, EventUnderCheck const& event, ZoCheckField field, int index, std::string_view utf8)
{
    static constexpr std::size_t kMostRemembered = 256;
    auto found = context.delayOutcomes.find(utf8);
    if (found == context.delayOutcomes.end()) {
        FormulaOutcome outcome = JudgeFormula(context, ZoFromUtf8(utf8), ZoFormulaRole::Argument);
        if (context.delayOutcomes.size() >= kMostRemembered)
            return ReportOutcome(context, event, field, index, outcome);
        found = context.delayOutcomes.emplace(std::string(utf8), std::move(outcome)).first;
    }
    ReportOutcome(context, event, field, index, found->second);
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
        if (info && (info->kind == kZoAnalog || info->kind == kZoCounter)) {
            std::wstring reference;
            reference.reserve(name.size() + 2);
            reference.append(1, L'[').append(name).append(1, L']');
            return reference;
        }
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
    if (!analog.empty() && !stopNode && IsZeroDelay(event.Wide(KeyDelayActivate))) {
        context.Add(event, ZoSeverity::Warning, "chattering", ZoCheckField::Condition,
                    ZoFormat(context.Text(64547).c_str(), analog.c_str()));
        return;
    }
    auto const threshold = ZoReadThreshold(condition);
    if (!analog.empty() && threshold && !stopNode) {
        context.Add(event, ZoSeverity::Warning, "no-deadband", ZoCheckField::StopCondition,
                    ZoFormat(context.Text(64548).c_str(), analog.c_str()));
    }
    std::wstring const stop = stopNode ? ZoFromUtf8(stopNode->TextUtf8()) : std::wstring();
    if (!stopNode || stop.empty())
        return;
    auto const stopThreshold = ZoReadThreshold(stop);
    if (threshold && stopThreshold && !analog.empty() && ZoThresholdsComplement(*threshold, *stopThreshold)) {
        context.Add(event, ZoSeverity::Warning, "no-deadband", ZoCheckField::StopCondition, context.Text(64549));
        return;
    }
    bool const within = threshold && stopThreshold ? ZoThresholdWithin(*stopThreshold, *threshold)
                                                   : ZoNormalisedFormula(stop) == ZoNormalisedFormula(condition);
    if (within)
        context.Add(event, ZoSeverity::Warning, "never-clears", ZoCheckField::StopCondition, context.Text(64550));
}

void CheckConditions(Context& context, EventUnderCheck const& event)
{
    std::wstring const& condition = WideInto(context.conditionText, event.Utf8(KeyCondition));
    if (condition.empty()) {
        context.Add(event, ZoSeverity::Error, "no-condition", ZoCheckField::Condition, context.Text(64531));
    } else if (CheckFormula(context, event, ZoCheckField::Condition, 0, condition, ZoFormulaRole::Condition)) {
        std::vector<ZoBasicString<wchar_t>>& variables = context.variables;
        variables.clear();
        if (double constant = 0; !ZoIsLogicalConstant(condition, constant))
            context.evaluator.GetDeviceVariables(variables);
        std::wstring const analog = AnalogVariable(context, variables);
        if (double value = 0; IsConstant(context.evaluator, condition, !variables.empty(), value))
            context.Add(event, ZoSeverity::Warning, "constant-condition", ZoCheckField::Condition,
                        context.Text(value == 1.0 ? 64545 : 64546));
        else
            CheckAlarmShape(context, event, condition, analog);
    }
    if (XmlNode const* stop = event.Child(KeyConditionStop)) {
        std::wstring const& text = WideInto(context.formulaText, stop->TextUtf8());
        if (text.empty())
            context.Add(event, ZoSeverity::Error, "no-condition", ZoCheckField::StopCondition, context.Text(33122));
        else
            CheckFormula(context, event, ZoCheckField::StopCondition, 0, text, ZoFormulaRole::StopCondition);
    }
}

void CheckDelaysAndArguments(Context& context, EventUnderCheck const& event)
{
    // An empty delay is saved as "0" by the editor: nothing to check.
    if (std::string_view const delay = event.Utf8(KeyDelayActivate); !delay.empty())
        CheckDelay(context, event, ZoCheckField::DelayActivate, 0, delay);
    if (std::string_view const delay = event.Utf8(KeyDelayDeactivate); !delay.empty())
        CheckDelay(context, event, ZoCheckField::DelayDeactivate, 0, delay);
    XmlNode const* arguments = event.Child(KeyArguments);
    if (!arguments)
        return;
    int number = 0;
    for (XmlNode const* argument = arguments->FirstChild(); argument; argument = argument->NextSibling()) {
        if (!argument->HasTag(L"argument"))
            continue;
        ++number;
        // Argument values mostly name a variable of their own device: judged each time.
        CheckFormula(context, event, ZoCheckField::Argument, number,
                     WideInto(context.formulaText, KeyText(*argument, context.eventsTags.value)), ZoFormulaRole::Argument);
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
// that resolves, "%s" a stop condition. Read in UTF-8: every character they are made of is
// ASCII, so only a faulty placeholder is converted, for its message.
void CheckPlaceholders(Context& context, EventUnderCheck const& event, ZoCheckField field, EventKey key,
                       int arguments, int groups, bool hasStop)
{
    std::string_view const text = event.Utf8(key);
    for (std::size_t i = text.find('%'); i != std::string_view::npos && i + 1 < text.size(); i = text.find('%', i + 1)) {
        char const letter = text[i + 1];
        if (letter == '%') {
            ++i;
            continue;
        }
        if (letter == 's' && !hasStop) {
            context.Add(event, ZoSeverity::Warning, "annotation-placeholder", field, ZoFormat(context.Text(64542).c_str()));
            continue;
        }
        if (letter != 'a' && letter != 'g')
            continue;
        std::size_t end = i + 2;
        int number = 0;
        while (end < text.size() && text[end] >= '0' && text[end] <= '9' && number < 100000)
            number = number * 10 + (text[end++] - '0');
        int const available = letter == 'a' ? arguments : groups;
        if (end == i + 2 || number < 1 || number > available)
            context.Add(event, ZoSeverity::Warning, "annotation-placeholder", field,
                        ZoFormat(context.Text(letter == 'a' ? 64540 : 64541).c_str(),
                                 ZoFromUtf8(text.substr(i, end - i)).c_str(), number, available));
        i = end - 1;
    }
}

} // namespace

void CheckEventIdentity(Context& context, EventUnderCheck const& event)
{
    if (event.name.empty())
        context.Add(event, ZoSeverity::Error, "invalid-name", ZoCheckField::Name, context.Text(64530));
    else if (!IsValidId(event.name.c_str(), true))
        context.Add(event, ZoSeverity::Error, "invalid-name", ZoCheckField::Name, context.Text(32764));
    if (!event.name.empty()) {
        if (int const same = context.NameCount(event.position, event.Utf8(KeyName)); same > 1)
            context.Add(event, ZoSeverity::Error, "duplicate-name", ZoCheckField::Name,
                        ZoFormat(context.Text(64532).c_str(), same));
    }
    Registration* const registered = context.registrations.Find(event.Utf8(KeyId));
    int const count = registered ? registered->count : 0;
    if (registered)
        registered->matched = true;
    if (count == 0)
        context.Add(event, ZoSeverity::Error, "not-registered", ZoCheckField::Identity, context.Text(64534));
    else if (count > 1)
        context.Add(event, ZoSeverity::Error, "registered-twice", ZoCheckField::Identity,
                    ZoFormat(context.Text(64535).c_str(), count));
}

void CheckEventFormulas(Context& context, EventUnderCheck const& event)
{
    CheckConditions(context, event);
    CheckDelaysAndArguments(context, event);
}

void CheckEventReferences(Context& context, EventUnderCheck const& event)
{
    if (std::string_view const utf8 = event.Utf8(KeyTimeTable); !utf8.empty()) {
        TableState const& table = context.TableOf(utf8);
        event.table = &table;
        if (!table.known)
            context.Add(event, ZoSeverity::Warning, "unknown-time-table", ZoCheckField::TimeTable,
                        ZoFormat(context.Text(64537).c_str(), table.id.c_str()));
        else if (!table.allowsAny)
            context.Add(event, ZoSeverity::Warning, "never-fires", ZoCheckField::TimeTable,
                        ZoFormat(context.Text(64544).c_str(), context.fromText.c_str(), context.toText.c_str()));
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
                            ZoFormat(context.Text(64538).c_str(), ZoFromUtf8(group->TextUtf8()).c_str()));
        }
    }
    int const arguments = CountChildren(event.Child(KeyArguments), L"argument");
    bool const hasStop = event.Child(KeyConditionStop) != nullptr;
    CheckPlaceholders(context, event, ZoCheckField::Annotation, KeyAnnotation, arguments, groups, hasStop);
    CheckPlaceholders(context, event, ZoCheckField::DeaAnnotation, KeyDeaAnnotation, arguments, groups, hasStop);
    CheckPlaceholders(context, event, ZoCheckField::AckAnnotation, KeyAckAnnotation, arguments, groups, hasStop);
}

} // namespace zo::check
