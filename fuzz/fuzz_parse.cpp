// Any bytes given to XmlDocument::Parse: no crash, no sanitizer report, and when the text
// parses, what CreateXmlCode writes must parse again and be written back identically (the
// writer's output is a fixed point of parse-and-write), and the indented text the editor
// saves as a project file must read back as the same tree. Then the parsed tree is edited
// through a working copy (which borrows from it) and assigned back, under a journal, with
// edits drawn from the input's bytes: the result must equal the same edits made on a full
// copy, and undoing the journal must give the original text back.
#include "XmlFileText.h"
#include "config/XmlDocument.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

[[noreturn]] void Fail(char const* what, std::string const& first, std::string const& second)
{
    std::fprintf(stderr, "fuzz_parse: %s\n--- first write (%zu bytes) ---\n%.2000s\n--- second (%zu bytes) ---\n%.2000s\n",
                 what, first.size(), first.c_str(), second.size(), second.c_str());
    std::abort();
}

// The n-th element of the tree in document order (wrapping), walked without recursion.
XmlDocument::XmlNode* NthElement(XmlDocument::XmlNode* root, unsigned n)
{
    std::vector<XmlDocument::XmlNode*> all;
    std::vector<XmlDocument::XmlNode*> pending{root};
    while (!pending.empty() && all.size() < 4096) {
        XmlDocument::XmlNode* node = pending.back();
        pending.pop_back();
        all.push_back(node);
        std::vector<XmlDocument::XmlNode*> children(node->ChildsBegin(), node->ChildsEnd());
        pending.insert(pending.end(), children.rbegin(), children.rend());
    }
    return all[n % all.size()];
}

// One edit, chosen by two bytes, applied in the same way to whichever tree is given.
void ApplyEdit(XmlDocument::XmlNode* root, std::uint8_t what, std::uint8_t where)
{
    XmlDocument::XmlNode* node = NthElement(root, where);
    switch (what % 6) {
    case 0: node->SetValue(L"name", L"Edited"); break;
    case 1: node->NewChild(L"added")->SetValue(L"x"); break;
    case 2: if (node != root && node->Parent()) node->Parent()->RemoveChild(node); break;
    case 3: node->SetValue(std::to_wstring(what)); break;
    case 4: node->Reset(); break;
    default: *node = *NthElement(root, where / 2u); break;
    }
}

std::string Text(XmlDocument::XmlNode const* node)
{
    std::string out;
    node->CreateXmlCode(out);
    return out;
}

void CheckWorkingCopy(XmlDocument& live, std::uint8_t const* data, std::size_t size)
{
    std::string const before = Text(live.Root());
    // The reference: the same edits on a document parsed from the text, never borrowing.
    XmlDocument reference;
    reference.Parse(before.data(), before.size());
    live.BeginJournal();
    {
        XmlDocument copy(*live.Root());
        for (std::size_t i = 0; i + 1 < size && i < 16; i += 2) {
            ApplyEdit(copy.Root(), data[i], data[i + 1]);
            ApplyEdit(reference.Root(), data[i], data[i + 1]);
        }
        if (Text(copy.Root()) != Text(reference.Root()))
            Fail("a working copy differs from a full copy", Text(copy.Root()), Text(reference.Root()));
        if (Text(live.Root()) != before)
            Fail("editing a working copy changed its source", before, Text(live.Root()));
        *live.Root() = *copy.Root();
        if (Text(live.Root()) != Text(reference.Root()))
            Fail("a working copy assigned back differs", Text(live.Root()), Text(reference.Root()));
    }
    live.UndoJournal();
    if (Text(live.Root()) != before)
        Fail("undoing the journal does not restore the tree", before, Text(live.Root()));
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    XmlDocument doc;
    if (!doc.Parse(reinterpret_cast<char const*>(data), size))
        return 0;
    if (!doc.IsOK() || !doc.Root())
        Fail("Parse succeeded without a root", {}, {});

    std::string first;
    doc.Root()->CreateXmlCode(first);

    XmlDocument again;
    if (!again.Parse(first.data(), first.size()))
        Fail(("the written text does not parse: " + again.ErrorText()).c_str(), first, {});
    std::string second;
    again.Root()->CreateXmlCode(second);
    if (second != first)
        Fail("writing the re-parsed text gives another text", first, second);

    std::string const saved = XmlFileText(again);
    XmlDocument reread;
    if (!reread.Parse(saved.data(), saved.size()))
        Fail(("the saved file text does not parse: " + reread.ErrorText()).c_str(), saved, first);
    std::string fromFile;
    reread.Root()->CreateXmlCode(fromFile);
    if (fromFile != first)
        Fail("the saved file text reads back as another tree", first, fromFile);

    // A deep copy writes the same text as its source.
    XmlDocument copy(*again.Root());
    std::string third;
    copy.Root()->CreateXmlCode(third);
    if (third != first)
        Fail("a deep copy writes another text", first, third);

    CheckWorkingCopy(again, data, size);
    return 0;
}
