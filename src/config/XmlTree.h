#pragma once
// The tree layer below XmlDocument's interface: node structure, the edits that record an
// undo journal, and copies that borrow from the element they copy. Only src/config sees
// it; XmlDesign.md explains how the pieces fit.
#include "XmlDocument.h"
#include "XmlStorage.h"

#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <vector>

namespace zo::xml {

using XmlNode = XmlDocument::XmlNode;

// One change of a journaled document, with what undoing it needs.
struct JournalRecord {
    enum Kind { Insert, Remove, Move, Text, Tag };
    JournalRecord(Kind k, XmlNode* n, XmlNode* p = nullptr, XmlNode* prev = nullptr)
        : kind(k), node(n), parent(p), previous(prev) {}
    Kind kind;
    XmlNode* node;
    XmlNode* parent = nullptr;      // Remove, Move: where the node stood
    XmlNode* previous = nullptr;    // Remove, Move: its previous sibling then (null: first)
    TagRecord const* tag = nullptr; // Tag: the tag before
    std::string text;               // Text: the text before
};

// What a document knows of other documents, made when first needed.
struct Links {
    // Borrowing: this document is a copy whose lazy elements still read the lender's.
    XmlDocument* lender = nullptr;
    // Elements of this document made from an element of the lender, once they stopped
    // being lazy: the element each came from (lazy ones keep it in m_first).
    std::unordered_map<XmlNode const*, XmlNode*> origins;
    // Lending: the copies that borrow from this document.
    std::vector<XmlDocument*> borrowers;
    bool journaling = false;
    std::vector<JournalRecord> journal;
    // Change notes: the children of `watched` that a change reached since they were taken.
    XmlNode const* watched = nullptr;
    std::vector<XmlNode const*> noted;
    bool notesLost = false;
    // Notes the child of the watched element that holds node (node itself included).
    void NoteBelow(XmlNode const* node);
};

// The tree's own operations: structure without bookkeeping (for nodes that no journal,
// copy or note needs to hear of, and for the journal itself), lazy copies and the journal.
class Tree {
public:
    static Storage& StorageOf(XmlNode const* node) { return *Storage::Of(node); }
    static XmlDocument& DocumentOf(XmlNode const* node)
    {
        return *static_cast<XmlDocument*>(Storage::Of(node)->Owner());
    }
    static Links* LinksOf(XmlDocument const& doc) { return doc.m_links.get(); }
    static Links& EnsureLinks(XmlDocument& doc);

    static XmlNode* NewNode(Storage& storage, TagRecord const* tag, unsigned arena = 0);
    // Frees the node and everything below it (not linked any more), without recursion.
    static void Destroy(Storage& storage, XmlNode* node);
    // Links child after `previous` (null: as the first child).
    static void Link(XmlNode* parent, XmlNode* child, XmlNode* previous);
    static void Unlink(XmlNode* child);
    static XmlNode* LastChild(XmlNode const* parent);
    static void SetText(Storage& storage, XmlNode* node, std::string_view utf8, unsigned arena = 0);
    static std::wstring const& WideText(XmlNode const* node);

    // Lazy elements (XmlLazyCopy.cpp).
    static bool IsLazy(XmlNode const* node) { return (node->m_childCount & XmlNode::kLazyBit) != 0; }
    static XmlNode* LazySource(XmlNode const* node) { return IsLazy(node) ? node->m_first : nullptr; }
    // The children a reader sees: those of the lazy element's source, or the node's own.
    static XmlNode const* ChildrenOwner(XmlNode const* node) { return IsLazy(node) ? node->m_first : node; }
    static bool HasChildren(XmlNode const* node) { return node->m_first != nullptr; }
    // Gives a lazy node children of its own (one level, each lazy in turn).
    static void Materialize(XmlNode* node);
    // Forgets what a lazy node borrows, leaving it without children.
    static void DropLazy(XmlNode* node);
    // The lender's element that a node of a borrowing copy was made from, or null.
    static XmlNode* OriginOf(XmlNode const* node);
    // A lazy copy of `from` into the empty document `doc`; false when `from` cannot be
    // lent (its document itself borrows), and doc is left as it was.
    static bool MakeLazyCopy(XmlDocument& doc, XmlNode const& from);
    // Makes every lazy element of the borrower a full copy and ends its borrowing.
    static void Detach(XmlDocument& borrower);
    // Before a change of doc: every copy that borrows from it, but `except`, is detached.
    static void DetachBorrowers(XmlDocument& doc, XmlDocument const* except);
    // Ends all borrowing from and by doc (before doc is emptied or destroyed).
    static void Unlink(XmlDocument& doc);
    // Ends doc's own borrowing, whatever its lazy elements still read.
    static void StopBorrowing(XmlDocument& doc);

    // Journal (XmlJournal.cpp).
    static void UndoJournal(XmlDocument& doc);
    static void EndJournal(XmlDocument& doc);
    static void Revert(XmlDocument& doc, std::vector<JournalRecord>& records);
};

// One change of one document: every write to a tree goes through an Edit. Making it lets
// the copies that borrow from the document take what they need first; while the document
// keeps a journal, each change is recorded so that it can be undone.
class Edit {
public:
    // except: a copy that borrows from doc and is being assigned back over it.
    explicit Edit(XmlDocument& doc, XmlDocument const* except = nullptr);
    Storage& Memory() { return m_storage; }

    XmlNode* NewNode(TagRecord const* tag) { return Tree::NewNode(m_storage, tag); }
    // Links a new node after `previous` (null: first). Unrecorded links serve nodes below
    // one that is itself new in this edit: undoing that one removes them with it.
    void Insert(XmlNode* parent, XmlNode* child, XmlNode* previous, bool record = true);
    // Moves a node of this document after `previous` in parent.
    void Move(XmlNode* node, XmlNode* parent, XmlNode* previous);
    // Unlinks a child and destroys it (keeps it while the journal may need it).
    void Remove(XmlNode* child);
    void RemoveChildren(XmlNode* node);
    void SetText(XmlNode* node, std::string_view utf8);
    void SetTag(XmlNode* node, TagRecord const* tag);

    // Makes target's children a deep copy of source's (any document, lazy elements read
    // through), reusing target's nodes where they stand. fresh: target is new in this edit.
    void CopyChildren(XmlNode* target, XmlNode const* source, bool fresh = false);
    // Assigns a borrowing copy's element back over the element it was made from: only
    // what differs is rewritten, unchanged elements stay where they are.
    void Reconcile(XmlNode* target, XmlNode const* copy);

private:
    void NoteBelow(XmlNode const* node) { m_links->NoteBelow(node); }

    Storage& m_storage;
    Links* m_links;
    bool m_journal;
    bool m_noting;
};

} // namespace zo::xml
