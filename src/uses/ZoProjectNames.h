#pragma once
#include "config/XmlDocument.h"

#include <string>
#include <string_view>

// Elements of the project looked up by the name the user knows them by, on the documents'
// roots (any of which may be null: nothing is found).
namespace zo::uses {

// The catalog's first `driver` of exactly that name (the one formulas resolve to).
XmlDocument::XmlNode const* FindDriver(XmlDocument::XmlNode const* deviceTree, std::wstring_view name);
// The driver's first `variable` with exactly that code.
XmlDocument::XmlNode const* FindVariable(XmlDocument::XmlNode const* driver, std::wstring_view code);
// The first event of exactly that name.
XmlDocument::XmlNode const* FindEvent(XmlDocument::XmlNode const* eventsRoot, std::wstring_view name);
// An event other than `except` whose name is that one with letters in any case (the event
// editor refuses such a name).
XmlDocument::XmlNode const* FindEventFolded(XmlDocument::XmlNode const* eventsRoot, std::wstring_view name,
                                            XmlDocument::XmlNode const* except);
// The id of the day program, week program or calendar of that name; empty when none.
std::wstring FindTimeTableId(XmlDocument::XmlNode const* timeTablesRoot, std::wstring_view name);
// The id of the event group of that name; empty when none.
std::wstring FindGroupId(XmlDocument::XmlNode const* eventsRoot, std::wstring_view name);
// The id of the user ("user"), mailing list ("maillist") or phone list ("phonelist") of
// that name in the users file; empty when none.
std::wstring FindRecipientId(XmlDocument::XmlNode const* usersRoot, std::wstring_view kind, std::wstring_view name);

} // namespace zo::uses
