#include "XmlStorage.h"

#include "platform/tools/ZoUtf.h"

#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <mutex>
#include <new>

#include <sys/mman.h>

namespace zo::xml {

namespace {

// The first slot of every kBlockSize block of a slot chunk holds the storage that owns it.
struct ChunkHeader {
    Storage* storage;
};

// Large blocks freed by a closed storage are kept for the next one (up to a bound), as a
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

} // namespace

Storage::Storage(void* owner) : m_owner(owner) {}

Storage::~Storage()
{
    for (Block const& block : m_slotChunks)
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

Storage* Storage::Of(void const* slot)
{
    auto const address = reinterpret_cast<std::uintptr_t>(slot) & ~(std::uintptr_t(kBlockSize) - 1);
    return reinterpret_cast<ChunkHeader const*>(address)->storage;
}

std::size_t Storage::NextChunkSize(std::size_t chunks) const
{
    // Small documents stay small; large ones grow to chunks of the largest size.
    std::size_t const size = kBlockSize << (chunks < 5 ? chunks : 5);
    return size < kMaxChunkSize ? size : kMaxChunkSize;
}

namespace {

void (*g_blockAllocationHook)(std::size_t) = nullptr;

// Grows a vector ahead of a push_back (geometrically), so that the push_back cannot throw.
template <typename Vector>
void RoomForOneMore(Vector& vector)
{
    if (vector.size() == vector.capacity())
        vector.reserve(vector.capacity() < 8 ? 8 : vector.capacity() * 2);
}

} // namespace

void Storage::SetBlockAllocationHook(void (*hook)(std::size_t bytes))
{
    g_blockAllocationHook = hook;
}

void* Storage::AllocBlock(std::size_t size)
{
    if (g_blockAllocationHook)
        g_blockAllocationHook(size);
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
#ifdef MADV_HUGEPAGE
        // One huge page for the whole block where the system offers them on request: a
        // large document then takes one page fault for 2 MB instead of 512.
        madvise(reinterpret_cast<void*>(aligned), size, MADV_HUGEPAGE);
#endif
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

void Storage::NewSlotChunk(unsigned arena)
{
    std::size_t const size = NextChunkSize(m_arenas[arena].slotChunks++);
    RoomForOneMore(m_slotChunks); // so that recording the chunk cannot throw
    void* chunk = AllocBlock(size);
    m_slotChunks.push_back({chunk, size, size >= kMaxChunkSize});
    m_arenas[arena].slotCursor = static_cast<std::byte*>(chunk);
    m_arenas[arena].slotEnd = m_arenas[arena].slotCursor + size;
}

void* Storage::NewSlot(unsigned arena)
{
    if (m_freeSlots) {
        void* slot = m_freeSlots;
        std::memcpy(&m_freeSlots, slot, sizeof(void*));
        return slot;
    }
    arena = arena < kArenas ? arena : kArenas - 1;
    Arena& from = m_arenas[arena];
    if (from.slotCursor == from.slotEnd)
        NewSlotChunk(arena);
    if ((reinterpret_cast<std::uintptr_t>(from.slotCursor) & (kBlockSize - 1)) == 0) {
        new (from.slotCursor) ChunkHeader{this};
        from.slotCursor += kSlotSize;
    }
    void* slot = from.slotCursor;
    from.slotCursor += kSlotSize;
    return slot;
}

void Storage::FreeSlot(void* slot)
{
    std::memcpy(slot, &m_freeSlots, sizeof(void*));
    m_freeSlots = slot;
}

std::size_t Storage::RoundedTextSize(std::size_t length)
{
    return (length + kTextClassStep - 1) / kTextClassStep * kTextClassStep;
}

bool Storage::FitsInPlace(std::size_t oldLength, std::size_t newLength)
{
    return oldLength != 0 && newLength != 0 && RoundedTextSize(oldLength) == RoundedTextSize(newLength)
        && RoundedTextSize(newLength) <= kTextClasses * kTextClassStep;
}

char* Storage::AllocText(std::size_t length, unsigned arena)
{
    std::size_t const rounded = RoundedTextSize(length);
    std::size_t const cls = rounded / kTextClassStep - 1;
    if (cls >= kTextClasses) {
        char* text = static_cast<char*>(std::malloc(length));
        if (!text)
            throw std::bad_alloc();
        try {
            m_largeTexts.insert(text);
        } catch (...) {
            std::free(text);
            throw;
        }
        m_largeTextBytes += length;
        return text;
    }
    if (void* reused = m_freeTexts[cls]) {
        std::memcpy(&m_freeTexts[cls], reused, sizeof(void*));
        return static_cast<char*>(reused);
    }
    Arena& from = m_arenas[arena < kArenas ? arena : kArenas - 1];
    if (static_cast<std::size_t>(from.textEnd - from.textCursor) < rounded) {
        std::size_t const size = NextChunkSize(from.textChunks++);
        RoomForOneMore(m_textBlocks); // so that recording the chunk cannot throw
        char* chunk = static_cast<char*>(AllocBlock(size));
        m_textBlocks.push_back({chunk, size, size >= kMaxChunkSize});
        from.textCursor = chunk;
        from.textEnd = chunk + size;
    }
    char* text = from.textCursor;
    from.textCursor += rounded;
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

std::wstring* Storage::NewWide(std::wstring&& text)
{
    auto wide = std::make_unique<std::wstring>(std::move(text));
    m_wideTexts.insert(wide.get());
    return wide.release();
}

void Storage::FreeWide(std::wstring* text)
{
    m_wideTexts.erase(text);
    delete text;
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

TagRecord const* TagTranslator::Translate(TagRecord const* source)
{
    if (m_same)
        return source;
    Entry& entry = m_entries[(reinterpret_cast<std::uintptr_t>(source) >> 5) & (kSize - 1)];
    if (entry.source != source)
        entry = Entry{source, m_target.Intern(source->utf8)};
    return entry.target;
}

} // namespace zo::xml
