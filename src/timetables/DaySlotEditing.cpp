#include "timetables/DaySlotEditing.h"
#include "timetables/ZoDlgEventNewModifySlot.h"

using XmlNode = XmlDocument::XmlNode;

std::optional<DaySlot> RunSlotEditor(QWidget* parent, DaySlot const* slot)
{
    XmlDocument scratch;
    scratch.Create(L"main");
    XmlNode* element = scratch.Root()->NewChild(L"slot");
    if (slot)
        WriteDaySlot(element, *slot);
    ZoDlgEventNewModifySlot editor(parent, element, kSlotLabelColour, kSlotSelectionColour);
    if (editor.DoModal() != QDialog::Accepted)
        return std::nullopt;
    std::optional<DaySlot> const chosen = ReadDaySlot(element);
    return chosen ? *chosen : DaySlot{};
}

bool EditDaySlot(QWidget* parent, XmlNode* day, int row)
{
    if (!day)
        return false;
    DayMinuteMap map;
    map.MarkSlotsOf(day);
    std::vector<DaySlot> const daySlots = map.Slots();
    bool const existing = row >= 0 && row < static_cast<int>(daySlots.size());
    std::optional<DaySlot> const chosen = RunSlotEditor(parent, existing ? &daySlots[row] : nullptr);
    if (!chosen)
        return false;
    if (existing)
        map.Unmark(daySlots[row]);
    map.Mark(*chosen);
    WriteDaySlots(day, map);
    return true;
}
