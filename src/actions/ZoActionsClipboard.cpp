#include "actions/ZoActionsClipboard.h"
#include "actions/ZoActionKinds.h"
#include "platform/tools/ZoGuid.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

constexpr std::string_view kOpen = "<actionClipboard>";
constexpr std::string_view kClose = "</actionClipboard>";
constexpr std::string_view kActionOpen = "<action>";
constexpr std::string_view kActionClose = "</action>";

bool ParseClipboard(std::string_view text, XmlDocument& doc)
{
    text = text.substr(0, text.find('\0'));
    if (text.empty() || !doc.Parse(text.data(), text.size()))
        return false;
    XmlNode const* root = doc.Root();
    return root && root->HasTag(kActionsClipboardRoot);
}

// The last child of a wrapper whose kind may be pasted here, or null.
XmlNode* LastAllowedAction(XmlNode const& wrapper, unsigned allowedKinds)
{
    XmlNode* kept = nullptr;
    for (XmlNode* child = wrapper.FirstChild(); child; child = child->NextSibling())
        if (ZoActionKindOf(*child) & allowedKinds)
            kept = child;
    return kept;
}

} // namespace

std::string ZoBuildActionsClipboardText(std::vector<XmlNode const*> const& actions)
{
    std::string text(kOpen);
    for (XmlNode const* action : actions) {
        if (!action)
            continue;
        text += kActionOpen;
        action->AppendXmlCode(text);
        text += kActionClose;
    }
    text += kClose;
    return text;
}

bool ZoIsActionsClipboardText(std::string_view text)
{
    XmlDocument doc;
    return ParseClipboard(text, doc);
}

ZoActionsPaste ZoPasteActionsText(std::string_view text, XmlNode& moment, unsigned allowedKinds,
                                  std::vector<XmlNode*>* appended)
{
    ZoActionsPaste result;
    XmlDocument clipboard;
    if (!ParseClipboard(text, clipboard))
        return result;
    // A command may be pasted into any moment of either side.
    allowedKinds |= kActionShellExecute;
    for (XmlNode const* wrapper = clipboard.Root()->FirstChild(); wrapper; wrapper = wrapper->NextSibling()) {
        if (!wrapper->HasTag(L"action"))
            continue;
        XmlNode* kept = LastAllowedAction(*wrapper, allowedKinds);
        result.lastYielded = kept != nullptr;
        if (!kept)
            continue;
        kept->SetValue(L"id", ZoNewGuidText());
        XmlNode* copy = moment.NewChild(kept->Tag().c_str());
        *copy = *kept;
        ++result.pasted;
        if (appended)
            appended->push_back(copy);
    }
    return result;
}
