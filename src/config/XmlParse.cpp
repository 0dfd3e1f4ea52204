// Reading XML text into a document.
#include "XmlTree.h"

#include "platform/tools/ZoUtf.h"

#include <pugixml.hpp>

#include <cstring>
#include <limits>
#include <utility>
#include <vector>

using zo::xml::Storage;
using zo::xml::TagRecord;
using zo::xml::Tree;
using XmlNode = XmlDocument::XmlNode;

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
    return Parse(text, length, false);
}

bool XmlDocument::ParseInPlace(char* text, std::size_t length)
{
    return Parse(text, length, true);
}

bool XmlDocument::Parse(char const* text, std::size_t length, bool inPlace)
{
    Reset();

    pugi::xml_document parsed;
    // In place, the parser works in the caller's buffer instead of a copy of the text.
    pugi::xml_parse_result const result = inPlace && text
        ? parsed.load_buffer_inplace(const_cast<char*>(text), length, kParseFlags, pugi::encoding_utf8)
        : parsed.load_buffer(text ? text : "", length, kParseFlags, pugi::encoding_utf8);
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
    Storage& memory = *storage;
    std::string scratch;
    std::string joined;
    TagCache tags(*storage);
    auto makeNode = [&](char const* name) { return Tree::NewNode(memory, tags.Get(name, scratch)); };
    XmlNode* root = makeNode(top.name());
    std::vector<std::pair<pugi::xml_node, XmlNode*>> pending{{top, root}};
    while (!pending.empty()) {
        auto [element, node] = pending.back();
        pending.pop_back();
        // XML attributes, where a hand-written file has them, become properties.
        for (pugi::xml_attribute attribute = element.first_attribute(); attribute; attribute = attribute.next_attribute()) {
            XmlNode* property = makeNode(attribute.name());
            Tree::Link(node, property, Tree::LastChild(node));
            Tree::SetText(memory, property, CleanText(attribute.value(), scratch));
        }
        char const* single = nullptr;
        std::size_t segments = 0;
        joined.clear();
        for (pugi::xml_node child = element.first_child(); child; child = child.next_sibling()) {
            switch (child.type()) {
            case pugi::node_element: {
                XmlNode* childNode = makeNode(child.name());
                Tree::Link(node, childNode, Tree::LastChild(node));
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
            Tree::SetText(memory, node, CleanText(raw, scratch));
        }
    }
    m_storage = std::move(storage);
    m_root = root;
    return true;
}

