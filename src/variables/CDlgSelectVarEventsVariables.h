#pragma once
#include "platform/tools/ZoBasicString.h"
#include "platform/ui/ZoModal.h"
#include "variables/ZoEventVariablesChoice.h"

#include <bitset>
#include <list>
#include <vector>

class QCheckBox;
class QPushButton;
class ZoDriver;

// Lets the user choose state variables of an events pseudo-device (or of any device that
// has the six event variables): one row per offered variable, its description and a check
// box. Variables already in the result list are shown checked and locked; new choices are
// appended to it as "DEVICE.CODE" on OK, in row order.
//
// When the device offers none of the six variables within the mask, the dialog cannot be
// created: DoModal returns QDialog::Rejected at once without showing anything.
//
// Object names: variableCheck0.. (one per row, in row order), variableLabel0..,
// okButton, cancelButton.
class CDlgSelectVarEventsVariables : public ZoDialog {
    Q_OBJECT
public:
    CDlgSelectVarEventsVariables(QWidget* parent, ZoDriver const* driver,
                                 std::list<ZoBasicString<wchar_t>>* result, std::bitset<34> const& mask,
                                 int maximum);

    // Whether the dialog has rows (else it cannot be opened).
    bool IsCreated() const { return !m_choice.IsEmpty(); }
    int DoModal();

    bool CanSelect(int n);
    void UnSelect(int n);
    void CheckInitialVariables();
    bool IsValid();
    void SelectVariables();
    // A row's check box was clicked.
    void OnCheckVariable(int row);

    void accept() override;

protected:
    void OnInitDialog() override;

private:
    void ShowLimitMessage();

    std::list<ZoBasicString<wchar_t>>* m_result;
    ZoEventVariablesChoice m_choice;
    std::vector<QCheckBox*> m_checks;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};
