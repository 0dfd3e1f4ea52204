#include "ZoTextArena.h"

#include "platform/tools/ZoUtf.h"

#include <algorithm>
#include <cstring>

wchar_t* ZoTextArena::Allocate(std::size_t length)
{
    while (m_current < m_blocks.size() && m_blockSizes[m_current] - m_used < length) {
        ++m_current; // the rest of a kept block is too small: on to the next one
        m_used = 0;
    }
    if (m_current == m_blocks.size()) {
        std::size_t const size = std::max(kBlockChars, length);
        m_blocks.push_back(std::make_unique_for_overwrite<wchar_t[]>(size));
        m_blockSizes.push_back(size);
        m_used = 0;
    }
    wchar_t* const where = m_blocks[m_current].get() + m_used;
    m_used += length;
    return where;
}

std::wstring_view ZoTextArena::Add(std::wstring_view text)
{
    if (text.empty())
        return {};
    wchar_t* const where = Allocate(text.size());
    std::memcpy(where, text.data(), text.size() * sizeof(wchar_t));
    return {where, text.size()};
}

std::wstring_view ZoTextArena::AddUtf8(std::string_view utf8)
{
    return AddUtf8(std::wstring_view(), utf8);
}

std::wstring_view ZoTextArena::AddUtf8(std::wstring_view prefix, std::string_view utf8)
{
    // A UTF-8 text never has fewer bytes than wide characters: room for the bytes is room
    // enough. ASCII (the usual case) is widened in place; anything else is decoded aside.
    std::size_t const room = prefix.size() + utf8.size();
    if (room == 0)
        return {};
    wchar_t* const where = Allocate(room);
    std::copy(prefix.begin(), prefix.end(), where);
    wchar_t* out = where + prefix.size();
    std::size_t i = 0;
    for (; i < utf8.size() && static_cast<unsigned char>(utf8[i]) < 0x80; ++i)
        *out++ = static_cast<wchar_t>(utf8[i]);
    if (i < utf8.size()) {
        m_scratch.clear();
        ZoAppendUtf8AsWide(m_scratch, utf8.substr(i));
        out = std::copy(m_scratch.begin(), m_scratch.end(), out);
    }
    std::size_t const length = static_cast<std::size_t>(out - where);
    m_used -= room - length; // the unused end of this, the last allocation, goes back
    return {where, length};
}

void ZoTextArena::Clear()
{
    m_current = 0;
    m_used = 0;
}

void ZoTextArena::Release()
{
    m_blocks.clear();
    m_blockSizes.clear();
    Clear();
}

std::size_t ZoTextArena::MemoryUsed() const
{
    std::size_t total = 0;
    for (std::size_t size : m_blockSizes)
        total += size * sizeof(wchar_t);
    return total;
}
