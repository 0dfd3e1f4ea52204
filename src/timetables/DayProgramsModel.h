#pragma once
#include "config/XmlDocument.h"
#include <QAbstractListModel>
#include <QIcon>
#include <string>
#include <vector>

// The day programs of a "days" container, in document order, each with its name and a swatch
// of its colour. With a "none" entry the first row is text 32044 (no day program), carrying
// no element: the week editor's seven choosers share one such model. Without it the rows are
// the calendar editor's day program list.
class DayProgramsModel : public QAbstractListModel {
    Q_OBJECT
public:
    static constexpr int ColourRole = Qt::UserRole + 1; // the colour word (uint)

    DayProgramsModel(XmlDocument::XmlNode const* days, bool withNoneEntry, QObject* parent = nullptr);

    // The day element of a row; null for the "none" entry or a row outside the list.
    XmlDocument::XmlNode const* DayAt(int row) const;
    unsigned ColourAt(int row) const;
    std::wstring NameAt(int row) const;
    // The first row whose day program has this id; -1 when none has (an empty id too).
    int RowOfId(std::wstring const& id) const;
    bool HasNoneEntry() const { return m_withNone; }

    int rowCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role = Qt::DisplayRole) const override;

private:
    struct Entry {
        XmlDocument::XmlNode const* day = nullptr;
        unsigned colour = 0xFFFFFF;
        QIcon swatch;
    };
    std::vector<Entry> m_entries;
    bool m_withNone;
};
