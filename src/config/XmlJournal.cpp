// The undo journal of a document: the host opens it before a dialog that changes the live
// tree at once (the events list deletes and pastes in place) and undoes it on Cancel.
#include "XmlTree.h"

namespace zo::xml {

void Tree::UndoJournal(XmlDocument& doc)
{
    Links* links = LinksOf(doc);
    if (!links || !links->journaling)
        return;
    DetachBorrowers(doc, nullptr);
    Storage& storage = *doc.m_storage;
    auto& journal = links->journal;
    // Backwards, each record sees the tree exactly as it was right after its change. Each
    // undone change is noted as a change of its own would be: an element put back is an
    // insertion, one taken out a removal.
    for (auto record = journal.rbegin(); record != journal.rend(); ++record) {
        XmlNode* node = record->node;
        switch (record->kind) {
        case JournalRecord::Insert:
            links->NoteBelow(node->m_parent);
            Unlink(node);
            Destroy(storage, node);
            break;
        case JournalRecord::Remove:
            Link(record->parent, node, record->previous);
            links->NoteBelow(node);
            break;
        case JournalRecord::Move:
            links->NoteBelow(node);
            Unlink(node);
            Link(record->parent, node, record->previous);
            links->NoteBelow(node);
            break;
        case JournalRecord::Text:
            SetText(storage, node, record->text);
            links->NoteBelow(node);
            break;
        case JournalRecord::Tag:
            node->m_tag = record->tag;
            links->NoteBelow(node);
            break;
        }
    }
    journal.clear();
    links->journaling = false;
}

void Tree::EndJournal(XmlDocument& doc)
{
    Links* links = LinksOf(doc);
    if (!links || !links->journaling)
        return;
    // Removed elements were only kept for undoing.
    Storage& storage = *doc.m_storage;
    for (JournalRecord const& record : links->journal) {
        if (record.kind == JournalRecord::Remove)
            Destroy(storage, record.node);
    }
    links->journal.clear();
    links->journal.shrink_to_fit();
    links->journaling = false;
}

} // namespace zo::xml

void XmlDocument::BeginJournal()
{
    using zo::xml::Tree;
    Tree::EndJournal(*this);
    if (!m_storage)
        return;
    // A journaled document never borrows: undoing must not meet lazy elements.
    Tree::Detach(*this);
    Tree::EnsureLinks(*this).journaling = true;
}

bool XmlDocument::JournalHasChanges() const
{
    return m_links && m_links->journaling && !m_links->journal.empty();
}

void XmlDocument::UndoJournal()
{
    zo::xml::Tree::UndoJournal(*this);
}

void XmlDocument::EndJournal()
{
    zo::xml::Tree::EndJournal(*this);
}
