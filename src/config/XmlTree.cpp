#include "XmlTree.h"

#include "platform/tools/ZoUtf.h"

#include <cstring>
#include <new>

namespace zo::xml {

static_assert(sizeof(XmlNode) == Storage::kSlotSize, "a node fills one slot, one cache line");

namespace {

std::wstring const& EmptyWide()
{
    static std::wstring const empty;
    return empty;
}

void DropWideText(Storage& storage, std::wstring*& wide)
{
    if (wide) {
        storage.FreeWide(wide);
        wide = nullptr;
    }
}

} // namespace

Links& Tree::EnsureLinks(XmlDocument& doc)
{
    if (!doc.m_links)
        doc.m_links = std::make_unique<Links>();
    return *doc.m_links;
}

XmlNode* Tree::NewNode(Storage& storage, TagRecord const* tag, unsigned arena)
{
    auto* node = new (storage.NewSlot(arena)) XmlNode();
    node->m_tag = tag;
    return node;
}

void Tree::Destroy(Storage& storage, XmlNode* node)
{
    // Post-order walk through the links themselves: no stack, whatever the depth. The
    // node is not linked any more. A lazy node's m_first is not a child and is not entered.
    Links* links = LinksOf(*static_cast<XmlDocument*>(storage.Owner()));
    bool const origins = links && !links->origins.empty();
    XmlNode* current = node;
    while (true) {
        if (!IsLazy(current) && current->m_first) {
            current = current->m_first;
            continue;
        }
        // current has no children left; it is its parent's first child (or the node).
        XmlNode* next = current->m_next;
        XmlNode* parent = current->m_parent;
        bool const last = current == node;
        if (!last)
            parent->m_first = next;
        if (origins)
            links->origins.erase(current);
        if (current->m_text)
            storage.FreeText(const_cast<char*>(current->m_text), current->m_textLength);
        if (current->m_wideText)
            storage.FreeWide(current->m_wideText);
        current->~XmlNode();
        storage.FreeSlot(current);
        if (last)
            return;
        current = next ? next : parent;
    }
}

void Tree::Link(XmlNode* parent, XmlNode* child, XmlNode* previous)
{
    child->m_parent = parent;
    ++parent->m_childCount;
    XmlNode* first = parent->m_first;
    if (!first) {
        parent->m_first = child;
        child->m_prevCyclic = child;
        child->m_next = nullptr;
        return;
    }
    if (!previous) {
        child->m_next = first;
        child->m_prevCyclic = first->m_prevCyclic;
        first->m_prevCyclic = child;
        parent->m_first = child;
        return;
    }
    child->m_next = previous->m_next;
    child->m_prevCyclic = previous;
    previous->m_next = child;
    if (child->m_next)
        child->m_next->m_prevCyclic = child;
    else
        first->m_prevCyclic = child;
}

void Tree::Unlink(XmlNode* child)
{
    XmlNode* parent = child->m_parent;
    XmlNode* first = parent->m_first;
    if (child == first) {
        parent->m_first = child->m_next;
        if (child->m_next)
            child->m_next->m_prevCyclic = child->m_prevCyclic;
    } else {
        child->m_prevCyclic->m_next = child->m_next;
        if (child->m_next)
            child->m_next->m_prevCyclic = child->m_prevCyclic;
        else
            first->m_prevCyclic = child->m_prevCyclic;
    }
    --parent->m_childCount;
    child->m_parent = nullptr;
    child->m_next = nullptr;
    child->m_prevCyclic = nullptr;
}

XmlNode* Tree::LastChild(XmlNode const* parent)
{
    return parent->m_first ? parent->m_first->m_prevCyclic : nullptr;
}

void Tree::SetText(Storage& storage, XmlNode* node, std::string_view utf8, unsigned arena)
{
    if (node->TextUtf8() == utf8)
        return;
    DropWideText(storage, node->m_wideText);
    if (Storage::FitsInPlace(node->m_textLength, utf8.size())) {
        std::memcpy(const_cast<char*>(node->m_text), utf8.data(), utf8.size());
        node->m_textLength = static_cast<std::uint32_t>(utf8.size());
        return;
    }
    char* text = utf8.empty() ? nullptr : storage.AllocText(utf8.size(), arena);
    if (text)
        std::memcpy(text, utf8.data(), utf8.size());
    if (node->m_text)
        storage.FreeText(const_cast<char*>(node->m_text), node->m_textLength);
    node->m_text = text;
    node->m_textLength = static_cast<std::uint32_t>(utf8.size());
}

std::wstring const& Tree::WideText(XmlNode const* node)
{
    if (node->m_textLength == 0)
        return EmptyWide();
    if (!node->m_wideText)
        node->m_wideText = StorageOf(node).NewWide(ZoFromUtf8(node->TextUtf8()));
    return *node->m_wideText;
}

// ---------------------------------------------------------------------------------------
// Edits

Edit::Edit(XmlDocument& doc, XmlDocument const* except)
    : m_storage(*doc.m_storage)
    , m_links(doc.m_links.get())
    , m_journal(m_links && m_links->journaling)
    , m_noting(m_links && m_links->watched)
{
    if (m_links && !m_links->borrowers.empty())
        Tree::DetachBorrowers(doc, except);
}

void Links::NoteBelow(XmlNode const* node)
{
    constexpr std::size_t kMaxNotes = 4096; // past that, reading everything again is as quick
    if (!watched)
        return;
    for (; node; node = node->Parent()) {
        if (node == watched)
            return;
        if (node->Parent() == watched) {
            if (noted.size() < kMaxNotes)
                noted.push_back(node);
            else
                notesLost = true;
            return;
        }
    }
}

void Edit::Insert(XmlNode* parent, XmlNode* child, XmlNode* previous, bool record)
{
    Tree::Link(parent, child, previous);
    if (m_noting && record)
        NoteBelow(child);
    if (m_journal && record)
        m_links->journal.emplace_back(JournalRecord::Insert, child);
}

void Edit::Move(XmlNode* node, XmlNode* parent, XmlNode* previous)
{
    if (m_journal) {
        XmlNode* oldParent = node->m_parent;
        XmlNode* oldPrevious = oldParent->m_first == node ? nullptr : node->m_prevCyclic;
        m_links->journal.emplace_back(JournalRecord::Move, node, oldParent, oldPrevious);
    }
    if (m_noting)
        NoteBelow(node);
    Tree::Unlink(node);
    Tree::Link(parent, node, previous);
    if (m_noting)
        NoteBelow(node);
}

void Edit::Remove(XmlNode* child)
{
    XmlNode* parent = child->m_parent;
    XmlNode* previous = parent->m_first == child ? nullptr : child->m_prevCyclic;
    if (m_noting) {
        NoteBelow(parent);
        // Removing the watched element itself (or what holds it) ends what notes can tell.
        for (XmlNode const* up = m_links->watched; up; up = up->m_parent)
            if (up == child)
                m_links->notesLost = true;
    }
    Tree::Unlink(child);
    if (m_journal)
        m_links->journal.emplace_back(JournalRecord::Remove, child, parent, previous);
    else
        Tree::Destroy(m_storage, child);
}

void Edit::RemoveChildren(XmlNode* node)
{
    if (Tree::IsLazy(node)) {
        Tree::DropLazy(node);
        return;
    }
    while (XmlNode* last = Tree::LastChild(node))
        Remove(last);
}

void Edit::SetText(XmlNode* node, std::string_view utf8)
{
    if (node->TextUtf8() == utf8)
        return;
    if (m_noting)
        NoteBelow(node);
    if (m_journal)
        m_links->journal.emplace_back(JournalRecord::Text, node).text = node->TextUtf8();
    Tree::SetText(m_storage, node, utf8);
}

void Edit::SetTag(XmlNode* node, TagRecord const* tag)
{
    if (node->m_tag == tag)
        return;
    if (m_noting)
        NoteBelow(node);
    if (m_journal)
        m_links->journal.emplace_back(JournalRecord::Tag, node).tag = node->m_tag;
    node->m_tag = tag;
}

void Edit::CopyChildren(XmlNode* target, XmlNode const* source, bool fresh)
{
    // Walks both trees side by side and rewrites the target's nodes where they stand: a
    // copy assigned over a similar element allocates and frees almost nothing. A lazy
    // element on the source side is read through its own source.
    TagTranslator tags(m_storage);
    struct Pending {
        XmlNode const* from;
        XmlNode* to;
        bool fresh;
    };
    std::vector<Pending> pending{{source, target, fresh}};
    while (!pending.empty()) {
        Pending const step = pending.back();
        pending.pop_back();
        if (Tree::IsLazy(step.to))
            Tree::DropLazy(step.to);
        XmlNode* reuse = step.fresh ? nullptr : step.to->m_first;
        XmlNode* previous = nullptr;
        for (XmlNode const* child = Tree::ChildrenOwner(step.from)->m_first; child; child = child->m_next) {
            XmlNode* copy = reuse;
            bool childFresh = false;
            if (copy) {
                reuse = reuse->m_next;
                if (Tree::IsLazy(copy))
                    Tree::DropLazy(copy);
                SetTag(copy, tags.Translate(child->m_tag));
                SetText(copy, child->TextUtf8());
            } else {
                copy = NewNode(tags.Translate(child->m_tag));
                Tree::SetText(m_storage, copy, child->TextUtf8());
                Insert(step.to, copy, previous, !step.fresh);
                childFresh = true;
            }
            previous = copy;
            if (Tree::HasChildren(child) || (!childFresh && copy->m_first))
                pending.push_back({child, copy, childFresh});
        }
        while (reuse) {
            XmlNode* next = reuse->m_next;
            Remove(reuse);
            reuse = next;
        }
    }
}

void Edit::Reconcile(XmlNode* target, XmlNode const* copy)
{
    // Each element of the copy made from an element of the target (lazy ones still
    // reading it) is matched with that very element, which keeps its place, its identity
    // and, for a lazy one, its whole subtree; only the rest is copied or removed.
    TagTranslator tags(m_storage);
    SetTag(target, tags.Translate(copy->m_tag));
    SetText(target, copy->TextUtf8());
    std::vector<std::pair<XmlNode*, XmlNode const*>> pending{{target, copy}};
    while (!pending.empty()) {
        auto [to, from] = pending.back();
        pending.pop_back();
        if (Tree::IsLazy(from))
            continue; // its children are still exactly to's
        XmlNode* cursor = to->m_first;
        XmlNode* previous = nullptr;
        for (XmlNode const* child = from->m_first; child; child = child->m_next) {
            XmlNode* same = Tree::IsLazy(child) ? child->m_first : Tree::OriginOf(child);
            XmlNode* node;
            if (same && same->m_parent == to) {
                node = same;
                SetTag(node, tags.Translate(child->m_tag));
                SetText(node, child->TextUtf8());
                if (node == cursor)
                    cursor = cursor->m_next;
                else
                    Move(node, to, previous);
                if (!Tree::IsLazy(child))
                    pending.emplace_back(node, child);
            } else {
                node = NewNode(tags.Translate(child->m_tag));
                Tree::SetText(m_storage, node, child->TextUtf8());
                Insert(to, node, previous);
                if (Tree::HasChildren(child))
                    CopyChildren(node, child, true);
            }
            previous = node;
        }
        while (cursor) {
            XmlNode* next = cursor->m_next;
            Remove(cursor);
            cursor = next;
        }
    }
}

} // namespace zo::xml
