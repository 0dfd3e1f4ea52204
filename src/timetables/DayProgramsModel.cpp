#include "timetables/DayProgramsModel.h"
#include "platform/calendar/ZoColourWord.h"
#include "platform/tools/ZoTexts.h"
#include "timetables/TimeTableDialogParts.h"
#include <QPixmap>

using XmlNode = XmlDocument::XmlNode;

DayProgramsModel::DayProgramsModel(XmlNode const* days, bool withNoneEntry, QObject* parent)
    : QAbstractListModel(parent)
    , m_withNone(withNoneEntry)
{
    if (withNoneEntry)
        m_entries.push_back(Entry{});
    if (!days)
        return;
    for (XmlNode const* day = days->FirstChild(); day; day = day->NextSibling()) {
        if (!day->HasTag(L"day"))
            continue;
        unsigned const colour = ZoDayColourWord(day);
        m_entries.push_back(Entry{day, colour, QIcon(ColourSwatch(colour, 16, 12))});
    }
}

XmlNode const* DayProgramsModel::DayAt(int row) const
{
    return row >= 0 && row < static_cast<int>(m_entries.size()) ? m_entries[row].day : nullptr;
}

unsigned DayProgramsModel::ColourAt(int row) const
{
    return row >= 0 && row < static_cast<int>(m_entries.size()) ? m_entries[row].colour : 0xFFFFFFu;
}

std::wstring DayProgramsModel::NameAt(int row) const
{
    XmlNode const* day = DayAt(row);
    return day ? day->Value(L"name", L"") : std::wstring();
}

int DayProgramsModel::RowOfId(std::wstring const& id) const
{
    if (id.empty())
        return -1;
    for (int row = 0; row < static_cast<int>(m_entries.size()); ++row)
        if (m_entries[row].day && m_entries[row].day->Value(L"id", L"") == id)
            return row;
    return -1;
}

int DayProgramsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_entries.size());
}

QVariant DayProgramsModel::data(QModelIndex const& index, int role) const
{
    if (!checkIndex(index, CheckIndexOption::IndexIsValid | CheckIndexOption::ParentIsInvalid))
        return {};
    Entry const& entry = m_entries[index.row()];
    switch (role) {
    case Qt::DisplayRole:
        if (!entry.day)
            return ZoText(32044);
        return QString::fromStdWString(entry.day->Value(L"name", L""));
    case Qt::DecorationRole:
        return entry.day ? QVariant(entry.swatch) : QVariant();
    case ColourRole:
        return entry.colour;
    default:
        return {};
    }
}
