// Any bytes pasted into a moment of an event's actions as an actions clipboard text. The
// first byte chooses the side and the moment (and so the kinds allowed); the rest is the
// clipboard. The moment already holds actions, an unknown child and, on the client side, a
// screen (which keeps devices, screens and reports out). Afterwards:
//   - a text that is not an actions clipboard leaves the moment byte for byte as it was;
//   - as many actions are appended as the clipboard has `action` wrappers holding an
//     allowed kind, each the last allowed child of its wrapper, whole, at the end of the
//     moment, with an id of its own (none of the clipboard's, none of the moment's, no two
//     alike); lastYielded tells exactly whether the last wrapper gave one;
//   - what the moment held before is unchanged and first;
//   - the list shows every action of the moment, and copying the pasted actions and
//     pasting that text again into an empty moment gives the same actions.
#include "actions/ZoActionKinds.h"
#include "actions/ZoActionsClipboard.h"
#include "actions/ZoActionsListModel.h"
#include "config/XmlDocument.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <set>
#include <string>
#include <string_view>
#include <vector>

namespace {

using XmlNode = XmlDocument::XmlNode;

[[noreturn]] void Fail(char const* what, std::wstring const& detail = {})
{
    std::fprintf(stderr, "fuzz_actions_paste: %s %ls\n", what, detail.c_str());
    std::abort();
}

constexpr char const* kServerMoment =
    "<activate><force><id>{F1}</id><variable>[PLC1.SP]</variable><value>1</value></force><note>kept</note>"
    "<mail><id>{M1}</id><message>m</message><users><user>{U1}</user></users></mail></activate>";
constexpr char const* kClientMoment =
    "<activate><screen><id>{S1}</id><name>Overview</name></screen><note>kept</note>"
    "<launchWeb><id>{W1}</id><url>u</url><window>TAB</window></launchWeb></activate>";

std::string Text(XmlNode const* node)
{
    std::string out;
    node->CreateXmlCode(out);
    return out;
}

std::vector<std::string> ChildTexts(XmlNode const* node)
{
    std::vector<std::string> texts;
    for (XmlNode const* child = node->FirstChild(); child; child = child->NextSibling())
        texts.push_back(Text(child));
    return texts;
}

int ShownRows(XmlNode* moment)
{
    static ZoActionsListModel* const list = new ZoActionsListModel;
    list->Fill(moment, true);
    for (int row = 0; row < list->rowCount(); ++row)
        (void)list->data(list->index(row, 1));
    return list->rowCount();
}

int ActionChildren(XmlNode const* moment)
{
    int count = 0;
    for (XmlNode const* child = moment->FirstChild(); child; child = child->NextSibling())
        count += ZoActionKindOf(*child) != 0;
    return count;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size < 1)
        return 0;
    bool const client = (data[0] & 4) != 0;
    int const momentIndex = data[0] & 3;
    std::string_view const text(reinterpret_cast<char const*>(data) + 1, size - 1);

    XmlDocument document;
    if (!document.Parse(client ? kClientMoment : kServerMoment))
        Fail("the moment does not parse");
    XmlNode* moment = document.Root();
    std::string const before = Text(moment);
    std::vector<std::string> const childrenBefore = ChildTexts(moment);
    std::set<std::wstring> idsBefore;
    for (XmlNode const* child = moment->FirstChild(); child; child = child->NextSibling())
        idsBefore.insert(child->Value(L"id", L""));
    unsigned const mask = ZoAllowedActionKinds(moment, momentIndex, client);
    unsigned const pasteMask = mask | kActionShellExecute;

    // What the clipboard holds, read as paste reads it (up to the first NUL).
    bool const isClipboard = ZoIsActionsClipboardText(text);
    std::set<std::wstring> clipboardIds;
    std::vector<std::string> expected;
    bool lastYields = false;
    if (isClipboard) {
        std::string_view const upToNul = text.substr(0, text.find('\0'));
        XmlDocument clipboard;
        if (!clipboard.Parse(upToNul.data(), upToNul.size()))
            Fail("ZoIsActionsClipboardText accepted a text that does not parse");
        for (XmlNode const* wrapper = clipboard.Root()->FirstChild(); wrapper; wrapper = wrapper->NextSibling()) {
            if (!wrapper->HasTag(L"action"))
                continue;
            XmlNode const* last = nullptr;
            for (XmlNode const* child = wrapper->FirstChild(); child; child = child->NextSibling()) {
                clipboardIds.insert(child->Value(L"id", L""));
                if (ZoActionKindOf(*child) & pasteMask)
                    last = child;
            }
            lastYields = last != nullptr;
            if (last)
                expected.push_back(QString::fromStdWString(last->Tag()).toStdString());
        }
    }

    std::vector<XmlNode*> appended;
    ZoActionsPaste const result = ZoPasteActionsText(text, *moment, mask, &appended);
    if (!isClipboard && (Text(moment) != before || result.pasted != 0 || result.lastYielded))
        Fail("a text that is no actions clipboard changed the moment");
    if (result.pasted != static_cast<int>(appended.size()) || appended.size() != expected.size())
        Fail("the number of pasted actions differs from the clipboard's wrappers with an allowed action");
    if (result.lastYielded != lastYields)
        Fail("lastYielded does not tell whether the last wrapper gave an action");

    std::set<std::wstring> pastedIds;
    for (std::size_t i = 0; i < appended.size(); ++i) {
        XmlNode const* action = appended[i];
        if (action->Parent() != moment || !(ZoActionKindOf(*action) & pasteMask))
            Fail("a pasted element is not an allowed action of the moment:", action->Tag());
        if (QString::fromStdWString(action->Tag()).toStdString() != expected[i])
            Fail("a wrapper pasted another action than its last allowed one:", action->Tag());
        std::wstring const id = action->Value(L"id", L"");
        if (id.size() != 38 || clipboardIds.count(id) || idsBefore.count(id) || !pastedIds.insert(id).second)
            Fail("a pasted action has no id of its own:", id);
    }
    // What was there is unchanged and first; the pasted actions follow, in order.
    XmlNode const* now = moment->FirstChild();
    for (std::string const& old : childrenBefore) {
        if (!now || Text(now) != old)
            Fail("an action of the moment changed");
        now = now->NextSibling();
    }
    for (XmlNode const* action : appended) {
        if (now != action)
            Fail("the pasted actions are not at the end, in order");
        now = now->NextSibling();
    }
    if (now)
        Fail("the moment holds more than it held and the pasted actions");

    if (ShownRows(moment) != ActionChildren(moment))
        Fail("the list does not show every action of the moment");

    // The pasted actions copied and pasted again into an empty moment: the same actions.
    std::vector<XmlNode const*> copied(appended.begin(), appended.end());
    std::string const copy = ZoBuildActionsClipboardText(copied);
    XmlDocument empty;
    empty.Create(L"activate");
    std::vector<XmlNode*> again;
    ZoPasteActionsText(copy, *empty.Root(), 0x1FF, &again);
    if (again.size() != appended.size())
        Fail("a copy of the pasted actions does not paste back whole");
    for (std::size_t i = 0; i < again.size(); ++i) {
        again[i]->SetValue(L"id", appended[i]->Value(L"id", L""));
        if (Text(again[i]) != Text(appended[i]))
            Fail("a copied action pastes back different:", appended[i]->Tag());
    }
    return 0;
}
