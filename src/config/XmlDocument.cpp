#include "XmlDocument.h"

#include "XmlPath.h"
#include "XmlTree.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoUtf.h"

#include <cstdarg>
#include <string>

using zo::xml::Edit;
using zo::xml::FindPath;
using zo::xml::Storage;
using zo::xml::TagRecord;
using zo::xml::Tree;
using XmlNode = XmlDocument::XmlNode;

// ---------------------------------------------------------------------------------------
// Document

XmlDocument::XmlDocument() = default;

XmlDocument::XmlDocument(XmlNode const& from)
{
    m_storage = std::make_unique<Storage>(this);
    // A copy borrows from the element it copies until it is read or changed (see
    // XmlDesign.md); where that cannot be, it is copied in full at once.
    if (Tree::MakeLazyCopy(*this, from))
        return;
    m_root = Tree::NewNode(*m_storage, m_storage->Intern(from.m_tag->utf8));
    Tree::SetText(*m_storage, m_root, from.TextUtf8());
    Edit(*this).CopyChildren(m_root, &from, true);
}

XmlDocument::~XmlDocument()
{
    Tree::Unlink(*this);
}

void XmlDocument::Reset()
{
    Tree::Unlink(*this);
    m_links.reset();
    m_storage.reset();
    m_root = nullptr;
    m_error.clear();
    m_errorOffset = 0;
}

void XmlDocument::Create(wchar_t const* tag)
{
    Reset();
    m_storage = std::make_unique<Storage>(this);
    m_root = Tree::NewNode(*m_storage, m_storage->InternWide(tag ? tag : L""));
}

std::string const& XmlDocument::ErrorText() const { return m_error; }
std::size_t XmlDocument::ErrorOffset() const { return m_errorOffset; }
bool XmlDocument::IsOK() const { return m_root != nullptr; }
XmlNode* XmlDocument::Root() { return m_root; }
XmlNode const* XmlDocument::Root() const { return m_root; }
XmlNode* XmlDocument::Node(wchar_t const* path) { return m_root ? m_root->Node(path) : nullptr; }
std::size_t XmlDocument::MemoryUsed() const { return m_storage ? m_storage->MemoryUsed() : 0; }

void const* XmlDocument::TagKey(std::wstring_view tag) const
{
    return m_storage ? m_storage->FindTagWide(tag) : nullptr;
}

// Change notes: Edit notes the watched element's children that a change reaches.
void XmlDocument::NoteChangesBelow(XmlNode const* parent)
{
    if (!m_storage)
        return;
    zo::xml::Links& links = Tree::EnsureLinks(*this);
    links.noted.clear();
    links.notesLost = false;
    links.watched = parent;
}

bool XmlDocument::TakeChangedChildren(XmlNode const* parent, std::vector<XmlNode const*>& changed)
{
    changed.clear();
    if (!m_links || !parent || m_links->watched != parent)
        return false;
    bool const known = !m_links->notesLost;
    changed.swap(m_links->noted);
    m_links->noted.clear();
    m_links->notesLost = false;
    return known;
}

// ---------------------------------------------------------------------------------------
// Elements

XmlNode* XmlNode::Node(wchar_t const* path) { return FindPath(this, path); }
XmlNode const* XmlNode::Node(wchar_t const* path) const { return FindPath(this, path); }

XmlNode* XmlNode::NodeV(wchar_t const* format, ...)
{
    va_list args;
    va_start(args, format);
    std::wstring const path = ZoVFormat(format, args);
    va_end(args);
    return FindPath(this, path.c_str());
}

XmlNode const* XmlNode::NodeV(wchar_t const* format, ...) const
{
    va_list args;
    va_start(args, format);
    std::wstring const path = ZoVFormat(format, args);
    va_end(args);
    return FindPath(this, path.c_str());
}

XmlNode* XmlNode::NewChild(wchar_t const* tag, XmlNode* after)
{
    Tree::Materialize(this);
    Edit edit(*Document());
    XmlNode* child = edit.NewNode(edit.Memory().InternWide(tag ? tag : L""));
    edit.Insert(this, child, after && after->m_parent == this ? after : Tree::LastChild(this));
    return child;
}

void XmlNode::RemoveChild(XmlNode* child)
{
    if (!child || child->m_parent != this)
        return;
    Edit(*Document()).Remove(child);
}

ZoBasicString<wchar_t> XmlNode::Value(wchar_t const* key, wchar_t const* def) const
{
    XmlNode const* property = nullptr;
    if (key) {
        // A plain key is read where it is, also through a lazy copy's element.
        wchar_t const* tag = key;
        while (*tag == L'/')
            ++tag;
        if (*tag && zo::xml::IsPlainKey(tag)) {
            std::string utf8;
            Utf16ToUtf8(utf8, std::wstring_view(tag));
            property = zo::xml::PropertyNode(this, utf8);
        } else {
            property = Node(key);
        }
    }
    if (!property)
        return def ? def : L"";
    return ZoFromUtf8(property->TextUtf8());
}

ZoBasicString<wchar_t> const& XmlNode::Value() const { return Tree::WideText(this); }

namespace {

// Texts never hold NUL characters: the written XML could not carry them.
std::string TextToStore(std::wstring_view text)
{
    std::string utf8;
    Utf16ToUtf8(utf8, text);
    if (utf8.find('\0') != std::string::npos)
        std::erase(utf8, '\0');
    return utf8;
}

} // namespace

void XmlNode::SetValue(wchar_t const* key, wchar_t const* value)
{
    if (!key)
        return;
    XmlNode* property = Node(key);
    if (!property) {
        wchar_t const* tag = key;
        while (*tag == L'/')
            ++tag;
        if (!*tag || !zo::xml::IsPlainKey(tag))
            return;
        property = NewChild(tag);
    }
    property->SetValue(value);
}

void XmlNode::SetValue(wchar_t const* key, ZoBasicString<wchar_t> const& value) { SetValue(key, value.c_str()); }

void XmlNode::SetValue(wchar_t const* text)
{
    Edit(*Document()).SetText(this, TextToStore(text ? text : L""));
}

void XmlNode::SetValue(ZoBasicString<wchar_t> const& text)
{
    Edit(*Document()).SetText(this, TextToStore(text));
}

void XmlNode::SetValueUtf8(std::string_view text)
{
    if (text.find('\0') == std::string_view::npos) {
        Edit(*Document()).SetText(this, text);
        return;
    }
    std::string stored(text);
    std::erase(stored, '\0');
    Edit(*Document()).SetText(this, stored);
}

bool XmlNode::EraseTag(wchar_t const* key)
{
    XmlNode* property = Node(key);
    if (!property || property == this || !property->m_parent)
        return false;
    property->m_parent->RemoveChild(property);
    return true;
}

ZoBasicString<wchar_t> const& XmlNode::Tag() const { return m_tag->wide; }

void XmlNode::Reset()
{
    Edit edit(*Document());
    edit.RemoveChildren(this);
    edit.SetText(this, {});
}

XmlNode& XmlNode::operator=(XmlNode const& other)
{
    if (&other == this)
        return *this;
    XmlDocument& doc = *Document();
    XmlDocument& otherDoc = *other.Document();
    if (zo::xml::Links const* links = Tree::LinksOf(otherDoc); links && links->lender == &doc) {
        // A copy that borrows from this document: put back over the element it came from,
        // only what differs is rewritten. Anywhere else it must first stop borrowing.
        if (Tree::OriginOf(&other) == this) {
            Edit(doc, &otherDoc).Reconcile(this, &other);
            return *this;
        }
        Tree::Detach(otherDoc);
    }
    Edit edit(doc);
    zo::xml::TagTranslator tags(edit.Memory());
    if (&otherDoc != &doc) {
        // Another document: other cannot lie inside this subtree, so rewrite in place.
        edit.SetTag(this, tags.Translate(other.m_tag));
        edit.SetText(this, other.TextUtf8());
        edit.CopyChildren(this, &other);
        return *this;
    }
    // The same document: copy first into a detached holder, so that other may lie inside
    // this subtree (or this inside other's) without being changed while it is read.
    XmlNode* holder = edit.NewNode(other.m_tag);
    Tree::SetText(edit.Memory(), holder, other.TextUtf8());
    edit.CopyChildren(holder, &other, true);
    edit.RemoveChildren(this);
    edit.SetTag(this, holder->m_tag);
    edit.SetText(this, holder->TextUtf8());
    while (XmlNode* child = holder->m_first) {
        Tree::Unlink(child);
        edit.Insert(this, child, Tree::LastChild(this));
    }
    Tree::Destroy(edit.Memory(), holder);
    return *this;
}

XmlNode* XmlNode::Child(std::wstring_view tag) const
{
    XmlNode* first = FirstChild(); // a lazy element interns its children's tags as it grows
    void const* key = Tree::StorageOf(this).FindTagWide(tag);
    if (!key)
        return nullptr;
    for (XmlNode* child = first; child; child = child->m_next)
        if (child->m_tag == key)
            return child;
    return nullptr;
}

std::string_view XmlNode::ValueUtf8(std::wstring_view key) const
{
    std::string utf8;
    Utf16ToUtf8(utf8, key);
    XmlNode const* property = zo::xml::PropertyNode(this, utf8);
    return property ? property->TextUtf8() : std::string_view();
}

bool XmlNode::HasTag(std::wstring_view tag) const { return m_tag->wide == tag; }

XmlDocument* XmlNode::Document() const { return &Tree::DocumentOf(this); }
