#pragma once
#include "config/XmlDocument.h"
#include "platform/tools/ZoBasicString.h"

#include <optional>

class ZoEvaluator;

// The checks an event's actions pass before the event is saved, apart from the questions
// the editor asks about them.

// Kind codes of the checked actions, as the messages name them.
enum ZoActionKindCode : int {
    kZoActionForce = 0,
    kZoActionDevice = 2,
    kZoActionScreen = 3,
    kZoActionReport = 4,
    kZoActionMail = 6,
};

// An action's fault: the kind code and the detail text for the question.
struct ZoActionFault {
    int kind = 0;
    ZoBasicString<wchar_t> detail;
};

using ZoActionNode = XmlDocument::XmlNode;

std::optional<ZoActionFault> ZoCheckForceAction(ZoEvaluator& evaluator, ZoActionNode const& action);
// The same, on the action's variable and value as texts.
std::optional<ZoActionFault> ZoCheckForceAction(ZoEvaluator& evaluator, std::wstring_view variable,
                                                std::wstring_view value);
std::optional<ZoActionFault> ZoCheckDeviceAction(ZoActionNode const& action);
std::optional<ZoActionFault> ZoCheckScreenAction(ZoActionNode const& action);
std::optional<ZoActionFault> ZoCheckReportAction(ZoActionNode const& action);
std::optional<ZoActionFault> ZoCheckMailAction(ZoActionNode const& action);

// Whether a mail or SMS action names at least one recipient: a free recipients text (key
// freeKey: "address" for mail, "phone" for SMS), or a `users` or `listsTag` container
// ("mailLists", "phoneLists") with at least one child. Shared by the event's checks and
// the mail and SMS editors.
bool ZoActionHasRecipient(ZoActionNode const& action, wchar_t const* freeKey, wchar_t const* listsTag);

// How many moments of each list are checked: all four for a notified event (stored
// `notify` exactly "T"), else the first three, since only notified events are ever
// acknowledged. The stored value counts, not the check box.
int ZoMomentsToCheck(ZoActionNode const& event);

// The question for an action's fault: the list's label, the moment and kind line, and the
// detail. list: 0 `actions`, 1 `clientActions`; moment 0..3.
void ActionErrorMsg(ZoBasicString<wchar_t>& out, int list, int moment, int kind, wchar_t const* detail);
void ActionErrorMsg(ZoBasicString<wchar_t>& out, int list, int moment, int kind, unsigned detailTextId);
