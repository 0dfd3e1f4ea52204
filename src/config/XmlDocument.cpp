#include "XmlDocument.h"

#include "XmlStorage.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoUtf.h"

#include <pugixml.hpp>

#include <cstdio>
#include <cstring>
#include <cwchar>
#include <limits>
#include <utility>
#include <vector>

using zo::xml::Storage;
using zo::xml::TagRecord;
using XmlNode = XmlDocument::XmlNode;

// ---------------------------------------------------------------------------------------
// Document

XmlDocument::XmlDocument() = default;

XmlDocument::XmlDocument(XmlNode const& from)
{
    m_storage = std::make_unique<Storage>(this);
    m_root = m_storage->NewNode(m_storage->Intern(static_cast<TagRecord const*>(from.TagKey())->utf8));
    m_storage->SetText(m_root, from.TextUtf8());
    m_storage->AssignChildren(m_root, &from);
}

XmlDocument::~XmlDocument() = default;

void XmlDocument::Create(wchar_t const* tag)
{
    m_storage = std::make_unique<Storage>(this);
    m_root = m_storage->NewNode(m_storage->InternWide(tag ? tag : L""));
    m_error.clear();
    m_errorOffset = 0;
}

bool XmlDocument::Parse(char const* text)
{
    return Parse(text, text ? std::strlen(text) : 0);
}

namespace {

// Flags of the parser: escapes and CDATA decoded, line ends normalised, whitespace-only text
// kept for elements without children (a value of blanks survives) and dropped between
// elements (indentation). No DOCTYPE processing: declared entities are never expanded.
constexpr unsigned kParseFlags = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol |
                                 pugi::parse_ws_pcdata_single;

bool IsWhitespaceOnly(std::string_view text)
{
    for (char c : text)
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r')
            return false;
    return true;
}

// Text from the parser, made well-formed UTF-8 (malformed bytes become U+FFFD).
std::string_view CleanText(std::string_view raw, std::string& scratch)
{
    if (ZoIsValidUtf8(raw))
        return raw;
    ZoSanitizeUtf8(scratch, raw);
    return scratch;
}

// The few distinct tags of a document recur millions of times: a small direct-mapped cache
// in front of the intern table saves hashing and validating each occurrence.
class TagCache {
public:
    explicit TagCache(Storage& storage) : m_storage(storage) {}
    TagRecord const* Get(char const* name, std::string& scratch)
    {
        std::size_t const length = std::strlen(name);
        std::uint64_t head = 0;
        std::memcpy(&head, name, length < 8 ? length : 8);
        std::uint64_t const hash = (head ^ (length * 0x9E3779B97F4A7C15ull)) * 0xFF51AFD7ED558CCDull;
        Entry& entry = m_entries[(hash >> 56) & (kSize - 1)];
        if (entry.record && entry.head == head && entry.length == length &&
            (length <= 8 || std::memcmp(entry.record->utf8.data() + 8, name + 8, length - 8) == 0) &&
            entry.raw)
            return entry.record;
        std::string_view const raw(name, length);
        bool const valid = ZoIsValidUtf8(raw);
        TagRecord const* record = m_storage.Intern(valid ? raw : CleanText(raw, scratch));
        entry = Entry{record, head, length, valid};
        return record;
    }

private:
    struct Entry {
        TagRecord const* record = nullptr;
        std::uint64_t head = 0;
        std::size_t length = 0;
        bool raw = false; // the record's text is the name exactly as it was read
    };
    static constexpr std::size_t kSize = 256;
    Storage& m_storage;
    Entry m_entries[kSize];
};

} // namespace

bool XmlDocument::Parse(char const* text, std::size_t length)
{
    m_storage.reset();
    m_root = nullptr;
    m_error.clear();
    m_errorOffset = 0;

    pugi::xml_document parsed;
    pugi::xml_parse_result const result =
        parsed.load_buffer(text ? text : "", length, kParseFlags, pugi::encoding_utf8);
    if (!result) {
        m_error = result.description();
        m_errorOffset = static_cast<std::size_t>(result.offset);
        return false;
    }
    pugi::xml_node top;
    for (pugi::xml_node child = parsed.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            if (!IsWhitespaceOnly(child.value())) {
                m_error = "Text outside the document element";
                return false;
            }
        } else if (child.type() == pugi::node_element) {
            if (top) {
                m_error = "More than one document element";
                return false;
            }
            top = child;
        }
    }
    if (!top) {
        m_error = "No document element";
        return false;
    }

    auto storage = std::make_unique<Storage>(this);
    std::string scratch;
    std::string joined;
    TagCache tags(*storage);
    auto makeNode = [&](char const* name) { return storage->NewNode(tags.Get(name, scratch)); };
    XmlNode* root = makeNode(top.name());
    std::vector<std::pair<pugi::xml_node, XmlNode*>> pending{{top, root}};
    while (!pending.empty()) {
        auto [element, node] = pending.back();
        pending.pop_back();
        // XML attributes, where a hand-written file has them, become properties.
        for (pugi::xml_attribute attribute = element.first_attribute(); attribute; attribute = attribute.next_attribute()) {
            XmlNode* property = makeNode(attribute.name());
            Storage::LinkAfter(node, property, nullptr);
            storage->SetText(property, CleanText(attribute.value(), scratch));
        }
        char const* single = nullptr;
        std::size_t segments = 0;
        joined.clear();
        for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
            switch (child.type()) {
            case pugi::node_element: {
                XmlNode* childNode = makeNode(child.name());
                Storage::LinkAfter(node, childNode, nullptr);
                if (child.first_child() || child.first_attribute())
                    pending.emplace_back(child, childNode);
                break;
            }
            case pugi::node_pcdata:
            case pugi::node_cdata:
                if (segments++ == 0)
                    single = child.value();
                else {
                    if (segments == 2)
                        joined = single;
                    joined += child.value();
                }
                break;
            default:
                break; // comments, processing instructions
            }
        }
        if (segments > 0) {
            std::string_view const raw = segments == 1 ? std::string_view(single) : std::string_view(joined);
            if (raw.size() > std::numeric_limits<std::uint32_t>::max()) {
                m_error = "Text too long";
                return false;
            }
            storage->SetText(node, CleanText(raw, scratch));
        }
    }
    m_storage = std::move(storage);
    m_root = root;
    return true;
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

// ---------------------------------------------------------------------------------------
// Paths

namespace {

struct Step {
    std::wstring_view tag;
    std::wstring_view key;
    std::wstring_view value;
    bool keyed = false;
    bool matchesNothing = false; // "tag?key" without "=value"
};

// Splits the next step off path. A keyed step "tag?key=value?" ends its value at the "?"
// that is followed by "/" or by the end, so a value may itself hold "/" or "?".
bool NextStep(std::wstring_view& path, Step& step)
{
    while (!path.empty() && path.front() == L'/')
        path.remove_prefix(1);
    if (path.empty())
        return false;
    step = Step{};
    std::size_t const tagEnd = path.find_first_of(L"/?");
    step.tag = path.substr(0, tagEnd);
    if (tagEnd == std::wstring_view::npos || path[tagEnd] == L'/') {
        path.remove_prefix(tagEnd == std::wstring_view::npos ? path.size() : tagEnd);
        return true;
    }
    std::wstring_view rest = path.substr(tagEnd + 1);
    std::size_t const equal = rest.find(L'=');
    if (equal == std::wstring_view::npos) {
        step.matchesNothing = true;
        path = {};
        return true;
    }
    step.keyed = true;
    step.key = rest.substr(0, equal);
    std::wstring_view valueAndRest = rest.substr(equal + 1);
    std::size_t close = std::wstring_view::npos;
    for (std::size_t i = 0; i < valueAndRest.size(); ++i) {
        if (valueAndRest[i] == L'?' && (i + 1 == valueAndRest.size() || valueAndRest[i + 1] == L'/')) {
            close = i;
            break;
        }
    }
    if (close == std::wstring_view::npos) {
        step.value = valueAndRest;
        path = {};
    } else {
        step.value = valueAndRest.substr(0, close);
        path = valueAndRest.substr(close + 1);
    }
    return true;
}

XmlNode* FindChild(XmlNode const* parent, void const* tag)
{
    for (XmlNode* child = parent->FirstChild(); child; child = child->NextSibling())
        if (child->TagKey() == tag)
            return child;
    return nullptr;
}

XmlNode* FindPath(XmlNode const* start, wchar_t const* path)
{
    if (!start || !path)
        return nullptr;
    Storage* storage = Storage::Of(start);
    std::wstring_view rest(path);
    XmlNode* current = const_cast<XmlNode*>(start);
    Step step;
    std::string value;
    while (NextStep(rest, step)) {
        if (step.matchesNothing)
            return nullptr;
        void const* tag = storage->FindTagWide(step.tag);
        if (!tag)
            return nullptr;
        if (!step.keyed) {
            current = FindChild(current, tag);
        } else {
            void const* key = storage->FindTagWide(step.key);
            if (!key)
                return nullptr;
            Utf16ToUtf8(value, step.value);
            XmlNode* match = nullptr;
            for (XmlNode* child = current->FirstChild(); child && !match; child = child->NextSibling()) {
                if (child->TagKey() != tag)
                    continue;
                XmlNode const* property = FindChild(child, key);
                if (property && property->TextUtf8() == value)
                    match = child;
            }
            current = match;
        }
        if (!current)
            return nullptr;
    }
    return current;
}

bool IsPlainKey(wchar_t const* key)
{
    for (wchar_t const* p = key; *p; ++p)
        if (*p == L'/' || *p == L'?')
            return false;
    return true;
}

} // namespace

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
    Storage* storage = Storage::Of(this);
    XmlNode* child = storage->NewNode(storage->InternWide(tag ? tag : L""));
    Storage::LinkAfter(this, child, after);
    return child;
}

void XmlNode::RemoveChild(XmlNode* child)
{
    if (!child || child->m_parent != this)
        return;
    Storage* storage = Storage::Of(this);
    Storage::Unlink(child);
    storage->FreeDescendants(child);
    storage->FreeNode(child);
}

ZoBasicString<wchar_t> XmlNode::Value(wchar_t const* key, wchar_t const* def) const
{
    XmlNode const* property = Node(key);
    if (!property)
        return def ? def : L"";
    return ZoFromUtf8(property->TextUtf8());
}

ZoBasicString<wchar_t> const& XmlNode::Value() const { return Storage::Of(this)->WideText(this); }

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
        if (!*tag || !IsPlainKey(tag))
            return;
        property = NewChild(tag);
    }
    property->SetValue(value);
}

void XmlNode::SetValue(wchar_t const* key, ZoBasicString<wchar_t> const& value) { SetValue(key, value.c_str()); }

void XmlNode::SetValue(wchar_t const* text)
{
    Storage::Of(this)->SetText(this, TextToStore(text ? text : L""));
}

void XmlNode::SetValue(ZoBasicString<wchar_t> const& text)
{
    Storage::Of(this)->SetText(this, TextToStore(text));
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
    Storage* storage = Storage::Of(this);
    storage->FreeDescendants(this);
    storage->ClearText(this);
}

XmlNode& XmlNode::operator=(XmlNode const& other)
{
    if (&other == this)
        return *this;
    Storage* storage = Storage::Of(this);
    zo::xml::TagTranslator tags(*Storage::Of(&other), *storage);
    if (Storage::Of(&other) != storage) {
        // Another document: other cannot lie inside this subtree, so rewrite in place.
        storage->CopyTagAndText(this, &other, tags);
        storage->AssignChildren(this, &other);
        return *this;
    }
    // The same document: copy first into a detached holder, so that other may lie inside
    // this subtree (or this inside other's) without being changed while it is read.
    XmlNode* holder = storage->NewNode(m_tag);
    storage->CopyTagAndText(holder, &other, tags);
    storage->AssignChildren(holder, &other);
    storage->FreeDescendants(this);
    m_tag = holder->m_tag;
    storage->SetText(this, holder->TextUtf8());
    Storage::MoveChildren(this, holder);
    storage->FreeNode(holder);
    return *this;
}

XmlNode* XmlNode::Child(std::wstring_view tag) const
{
    void const* key = Storage::Of(this)->FindTagWide(tag);
    return key ? FindChild(this, key) : nullptr;
}

std::string_view XmlNode::ValueUtf8(std::wstring_view key) const
{
    XmlNode const* property = Child(key);
    return property ? property->TextUtf8() : std::string_view();
}

bool XmlNode::HasTag(std::wstring_view tag) const { return m_tag->wide == tag; }

XmlDocument* XmlNode::Document() const { return Storage::Of(this)->Owner(); }

// ---------------------------------------------------------------------------------------
// Writing

namespace {

void AppendEscaped(std::string& out, std::string_view text)
{
    std::size_t plainStart = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        char const* entity = nullptr;
        char numeric[8];
        switch (c) {
        case '&': entity = "&amp;"; break;
        case '<': entity = "&lt;"; break;
        case '>': entity = "&gt;"; break;
        case '\t':
        case '\n':
            continue;
        default:
            if (static_cast<unsigned char>(c) >= 0x20)
                continue;
            // Other control characters (and \r, which a parser would fold) as references.
            std::snprintf(numeric, sizeof numeric, "&#%d;", static_cast<int>(c));
            entity = numeric;
            break;
        }
        out.append(text.data() + plainStart, i - plainStart);
        out.append(entity);
        plainStart = i + 1;
    }
    out.append(text.data() + plainStart, text.size() - plainStart);
}

void AppendOwnText(std::string& out, XmlNode const* node)
{
    std::string_view const text = node->TextUtf8();
    if (text.empty())
        return;
    // Blanks alone before child elements would read back as indentation: write them as
    // character references, which a parser keeps as they are (a CDATA section would lose \r).
    if (node->FirstChild() && IsWhitespaceOnly(text)) {
        for (char c : text)
            out.append(c == ' ' ? "&#32;" : c == '\t' ? "&#9;" : c == '\n' ? "&#10;" : "&#13;");
        return;
    }
    AppendEscaped(out, text);
}

std::string const& TagText(XmlNode const* node) { return static_cast<TagRecord const*>(node->TagKey())->utf8; }

} // namespace

void XmlNode::AppendXmlCode(ZoBasicString<char>& out, int indent) const
{
    // Iterative walk: on the way down write the opening tag and the text, on the way up the
    // closing tag; a node without text and children is written as an empty element.
    // Indented, every element without text of its own puts its children on lines of their
    // own; a parser drops those line breaks again, as blanks between elements. An element
    // with text keeps its whole subtree on one line, since a break after its text would
    // become part of the text.
    XmlNode const* node = this;
    int depth = 0;
    XmlNode const* oneLine = indent > 0 ? nullptr : this;
    auto breakLine = [&] {
        if (!oneLine) {
            out.push_back('\n');
            out.append(static_cast<std::size_t>(depth * indent), ' ');
        }
    };
    while (true) {
        out.push_back('<');
        out.append(TagText(node));
        if (!node->m_first && node->m_textLength == 0) {
            out.append("/>");
        } else {
            out.push_back('>');
            AppendOwnText(out, node);
            if (node->m_first) {
                if (!oneLine && node->m_textLength != 0)
                    oneLine = node;
                node = node->m_first;
                ++depth;
                breakLine();
                continue;
            }
            out.append("</");
            out.append(TagText(node));
            out.push_back('>');
        }
        // Climb until a next sibling exists, closing each parent on the way.
        while (node != this && !node->m_next) {
            node = node->m_parent;
            --depth;
            breakLine();
            out.append("</");
            out.append(TagText(node));
            out.push_back('>');
            if (oneLine == node)
                oneLine = nullptr;
        }
        if (node == this)
            return;
        node = node->m_next;
        breakLine();
    }
}

void XmlNode::CreateXmlCode(ZoBasicString<char>& out) const
{
    out.clear();
    AppendXmlCode(out);
}
