#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"
#include <array>
#include <string>

class DayProgramsModel;
class QComboBox;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;
class ZoDayCtrl;

// The week program editor: its name and, for each day of the week, the day program that
// applies, each shown on a 24-hour bar. Chooser i (0 to 6) edits the entry "day%d" with
// i + 1; day 1 is Monday, as the weekday texts 448 to 454 say.
//
// Constructed with the "week" element (in a working copy of "weeks"), that copy's root and
// the live "days" and "calendars" containers. Every choice is applied to the element at
// once: choosing "no day program" removes the day's entry. Opening applies every day, so an
// entry holding the id of a deleted day program is removed from the working copy at once.
// OK runs the name check, writes the name and ends with OK even when nothing changed.
//
// Object names: nameEdit, dayCombo0..6, dayPicture0..6, okButton, cancelButton.
class ZoDlgTimeTableWeekly : public ZoDialog {
    Q_OBJECT
public:
    ZoDlgTimeTableWeekly(QWidget* parent, XmlDocument::XmlNode* element, XmlDocument::XmlNode* weeks,
                         XmlDocument::XmlNode const* days, XmlDocument::XmlNode const* calendars);
    ~ZoDlgTimeTableWeekly() override;

    bool HasChanged() const;

public slots:
    void reject() override;

protected:
    void OnInitDialog() override;

private slots:
    void OnOK();

private:
    void Layout();
    void ApplyDay(int day);

    XmlDocument::XmlNode* m_element;
    XmlDocument::XmlNode* m_weeks;
    XmlDocument::XmlNode const* m_days;
    XmlDocument::XmlNode const* m_calendars;
    std::wstring m_openedName;
    std::array<int, 7> m_openedRows{};

    DayProgramsModel* m_model = nullptr;
    QLabel* m_nameLabel = nullptr;
    QLineEdit* m_name = nullptr;
    std::array<QLabel*, 7> m_dayLabels{};
    std::array<QLabel*, 7> m_programLabels{};
    std::array<QComboBox*, 7> m_choosers{};
    std::array<ZoDayCtrl*, 7> m_pictures{};
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
};
