#pragma once
#include "config/XmlDocument.h"
#include "actions/ZoActionEditorParts.h"

#include <QString>

using XmlNode = XmlDocument::XmlNode;

class QLabel;
class QLineEdit;
class QToolButton;

// Editor of a `force` action: the forced variable ("[device.variable]") and the value
// formula. Writes `variable` and `value` only on its own OK, after every check passed.
//
// Controls (objectName): variableLabel, variableEdit, chooseVariableButton (icon only; Alt
// with the free letter its tooltip names opens the driver chooser), valueLabel ("Value",
// followed while the variable is typed by its kind and the values it takes), valueEdit,
// valueWizardButton (icon only; also Ctrl+Space in the value edit), okButton ("Replace"
// with the skip-check flag), cancelButton. The focus starts in the variable edit; Enter is
// OK, Escape Cancel.
class ZoEDlgEventActionForceCfg : public ZoActionEditorDlg {
    Q_OBJECT
public:
    ZoEDlgEventActionForceCfg(QWidget* parent, XmlNode* action, XmlNode* moment);

protected:
    void OnInitDialog() override;

private:
    void OnChooseVariable();
    void OnValueWizard();
    void UpdateValueLabel();
    bool IsValid() override;
    bool HasChanged() const override;
    void UpdateCfg() override;

    QLabel* m_variableLabel = nullptr;
    QLineEdit* m_variableEdit = nullptr;
    QToolButton* m_chooseButton = nullptr;
    QLabel* m_valueLabel = nullptr;
    QString m_valueLabelCaption; // "Value" with its mnemonic
    QLineEdit* m_valueEdit = nullptr;
    QToolButton* m_wizardButton = nullptr;
};
