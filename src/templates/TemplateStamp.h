#pragma once
#include "config/XmlDocument.h"
#include "templates/TemplatePlaceholders.h"

#include <memory>
#include <string>
#include <vector>

class ZoDriver;
class ZoDeviceCatalog;

// Stamping templates over devices: first a preview (which events would be made, with
// their names and conditions, and which devices are skipped and why), then the change
// itself, which makes exactly the previewed events.
namespace zo::templates {

using XmlNode = XmlDocument::XmlNode;

// Why a device gets no event from a template.
enum class StampSkip {
    None,
    MissingVariables, // the device lacks a variable the template names as [{device}.CODE]
    AlreadyStamped,   // an event of the project was already stamped from it for the device
};

// One row of the preview: one device under one template.
struct StampRow {
    XmlNode* templateEvent = nullptr;
    ZoDriver const* device = nullptr;
    std::wstring name;      // the new event's name, made unique ("name", "name_1", ...)
    std::wstring condition; // its condition, filled in
    StampSkip skip = StampSkip::None;
    std::vector<std::wstring> missing; // the codes the device lacks
};

// The stamping of templates into one event configuration document.
//
// A stamper reads the document once (the events' names, the stamps made before); each
// Preview then costs only the rows it makes, so that many templates over many devices
// stay linear in the events made. Names clash with the project's events and with the
// events previewed before them, compared without regard to case: the second "Pump fault"
// becomes "Pump fault_1" (the rule of pasted events).
class TemplateStamper {
public:
    // root: the event configuration document's root (it must stay unchanged until Apply).
    explicit TemplateStamper(XmlNode* root);
    ~TemplateStamper();
    TemplateStamper(TemplateStamper const&) = delete;
    TemplateStamper& operator=(TemplateStamper const&) = delete;

    // Previews the template over the devices, in their order; the rows are appended to Rows().
    void Preview(XmlNode* templateEvent, std::vector<ZoDriver const*> const& devices);
    std::vector<StampRow> const& Rows() const { return m_rows; }
    // The rows that make an event.
    int EventCount() const;

    // Makes the events of the rows that are not skipped, at the end of `events` (created
    // when absent): each a copy of its template with the placeholders filled in, the
    // previewed name, new ids for itself, its arguments and its actions; registered as a
    // device under deviceGroups (nothing when null); a member of the group with that id
    // when groupId is not empty; and linked to its template and device. Stale links are
    // dropped. The caller wraps it in the documents' journals to make it one change.
    // Returns the new events in row order. The rows are consumed.
    std::vector<XmlNode*> Apply(XmlNode* deviceGroups, std::wstring const& groupId = {});

private:
    struct Names;
    XmlNode* m_root;
    std::unique_ptr<Names> m_names;
    std::vector<StampRow> m_rows;
};

// The device's texts for the placeholders.
DeviceTexts TextsOf(ZoDriver const& device);

// Makes `event` (already a copy of its template) the event the template gives for the
// device: placeholders filled in and fresh ids for the event, its arguments and actions.
void MakeStampedEvent(XmlNode& event, DeviceTexts const& device);

// The group of the events document with that name (exactly, else without regard to case)
// or id; empty when none.
std::wstring FindGroupId(XmlNode const* root, std::wstring_view nameOrId);

} // namespace zo::templates
