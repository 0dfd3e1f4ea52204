#pragma once
#include "platform/tools/ZoBasicString.h"
#include <cstddef>
#include <cstdint>
#include <functional>
#include <iterator>
#include <memory>
#include <string_view>
#include <vector>

namespace zo::xml {
class Storage;
struct TagRecord;
struct Links;
class Tree;
class Edit;
}

// The in-memory XML tree of every document the module edits.
//
// An element has a tag, an optional text of its own and an ordered list of child
// elements. Properties ("attributes" in the dialogs' words) are child elements whose tag is
// the key and whose text is the value. Element pointers stay valid until the element, an
// ancestor or the document is removed, reset or assigned over.
//
// Memory: the document owns all of its nodes and texts (pooled, texts kept as UTF-8), and
// interns its tags, so that large documents load, copy and close quickly. Nothing here
// recurses once per level: copy, destruction, search and writing all walk iteratively.
// A copy of an element costs only what is read or changed of it, and assigning it back
// over the element it came from rewrites only what changed (see XmlDesign.md).
class XmlDocument {
public:
    class XmlNode;

    XmlDocument();
    // A new, independent document whose root is a deep copy of the given element.
    explicit XmlDocument(XmlNode const& from);
    ~XmlDocument();
    XmlDocument(XmlDocument const&) = delete;
    XmlDocument& operator=(XmlDocument const&) = delete;

    // Discards any content and makes a new root with that tag.
    void Create(wchar_t const* tag);
    // Replaces the content with the parsed tree; false (and an empty document) when the
    // text is not well-formed XML. Entities declared in a DOCTYPE are never expanded and
    // nothing outside the text is read.
    bool Parse(char const* text);
    bool Parse(char const* text, std::size_t length);
    // The parser's reason for the last failed Parse, and the byte offset where it stopped.
    std::string const& ErrorText() const;
    std::size_t ErrorOffset() const;

    bool IsOK() const;
    XmlNode* Root();
    XmlNode const* Root() const;
    XmlNode* Node(wchar_t const* path);

    // Bytes held by the document's pools (nodes, texts, tags), for memory reports.
    std::size_t MemoryUsed() const;

    // The journal: from BeginJournal on, every change of the tree is recorded, so that
    // UndoJournal() can put the tree back exactly as it was (the same elements, so pointers
    // taken before BeginJournal are valid again). Elements removed meanwhile are kept
    // until the journal ends. EndJournal() keeps the changes. Create and Parse end it.
    void BeginJournal();
    bool JournalHasChanges() const;
    void UndoJournal();
    void EndJournal();

    // Change notes, for a list that rebuilds its rows from the tree after every change and
    // reads again only what changed. After NoteChangesBelow(parent), every change inside
    // one of parent's children, or of the child itself, and every child inserted, notes
    // that child. TakeChangedChildren hands out the children noted since the last call
    // (a child may be noted more than once, and one noted may since have been removed) and
    // starts afresh; false when the notes cannot tell what changed (not noting for this
    // parent, an undo, too many changes, the document replaced): then read everything.
    void NoteChangesBelow(XmlNode const* parent);
    bool TakeChangedChildren(XmlNode const* parent, std::vector<XmlNode const*>& changed);

    // Tags are interned per document: two elements of this document have equal tags exactly
    // when their TagKey()s are equal. TagKey(tag) is null when no element of this document
    // has ever had that tag. Lets a loop over many elements compare tags as pointers.
    void const* TagKey(std::wstring_view tag) const;

private:
    friend class XmlNode;
    friend class zo::xml::Tree;
    friend class zo::xml::Edit;
    void Reset();
    std::unique_ptr<zo::xml::Storage> m_storage;
    std::unique_ptr<zo::xml::Links> m_links; // copies borrowing from here or lent to, journal
    XmlNode* m_root = nullptr;
    std::string m_error;
    std::size_t m_errorOffset = 0;
};

class XmlDocument::XmlNode {
public:
    template <class NodePtr>
    class basic_iterator {
    public:
        using iterator_category = std::forward_iterator_tag;
        using value_type = NodePtr;
        using difference_type = std::ptrdiff_t;
        using pointer = NodePtr*;
        using reference = NodePtr;
        basic_iterator() = default;
        explicit basic_iterator(NodePtr node) : m_node(node) {}
        NodePtr operator*() const { return m_node; }
        basic_iterator& operator++() { m_node = m_node->m_next; return *this; }
        basic_iterator operator++(int) { basic_iterator old = *this; ++*this; return old; }
        bool operator==(basic_iterator const& other) const { return m_node == other.m_node; }
        bool operator!=(basic_iterator const& other) const { return m_node != other.m_node; }
    private:
        NodePtr m_node = nullptr;
    };
    using iterator = basic_iterator<XmlNode*>;
    using const_iterator = basic_iterator<XmlNode const*>;

    XmlNode(XmlNode const&) = delete;

    // Finds the element the path designates, starting at this element (a leading "/" changes
    // nothing). Steps are separated by "/"; a step is a tag, or tag?key=value? for the first
    // child with that tag whose property key has exactly that value. Never creates anything.
    XmlNode* Node(wchar_t const* path);
    XmlNode const* Node(wchar_t const* path) const;
    // The same with the path built from a format: %s and %ls (wide string), %d, %06X, %%.
    XmlNode* NodeV(wchar_t const* format, ...);
    XmlNode const* NodeV(wchar_t const* format, ...) const;

    // Appends an empty child with that tag (after `after` when it is a child of this one).
    XmlNode* NewChild(wchar_t const* tag, XmlNode* after = nullptr);
    // Unlinks a direct child and destroys it with its subtree.
    void RemoveChild(XmlNode* child);

    // The text of property `key` (a path is allowed), or a copy of def when there is none.
    ZoBasicString<wchar_t> Value(wchar_t const* key, wchar_t const* def) const;
    // The element's own text.
    ZoBasicString<wchar_t> const& Value() const;
    void SetValue(wchar_t const* key, wchar_t const* value);
    void SetValue(wchar_t const* key, ZoBasicString<wchar_t> const& value);
    void SetValue(wchar_t const* text);
    void SetValue(ZoBasicString<wchar_t> const& text);
    // The element's own text given as it is stored: well-formed UTF-8 (NUL characters dropped).
    void SetValueUtf8(std::string_view text);
    // Removes property `key`; true when there was one.
    bool EraseTag(wchar_t const* key);

    ZoBasicString<wchar_t> const& Tag() const;
    int Size() const { return static_cast<int>(m_childCount & ~kLazyBit); }

    iterator ChildsBegin() { return iterator(FirstChild()); }
    iterator ChildsEnd() { return iterator(); }
    const_iterator ChildsBegin() const { return const_iterator(FirstChild()); }
    const_iterator ChildsEnd() const { return const_iterator(); }

    // Removes text and children, keeping the tag.
    void Reset();
    // Makes this element a deep copy of other (tag, text, all descendants) in place; this
    // pointer stays valid, pointers into the old subtree do not. Other may belong to another
    // document (it is left unchanged) or lie inside this element's subtree.
    XmlNode& operator=(XmlNode const& other);

    // The XML text of this element and its subtree, UTF-8, into out (replacing it).
    void CreateXmlCode(ZoBasicString<char>& out) const;
    // Appends it to out instead; with indent > 0, elements are put on lines of their own,
    // indented by that many blanks a level (down to 32 levels, deeper ones as the 32nd), in a
    // form that Parse reads back as the same tree.
    void AppendXmlCode(ZoBasicString<char>& out, int indent = 0) const;
    // The same text handed out in blocks of about a megabyte as they are ready, so that a
    // large document is never held whole as text; stops and returns false when write does.
    bool WriteXmlCode(std::function<bool(std::string_view)> const& write, int indent = 0) const;

    // Fast accessors beyond the dialogs' interface.
    XmlNode* Parent() const { return m_parent; }
    XmlNode* FirstChild() const { return (m_childCount & kLazyBit) ? Materialized() : m_first; }
    XmlNode* NextSibling() const { return m_next; }
    // First direct child with this tag, or null (no path parsing).
    XmlNode* Child(std::wstring_view tag) const;
    // The element's own text as stored (UTF-8), without conversion.
    std::string_view TextUtf8() const { return {m_text, m_textLength}; }
    // Text of property key (a plain tag, not a path) as stored, empty when absent.
    std::string_view ValueUtf8(std::wstring_view key) const;
    // True when the tag equals this (ASCII or any text), without building a string.
    bool HasTag(std::wstring_view tag) const;
    XmlDocument* Document() const;
    // This element's interned tag (see XmlDocument::TagKey).
    void const* TagKey() const { return m_tag; }

private:
    friend class XmlDocument;
    friend class zo::xml::Tree;
    friend class zo::xml::Edit;
    XmlNode() = default;
    ~XmlNode() = default;
    // Set in m_childCount while the children are still those of the element this one was
    // copied from (m_first then points at that element): see XmlDesign.md.
    static constexpr std::uint32_t kLazyBit = 0x80000000u;
    XmlNode* Materialized() const;
    // The writer behind AppendXmlCode and WriteXmlCode: appends to out, handing full
    // blocks to write when there is one.
    bool Write(std::string& out, int indent, std::function<bool(std::string_view)> const* write) const;

    zo::xml::TagRecord const* m_tag = nullptr;
    XmlNode* m_parent = nullptr;
    XmlNode* m_first = nullptr;  // first child, or the element copied from while lazy
    XmlNode* m_next = nullptr;
    XmlNode* m_prevCyclic = nullptr; // previous sibling; the first child's points at the last
    char const* m_text = nullptr;    // UTF-8, not terminated
    std::uint32_t m_textLength = 0;
    std::uint32_t m_childCount = 0;
    mutable std::wstring* m_wideText = nullptr; // built on first Value()
};
