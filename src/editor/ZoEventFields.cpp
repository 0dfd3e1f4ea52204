#include "ZoEventFields.h"

namespace {

wchar_t const* TF(bool value)
{
    return value ? L"T" : L"F";
}

bool IsTrue(XmlNode const& event, wchar_t const* key)
{
    return event.Value(key, L"") == L"T";
}

std::wstring Cut(std::wstring const& text)
{
    return text.size() > kZoEventFieldMaxChars ? text.substr(0, kZoEventFieldMaxChars) : text;
}

void WriteText(XmlNode& event, wchar_t const* key, std::wstring const& text)
{
    event.SetValue(key, Cut(text));
}

bool Differs(XmlNode const& event, wchar_t const* key, std::wstring const& text)
{
    return text != event.Value(key, L"");
}

// A missing stored boolean compares unequal with "T" and "F" alike.
bool Differs(XmlNode const& event, wchar_t const* key, bool value)
{
    return Differs(event, key, std::wstring(TF(value)));
}

} // namespace

ZoEventFields ZoReadEventFields(XmlNode const& event)
{
    ZoEventFields fields;
    fields.name = event.Value(L"name", L"");
    fields.description = event.Value(L"description", L"");
    fields.condition = event.Value(L"condition", L"");
    if (XmlNode const* stop = event.Node(L"conditionStop")) {
        fields.stopEnabled = true;
        fields.conditionStop = stop->Value();
    }
    fields.delayToActivate = event.Value(L"delayToActivate", L"");
    fields.delayToDeactivate = event.Value(L"delayToDeactivate", L"");
    fields.notify = IsTrue(event, L"notify");
    fields.record = IsTrue(event, L"record");
    fields.enabled = event.Value(L"disabled", L"") == L"F";
    fields.rssActivate = IsTrue(event, L"rssActivate");
    fields.rssDeactivate = IsTrue(event, L"rssDeactivate");
    fields.rssAcknowledge = IsTrue(event, L"rssAcknowledge");
    if (event.Node(L"timeTable"))
        fields.timeTable = event.Value(L"timeTable", L"");
    fields.annotation = event.Value(L"annotation", L"");
    fields.deaAnnotation = event.Value(L"deaAnnotation", L"");
    fields.ackAnnotation = event.Value(L"ackAnnotation", L"");
    return fields;
}

ZoEventChange ZoFirstEventChange(XmlNode const& event, ZoEventFields const& fields,
                                 std::wstring const& keptId, bool changedFlag,
                                 bool actionsModified)
{
    if (changedFlag)
        return ZoEventChange::Flag;
    if (Differs(event, L"name", fields.name))
        return ZoEventChange::Name;
    if (Differs(event, L"description", fields.description))
        return ZoEventChange::Description;
    // With no time table chosen the event's id stands in for the reference: it equals the
    // id kept when the editor opened, so this alone never counts as a change (intended).
    if (fields.timeTable ? Differs(event, L"timeTable", *fields.timeTable)
                         : Differs(event, L"id", keptId))
        return ZoEventChange::TimeTable;
    if (Differs(event, L"notify", fields.notify))
        return ZoEventChange::Notify;
    if (Differs(event, L"record", fields.record))
        return ZoEventChange::Record;
    if (Differs(event, L"disabled", !fields.enabled))
        return ZoEventChange::Disabled;
    if (Differs(event, L"delayToActivate", fields.delayToActivate))
        return ZoEventChange::DelayToActivate;
    if (Differs(event, L"delayToDeactivate", fields.delayToDeactivate))
        return ZoEventChange::DelayToDeactivate;
    // Only the activation annotation is compared; the other two are saved only together
    // with another change (intended).
    if (Differs(event, L"annotation", fields.annotation))
        return ZoEventChange::Annotation;
    if (actionsModified)
        return ZoEventChange::Actions;
    if (Differs(event, L"rssActivate", fields.rssActivate)
        || Differs(event, L"rssDeactivate", fields.rssDeactivate)
        || Differs(event, L"rssAcknowledge", fields.rssAcknowledge))
        return ZoEventChange::Feed;
    return ZoEventChange::None;
}

void ZoWriteEventFields(XmlNode& event, ZoEventFields const& fields)
{
    WriteText(event, L"name", fields.name);
    WriteText(event, L"description", fields.description);
    WriteText(event, L"condition", fields.condition);
    if (fields.stopEnabled)
        WriteText(event, L"conditionStop", fields.conditionStop);
    else if (XmlNode* stop = event.Node(L"conditionStop"))
        event.RemoveChild(stop);
    if (fields.timeTable)
        event.SetValue(L"timeTable", *fields.timeTable);
    else
        event.EraseTag(L"timeTable");
    event.SetValue(L"notify", TF(fields.notify));
    event.SetValue(L"record", TF(fields.record));
    event.SetValue(L"disabled", TF(!fields.enabled));
    WriteText(event, L"delayToActivate", fields.delayToActivate);
    WriteText(event, L"delayToDeactivate", fields.delayToDeactivate);
    WriteText(event, L"annotation", fields.annotation);
    WriteText(event, L"deaAnnotation", fields.deaAnnotation);
    WriteText(event, L"ackAnnotation", fields.ackAnnotation);
    event.SetValue(L"rssActivate", TF(fields.rssActivate));
    event.SetValue(L"rssDeactivate", TF(fields.rssDeactivate));
    event.SetValue(L"rssAcknowledge", TF(fields.rssAcknowledge));
}

void ZoEnsureActionLists(XmlNode& event)
{
    for (wchar_t const* sideTag : kZoActionSides) {
        XmlNode* side = event.Node(sideTag);
        if (!side)
            side = event.NewChild(sideTag, nullptr);
        for (wchar_t const* momentTag : kZoActionMoments)
            if (!side->Node(momentTag))
                side->NewChild(momentTag, nullptr);
    }
}
