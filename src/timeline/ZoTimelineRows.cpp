#include "timeline/ZoTimelineRows.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"

#include <QLocale>

#include <algorithm>

ZoTimelineRows::ZoTimelineRows(XmlDocument::XmlNode const* root, std::wstring reference)
    : m_tables(root)
    , m_reference(std::move(reference))
{
    ZoTableElement const table = ZoFindTimeTable(root, m_reference);
    m_kind = table.kind;
    if (table.element)
        m_tableName = table.element->Value(L"name", L"");
    SetSpan(QDate::currentDate(), 28);
}

void ZoTimelineRows::SetSpan(QDate start, int days)
{
    m_start = start.isValid() ? start : QDate::currentDate();
    m_days = std::clamp(days, 1, kMaxDays);
}

ZoTimelineRows::Day ZoTimelineRows::DayOn(QDate date) const
{
    Day day;
    day.date = date;
    switch (Reach()) {
    case ZoTableReach::Unrestricted:
        day.state = State::Unrestricted;
        day.periods = {{0, 1440}};
        return day;
    case ZoTableReach::Dangling:
        day.state = State::Dangling;
        return day;
    case ZoTableReach::Resolved:
        break;
    }
    std::wstring const* program = m_tables.DayProgramOn(m_reference, day.date);
    if (!program || !m_tables.HasDayProgram(*program)) {
        day.state = State::NoProgram;
        return day;
    }
    day.state = State::Program;
    day.programName = m_tables.DayProgramName(*program);
    day.color = m_tables.DayProgramColor(*program);
    day.periods = m_tables.SlotsOfDay(*program);
    return day;
}

namespace {

std::wstring DateText(QDate date)
{
    // The day's name in the language of the texts.
    return QLocale().toString(date, QStringLiteral("ddd yyyy-MM-dd")).toStdWString();
}

std::wstring SlotsText(std::vector<DaySlot> const& periods)
{
    std::wstring text;
    for (DaySlot const& slot : periods)
        text += (text.empty() ? L"" : L", ") + SlotTimeText(slot.from) + L"-" + SlotTimeText(slot.to);
    return text;
}

} // namespace

std::wstring ZoTimelineRows::Describe(Day const& day) const
{
    std::wstring const date = DateText(day.date);
    switch (day.state) {
    case State::Unrestricted: return ZoFormat(ZoLoadString(64910).c_str(), date.c_str());
    case State::Dangling: return ZoFormat(ZoLoadString(64911).c_str(), date.c_str());
    case State::NoProgram: return ZoFormat(ZoLoadString(64912).c_str(), date.c_str());
    case State::Program: break;
    }
    if (day.periods.empty())
        return ZoFormat(ZoLoadString(64913).c_str(), date.c_str(), day.programName.c_str());
    return ZoFormat(ZoLoadString(64914).c_str(), date.c_str(), day.programName.c_str(), SlotsText(day.periods).c_str());
}

std::wstring ZoTimelineRows::Answer(ZoMoment moment) const
{
    Day const day = DayOn(ZoDateOf(moment));
    return ZoLoadString(AllowedAt(moment) ? 64915 : 64916) + L" " + Describe(day);
}
