#pragma once
#include "config/XmlDocument.h"
#include "actions/ZoActionEditorParts.h"

using XmlNode = XmlDocument::XmlNode;

class QLineEdit;
class QToolButton;

// Editor of a `shellExecute` action: the command to run and its parameters. Writes
// `command` and `parameter` only on its own OK.
//
// Controls (objectName): commandLabel, commandEdit, browseCommandButton (icon only: opens a
// file chooser, "commandFileDialog", through the modal runner; Alt with the letter its
// tooltip names), parameterLabel, parameterEdit, okButton ("Replace" with the skip-check
// flag), cancelButton. The focus starts in the command; Enter is OK, Escape Cancel.
class ZoEDlgEventActionShellExecuteCfg : public ZoActionEditorDlg {
    Q_OBJECT
public:
    ZoEDlgEventActionShellExecuteCfg(QWidget* parent, XmlNode* action, XmlNode* moment);

protected:
    void OnInitDialog() override;

private:
    void OnBrowseCommand();
    bool IsValid() override;
    bool HasChanged() const override;
    void UpdateCfg() override;

    QLineEdit* m_commandEdit = nullptr;
    QToolButton* m_browseButton = nullptr;
    QLineEdit* m_parameterEdit = nullptr;
};
