#pragma once
#include "config/XmlDocument.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

// Where a project keeps its event templates and what each stamped event came from, both
// in the event configuration document beside `events`:
//
//   eventsConfiguration
//     events, eventsGroups           (as ever)
//     eventTemplates/event           a template: an `event` element like any other, whose
//                                    texts may hold {device} and {description}
//     stampedEvents/stamp            one per stamped event: `event` = the event's id,
//                                    `template` = the template's id, `device` = the name
//                                    of the device it was stamped for
//
// Readers of `events` (the events list, the editor, the check, the catalog) never see a
// template, and an event carries nothing new. The link is kept by the event's id, so it
// survives the event editor (which keeps the id) and is not inherited by a pasted copy
// (which gets a new id and is then an event of its own). A stamp whose event is gone is
// ignored and dropped at the next stamp or update.
namespace zo::templates {

inline constexpr wchar_t const* kTemplatesTag = L"eventTemplates";
inline constexpr wchar_t const* kStampsTag = L"stampedEvents";
inline constexpr wchar_t const* kStampTag = L"stamp";
inline constexpr wchar_t const* kStampEventKey = L"event";
inline constexpr wchar_t const* kStampTemplateKey = L"template";
inline constexpr wchar_t const* kStampDeviceKey = L"device";

using XmlNode = XmlDocument::XmlNode;

// The `event` children of the root's `eventTemplates`, in document order.
std::vector<XmlNode*> Templates(XmlNode* root);
// The template whose id or name (exactly, or without regard to case when no name is
// exactly equal) is `key`, or null.
XmlNode* FindTemplate(XmlNode* root, std::wstring_view key);
// The root's `eventTemplates`, created when asked and absent.
XmlNode* TemplatesElement(XmlNode* root, bool create);

// One stamped event's link, as stored (UTF-8 views into the document).
struct StampLink {
    XmlNode* stamp = nullptr; // the `stamp` record
    std::string_view eventId;
    std::string_view templateId;
    std::string_view device;
};

// The links of the root's `stampedEvents`, in document order (records without an event
// or a template id are skipped).
std::vector<StampLink> StampLinks(XmlNode* root);
// Appends a record for a stamped event.
void AddStampLink(XmlNode* root, std::wstring const& eventId, std::wstring const& templateId,
                  std::wstring const& device);
// Removes the records whose event is no longer in `events`; the number removed.
int DropStaleLinks(XmlNode* root);

// The `event` children of the root's `events` by their id as stored.
std::unordered_map<std::string_view, XmlNode*> EventsById(XmlNode* root);

} // namespace zo::templates
