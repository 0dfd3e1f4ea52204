// Reading XML text into a document: the scanner hands each element, property and text
// straight to the tree, so nothing but the tree itself is built.
#include "XmlParseProgress.h"
#include "XmlScanner.h"
#include "XmlTree.h"

#include "platform/tools/ZoUtf.h"

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

// Text as read, made well-formed UTF-8 (malformed bytes become U+FFFD).
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
    TagRecord const* Get(std::string_view name, std::string& scratch)
    {
        std::size_t const length = name.size();
        std::uint64_t head = 0;
        std::memcpy(&head, name.data(), length < 8 ? length : 8);
        std::uint64_t const hash = (head ^ (length * 0x9E3779B97F4A7C15ull)) * 0xFF51AFD7ED558CCDull;
        Entry& entry = m_entries[(hash >> 56) & (kSize - 1)];
        if (entry.record && entry.raw && entry.head == head && entry.length == length &&
            (length <= 8 || std::memcmp(entry.record->utf8.data() + 8, name.data() + 8, length - 8) == 0))
            return entry.record;
        bool const valid = ZoIsValidUtf8(name);
        TagRecord const* record = m_storage.Intern(valid ? name : CleanText(name, scratch));
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

// Builds the tree as the scanner reads: XML attributes (where a hand-written file has
// them) become properties ahead of the children, and an element's text segments are
// joined, wherever they stand among its children. Texts are kept as read until their
// element ends, then made well-formed UTF-8 as a whole.
class TreeBuilder : public zo::xml::ScanHandler {
public:
    // progress, when set, is told every kReportStep bytes how far the text has been read.
    TreeBuilder(Storage& storage, char const* text, XmlParseProgress const* progress)
        : m_storage(storage), m_tags(storage), m_text(text), m_progress(progress)
    {
    }

    XmlNode* Root() const { return m_root; }
    bool TextTooLong() const { return m_textTooLong; }

    // Each level of the tree gets an arena of its own: the events lie side by side, and so
    // do all their properties, in document order, which is how lists read them.
    unsigned Arena() const { return static_cast<unsigned>(m_open.size()); }

    void StartElement(std::string_view name) override
    {
        // The name lies in the text; everything before its "<" has been read for good.
        if (m_progress && name.data() > m_text) {
            std::size_t const offset = std::size_t(name.data() - m_text) - 1;
            if (offset >= m_nextReport) {
                m_progress->Tell(offset);
                m_nextReport = offset + kReportStep;
            }
        }
        XmlNode* node = Tree::NewNode(m_storage, m_tags.Get(name, m_scratch), Arena());
        if (m_open.empty())
            m_root = node;
        else
            Tree::Link(m_open.back(), node, Tree::LastChild(m_open.back()));
        m_open.push_back(node);
    }

    void Attribute(std::string_view name, std::string_view value) override
    {
        XmlNode* parent = m_open.back();
        XmlNode* property = Tree::NewNode(m_storage, m_tags.Get(name, m_scratch), Arena());
        Tree::Link(parent, property, Tree::LastChild(parent));
        Tree::SetText(m_storage, property, CleanText(value, m_scratch), Arena());
    }

    void Text(std::string_view text) override
    {
        if (text.empty())
            return;
        XmlNode* node = m_open.back();
        std::string_view const before = node->TextUtf8();
        if (before.size() + text.size() > std::numeric_limits<std::uint32_t>::max()) {
            m_textTooLong = true;
            return;
        }
        unsigned const arena = Arena() - 1;
        if (before.empty()) {
            Tree::SetText(m_storage, node, text, arena);
            return;
        }
        m_joined.assign(before);
        m_joined.append(text);
        Tree::SetText(m_storage, node, m_joined, arena);
    }

    void EndElement() override
    {
        XmlNode* node = m_open.back();
        m_open.pop_back();
        std::string_view const text = node->TextUtf8();
        if (!text.empty() && !ZoIsValidUtf8(text)) {
            std::string clean;
            ZoSanitizeUtf8(clean, text);
            Tree::SetText(m_storage, node, clean);
        }
    }

private:
    static constexpr std::size_t kReportStep = 16u << 20;

    Storage& m_storage;
    TagCache m_tags;
    char const* m_text;
    XmlParseProgress const* m_progress;
    std::size_t m_nextReport = kReportStep;
    std::vector<XmlNode*> m_open;
    XmlNode* m_root = nullptr;
    std::string m_scratch;
    std::string m_joined;
    bool m_textTooLong = false;
};

} // namespace

namespace {

thread_local XmlParseProgress const* t_progress = nullptr;

} // namespace

XmlParseProgress::XmlParseProgress(Consumed consumed)
    : m_consumed(std::move(consumed))
    , m_outer(t_progress)
{
    t_progress = this;
}

XmlParseProgress::~XmlParseProgress()
{
    t_progress = m_outer;
}

XmlParseProgress const* XmlParseProgress::Current()
{
    return t_progress;
}

bool XmlDocument::Parse(char const* text, std::size_t length)
{
    Reset();
    auto storage = std::make_unique<Storage>(this);
    char const* const data = text ? text : "";
    TreeBuilder builder(*storage, data, XmlParseProgress::Current());
    zo::xml::ScanResult const result = zo::xml::ScanXml(data, text ? length : 0, builder);
    if (!result.ok) {
        m_error = result.error;
        m_errorOffset = result.offset;
        return false;
    }
    if (builder.TextTooLong()) {
        m_error = "Text too long";
        return false;
    }
    m_storage = std::move(storage);
    m_root = builder.Root();
    return true;
}
