#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"
#include "templates/TemplateDrift.h"

class QLabel;
class QPushButton;
class QTreeView;
class TemplateRowsModel;
class ZoDeviceCatalog;

// Events > Update from Templates: the stamped events that are no longer what their template
// gives (a changed template, or an event edited by hand), each with its differences field by
// field (the selected event's are listed below). Only the events the user checks are
// updated, by Update (OK); nothing is chosen when the dialog opens, so that no edit made by
// hand is overwritten without being chosen. The caller journals and saves the document.
//
// Object names: driftList, selectAllButton, differencesList, summaryLabel, okButton,
// cancelButton.
class ZoDlgUpdateFromTemplates : public ZoDialog {
    Q_OBJECT
public:
    ZoDlgUpdateFromTemplates(QWidget* parent, XmlDocument* events, ZoDeviceCatalog const* catalog,
                             zo::templates::DriftReport report);
    ~ZoDlgUpdateFromTemplates() override;

    int Updated() const { return m_updated; }

protected:
    void OnInitDialog() override;

private:
    void ShowDifferences();
    void UpdateSummary();
    void OnOK();

    XmlDocument* m_events;
    ZoDeviceCatalog const* m_catalog;
    zo::templates::DriftReport m_report;
    int m_updated = 0;

    TemplateRowsModel* m_driftModel = nullptr;
    QTreeView* m_driftList = nullptr;
    QPushButton* m_selectAll = nullptr;
    TemplateRowsModel* m_differencesModel = nullptr;
    QTreeView* m_differencesList = nullptr;
    QLabel* m_driftLabel = nullptr;
    QLabel* m_differencesLabel = nullptr;
    QLabel* m_summary = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};
