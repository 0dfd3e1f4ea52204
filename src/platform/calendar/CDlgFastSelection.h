#pragma once
#include "platform/ui/ZoModal.h"
#include <QString>
#include <array>
#include <vector>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QPushButton;

// Fast selection of a year calendar: which day program to paint, on which months and which
// weekdays. The results are the chosen row of the day program list given, a 12-bit month mask
// (bit 0 = January) and a 7-bit weekday mask (bit 0 = Monday, bit 6 = Sunday). Each group has
// "all" and "none" shortcuts; OK needs a day program, a month and a weekday.
//
// Object names: dayProgramCombo, monthCheck0..11, weekdayCheck0..6, allMonthsButton,
// noMonthsButton, allWeekdaysButton, noWeekdaysButton, okButton, cancelButton.
class CDlgFastSelection : public ZoDialog {
    Q_OBJECT
public:
    struct DayProgram {
        QString name;
        unsigned colour = 0xFFFFFF; // colour word, red in the low byte
    };
    // initialRow: the day program chosen at first (-1: the first one).
    CDlgFastSelection(QWidget* parent, std::vector<DayProgram> dayPrograms, int initialRow = -1);

    int Row() const { return m_row; }
    unsigned MonthMask() const { return m_monthMask; }
    unsigned WeekdayMask() const { return m_weekdayMask; }
    void SetMasks(unsigned monthMask, unsigned weekdayMask);

protected:
    void OnInitDialog() override;

private slots:
    void OnOK();
    void UpdateButtons();

private:
    void Layout();
    unsigned Mask(QCheckBox* const* checks, int count) const;

    std::vector<DayProgram> m_dayPrograms;
    int m_row = -1;
    unsigned m_monthMask = 0;
    unsigned m_weekdayMask = 0;

    QLabel* m_explanation = nullptr;
    QLabel* m_dayLabel = nullptr;
    QComboBox* m_dayCombo = nullptr;
    QGroupBox* m_monthsBox = nullptr;
    QGroupBox* m_weekdaysBox = nullptr;
    std::array<QCheckBox*, 12> m_months{};
    std::array<QCheckBox*, 7> m_weekdays{};
    QPushButton* m_allMonths = nullptr;
    QPushButton* m_noMonths = nullptr;
    QPushButton* m_allWeekdays = nullptr;
    QPushButton* m_noWeekdays = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};
