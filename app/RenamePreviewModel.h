#pragma once
#include "uses/ZoRename.h"

#include <QAbstractTableModel>

// The rename dialog's preview: the plan of one rename (ZoPlanRename), a change a row, with
// the request it was made for, so that the dialog can tell whether its fields still match.
// Columns: element, field, references, before, after.
class RenamePreviewModel : public QAbstractTableModel {
    Q_OBJECT
public:
    enum Column { ElementColumn, FieldColumn, CountColumn, BeforeColumn, AfterColumn, ColumnCount };

    explicit RenamePreviewModel(QObject* parent = nullptr);

    // Plans the rename; false with the reason when it is refused (the preview is then empty).
    bool Plan(XmlDocument& events, XmlDocument& devices, ZoRenameRequest const& request, std::wstring& error);
    // Forgets the plan (the fields changed since).
    void Clear();
    // Whether a plan is held and was made for this request.
    bool IsPlanFor(ZoRenameRequest const& request) const;
    ZoRenamePlan const& CurrentPlan() const { return m_plan; }

    int rowCount(QModelIndex const& parent = {}) const override;
    int columnCount(QModelIndex const& parent = {}) const override;
    QVariant data(QModelIndex const& index, int role) const override;
    QVariant headerData(int section, Qt::Orientation orientation, int role) const override;

private:
    ZoRenamePlan m_plan;
    ZoRenameRequest m_request;
    bool m_planned = false;
};
