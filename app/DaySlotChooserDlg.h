#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"

#include <vector>

class QComboBox;
class QListWidget;
class QPushButton;

// Lets the user pick a day program of the time-tables document and one of its time slots,
// or a new slot, for the host's time-slot entry.
//
// Object names: dayCombo, slotsList (row 0 is the new slot, then the day's slots as the day
// editor lists them), okButton, cancelButton.
class DaySlotChooserDlg : public ZoDialog {
    Q_OBJECT
public:
    DaySlotChooserDlg(QWidget* parent, XmlDocument::XmlNode* days);

    // After OK: the chosen day program, and the row of its slot (-1: a new slot).
    XmlDocument::XmlNode* ChosenDay() const { return m_chosenDay; }
    int ChosenSlot() const { return m_chosenSlot; }

    void accept() override;

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void FillSlots();

    std::vector<XmlDocument::XmlNode*> m_days;
    QComboBox* m_dayCombo = nullptr;
    QListWidget* m_slots = nullptr;
    QPushButton* m_ok = nullptr;
    XmlDocument::XmlNode* m_chosenDay = nullptr;
    int m_chosenSlot = -1;
};
