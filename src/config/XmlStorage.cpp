#include "XmlStorage.h"

#include "platform/tools/ZoUtf.h"

#include <cstdlib>
#include <cstring>
#include <new>

#include <mutex>

#include <sys/mman.h>

namespace zo::xml {

using XmlNode = XmlDocument::XmlNode;

namespace {

// The first slot of every node chunk holds the storage that owns it.
struct ChunkHeader {
    Storage* storage;
};
static_assert(sizeof(XmlNode) == 64, "a node is meant to fill one cache line");
constexpr std::size_t kHeaderSlot = 64;

// Large blocks freed by a closed document are kept for the next one (up to a bound), as a
// heap does: a fresh block costs a page fault and the zeroing of its pages.
class BlockPool {
public:
    static BlockPool& instance()
    {
        static BlockPool pool;
        return pool;
    }
    void* Take()
    {
        std::lock_guard lock(m_mutex);
        if (m_blocks.empty())
            return nullptr;
        void* block = m_blocks.back();
        m_blocks.pop_back();
        return block;
    }
    bool Keep(void* block)
    {
        std::lock_guard lock(m_mutex);
        if (m_blocks.size() >= kMaxKept)
            return false;
        m_blocks.push_back(block);
        return true;
    }

private:
    static constexpr std::size_t kMaxKept = 512; // 1 GiB of 2 MiB blocks
    std::mutex m_mutex;
    std::vector<void*> m_blocks;
};

std::wstring const& EmptyWide()
{
    static std::wstring const empty;
    return empty;
}

} // namespace

Storage::Storage(XmlDocument* owner) : m_owner(owner) {}

Storage::~Storage()
{
    for (Block const& block : m_nodeChunks)
        FreeBlock(block);
    for (Block const& block : m_textBlocks)
        FreeBlock(block);
    for (char* text : m_largeTexts)
        std::free(text);
    for (std::wstring* wide : m_wideTexts)
        delete wide;
    for (TagRecord* tag : m_tagRecords)
        delete tag;
}

Storage* Storage::Of(XmlNode const* node)
{
    auto const address = reinterpret_cast<std::uintptr_t>(node) & ~(std::uintptr_t(kBlockSize) - 1);
    return reinterpret_cast<ChunkHeader const*>(address)->storage;
}

std::size_t Storage::NextChunkSize(std::size_t chunks) const
{
    // Small documents stay small; large ones grow to chunks that huge pages can back.
    std::size_t const size = kBlockSize << (chunks < 5 ? chunks : 5);
    return size < kMaxChunkSize ? size : kMaxChunkSize;
}

void* Storage::AllocBlock(std::size_t size)
{
    if (size >= kMaxChunkSize) {
        if (void* kept = BlockPool::instance().Take()) {
            m_blockBytes += size;
            return kept;
        }
        // Over-map so that the block can be aligned to its own size, then trim the ends.
        std::size_t const span = size * 2;
        void* raw = mmap(nullptr, span, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
        if (raw == MAP_FAILED)
            throw std::bad_alloc();
        auto const start = reinterpret_cast<std::uintptr_t>(raw);
        auto const aligned = (start + size - 1) & ~(std::uintptr_t(size) - 1);
        if (aligned > start)
            munmap(raw, aligned - start);
        if (aligned + size < start + span)
            munmap(reinterpret_cast<void*>(aligned + size), start + span - aligned - size);
        m_blockBytes += size;
        return reinterpret_cast<void*>(aligned);
    }
    void* block = std::aligned_alloc(kBlockSize, size);
    if (!block)
        throw std::bad_alloc();
    m_blockBytes += size;
    return block;
}

void Storage::FreeBlock(Block const& block)
{
    if (block.mapped) {
        if (!BlockPool::instance().Keep(block.memory))
            munmap(block.memory, block.size);
    }
    else
        std::free(block.memory);
}

void Storage::NewNodeChunk()
{
    std::size_t const size = NextChunkSize(m_nodeChunks.size());
    void* chunk = AllocBlock(size);
    m_nodeChunks.push_back({chunk, size, size >= kMaxChunkSize});
    m_nodeCursor = static_cast<std::byte*>(chunk);
    m_nodeEnd = m_nodeCursor + size;
}

XmlNode* Storage::NewNode(TagRecord const* tag)
{
    void* slot;
    if (m_freeNodes) {
        slot = m_freeNodes;
        m_freeNodes = m_freeNodes->m_next;
    } else {
        if (m_nodeCursor == m_nodeEnd)
            NewNodeChunk();
        if ((reinterpret_cast<std::uintptr_t>(m_nodeCursor) & (kBlockSize - 1)) == 0) {
            new (m_nodeCursor) ChunkHeader{this};
            m_nodeCursor += kHeaderSlot;
        }
        slot = m_nodeCursor;
        m_nodeCursor += sizeof(XmlNode);
    }
    XmlNode* node = new (slot) XmlNode();
    node->m_tag = tag;
    return node;
}

void Storage::FreeNode(XmlNode* node)
{
    ClearText(node);
    node->~XmlNode();
    node->m_next = m_freeNodes;
    m_freeNodes = node;
}

void Storage::FreeDescendants(XmlNode* node)
{
    // Post-order walk through the links themselves: no stack, whatever the depth.
    XmlNode* current = node->m_first;
    while (current) {
        if (current->m_first) {
            current = current->m_first;
            continue;
        }
        XmlNode* next = current->m_next;
        XmlNode* parent = current->m_parent;
        FreeNode(current);
        current = next;
        while (!current && parent != node) {
            next = parent->m_next;
            XmlNode* grandParent = parent->m_parent;
            FreeNode(parent);
            current = next;
            parent = grandParent;
        }
    }
    node->m_first = nullptr;
    node->m_childCount = 0;
}

std::size_t Storage::RoundedTextSize(std::size_t length)
{
    return (length + kTextClassStep - 1) / kTextClassStep * kTextClassStep;
}

char* Storage::AllocText(std::size_t length)
{
    std::size_t const rounded = RoundedTextSize(length);
    std::size_t const cls = rounded / kTextClassStep - 1;
    if (cls >= kTextClasses) {
        char* text = static_cast<char*>(std::malloc(length));
        if (!text)
            throw std::bad_alloc();
        m_largeTexts.insert(text);
        m_largeTextBytes += length;
        return text;
    }
    if (void* reused = m_freeTexts[cls]) {
        std::memcpy(&m_freeTexts[cls], reused, sizeof(void*));
        return static_cast<char*>(reused);
    }
    if (static_cast<std::size_t>(m_textEnd - m_textCursor) < rounded) {
        std::size_t const size = NextChunkSize(m_textBlocks.size());
        char* chunk = static_cast<char*>(AllocBlock(size));
        m_textBlocks.push_back({chunk, size, size >= kMaxChunkSize});
        m_textCursor = chunk;
        m_textEnd = chunk + size;
    }
    char* text = m_textCursor;
    m_textCursor += rounded;
    return text;
}

void Storage::FreeText(char* text, std::size_t length)
{
    std::size_t const rounded = RoundedTextSize(length);
    std::size_t const cls = rounded / kTextClassStep - 1;
    if (cls >= kTextClasses) {
        m_largeTexts.erase(text);
        m_largeTextBytes -= length;
        std::free(text);
        return;
    }
    std::memcpy(text, &m_freeTexts[cls], sizeof(void*));
    m_freeTexts[cls] = text;
}

void Storage::SetText(XmlNode* node, std::string_view utf8)
{
    if (node->m_text && !utf8.empty() && RoundedTextSize(node->m_textLength) == RoundedTextSize(utf8.size()) &&
        RoundedTextSize(utf8.size()) <= kTextClasses * kTextClassStep) {
        // Same pooled size: rewrite in place.
        if (node->TextUtf8() == utf8)
            return;
        DropWideText(node);
        std::memcpy(const_cast<char*>(node->m_text), utf8.data(), utf8.size());
        node->m_textLength = static_cast<std::uint32_t>(utf8.size());
        return;
    }
    ClearText(node);
    if (utf8.empty())
        return;
    char* text = AllocText(utf8.size());
    std::memcpy(text, utf8.data(), utf8.size());
    node->m_text = text;
    node->m_textLength = static_cast<std::uint32_t>(utf8.size());
}

void Storage::ClearText(XmlNode* node)
{
    if (node->m_text)
        FreeText(const_cast<char*>(node->m_text), node->m_textLength);
    node->m_text = nullptr;
    node->m_textLength = 0;
    DropWideText(node);
}

void Storage::DropWideText(XmlNode const* node)
{
    if (node->m_wideText) {
        m_wideTexts.erase(node->m_wideText);
        delete node->m_wideText;
        node->m_wideText = nullptr;
    }
}

std::wstring const& Storage::WideText(XmlNode const* node)
{
    if (node->m_textLength == 0)
        return EmptyWide();
    if (!node->m_wideText) {
        auto* wide = new std::wstring(ZoFromUtf8(node->TextUtf8()));
        m_wideTexts.insert(wide);
        node->m_wideText = wide;
    }
    return *node->m_wideText;
}

TagRecord const* Storage::Intern(std::string_view utf8)
{
    auto found = m_tags.find(utf8);
    if (found != m_tags.end())
        return found->second;
    auto* record = new TagRecord{ZoFromUtf8(utf8), std::string(utf8)};
    m_tagRecords.push_back(record);
    m_tags.emplace(record->utf8, record);
    return record;
}

TagRecord const* Storage::InternWide(std::wstring_view wide)
{
    std::string utf8;
    Utf16ToUtf8(utf8, wide);
    return Intern(utf8);
}

TagRecord const* Storage::FindTag(std::string_view utf8) const
{
    auto found = m_tags.find(utf8);
    return found == m_tags.end() ? nullptr : found->second;
}

TagRecord const* Storage::FindTagWide(std::wstring_view wide) const
{
    std::string utf8;
    Utf16ToUtf8(utf8, wide);
    return FindTag(utf8);
}

std::size_t Storage::MemoryUsed() const
{
    std::size_t bytes = m_blockBytes + m_largeTextBytes;
    for (TagRecord const* tag : m_tagRecords)
        bytes += sizeof(TagRecord) + tag->utf8.capacity() + tag->wide.capacity() * sizeof(wchar_t);
    for (std::wstring const* wide : m_wideTexts)
        bytes += sizeof(std::wstring) + wide->capacity() * sizeof(wchar_t);
    return bytes;
}

} // namespace zo::xml

namespace zo::xml {

void Storage::LinkAfter(XmlNode* parent, XmlNode* child, XmlNode* after)
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
    if (!after || after->m_parent != parent)
        after = first->m_prevCyclic; // append
    child->m_next = after->m_next;
    child->m_prevCyclic = after;
    after->m_next = child;
    if (child->m_next)
        child->m_next->m_prevCyclic = child;
    else
        first->m_prevCyclic = child;
}

void Storage::Unlink(XmlNode* child)
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

XmlNode* Storage::LastChild(XmlNode const* parent)
{
    return parent->m_first ? parent->m_first->m_prevCyclic : nullptr;
}

void Storage::MoveChildren(XmlNode* to, XmlNode* from)
{
    XmlNode* moved = from->m_first;
    if (!moved)
        return;
    for (XmlNode* child = moved; child; child = child->m_next)
        child->m_parent = to;
    if (!to->m_first) {
        to->m_first = moved;
    } else {
        XmlNode* last = to->m_first->m_prevCyclic;
        XmlNode* movedLast = moved->m_prevCyclic;
        last->m_next = moved;
        moved->m_prevCyclic = last;
        to->m_first->m_prevCyclic = movedLast;
    }
    to->m_childCount += from->m_childCount;
    from->m_first = nullptr;
    from->m_childCount = 0;
}

TagRecord const* TagTranslator::Translate(TagRecord const* source)
{
    if (m_same)
        return source;
    Entry& entry = m_entries[(reinterpret_cast<std::uintptr_t>(source) >> 5) & (kSize - 1)];
    if (entry.source != source)
        entry = Entry{source, m_target.Intern(source->utf8)};
    return entry.target;
}

void Storage::CopyTagAndText(XmlNode* target, XmlNode const* source, TagTranslator& tags)
{
    target->m_tag = tags.Translate(source->m_tag);
    SetText(target, source->TextUtf8());
}

void Storage::AssignChildren(XmlNode* target, XmlNode const* source)
{
    // Walks both trees side by side and rewrites the target's nodes where they stand: a
    // working copy assigned back over the element it came from allocates and frees almost
    // nothing, and the element keeps its memory layout however often it is edited.
    TagTranslator tags(*Of(source), *this);
    std::vector<std::pair<XmlNode const*, XmlNode*>> pending{{source, target}};
    while (!pending.empty()) {
        auto [from, to] = pending.back();
        pending.pop_back();
        XmlNode* reuse = to->m_first;
        for (XmlNode const* child = from->m_first; child; child = child->m_next) {
            XmlNode* copy = reuse;
            if (copy) {
                reuse = reuse->m_next;
                copy->m_tag = tags.Translate(child->m_tag);
                SetText(copy, child->TextUtf8());
            } else {
                copy = NewNode(nullptr);
                CopyTagAndText(copy, child, tags);
                LinkAfter(to, copy, nullptr);
            }
            if (child->m_first || copy->m_first)
                pending.emplace_back(child, copy);
        }
        while (reuse) {
            XmlNode* next = reuse->m_next;
            Unlink(reuse);
            FreeDescendants(reuse);
            FreeNode(reuse);
            reuse = next;
        }
    }
}

} // namespace zo::xml
