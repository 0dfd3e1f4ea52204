#include "timetables/TimeTableNameCheck.h"
#include "platform/tools/ZoIds.h"
#include "platform/ui/ZoMessage.h"
#include <QLineEdit>

using XmlNode = XmlDocument::XmlNode;

TimeTableNameRules DayNameRules(XmlNode const* daysCopy, XmlNode const* weeks, XmlNode const* calendars)
{
    (void)calendars; // the day editor never looks there (see the header)
    return {{daysCopy, L"/day?name=%s?"}, {{{weeks, L"/week?name=%s?"}, {weeks, L"/calendar?name=%s?"}}}};
}

TimeTableNameRules WeekNameRules(XmlNode const* weeksCopy, XmlNode const* days, XmlNode const* calendars)
{
    return {{weeksCopy, L"/week?name=%s?"}, {{{days, L"/day?name=%s?"}, {calendars, L"/calendar?name=%s?"}}}};
}

TimeTableNameRules CalendarNameRules(XmlNode const* calendarsCopy, XmlNode const* days, XmlNode const* weeks)
{
    return {{calendarsCopy, L"/calendar?name=%s?"}, {{{days, L"/day?name=%s?"}, {weeks, L"/week?name=%s?"}}}};
}

namespace {

XmlNode const* Find(TimeTableNameLookup const& lookup, std::wstring const& name)
{
    return lookup.from ? lookup.from->NodeV(lookup.format, name.c_str()) : nullptr;
}

} // namespace

unsigned CheckTimeTableName(std::wstring const& name, XmlNode const* element, TimeTableNameRules const& rules)
{
    if (name.empty())
        return 32780;
    if (!IsValidId(name.c_str(), true))
        return 32764;
    XmlNode const* same = Find(rules.own, name);
    if (same && same != element)
        return 32779;
    for (TimeTableNameLookup const& other : rules.others)
        if (Find(other, name))
            return 32779;
    return 0;
}

bool IsDayColourShared(XmlNode const* daysCopy, XmlNode const* element, unsigned colour)
{
    XmlNode const* same = daysCopy ? daysCopy->NodeV(L"/day?color=%06X?", colour) : nullptr;
    return same && same != element;
}

bool ConfirmTimeTableName(QWidget* dialog, QLineEdit* nameEdit, XmlNode const* element,
                          TimeTableNameRules const& rules)
{
    unsigned const fault = CheckTimeTableName(nameEdit->text().toStdWString(), element, rules);
    if (fault == 0)
        return true;
    ZoShowMessage(dialog, fault);
    nameEdit->setFocus();
    nameEdit->selectAll();
    return false;
}
