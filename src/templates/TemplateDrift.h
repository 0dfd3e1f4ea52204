#pragma once
#include "config/XmlDocument.h"

#include <string>
#include <vector>

class ZoDeviceCatalog;

// Keeping stamped events in step with their templates: what a template would give each of
// its stamped events now, compared with what the event has, field by field; and the update
// of the events chosen.
//
// Compared: every key of the event (name, description, conditions, delays, flags, time
// table, annotations), the arguments and the action lists, down to each text. Not
// compared: ids (each event, argument and action has its own) and group memberships
// (stamping may add a group, and the user files events into groups freely). A name that
// the stamp had to make unique ("Pump fault_1" for "Pump fault") is the template's name.
// Keys match by tag; the children of a list (arguments, the actions of a moment) match by
// position, and a list whose elements differ in number or kind is one difference, shown
// as the kinds of its elements ("force, mail").
namespace zo::templates {

using XmlNode = XmlDocument::XmlNode;

// One field that differs: its place ("condition", "actions/activate/force 2/value") and
// the two texts.
struct FieldDifference {
    std::wstring field;
    std::wstring expected; // what the template gives
    std::wstring actual;   // what the event has
};

struct DriftedEvent {
    XmlNode* event = nullptr;
    XmlNode* templateEvent = nullptr;
    std::wstring device;
    std::vector<FieldDifference> differences;
};

struct DriftReport {
    int stamped = 0; // stamped events whose template and device are still there
    std::vector<DriftedEvent> drifted;
    // Stamped events whose device is no longer in the catalog: not compared, never updated.
    std::vector<XmlNode*> withoutDevice;
};

// The drift of every stamped event of the event configuration document (root), with the
// device texts from the catalog. Events whose template is gone stand alone and are not
// reported. In the order of the stamps. Nothing is changed: the report's pointers are the
// document's, for an update.
DriftReport FindDrift(XmlNode const* root, ZoDeviceCatalog const& catalog);

// The differences of one event from what the template gives for the device (texts from
// the catalog; none when the device is not there).
std::vector<FieldDifference> CompareWithTemplate(XmlNode const& event, XmlNode const& templateEvent,
                                                 ZoDeviceCatalog const& catalog, std::wstring const& device);

// Makes each chosen event what its template gives now, keeping its id, its group
// memberships, the ids of the arguments and actions that stay, and its name when it only
// differs by the stamp's "_N". A name the template changed is made unique among the
// events. Returns the number of events changed. The caller wraps it in the journal.
int UpdateFromTemplates(XmlNode* root, ZoDeviceCatalog const& catalog, std::vector<DriftedEvent> const& chosen);

} // namespace zo::templates
