#include "events/EventNames.h"
#include "platform/tools/ZoFormat.h"
#include <algorithm>
#include "platform/tools/ZoUtf.h"
#include <QChar>
#include <utility>

namespace {

char32_t FoldChar(char32_t c)
{
    if (c < 0x80)
        return (c >= U'A' && c <= U'Z') ? c + (U'a' - U'A') : c;
    return QChar::toLower(c);
}

// Folds the characters of a wide text (UTF-16 or UTF-32, by the width of wchar_t).
void AppendFoldedWide(std::string& out, std::wstring_view text)
{
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = char32_t(text[i]);
        if constexpr (sizeof(wchar_t) == 2) {
            if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size()
                && char32_t(text[i + 1]) >= 0xDC00 && char32_t(text[i + 1]) <= 0xDFFF) {
                c = 0x10000 + ((c - 0xD800) << 10) + (char32_t(text[i + 1]) - 0xDC00);
                ++i;
            }
        }
        if (c > 0x10FFFF || (c >= 0xD800 && c <= 0xDFFF))
            c = 0xFFFD;
        ZoAppendUtf8(out, FoldChar(c));
    }
}

} // namespace

void AppendFoldedName(std::string& out, std::string_view utf8)
{
    std::size_t const start = out.size();
    out.append(utf8);
    for (std::size_t i = start; i < out.size(); ++i) {
        auto const byte = static_cast<unsigned char>(out[i]);
        if (byte >= 0x80) {
            // Not plain ASCII: decode, fold and encode again from here on.
            out.resize(i);
            AppendFoldedWide(out, ZoFromUtf8(utf8.substr(i - start)));
            return;
        }
        if (byte >= 'A' && byte <= 'Z')
            out[i] = char(byte + ('a' - 'A'));
    }
}

void AppendFoldedName(std::string& out, std::wstring_view text)
{
    AppendFoldedWide(out, text);
}

std::string FoldedName(std::wstring_view text)
{
    std::string out;
    AppendFoldedWide(out, text);
    return out;
}

// The set keeps every folded name once in one buffer and hashes spans of it; a query is
// looked up as a string_view without being copied.
struct EventNameSet::Hash {
    using is_transparent = void;
    std::string const* buffer;
    std::size_t operator()(std::string_view text) const { return std::hash<std::string_view>{}(text); }
    std::size_t operator()(Span span) const { return (*this)(View(span)); }
    std::string_view View(Span span) const { return std::string_view(*buffer).substr(span.offset, span.length); }
};

struct EventNameSet::Equal {
    using is_transparent = void;
    std::string const* buffer;
    std::string_view View(Span span) const { return std::string_view(*buffer).substr(span.offset, span.length); }
    bool operator()(Span a, Span b) const { return View(a) == View(b); }
    bool operator()(std::string_view a, Span b) const { return a == View(b); }
    bool operator()(Span a, std::string_view b) const { return View(a) == b; }
};

struct EventNameSet::Names {
    std::string buffer;
    std::unordered_set<Span, Hash, Equal> spans{0, Hash{&buffer}, Equal{&buffer}};
    std::vector<std::string_view> sorted; // names held elsewhere, in byte order
};

EventNameSet EventNameSet::FromSortedFolded(std::vector<std::string_view> sorted)
{
    EventNameSet set;
    set.m_names->sorted = std::move(sorted);
    return set;
}

EventNameSet::EventNameSet()
    : m_names(std::make_unique<Names>())
{
}

EventNameSet::EventNameSet(std::vector<std::wstring> const& names)
    : EventNameSet()
{
    Reserve(names.size(), 0);
    for (auto const& name : names)
        Insert(name);
}

// A moved-from set is empty (and gets a new buffer when it is filled again).
EventNameSet::EventNameSet(EventNameSet&& other) noexcept = default;

EventNameSet& EventNameSet::operator=(EventNameSet&& other) noexcept = default;

EventNameSet::~EventNameSet() = default;

void EventNameSet::Reserve(std::size_t count, std::size_t bytes)
{
    if (!m_names)
        m_names = std::make_unique<Names>();
    m_names->buffer.reserve(bytes);
    m_names->spans.reserve(count);
}

void EventNameSet::Insert(std::wstring_view name)
{
    InsertFolded(FoldedName(name));
}

void EventNameSet::InsertFolded(std::string_view folded)
{
    if (!m_names)
        m_names = std::make_unique<Names>();
    if (ContainsFolded(folded))
        return;
    Span const span{std::uint32_t(m_names->buffer.size()), std::uint32_t(folded.size())};
    m_names->buffer.append(folded);
    m_names->spans.insert(span);
}

bool EventNameSet::Contains(std::wstring_view name) const
{
    return ContainsFolded(FoldedName(name));
}

bool EventNameSet::ContainsFolded(std::string_view folded) const
{
    if (!m_names)
        return false;
    if (std::binary_search(m_names->sorted.begin(), m_names->sorted.end(), folded))
        return true;
    return m_names->spans.find(folded) != m_names->spans.end();
}

std::size_t EventNameSet::Size() const
{
    if (!m_names)
        return 0;
    std::size_t distinct = 0;
    for (std::size_t i = 0; i < m_names->sorted.size(); ++i)
        if (i == 0 || m_names->sorted[i] != m_names->sorted[i - 1])
            ++distinct;
    return distinct + m_names->spans.size();
}

std::wstring UniqueNamer::operator()(std::wstring const& name)
{
    std::string const folded = FoldedName(name);
    auto found = m_counters.find(folded);
    if (found == m_counters.end())
        found = m_counters.emplace(folded, FirstFreeCounter(name)).first;
    return found->second == 0 ? name : ZoFormat(L"%s_%d", name.c_str(), found->second);
}

int UniqueNamer::FirstFreeCounter(std::wstring const& name) const
{
    if (!m_taken.Contains(name))
        return 0;
    int counter = 1;
    while (m_taken.Contains(ZoFormat(L"%s_%d", name.c_str(), counter)))
        ++counter;
    return counter;
}
