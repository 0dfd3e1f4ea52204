#pragma once
#include "config/XmlDocument.h"
#include <functional>

class QWidget;

// What the list pane hands to every action editor it opens.
struct ZoActionEditorFlags {
    bool skipCheck = false;
    bool keep = false;
    int presetIndex = -1;
};

// Opens the editor of an action kind (force, shellExecute, screen, report, launchWeb,
// mail, sms) modally on `action`, with its moment element (and the users document for mail
// and SMS); true when the user confirmed it. Kinds without an editor (beep, device) give
// false. The editors write the element only on their own OK.
bool ZoRunActionEditor(QWidget* parent, unsigned kind, XmlDocument::XmlNode* action, XmlDocument::XmlNode* moment,
                       XmlDocument* users, ZoActionEditorFlags const& flags);

// Test seam: while a runner is installed, ZoRunActionEditor calls it instead of opening an
// editor (a test may change the element it receives, as an editor would, and answer OK or
// Cancel). An empty function restores the editors.
using ZoActionEditorRunner = std::function<bool(unsigned kind, XmlDocument::XmlNode* action,
                                                XmlDocument::XmlNode* moment, XmlDocument* users,
                                                ZoActionEditorFlags const& flags)>;
void ZoSetActionEditorRunner(ZoActionEditorRunner runner);
ZoActionEditorRunner ZoGetActionEditorRunner();
