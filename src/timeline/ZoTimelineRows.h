#pragma once
// What the timeline chart shows, without widgets: one row per date from a start date, with
// the day program that applies on it (its name, colour and slots) or the reason none does,
// and the answer to "allowed at this moment?" in words.
#include "timeline/ZoEventTimelines.h"

#include <string>
#include <vector>

class ZoTimelineRows {
public:
    static constexpr int kMaxDays = 366;

    enum class State {
        Unrestricted, // no time table: every minute
        Program,      // a day program applies (it may have no slots)
        NoProgram,    // the week or calendar gives no day program on that date: nothing
        Dangling,     // the reference resolves to no time table: nothing
    };
    struct Day {
        QDate date;
        State state = State::NoProgram;
        std::wstring programName;
        unsigned color = 0xFFFFFF; // colour word (ZoColorFromWord)
        std::vector<DaySlot> periods; // allowed minutes of the date
    };

    // timeTablesRoot may be null; reference is a time table's id, empty for none.
    ZoTimelineRows(XmlDocument::XmlNode const* timeTablesRoot, std::wstring reference);

    // The table's name and kind (Kind::None when the reference is empty or dangling).
    std::wstring const& TableName() const { return m_tableName; }
    ZoTimeTableResolution::Kind TableKind() const { return m_kind; }
    ZoTableReach Reach() const { return ZoReachOf(m_tables, m_reference); }

    // The dates shown: `days` (1 to kMaxDays) from start.
    void SetSpan(QDate start, int days);
    QDate Start() const { return m_start; }
    int Days() const { return m_days; }
    // Moves the start by weeks or months (negative: back).
    void ScrollWeeks(int weeks) { SetSpan(m_start.addDays(7LL * weeks), m_days); }
    void ScrollMonths(int months) { SetSpan(m_start.addMonths(months), m_days); }

    Day DayAt(int row) const { return DayOn(m_start.addDays(row)); }
    Day DayOn(QDate date) const;
    // "Mon 2026-03-02: Working hours, 07:00-15:30" (or why nothing is allowed).
    std::wstring Describe(Day const& day) const;
    bool AllowedAt(ZoMoment moment) const { return ZoAllowedAt(m_tables, m_reference, moment); }
    // "Allowed: ..." or "Not allowed: ..." with the day program or the reason.
    std::wstring Answer(ZoMoment moment) const;

private:
    ZoTimeTableResolution m_tables;
    std::wstring m_reference;
    std::wstring m_tableName;
    ZoTimeTableResolution::Kind m_kind = ZoTimeTableResolution::Kind::None;
    QDate m_start;
    int m_days = 28;
};
