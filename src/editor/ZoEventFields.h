#pragma once
#include "config/XmlDocument.h"

#include <optional>
#include <string>

using XmlNode = XmlDocument::XmlNode;

// The scalar keys of an `event` element as the event editor shows them: the rules for
// reading them from the element, comparing them with it and writing them back live here,
// apart from the widgets, so that they can be checked without a dialog.
struct ZoEventFields {
    std::wstring name;
    std::wstring description;
    std::wstring condition;
    bool stopEnabled = false;   // `conditionStop` exists exactly when the stop condition is on
    std::wstring conditionStop;
    std::wstring delayToActivate;
    std::wstring delayToDeactivate;
    bool notify = false;
    bool record = false;
    bool enabled = false;       // the inverse of `disabled`: checked only when it reads "F"
    bool rssActivate = false;
    bool rssDeactivate = false;
    bool rssAcknowledge = false;
    // The chosen time table's id; no value when no time table is chosen.
    std::optional<std::wstring> timeTable;
    std::wstring annotation;
    std::wstring deaAnnotation;
    std::wstring ackAnnotation;
};

// Longest text written for one key: the editor writes each field through a buffer of 256
// characters, so a longer text (a condition may be typed up to 512) is cut on saving.
inline constexpr std::size_t kZoEventFieldMaxChars = 256;

// The first reason why the editor's fields differ from the element, in the order in which
// the editor looks for it.
enum class ZoEventChange {
    None,
    Flag,             // an edit that changed the element behind the fields' back
    Name,
    Description,
    TimeTable,
    Notify,
    Record,
    Disabled,
    DelayToActivate,
    DelayToDeactivate,
    Annotation,
    Actions,          // an action list reports itself modified
    Feed,
};

// Reads the keys of an event (every missing key reads as ""; booleans are true only for
// "T", `enabled` only when `disabled` is exactly "F").
ZoEventFields ZoReadEventFields(XmlNode const& event);

// The first difference between the fields and the event, tested in this order: the changed
// flag, name, description, time table, notify, record, disabled, the two delays, the
// activation annotation, the action lists, the three feed flags.
//
// Deliberately not compared: the condition and the stop condition (their edits raise the
// changed flag instead), and the deactivation and acknowledgement annotations. And when no
// time table is chosen, the event's current id is compared with `keptId` (its id when the
// editor opened) instead of its `timeTable`: choosing no time table is not by itself a
// change, and a dangling or removed time table is erased only together with another change.
ZoEventChange ZoFirstEventChange(XmlNode const& event, ZoEventFields const& fields,
                                 std::wstring const& keptId, bool changedFlag,
                                 bool actionsModified);

// Writes the fields into the event, in this order (new keys are appended, so a fresh event
// shows it): name, description, condition, conditionStop (written or removed), timeTable
// (written or erased), notify, record, disabled, delayToActivate, delayToDeactivate,
// annotation, deaAnnotation, ackAnnotation, rssActivate, rssDeactivate, rssAcknowledge.
// Each text is cut at kZoEventFieldMaxChars characters.
void ZoWriteEventFields(XmlNode& event, ZoEventFields const& fields);

// Makes sure the event holds `actions` and `clientActions`, each with its four moment
// lists `activate`, `while`, `deactivate`, `acknowledge`; missing ones are appended empty.
void ZoEnsureActionLists(XmlNode& event);

// Tags of the two action sides and of the four moments, in moment-index order.
inline constexpr wchar_t const* kZoActionSides[2] = {L"actions", L"clientActions"};
inline constexpr wchar_t const* kZoActionMoments[4] = {L"activate", L"while", L"deactivate",
                                                       L"acknowledge"};
