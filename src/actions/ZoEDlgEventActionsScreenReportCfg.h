#pragma once
#include "config/XmlDocument.h"
#include "actions/ZoActionEditorParts.h"

using XmlNode = XmlDocument::XmlNode;

class QLabel;
class QStringListModel;
class QTreeView;

// Chooser of the screen (`screen` action) or report (`report` action) to show: lists the
// project's screens or reports that no other action of the same kind in this moment uses.
// Writes `name` only on its own OK.
//
// Controls (objectName): namesLabel, namesList (a QTreeView over a QStringListModel; Enter
// or a double click is OK), emptyHint (shown when no name is free), okButton (enabled with
// exactly one row selected; "Replace" with the skip-check flag), cancelButton. The focus
// starts in the list, on the stored choice. Unchanged choice: Cancel unless kept.
class ZoEDlgEventActionsScreenReportCfg : public ZoActionEditorDlg {
    Q_OBJECT
public:
    ZoEDlgEventActionsScreenReportCfg(QWidget* parent, XmlNode* action, XmlNode* moment);

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    // Nothing chosen stops OK, unless the caller asked to keep the action as it stands.
    bool IsValid() override;
    bool HasChanged() const override;
    void UpdateCfg() override;
    // The one row chosen, empty when none is.
    ZoBasicString<wchar_t> Chosen() const;
    void FillList();
    void UpdateButtons();

    QTreeView* m_list = nullptr;
    QStringListModel* m_model = nullptr;
    QLabel* m_emptyHint = nullptr;
};
