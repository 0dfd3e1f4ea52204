#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"
#include <string>

class DaySlotsModel;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;
class ZoDayCtrl;

// The day program editor: its name, its colour and its time slots. The slots are a set of
// minutes (see ZoDaySlots.h): the list is always derived from them, merged and sorted.
//
// Constructed with the "day" element (in a working copy of "days"), that copy's root and the
// live "weeks" and "calendars" containers (for the name check). OK runs the name check,
// asks when another day program has the same colour, writes what changed and ends with OK
// only when something changed (Cancel otherwise). Cancel with changes asks first.
//
// Object names: nameEdit, colourSwatch, colourButton, slotsList, addSlotButton,
// modifySlotButton, deleteSlotButton, dayPicture, okButton, cancelButton.
class ZoDlgTimeTableDaily : public ZoDialog {
    Q_OBJECT
public:
    ZoDlgTimeTableDaily(QWidget* parent, XmlDocument::XmlNode* element, XmlDocument::XmlNode* days,
                        XmlDocument::XmlNode const* weeks, XmlDocument::XmlNode const* calendars);
    ~ZoDlgTimeTableDaily() override;

    unsigned Colour() const { return m_colour; }
    void SetColour(unsigned colourWord);
    bool HasChanged() const;

    void OnAddSlot();
    void OnModifySlot();
    void OnDeleteSlots();
    void OnChooseColour();

public slots:
    void reject() override;

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private slots:
    void OnOK();
    void UpdateButtons();

private:
    void Layout();
    void SlotsChanged();

    XmlDocument::XmlNode* m_element;
    XmlDocument::XmlNode* m_days;
    XmlDocument::XmlNode const* m_weeks;
    XmlDocument::XmlNode const* m_calendars;
    unsigned m_colour = 0xFFFFFF;
    bool m_changed = false;
    std::wstring m_openedName;
    unsigned m_openedColour = 0xFFFFFF;

    DaySlotsModel* m_model = nullptr;
    QLabel* m_nameLabel = nullptr;
    QLineEdit* m_name = nullptr;
    QLabel* m_colourLabel = nullptr;
    QLabel* m_colourSwatch = nullptr;
    QPushButton* m_colourButton = nullptr;
    QLabel* m_slotsLabel = nullptr;
    QTreeView* m_slots = nullptr;
    QPushButton* m_add = nullptr;
    QPushButton* m_modify = nullptr;
    QPushButton* m_delete = nullptr;
    ZoDayCtrl* m_picture = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
};
