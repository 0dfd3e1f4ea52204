#pragma once
#include "config/XmlDocument.h"
#include "events/EventNames.h"
#include <string>
#include <string_view>
#include <vector>

// The time-tables clipboard: whole "day", "week" and "calendar" elements as UTF-8 XML text,
//
//   <eventsTimeTableClipboard><day>...</day><week>...</week></eventsTimeTableClipboard>
//
// (each element's text as CreateXmlCode writes it, simply joined), carried by
// PutToClipboard / GetFromClipboard with selector 1 and its terminating NUL counted.
// No widget is used here, so paste can be fuzzed and benchmarked on its own.

inline constexpr wchar_t const* kTimeTablesClipboardRoot = L"eventsTimeTableClipboard";

// The clipboard text of these elements, in the given order (null entries are skipped).
std::string BuildTimeTablesClipboardText(std::vector<XmlDocument::XmlNode const*> const& elements);

// True when the bytes (up to a first NUL) are XML whose root tag is "eventsTimeTableClipboard".
bool IsTimeTablesClipboardText(std::string_view text);

// Pastes the time tables of a clipboard text into the time-tables document.
//
// When the text is not a time-tables clipboard nothing changes and the result is false.
// Otherwise each child "day", "week" or "calendar" of the root, in order (other tags are
// skipped), goes to its container ("days", "weeks", "calendars" below the document's root,
// created when missing):
//   - an element without a name is skipped; so is one whose name the editors would refuse
//     (IsValidId), since it could never be found by its name again;
//   - a deep copy is appended to the container, with a new "id", so that a pasted table
//     never shares its identity with the table it was copied from;
//   - the name becomes the first free one of "name", "name_1", "name_2"... where free means
//     not in namesBeforePaste (compared without regard to case, over all three kinds).
//     The set is not grown by the paste: two pasted tables with the same name receive the
//     same new name. This is intended; pasted tables are not tested against one another.
//   - day references inside pasted week programs and calendars are kept as they are.
// The result is true for every time-tables clipboard, even one that pasted nothing (the
// setup dialog then marks itself modified and rebuilds its list). `pasted`, when given,
// receives the new elements in order. Any bytes are safe to pass.
bool PasteTimeTablesText(std::string_view text, XmlDocument& document, EventNameSet const& namesBeforePaste,
                         std::vector<XmlDocument::XmlNode*>* pasted = nullptr);
