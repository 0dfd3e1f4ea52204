// The rules over an event's actions: the editor's own checks, then what only the whole
// project can tell (the screen and report files, the catalog's devices, the users file).
#include "check/ZoCheckContext.h"

#include "actions/ZoRecipientAddresses.h"
#include "editor/ZoActionChecks.h"
#include "editor/ZoEventFields.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

namespace zo::check {

namespace {

using Context = ZoProjectChecker::Context;

struct ActionPlace {
    int list;
    int moment;
    int index;
};

void Report(Context& context, EventUnderCheck const& event, ActionPlace const& place, std::string_view rule,
            std::wstring message)
{
    ZoFinding& finding = context.Add(event, ZoSeverity::Error, rule, ZoCheckField::Action, std::move(message));
    finding.list = place.list;
    finding.moment = place.moment;
    finding.index = place.index;
}

bool ReportFault(Context& context, EventUnderCheck const& event, ActionPlace const& place, std::string_view rule,
                 std::optional<ZoActionFault> const& fault)
{
    if (fault)
        Report(context, event, place, rule, fault->detail);
    return fault.has_value();
}

// The ids under container (`users`, `mailLists`...) that the users file lacks.
void CheckRecipients(Context& context, EventUnderCheck const& event, ActionPlace const& place, XmlNode const& action,
                     wchar_t const* containerTag, WideSet const& known)
{
    XmlNode const* container = action.Child(containerTag);
    if (!container || !context.docs.users)
        return;
    for (XmlNode const* entry = container->FirstChild(); entry; entry = entry->NextSibling())
        if (!known.contains(ZoFromUtf8(entry->TextUtf8())))
            Report(context, event, place, "unknown-recipient",
                   ZoFormat(ZoLoadString(64558).c_str(), ZoFromUtf8(entry->TextUtf8()).c_str()));
}

void CheckFreeRecipients(Context& context, EventUnderCheck const& event, ActionPlace const& place,
                         std::wstring const& invalid)
{
    if (!invalid.empty())
        Report(context, event, place, "bad-recipient", ZoFormat(ZoLoadString(64559).c_str(), invalid.c_str()));
}

void CheckMail(Context& context, EventUnderCheck const& event, ActionPlace const& place, XmlNode const& action)
{
    if (ReportFault(context, event, place, "mail-action", ZoCheckMailAction(action)))
        return;
    CheckFreeRecipients(context, event, place, ZoFirstInvalidMailAddress(WideValue(action, L"address")));
    CheckRecipients(context, event, place, action, L"users", context.users);
    CheckRecipients(context, event, place, action, L"mailLists", context.mailLists);
}

void CheckSms(Context& context, EventUnderCheck const& event, ActionPlace const& place, XmlNode const& action)
{
    if (WideValue(action, L"message").empty())
        return Report(context, event, place, "sms-action", ZoLoadString(64557));
    if (!ZoActionHasRecipient(action, L"phone", L"phoneLists"))
        return Report(context, event, place, "sms-action", ZoLoadString(64556));
    CheckFreeRecipients(context, event, place, ZoFirstInvalidPhoneNumber(WideValue(action, L"phone")));
    CheckRecipients(context, event, place, action, L"users", context.users);
    CheckRecipients(context, event, place, action, L"phoneLists", context.phoneLists);
}

void CheckFile(Context& context, EventUnderCheck const& event, ActionPlace const& place, XmlNode const& action,
               bool screen)
{
    auto const fault = screen ? ZoCheckScreenAction(action) : ZoCheckReportAction(action);
    if (ReportFault(context, event, place, screen ? "screen-action" : "report-action", fault))
        return;
    if (context.docs.folder.empty())
        return;
    std::wstring const name = WideValue(action, L"name");
    if (!(screen ? context.screens : context.reports).contains(name))
        Report(context, event, place, screen ? "missing-screen" : "missing-report",
               ZoFormat(ZoLoadString(screen ? 64553 : 64554).c_str(), name.c_str()));
}

void CheckDevice(Context& context, EventUnderCheck const& event, ActionPlace const& place, XmlNode const& action)
{
    if (ReportFault(context, event, place, "device-action", ZoCheckDeviceAction(action)))
        return;
    std::wstring const name = WideValue(action, L"name");
    context.NeedEventsIfNamed(name);
    if (!context.catalog->Find(name))
        Report(context, event, place, "unknown-device-action", ZoFormat(ZoLoadString(64555).c_str(), name.c_str()));
}

// A force action's variable and value, converted into buffers kept for the next action.
void CheckForce(Context& context, EventUnderCheck const& event, ActionPlace const& place, XmlNode const& action)
{
    std::wstring const& variable = WideInto(context.formulaText, KeyText(action, context.eventsTags.variable));
    std::wstring const& value = WideInto(context.valueText, KeyText(action, context.eventsTags.value));
    context.NeedEventsIfNamed(variable);
    context.NeedEventsIfNamed(value);
    ReportFault(context, event, place, "force-action", ZoCheckForceAction(context.evaluator, variable, value));
}

void CheckAction(Context& context, EventUnderCheck const& event, ActionPlace const& place, XmlNode const& action)
{
    DocumentTags const& tags = context.eventsTags;
    void const* const kind = action.TagKey();
    if (!kind)
        return;
    if (kind == tags.force)
        CheckForce(context, event, place, action);
    else if (kind == tags.device)
        CheckDevice(context, event, place, action);
    else if (kind == tags.screen)
        CheckFile(context, event, place, action, true);
    else if (kind == tags.report)
        CheckFile(context, event, place, action, false);
    else if (kind == tags.mail)
        CheckMail(context, event, place, action);
    else if (kind == tags.sms)
        CheckSms(context, event, place, action);
}

} // namespace

// The moments the editor checks (acknowledgement only for a notified event), each action
// numbered from 1 in its moment as the action lists show them.
void CheckEventActions(Context& context, EventUnderCheck const& event)
{
    // As ZoMomentsToCheck counts them, from the key already found.
    int const moments = event.Utf8(KeyNotify) == "T" ? 4 : 3;
    for (int list = 0; list < 2; ++list) {
        XmlNode const* side = event.Child(static_cast<EventKey>(KeyActions + list));
        if (!side)
            continue;
        for (int moment = 0; moment < moments; ++moment) {
            XmlNode const* actions = KeyChild(side, context.eventsTags.moments[moment]);
            int index = 0;
            for (XmlNode const* action = actions ? actions->FirstChild() : nullptr; action;
                 action = action->NextSibling())
                CheckAction(context, event, {list, moment, ++index}, *action);
        }
    }
}

} // namespace zo::check
