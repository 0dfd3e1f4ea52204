#pragma once
#include "config/XmlDocument.h"
#include <string>
#include <string_view>
#include <vector>

// The actions clipboard: whole action elements, each wrapped in an `action` element, as
// UTF-8 XML text,
//
//   <actionClipboard><action><force>...</force></action><action>...</action></actionClipboard>
//
// carried by PutToClipboard / GetFromClipboard with selector 1 and its terminating NUL
// counted. No widget is used here, so paste can be fuzzed on its own.

inline constexpr wchar_t const* kActionsClipboardRoot = L"actionClipboard";

// The clipboard text of these action elements, in the given order (null entries skipped).
std::string ZoBuildActionsClipboardText(std::vector<XmlDocument::XmlNode const*> const& actions);

// True when the bytes (up to a first NUL) are XML whose root tag is "actionClipboard".
bool ZoIsActionsClipboardText(std::string_view text);

struct ZoActionsPaste {
    int pasted = 0;          // actions appended to the moment
    bool lastYielded = false; // the last `action` wrapper gave an action
};

// Pastes the actions of a clipboard text at the end of a moment element.
//
// Text that is not an actions clipboard changes nothing. Otherwise, for each `action`
// child of the root in order, the LAST of its children whose kind is in allowedKinds is
// kept (earlier ones in the same wrapper are dropped, as are kinds not allowed here); it
// receives a new `id`, so that a pasted action never shares its identity with its source,
// and is appended to the moment with its whole content.
//
// The list marks itself changed and shows the new rows only when lastYielded is true: when
// the clipboard's last wrapper gives nothing, the actions pasted from earlier wrappers stay
// in the tree all the same. This is intended and kept as it is.
// Any bytes are safe to pass. `appended`, when given, receives the new elements in order.
ZoActionsPaste ZoPasteActionsText(std::string_view text, XmlDocument::XmlNode& moment, unsigned allowedKinds,
                                  std::vector<XmlDocument::XmlNode*>* appended = nullptr);
