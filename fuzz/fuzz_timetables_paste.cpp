// Any bytes pasted into the time-tables setup dialog as a time-tables clipboard text, into a
// small document holding tables of all three kinds. Afterwards:
//   - paste reports a clipboard exactly when IsTimeTablesClipboardText accepts the bytes, and
//     otherwise leaves the document byte for byte as it was;
//   - every pasted element is a "day", "week" or "calendar" in its own container, with a
//     name the editors accept and an id of its own (none of the clipboard's, none of the
//     document's, no two alike);
//   - each pasted name is free among the names listed before the paste (without regard to
//     case), and as many tables are pasted as the clipboard holds tables with valid names;
//   - the tables that were there before are unchanged, and the setup list lists them all;
//   - the day editor's slot rules read every pasted day program without harm.
#include "config/XmlDocument.h"
#include "events/EventNames.h"
#include "platform/calendar/ZoDaySlots.h"
#include "platform/tools/ZoIds.h"
#include "timetables/TimeTableKinds.h"
#include "timetables/TimeTablesClipboard.h"
#include "timetables/TimeTablesListModel.h"

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
    std::fprintf(stderr, "fuzz_timetables_paste: %s %ls\n", what, detail.c_str());
    std::abort();
}

constexpr char const* kDocument =
    "<timeTables><days>"
    "<day><id>{D1}</id><name>Night</name><color>000080</color><slot><from>00:00</from><to>06:00</to></slot></day>"
    "<day><id>{D2}</id><name>Night_1</name><color>00FF00</color></day>"
    "<day><id>{D3}</id><name>Work</name><color>C8F0C8</color><slot><from>08:00</from><to>17:00</to></slot></day>"
    "</days><weeks><week><id>{W1}</id><name>Office</name><day1>{D3}</day1><day6>{D1}</day6></week></weeks>"
    "<calendars><calendar><id>{C1}</id><name>Holidays</name><year><year>2025</year><month12><day25>{D1}</day25>"
    "</month12></year></calendar></calendars></timeTables>";

std::string Text(XmlNode const* node)
{
    std::string out;
    node->CreateXmlCode(out);
    return out;
}

// The document before any paste, parsed once, with the text of its root and of every table
// of each kind; each input works on a fresh copy.
struct Pristine {
    XmlDocument document;
    std::string text;
    std::vector<std::string> tables[kTimeTableKinds];
};

Pristine const& Original()
{
    static Pristine const* pristine = [] {
        auto* loaded = new Pristine;
        if (!loaded->document.Parse(kDocument))
            Fail("the document does not parse");
        loaded->text = Text(loaded->document.Root());
        for (int kind = 0; kind < kTimeTableKinds; ++kind)
            for (XmlNode const* e = TimeTableContainer(&loaded->document, kind)->FirstChild(); e; e = e->NextSibling())
                loaded->tables[kind].push_back(Text(e));
        return loaded;
    }();
    return *pristine;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const text(reinterpret_cast<char const*>(data), size);
    Pristine const& original = Original();
    XmlDocument document(*original.document.Root());

    // What the list shows before the paste.
    TimeTablesListModel list(&document);
    list.UpdateList();
    int const rowsBefore = list.rowCount();
    std::set<std::wstring> idsBefore;
    for (int row = 0; row < rowsBefore; ++row)
        idsBefore.insert(list.RowAt(row)->element->Value(L"id", L""));
    EventNameSet const taken = list.NameSet();
    list.Clear();

    // What the clipboard holds, read as paste reads it (up to the first NUL).
    bool const isClipboard = IsTimeTablesClipboardText(text);
    std::set<std::wstring> clipboardIds;
    std::size_t valid = 0;
    if (isClipboard) {
        std::string_view const upToNul = text.substr(0, text.find('\0'));
        XmlDocument clipboard;
        if (!clipboard.Parse(upToNul.data(), upToNul.size()))
            Fail("IsTimeTablesClipboardText accepted a text that does not parse");
        for (XmlNode const* item = clipboard.Root()->FirstChild(); item; item = item->NextSibling()) {
            if (TimeTableKindOfTag(item) < 0)
                continue;
            clipboardIds.insert(item->Value(L"id", L""));
            std::wstring const name = item->Value(L"name", L"");
            if (!name.empty() && IsValidId(name.c_str(), true))
                ++valid;
        }
    }

    std::vector<XmlNode*> pasted;
    bool const ok = PasteTimeTablesText(text, document, taken, &pasted);
    if (ok != isClipboard)
        Fail("PasteTimeTablesText and IsTimeTablesClipboardText disagree");
    if (!ok && Text(document.Root()) != original.text)
        Fail("a refused paste changed the document");
    if (pasted.size() != valid)
        Fail("the number of pasted tables differs from the clipboard's valid tables");

    std::set<std::wstring> pastedIds;
    for (XmlNode* element : pasted) {
        int const kind = TimeTableKindOfTag(element);
        if (kind < 0 || element->Parent() != TimeTableContainer(&document, kind))
            Fail("a pasted element is not a table in its own container");
        std::wstring const id = element->Value(L"id", L"");
        std::wstring const name = element->Value(L"name", L"");
        if (id.empty() || clipboardIds.count(id) || idsBefore.count(id) || !pastedIds.insert(id).second)
            Fail("a pasted table has no id of its own:", id);
        if (name.empty() || taken.Contains(name))
            Fail("a pasted name is empty or clashes with the list before the paste:", name);
        if (name.find_first_of(L"?/") != std::wstring::npos)
            Fail("a pasted name cannot be found by a path:", name);
        if (kind == KindDay) {
            DayMinuteMap map;
            map.MarkSlotsOf(element);
            for (DaySlot const& slot : map.Slots())
                if (slot.from < 0 || slot.to > 1440 || slot.from >= slot.to)
                    Fail("a day program lists an impossible slot");
        }
    }

    list.UpdateList();
    if (list.rowCount() != rowsBefore + static_cast<int>(pasted.size()))
        Fail("the list does not show every table after the paste");
    for (int row = 0; row < list.rowCount(); ++row)
        if (pastedIds.count(list.RowAt(row)->element->Value(L"id", L"")) == 0
            && idsBefore.count(list.RowAt(row)->element->Value(L"id", L"")) == 0)
            Fail("the list shows a table that is neither old nor pasted");
    // The tables that were there come first in each container and are unchanged.
    for (int kind = 0; kind < kTimeTableKinds; ++kind) {
        XmlNode const* now = TimeTableContainer(&document, kind)->FirstChild();
        for (std::string const& old : original.tables[kind]) {
            if (!now || Text(now) != old)
                Fail("a table of the document changed");
            now = now->NextSibling();
        }
    }
    return 0;
}
