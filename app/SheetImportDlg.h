#pragma once
#include "SheetImportModel.h"
#include "platform/ui/ZoModal.h"

class QCheckBox;
class QLabel;
class QPushButton;
class QTreeView;

// Events > Import from Spreadsheet…: what the chosen sheet would change, before anything
// changes. The counts, then one row per fault, column not imported, new group, changed
// field (before → after), new or deleted event and finding of the check on the imported
// events. Two options plan the sheet again: delete the events the sheet lacks, create the
// groups it names that the project lacks. Import (the OK button) is enabled only when the
// sheet is not refused and changes something; the host applies the plan on OK.
//
// Object names: fileLabel, countsLabel, statusLabel, previewList, deleteMissingCheck,
// createGroupsCheck, okButton, cancelButton.
class SheetImportDlg : public ZoDialog {
    Q_OBJECT
public:
    SheetImportDlg(QWidget* parent, QString const& file, std::string sheet, ZoImportTarget target);

    ZoImportPlan const& Plan() const { return m_model.CurrentPlan(); }
    SheetImportModel const& Model() const { return m_model; }

protected:
    void OnInitDialog() override;

private:
    void PlanAgain();
    void UpdateStatus();

    SheetImportModel m_model;
    QLabel* m_counts = nullptr;
    QLabel* m_status = nullptr;
    QTreeView* m_list = nullptr;
    QCheckBox* m_deleteMissing = nullptr;
    QCheckBox* m_createGroups = nullptr;
    QPushButton* m_ok = nullptr;
};
