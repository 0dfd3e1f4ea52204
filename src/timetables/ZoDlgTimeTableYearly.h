#pragma once
#include "config/XmlDocument.h"
#include "platform/calendar/ZoCalendarDates.h"
#include "platform/ui/ZoModal.h"
#include <string>

class DayProgramsModel;
class QDialogButtonBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QTreeView;
class ZoCalendar;

// The calendar editor: its name and, for chosen dates, the day program that applies. The
// user picks a day program in the list and paints dates on the year view (with no day
// program chosen, painting erases); the fast selection paints a day program on chosen months
// and weekdays of the shown year at once.
//
// Constructed with the "calendar" element (in a working copy of "calendars"), that copy's
// root and the live "days" and "weeks" containers. On OK it runs the name check, writes the
// name and the painted dates (see WriteCalendarDates) and ends with OK.
//
// Object names: nameEdit, dayProgramsList, colourBox, selectionLabel, fastSelectionButton,
// calendar, okButton, cancelButton.
class ZoDlgTimeTableYearly : public ZoDialog {
    Q_OBJECT
public:
    ZoDlgTimeTableYearly(QWidget* parent, XmlDocument::XmlNode* element, XmlDocument::XmlNode* calendars,
                         XmlDocument::XmlNode const* days, XmlDocument::XmlNode const* weeks);
    ~ZoDlgTimeTableYearly() override;

    bool HasChanged() const;
    void OnFastSelection();

public slots:
    void reject() override;

protected:
    void OnInitDialog() override;

private slots:
    void OnOK();
    void OnDayProgramChanged();

private:
    void Layout();
    int SelectedRow() const;
    // The selection type from the list: the chosen day program, or white with no id.
    void SetSelTypeFromList();

    XmlDocument::XmlNode* m_element;
    XmlDocument::XmlNode* m_calendars;
    XmlDocument::XmlNode const* m_days;
    XmlDocument::XmlNode const* m_weeks;
    std::wstring m_openedName;
    ZoCalendarDates m_openedDates;

    DayProgramsModel* m_model = nullptr;
    QLabel* m_nameLabel = nullptr;
    QLineEdit* m_name = nullptr;
    QLabel* m_listLabel = nullptr;
    QTreeView* m_list = nullptr;
    QLabel* m_colourBox = nullptr;
    QLabel* m_selectionLabel = nullptr;
    QLabel* m_hint = nullptr;
    QPushButton* m_fastSelection = nullptr;
    ZoCalendar* m_calendar = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
};
