// The undo journal of a document: the host opens it before a dialog that changes the live
// tree at once (the events list deletes and pastes in place) and undoes it on Cancel.
#include "XmlChange.h"
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

void Tree::Revert(XmlDocument& doc, std::vector<JournalRecord>& records)
{
    EndJournal(doc);
    DetachBorrowers(doc, nullptr);
    Links& links = EnsureLinks(doc);
    Storage& storage = *doc.m_storage;
    // As UndoJournal does, backwards; each step is recorded as its reversal, in the order
    // taken, so that reverting the reversal walks the original changes forwards again. An
    // element taken out is kept (the reversal puts it back), never destroyed here.
    std::vector<JournalRecord> reversal;
    reversal.reserve(records.size());
    auto previousOf = [](XmlNode* node) {
        return node->m_parent->m_first == node ? nullptr : node->m_prevCyclic;
    };
    for (auto record = records.rbegin(); record != records.rend(); ++record) {
        XmlNode* node = record->node;
        switch (record->kind) {
        case JournalRecord::Insert:
            links.NoteBelow(node->m_parent);
            // Taking out the watched element itself (or what holds it) ends what notes tell.
            for (XmlNode const* up = links.watched; up; up = up->m_parent)
                if (up == node)
                    links.notesLost = true;
            reversal.emplace_back(JournalRecord::Remove, node, node->m_parent, previousOf(node));
            Unlink(node);
            break;
        case JournalRecord::Remove:
            Link(record->parent, node, record->previous);
            links.NoteBelow(node);
            reversal.emplace_back(JournalRecord::Insert, node);
            break;
        case JournalRecord::Move:
            links.NoteBelow(node);
            reversal.emplace_back(JournalRecord::Move, node, node->m_parent, previousOf(node));
            Unlink(node);
            Link(record->parent, node, record->previous);
            links.NoteBelow(node);
            break;
        case JournalRecord::Text:
            reversal.emplace_back(JournalRecord::Text, node).text = node->TextUtf8();
            SetText(storage, node, record->text);
            links.NoteBelow(node);
            break;
        case JournalRecord::Tag:
            reversal.emplace_back(JournalRecord::Tag, node).tag = node->m_tag;
            node->m_tag = record->tag;
            links.NoteBelow(node);
            break;
        }
    }
    records = std::move(reversal);
}

} // namespace zo::xml

XmlChange::XmlChange(XmlDocument& doc)
    : m_doc(&doc)
{
}

XmlChange::~XmlChange()
{
    // The removed elements were kept for reverting the change.
    using zo::xml::JournalRecord;
    using zo::xml::Tree;
    for (JournalRecord const& record : m_records) {
        if (record.kind == JournalRecord::Remove)
            Tree::Destroy(Tree::StorageOf(record.node), record.node);
    }
}

std::unique_ptr<XmlChange> XmlChange::TakeJournal(XmlDocument& doc)
{
    zo::xml::Links* links = zo::xml::Tree::LinksOf(doc);
    if (!doc.JournalHasChanges()) {
        doc.EndJournal();
        return nullptr;
    }
    std::unique_ptr<XmlChange> change(new XmlChange(doc));
    change->m_records = std::move(links->journal);
    links->journal.clear();
    links->journaling = false;
    return change;
}

void XmlChange::Revert()
{
    zo::xml::Tree::Revert(*m_doc, m_records);
}

std::size_t XmlChange::Size() const
{
    return m_records.size();
}

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

