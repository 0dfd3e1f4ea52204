#include "EventChoiceModel.h"

#include "platform/tools/ZoTexts.h"

#include <QApplication>
#include <QPalette>

using XmlNode = XmlDocument::XmlNode;

EventChoiceModel::EventChoiceModel(QObject* parent)
    : QAbstractTableModel(parent)
{
}

void EventChoiceModel::Fill(XmlNode const* events)
{
    beginResetModel();
    m_rows.clear();
    if (events) {
        for (auto it = events->ChildsBegin(); it != events->ChildsEnd(); ++it) {
            if (!(*it)->HasTag(L"event"))
                continue;
            m_rows.push_back({(*it)->Value(L"name", L""), (*it)->Value(L"description", L""),
                              (*it)->Value(L"disabled", L"") == L"T"});
        }
    }
    endResetModel();
}

int EventChoiceModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_rows.size());
}

int EventChoiceModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : 2;
}

QVariant EventChoiceModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    Row const& row = m_rows[static_cast<std::size_t>(index.row())];
    if (role == Qt::DisplayRole || role == Qt::ToolTipRole)
        return QString::fromStdWString(index.column() == 0 ? row.name : row.description);
    if (role == Qt::ForegroundRole && row.disabled)
        return QApplication::palette().brush(QPalette::Disabled, QPalette::Text);
    return {};
}

QVariant EventChoiceModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    return section == 0 ? ZoText(60061) : ZoText(60062);
}

XmlNode* NthEvent(XmlNode* events, int n)
{
    if (!events || n < 0)
        return nullptr;
    for (auto it = events->ChildsBegin(); it != events->ChildsEnd(); ++it) {
        if (!(*it)->HasTag(L"event"))
            continue;
        if (n-- == 0)
            return *it;
    }
    return nullptr;
}
