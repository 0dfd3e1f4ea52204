#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"

class QLabel;
class QPushButton;
class QSpinBox;
class SlotGridCtrl;

// The time-slot editor: one "slot" element's "from" and "to", typed in hour and minute
// fields or chosen by dragging over the drawn 24 x 4 quarter grid. Exported: the host's
// time-slot entry and the day editor open it.
//
//   ZoDlgEventNewModifySlot editor(parent, slot, 0x00FF00, 0x0000FF);
//   if (editor.DoModal() == QDialog::Accepted) ... // "from" and "to" are written
//
// Hours run 0 to 24 and minutes 0 to 59; an hour of 24 sets its minute to 0 and disables
// it. OK refuses a start later than the end (text 469); equal times are accepted. The
// colours are colour words (red in the low byte): the label strip's and the selection's.
//
// Object names: slotGrid, fromHourSpin, fromMinuteSpin, toHourSpin, toMinuteSpin,
// okButton, cancelButton.
class ZoDlgEventNewModifySlot : public ZoDialog {
    Q_OBJECT
public:
    ZoDlgEventNewModifySlot(QWidget* parent, XmlDocument::XmlNode* slot, unsigned labelColour,
                            unsigned selectionColour);
    ~ZoDlgEventNewModifySlot() override;

    // True once the user has started a drag over the grid.
    bool TimeSlotChanged() const { return m_slotChanged; }
    // The minute values of the fields now.
    int FromMinutes() const;
    int ToMinutes() const;

protected:
    void OnInitDialog() override;

private slots:
    void OnOK();
    void OnDragRange(int from, int to);
    void OnFieldsChanged();

private:
    void Layout();
    bool Check();
    static void ApplyHourRule(QSpinBox* hour, QSpinBox* minute);

    XmlDocument::XmlNode* m_slot;
    bool m_slotChanged = false;

    SlotGridCtrl* m_grid = nullptr;
    QLabel* m_hint = nullptr;
    QLabel* m_fromLabel = nullptr;
    QLabel* m_toLabel = nullptr;
    QLabel* m_hourHeading = nullptr;
    QLabel* m_minuteHeading = nullptr;
    QSpinBox* m_fromHour = nullptr;
    QSpinBox* m_fromMinute = nullptr;
    QSpinBox* m_toHour = nullptr;
    QSpinBox* m_toMinute = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};
