#pragma once
#include "config/XmlDocument.h"

#include <string>
#include <string_view>

// What where-used looks for: a device, one variable of a device, an event, a time table,
// an event group, a screen, a report, or a user, mailing list or phone list.
enum class ZoUseKind { Device, Variable, Event, TimeTable, Group, Screen, Report, Recipient };

struct ZoUseTarget {
    ZoUseKind kind = ZoUseKind::Variable;
    // Device and Variable: the device as formulas write it; Event: its pseudo-device
    // ("R$EVE_" and the event's name).
    std::wstring device;
    std::wstring code; // Variable
    // The name the user knows it by (the event's name for Event).
    std::wstring name;
    // TimeTable, Group and Recipient: the id the documents store.
    std::wstring id;
};

struct ZoUseDocs {
    XmlDocument::XmlNode const* events = nullptr;
    XmlDocument::XmlNode const* timeTables = nullptr;
    XmlDocument::XmlNode const* devices = nullptr;
    XmlDocument::XmlNode const* users = nullptr;
};

// Reads a reference as the user writes it:
//   [DEVICE.CODE] or DEVICE.CODE       a variable (a period filter after "/" is dropped)
//   [R$EVE_Name.ST]                    a variable of an event
//   device:NAME, event:NAME            a device, an event (by name)
//   timetable:NAME, group:NAME         a time table (day, week or calendar), an event group
//   screen:NAME, report:NAME           a screen or report (its name part)
//   user:NAME, maillist:NAME, phonelist:NAME
// A text without a prefix that is the whole name of a device of the catalog is that
// device. Names are resolved in docs (the time table's, group's and recipient's ids);
// false with a message for the user when the text is none of these or names nothing.
bool ZoReadUseTarget(std::wstring_view text, ZoUseDocs const& docs, ZoUseTarget& target, std::wstring& error);
