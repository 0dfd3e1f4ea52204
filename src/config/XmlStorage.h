#pragma once
#include "XmlDocument.h"

#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <vector>

// The memory behind one XmlDocument: nodes come from aligned chunks (so that a node finds
// its document without storing a pointer), texts from size-class pools, tags from an
// intern table. Freed nodes and texts are reused; closing the document releases the chunks
// at once without walking the tree.
namespace zo::xml {

struct TagRecord {
    std::wstring wide;
    std::string utf8;
};

struct StringViewHash {
    using is_transparent = void;
    std::size_t operator()(std::string_view s) const noexcept { return std::hash<std::string_view>{}(s); }
};

class Storage;

// Maps tags of one document to the same tags interned in another (identity within one).
class TagTranslator {
public:
    TagTranslator(Storage const& source, Storage& target) : m_target(target), m_same(&source == &target) {}
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

class Storage {
public:
    explicit Storage(XmlDocument* owner);
    ~Storage();
    Storage(Storage const&) = delete;
    Storage& operator=(Storage const&) = delete;

    XmlDocument* Owner() const { return m_owner; }
    static Storage* Of(XmlDocument::XmlNode const* node);

    XmlDocument::XmlNode* NewNode(TagRecord const* tag);
    // Frees the node's own text and wide cache and returns it to the pool (not its children).
    void FreeNode(XmlDocument::XmlNode* node);
    // Frees every node below `node` (not the node itself), iteratively.
    void FreeDescendants(XmlDocument::XmlNode* node);

    void SetText(XmlDocument::XmlNode* node, std::string_view utf8);
    void ClearText(XmlDocument::XmlNode* node);
    std::wstring const& WideText(XmlDocument::XmlNode const* node);

    TagRecord const* Intern(std::string_view utf8);
    TagRecord const* InternWide(std::wstring_view wide);
    TagRecord const* FindTag(std::string_view utf8) const;
    TagRecord const* FindTagWide(std::wstring_view wide) const;

    std::size_t MemoryUsed() const;

    // Structure. Children form a list through m_next; m_prevCyclic points at the previous
    // sibling and the first child's at the last, so appending and unlinking take constant time.
    static void LinkAfter(XmlDocument::XmlNode* parent, XmlDocument::XmlNode* child,
                          XmlDocument::XmlNode* after);
    static void Unlink(XmlDocument::XmlNode* child);
    static XmlDocument::XmlNode* LastChild(XmlDocument::XmlNode const* parent);
    // Copies the tag and the text of source onto target.
    void CopyTagAndText(XmlDocument::XmlNode* target, XmlDocument::XmlNode const* source, TagTranslator& tags);
    // Makes target's children a deep copy of source's (from any document), reusing target's
    // nodes in place; source must not lie inside target's subtree.
    void AssignChildren(XmlDocument::XmlNode* target, XmlDocument::XmlNode const* source);
    // Moves all children of `from` to the end of `to` (both of this storage).
    static void MoveChildren(XmlDocument::XmlNode* to, XmlDocument::XmlNode* from);

private:
    static std::size_t RoundedTextSize(std::size_t length);
    void DropWideText(XmlDocument::XmlNode const* node);
    char* AllocText(std::size_t length);
    void FreeText(char* text, std::size_t length);
    void NewNodeChunk();
    // A block of `size` bytes aligned to kBlockSize. Large blocks are mapped directly and,
    // when their document closes, kept for the next one: faulting fresh pages in (and the
    // kernel zeroing them) would otherwise dominate loading and copying a large document.
    void* AllocBlock(std::size_t size);
    struct Block {
        void* memory;
        std::size_t size;
        bool mapped;
    };
    void FreeBlock(Block const& block);
    std::size_t NextChunkSize(std::size_t chunks) const;

    // Every kBlockSize-aligned block of a node chunk starts with a slot naming its storage.
    static constexpr std::size_t kBlockSize = 64 * 1024;
    static constexpr std::size_t kMaxChunkSize = 2 * 1024 * 1024;
    static constexpr std::size_t kTextClassStep = 8;
    static constexpr std::size_t kTextClasses = 32; // texts up to 256 bytes are pooled

    XmlDocument* m_owner;
    std::vector<Block> m_nodeChunks;
    std::vector<Block> m_textBlocks;
    std::size_t m_blockBytes = 0;
    XmlDocument::XmlNode* m_freeNodes = nullptr;
    std::byte* m_nodeCursor = nullptr;
    std::byte* m_nodeEnd = nullptr;

    char* m_textCursor = nullptr;
    char* m_textEnd = nullptr;
    void* m_freeTexts[kTextClasses] = {};
    std::unordered_set<char*> m_largeTexts;
    std::size_t m_largeTextBytes = 0;

    std::unordered_map<std::string, TagRecord*, StringViewHash, std::equal_to<>> m_tags;
    std::vector<TagRecord*> m_tagRecords;
    std::unordered_set<std::wstring*> m_wideTexts;
};

} // namespace zo::xml
