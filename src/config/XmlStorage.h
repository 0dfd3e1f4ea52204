#pragma once
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// The memory behind one document, a layer below the tree: it knows slots, texts and tags,
// never nodes. Slots of 64 bytes come from aligned chunks whose first slot names the
// storage, so that anything placed in a slot finds its storage without a pointer of its
// own; texts come from size-class pools; tags from an intern table. Freed slots and texts
// are reused; closing the storage releases the chunks at once, without walking anything.
namespace zo::xml {

struct TagRecord {
    std::wstring wide;
    std::string utf8;
};

struct StringViewHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const noexcept { return std::hash<std::string_view>{}(s); }
};

class Storage {
public:
    static constexpr std::size_t kSlotSize = 64;

    // owner: whatever the storage belongs to, handed back by Owner() and never used here.
    explicit Storage(void* owner);
    ~Storage();
    Storage(Storage const&) = delete;
    Storage& operator=(Storage const&) = delete;

    void* Owner() const { return m_owner; }
    // The storage of a slot handed out by NewSlot (or of any address inside one).
    static Storage* Of(void const* slot);

    // Slots and texts come from one of kArenas arenas, each filling its own chunks in
    // order: what is allocated in the same arena lies side by side. A reader that walks
    // the tree level by level then reads memory in order (the parser puts each level of
    // the tree in an arena of its own).
    static constexpr unsigned kArenas = 8;

    // Test seam: called before every block a storage takes from the system, with its size;
    // it may throw std::bad_alloc to stand for memory running out. Null: none.
    static void SetBlockAllocationHook(void (*hook)(std::size_t bytes));

    // A slot of kSlotSize bytes, uninitialised. Throws std::bad_alloc when memory runs out.
    void* NewSlot(unsigned arena = 0);
    void FreeSlot(void* slot);

    // Text bytes of that length (not terminated); FreeText takes the same length back.
    char* AllocText(std::size_t length, unsigned arena = 0);
    void FreeText(char* text, std::size_t length);
    // Whether a text of newLength may be written over one of oldLength where it stands.
    static bool FitsInPlace(std::size_t oldLength, std::size_t newLength);

    // Wide strings the storage owns until FreeWide or its end.
    std::wstring* NewWide(std::wstring&& text);
    void FreeWide(std::wstring* text);

    TagRecord const* Intern(std::string_view utf8);
    TagRecord const* InternWide(std::wstring_view wide);
    TagRecord const* FindTag(std::string_view utf8) const;
    TagRecord const* FindTagWide(std::wstring_view wide) const;

    std::size_t MemoryUsed() const;

private:
    static std::size_t RoundedTextSize(std::size_t length);
    void NewSlotChunk(unsigned arena);
    // A block of `size` bytes aligned to kBlockSize. Large blocks are mapped directly and,
    // when their storage closes, kept for the next one: faulting fresh pages in (and the
    // kernel zeroing them) would otherwise dominate loading and copying a large document.
    void* AllocBlock(std::size_t size);
    struct Block {
        void* memory;
        std::size_t size;
        bool mapped;
    };
    void FreeBlock(Block const& block);
    std::size_t NextChunkSize(std::size_t chunks) const;

    // Every kBlockSize-aligned block of a slot chunk starts with a slot naming its storage.
    static constexpr std::size_t kBlockSize = 64 * 1024;
    static constexpr std::size_t kMaxChunkSize = 2 * 1024 * 1024;
    static constexpr std::size_t kTextClassStep = 8;
    static constexpr std::size_t kTextClasses = 32; // texts up to 256 bytes are pooled

    void* m_owner;
    std::vector<Block> m_slotChunks;
    std::vector<Block> m_textBlocks;
    std::size_t m_blockBytes = 0;
    void* m_freeSlots = nullptr;
    struct Arena {
        std::byte* slotCursor = nullptr;
        std::byte* slotEnd = nullptr;
        char* textCursor = nullptr;
        char* textEnd = nullptr;
        std::size_t slotChunks = 0; // chunks taken so far: each arena grows on its own
        std::size_t textChunks = 0;
    };
    Arena m_arenas[kArenas];
    void* m_freeTexts[kTextClasses] = {};
    std::unordered_set<char*> m_largeTexts;
    std::size_t m_largeTextBytes = 0;

    std::unordered_map<std::string, TagRecord*, StringViewHash, std::equal_to<>> m_tags;
    std::vector<TagRecord*> m_tagRecords;
    std::unordered_set<std::wstring*> m_wideTexts;
};

// Maps tags of one storage to the same tags interned in another (identity within one).
class TagTranslator {
public:
    TagTranslator(Storage const& source, Storage& target) : m_target(target), m_same(&source == &target) {}
    // Sources from any storage, the target's own included.
    explicit TagTranslator(Storage& target) : m_target(target), m_same(false) {}
    TagRecord const* Translate(TagRecord const* source);

private:
    struct Entry {
        TagRecord const* source = nullptr;
        TagRecord const* target = nullptr;
    };
    static constexpr std::size_t kSize = 64;
    Storage& m_target;
    bool m_same;
    Entry m_entries[kSize];
};

} // namespace zo::xml
