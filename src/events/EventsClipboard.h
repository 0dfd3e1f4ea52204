#pragma once
#include "config/XmlDocument.h"
#include "events/EventNames.h"
#include <string>
#include <string_view>
#include <vector>

// The events clipboard: whole `event` elements as UTF-8 XML text,
//
//   <eventsClipboard><event>...</event><event>...</event></eventsClipboard>
//
// (each element's text as CreateXmlCode writes it, simply joined). It goes through
// PutToClipboard / GetFromClipboard with selector 1, with its terminating NUL counted.
// These functions use no widget, so they can be fuzzed and benchmarked on their own.

inline constexpr wchar_t const* kEventsClipboardRoot = L"eventsClipboard";

// The clipboard text for these events, in the given order (null entries are skipped).
std::string BuildEventsClipboardText(std::vector<XmlDocument::XmlNode const*> const& events);

// True when the bytes are an events clipboard: XML whose root tag is "eventsClipboard".
// The text ends at its first NUL, if any.
bool IsEventsClipboardText(std::string_view text);

// Pastes the events of a clipboard text into the event configuration document.
//
// The text ends at its first NUL, if any. When it is not XML or its root is not
// "eventsClipboard", nothing changes and the result is false. Otherwise, for each child
// `event` of the root in order (children of other tags are skipped):
//   - the document's `events` element is created under its root when absent;
//   - an event without a name is skipped;
//   - a deep copy is appended to `events`, with a new `id`, so that a pasted event never
//     shares its identity with the event it was copied from;
//   - its name is made unique against namesBeforePaste only (compared without regard to
//     case): the name itself, else "name_1", "name_2"... The set is not grown by the
//     paste, so events pasted together are not tested against one another: two pasted
//     events that clash with the same existing name both get the same new name. This is
//     intended and relied upon (it matches how the list has always pasted);
//   - the copy is registered as a device under deviceGroups (nothing when null).
// Group memberships, time table and actions are kept as they were copied.
// The result is true for every events clipboard, even one that held no event: the caller
// then marks the list modified and refills it. `pasted`, when given, receives the new
// elements in order. A document without a root receives nothing. Any bytes are safe to
// pass.
//
// namesBeforePaste is typically EventsListModel::NameSet() taken before the call; the list
// refills its rows once afterwards.
bool PasteEventsText(std::string_view text, XmlDocument& eventsCfg,
                     XmlDocument::XmlNode* deviceGroups, EventNameSet const& namesBeforePaste,
                     std::vector<XmlDocument::XmlNode*>* pasted = nullptr);
