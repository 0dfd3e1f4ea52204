#pragma once
#include "config/XmlDocument.h"
#include "platform/calendar/ZoDaySlots.h"
#include <QWidget>
#include <vector>

// A day program drawn on a 24-hour bar: its slots filled in its colour over the hours of
// the day, with a tick per hour and the hours 0, 6, 12, 18 and 24 written below. Without a
// day program the bar is drawn empty. Reusable wherever a day program is shown.
class ZoDayCtrl : public QWidget {
    Q_OBJECT
public:
    explicit ZoDayCtrl(QWidget* parent = nullptr);

    // Shows the slots of a "day" element (null: none) in its colour, and redraws.
    void Setup(XmlDocument::XmlNode const* day);
    // Shows these slots in this colour word, and redraws.
    void SetSlots(std::vector<DaySlot> daySlots, unsigned colourWord);

    std::vector<DaySlot> const& Slots() const { return m_slots; }
    unsigned ColourWord() const { return m_colour; }
    bool HasDay() const { return m_hasDay; }

    QSize sizeHint() const override;
    QSize minimumSizeHint() const override;

protected:
    void paintEvent(QPaintEvent* event) override;

private:
    void UpdateToolTip();

    std::vector<DaySlot> m_slots;
    unsigned m_colour = 0xFFFFFF;
    bool m_hasDay = false;
};
