#pragma once
#include "XmlDocument.h"

#include <memory>
#include <vector>

namespace zo::xml {
struct JournalRecord;
}

// A change of one document taken out of its journal, kept for undo and redo after the
// journal ended: only what the change touched (the elements it removed, the texts and tags
// it replaced), never a copy of the document. It must not outlive its document, nor a
// Create or Parse of it.
class XmlChange {
public:
    // Ends doc's journal as EndJournal does, but hands its changes out; null when nothing
    // changed.
    static std::unique_ptr<XmlChange> TakeJournal(XmlDocument& doc);
    ~XmlChange(); // frees the elements that the change removed
    XmlChange(XmlChange const&) = delete;
    XmlChange& operator=(XmlChange const&) = delete;

    // Undoes the change (the document's later changes having been reverted first) and
    // becomes its reversal: reverting again redoes what was undone.
    void Revert();
    XmlDocument& Document() const { return *m_doc; }
    // The recorded changes of single elements, for memory reports.
    std::size_t Size() const;

private:
    explicit XmlChange(XmlDocument& doc);
    XmlDocument* m_doc;
    std::vector<zo::xml::JournalRecord> m_records;
};
