#pragma once
#include "check/ZoCheckFinding.h"
#include "config/XmlDocument.h"

#include <string>
#include <vector>

// Renaming a device, a variable's code or an event, with every reference to it: formulas
// (conditions, delays, arguments, forces), device actions, and the element itself (the
// catalog's driver or variable, the event's name). Events are registered as devices by
// their id, so a new name leaves the registrations as they are.
//
// A rename is planned first, without changing anything: the plan lists every change
// (where, before, after, how many references), which is what the preview shows; applying
// it writes them all. The caller brackets the apply with the documents' journals and saves
// the documents the plan touched together.

enum class ZoRenameKind { Device, Variable, Event };

struct ZoRenameRequest {
    ZoRenameKind kind = ZoRenameKind::Device;
    std::wstring device;  // Variable: the variable's device
    std::wstring oldName; // the device's name, the variable's code or the event's name
    std::wstring newName;
};

struct ZoRenameChange {
    // Where: an event's field, or (file Devices) the catalog's driver or variable.
    ZoFinding place;
    XmlDocument::XmlNode* node = nullptr; // the element whose text changes
    std::wstring before;
    std::wstring after;
    int count = 1; // references rewritten in the field (1 for the element's own name)
};

struct ZoRenamePlan {
    std::vector<ZoRenameChange> changes;
    int references = 0; // over all changes, the element's own name not counted
    bool touchesEvents = false;
    bool touchesDevices = false;
};

// Plans the rename on the two documents; false with a message for the user when it is
// refused: the element does not exist, the new name is the old one, is one the editors
// refuse, or is that of another device, variable of the device or event (events compared
// with letters in any case, as the event editor does).
bool ZoPlanRename(XmlDocument& events, XmlDocument& devices, ZoRenameRequest const& request, ZoRenamePlan& plan,
                  std::wstring& error);

// The changes that rewrite the references to the event named oldName into newName, in every
// event of the document, without the event's own name: what the event editor applies when
// the user renames an event there and agrees to update the references.
std::vector<ZoRenameChange> ZoEventReferenceChanges(XmlDocument& events, std::wstring const& oldName,
                                                    std::wstring const& newName);

// Writes every change of the plan (the nodes must still be those planned on).
void ZoApplyRename(std::vector<ZoRenameChange> const& changes);

// Whether the editors accept the name for a device, for a variable's code, for an event.
bool ZoIsValidDeviceName(std::wstring const& name);
bool ZoIsValidVariableCode(std::wstring const& code);
bool ZoIsValidEventName(std::wstring const& name);
