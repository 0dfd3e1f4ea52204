#include "timetables/TimeTablesClipboard.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoIds.h"
#include "timetables/TimeTableKinds.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

constexpr std::string_view kOpen = "<eventsTimeTableClipboard>";
constexpr std::string_view kClose = "</eventsTimeTableClipboard>";

bool ParseClipboard(std::string_view text, XmlDocument& doc)
{
    text = text.substr(0, text.find('\0'));
    if (text.empty() || !doc.Parse(text.data(), text.size()))
        return false;
    XmlNode const* root = doc.Root();
    return root && root->HasTag(kTimeTablesClipboardRoot);
}

} // namespace

std::string BuildTimeTablesClipboardText(std::vector<XmlNode const*> const& elements)
{
    std::string text(kOpen);
    for (XmlNode const* element : elements)
        if (element)
            element->AppendXmlCode(text);
    text += kClose;
    return text;
}

bool IsTimeTablesClipboardText(std::string_view text)
{
    XmlDocument doc;
    return ParseClipboard(text, doc);
}

bool PasteTimeTablesText(std::string_view text, XmlDocument& document, EventNameSet const& namesBeforePaste,
                         std::vector<XmlNode*>* pasted)
{
    XmlDocument clipboard;
    if (!ParseClipboard(text, clipboard))
        return false;
    XmlNode* root = document.Root();
    if (!root)
        return true;
    UniqueNamer uniqueName(namesBeforePaste);
    for (XmlNode const* item = clipboard.Root()->FirstChild(); item; item = item->NextSibling()) {
        int const kind = TimeTableKindOfTag(item);
        if (kind < 0)
            continue;
        TimeTableKindInfo const& info = KindInfo(kind);
        XmlNode* container = root->Child(info.container);
        if (!container)
            container = root->NewChild(info.container);
        std::wstring const name = item->Value(L"name", L"");
        if (name.empty() || !IsValidId(name.c_str(), true))
            continue;
        XmlNode* copy = container->NewChild(info.tag);
        *copy = *item;
        copy->SetValue(L"id", ZoNewGuidText());
        std::wstring const unique = uniqueName(name);
        if (unique != name)
            copy->SetValue(L"name", unique);
        if (pasted)
            pasted->push_back(copy);
    }
    return true;
}
