#pragma once
#include "config/XmlDocument.h"

#include <QAbstractTableModel>

#include <string>
#include <vector>

// The events of an `events` element as rows of name and description, for choosing one.
// Row n is the n-th `event` child in document order; disabled events are shown greyed.
class EventChoiceModel : public QAbstractTableModel {
    Q_OBJECT
public:
    explicit EventChoiceModel(QObject* parent = nullptr);

    void Fill(XmlDocument::XmlNode const* events);

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    struct Row {
        std::wstring name;
        std::wstring description;
        bool disabled = false;
    };
    std::vector<Row> m_rows;
};

// The n-th `event` child of an `events` element, or null.
XmlDocument::XmlNode* NthEvent(XmlDocument::XmlNode* events, int n);
