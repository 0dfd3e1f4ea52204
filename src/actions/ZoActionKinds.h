#pragma once
#include "config/XmlDocument.h"
#include <QString>
#include <string>
#include <string_view>

// The nine kinds of action an event's moment may hold, their tags, their bits in a kind mask,
// the texts that name them, and the rules that say which kinds a moment of a side allows.
// Free functions without a widget, so that the rules are tested on their own.

// One bit per kind; a kind mask is an OR of these.
enum ZoActionKind : unsigned {
    kActionForce = 1,
    kActionShellExecute = 2,
    kActionScreen = 4,
    kActionReport = 8,
    kActionDevice = 16,
    kActionBeep = 32,
    kActionMail = 64,
    kActionSms = 128,
    kActionLaunchWeb = 256,
};

inline constexpr int kActionKindCount = 9;
// What a server moment allows; `while` only force and command.
inline constexpr unsigned kServerActionsMask = kActionForce | kActionShellExecute | kActionMail | kActionSms;
inline constexpr unsigned kServerWhileMask = kActionForce | kActionShellExecute;
// What a client moment allows; once it holds a device, a screen or a report, only these.
inline constexpr unsigned kClientActionsMask = kActionShellExecute | kActionScreen | kActionReport | kActionDevice
    | kActionBeep | kActionLaunchWeb;
inline constexpr unsigned kClientSingleUseKinds = kActionScreen | kActionReport | kActionDevice;
inline constexpr unsigned kClientRestrictedMask = kClientActionsMask & ~kClientSingleUseKinds;

struct ZoActionKindInfo {
    unsigned kind;          // its bit
    wchar_t const* tag;     // element tag
    unsigned nameText;      // the kind's name in the action lists
    unsigned linkText;      // the caption of its link in the actions wizard
    int bitmap;             // the wizard link's bitmap resource, or 0
    wchar_t const* image;   // the wizard link's image file when there is no bitmap
    char const* linkName;   // object name of the wizard link
};

// The kinds in their fixed order (force, shellExecute, screen, report, device, beep, mail,
// sms, launchWeb): the order of the wizard's links. index 0..8.
ZoActionKindInfo const& ZoActionKindAt(int index);
// The entry of a kind bit; null for anything that is not exactly one kind.
ZoActionKindInfo const* ZoActionKindInfoOf(unsigned kind);
// The kind of an element by its tag; 0 when the tag names no action.
unsigned ZoActionKindOfTag(std::wstring_view tag);
unsigned ZoActionKindOf(XmlDocument::XmlNode const& element);

// The kinds a moment may receive (offered on add, kept on paste).
// Server side: `while` (moment 1) allows force and command (3), the other moments force,
// command, mail and SMS (195). Client side: command, screen, report, device, beep and web
// page (318); a moment that already holds a device, screen or report keeps only command,
// beep and web page (290), since a client moment shows at most one of them; `while` never
// allows screen, report or device.
unsigned ZoAllowedActionKinds(XmlDocument::XmlNode const* moment, int momentIndex, bool client);

// The kind's name as the action lists show it (column 0).
QString ZoActionKindText(unsigned kind);

// The summary of an action as its list row shows it (column 1), as UTF-8 appended to out:
//   force         variable + " = (" + value + ")"
//   shellExecute  command + " " + parameter (the blank stays when there is no parameter)
//   screen, report, device   name
//   beep          nothing
//   mail, sms     message
//   launchWeb     url + " - " + the place: "Browser (new tab)" when `window` is exactly
//                 "TAB" (so "tab" is not a tab), else "New browser window"
// A missing property reads as empty.
void ZoAppendActionSummary(std::string& out, XmlDocument::XmlNode const& action, unsigned kind);
std::wstring ZoActionSummary(XmlDocument::XmlNode const& action);
