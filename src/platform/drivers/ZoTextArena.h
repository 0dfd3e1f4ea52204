#pragma once
#include <cstddef>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

// Wide texts kept side by side in large blocks, for catalogs that hold many short names:
// one allocation per block instead of one per text. A text added stays where it is until
// Clear(), so views of it stay valid while more texts are added. Clear() keeps the blocks
// for the texts added next, so that rebuilding a catalog touches no fresh memory.
class ZoTextArena {
public:
    std::wstring_view Add(std::wstring_view text);
    // The UTF-8 text as wide text (malformed sequences become U+FFFD).
    std::wstring_view AddUtf8(std::string_view utf8);
    // prefix followed by the UTF-8 text, as one text.
    std::wstring_view AddUtf8(std::wstring_view prefix, std::string_view utf8);
    void Clear();
    // Gives the blocks back as well.
    void Release();
    std::size_t MemoryUsed() const;

private:
    wchar_t* Allocate(std::size_t length);

    static constexpr std::size_t kBlockChars = 64 * 1024;
    std::vector<std::unique_ptr<wchar_t[]>> m_blocks;
    std::vector<std::size_t> m_blockSizes;
    std::size_t m_current = 0;  // the block being filled
    std::size_t m_used = 0;     // characters used in it
    std::wstring m_scratch;     // conversion buffer, reused
};
