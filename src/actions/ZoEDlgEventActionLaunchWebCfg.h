#pragma once
#include "config/XmlDocument.h"
#include "actions/ZoActionEditorParts.h"

using XmlNode = XmlDocument::XmlNode;

class QComboBox;
class QLineEdit;

// Editor of a `launchWeb` action: the address to open and where to open it (a browser
// tab or a window). Writes `url` and `window` only on its own OK.
//
// Controls (objectName): addressLabel, addressEdit, placeLabel, placeCombo (item data 0:
// tab, 1: window; no entry chosen keeps the stored `window`), okButton ("Replace" with the
// skip-check flag), cancelButton. The focus starts in the address; Enter is OK, Escape
// Cancel.
class ZoEDlgEventActionLaunchWebCfg : public ZoActionEditorDlg {
    Q_OBJECT
public:
    ZoEDlgEventActionLaunchWebCfg(QWidget* parent, XmlNode* action, XmlNode* moment);

protected:
    void OnInitDialog() override;

private:
    bool IsValid() override;
    bool HasChanged() const override;
    int SelectedPlace() const; // the chosen entry's place, -1 when none is chosen
    void UpdateCfg() override;

    QLineEdit* m_addressEdit = nullptr;
    QComboBox* m_placeCombo = nullptr;
};
