#include "platform/tools/ZoKeyOrder.h"
#include "platform/tools/ZoUtf.h"

#include <QChar>
#include <QList>
#include <QString>

#include <algorithm>
#include <cstring>

namespace {

// The 8 bytes of a key from `offset` on, big-endian and zero-padded: comparing two of them
// as integers orders the keys as those bytes do.
std::uint64_t WordAt(std::string_view key, std::size_t offset)
{
    if (offset >= key.size())
        return 0;
    key.remove_prefix(offset);
    if (key.size() >= 8) {
        std::uint64_t word;
        std::memcpy(&word, key.data(), 8);
        return __builtin_bswap64(word);
    }
    std::uint64_t word = 0;
    for (std::size_t i = 0; i < 8; ++i)
        word = (word << 8) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0u);
    return word;
}

// 16 bytes of a key and the item's index: what the sort moves and compares.
struct Key {
    std::uint64_t word, next;
    std::uint32_t index;
    bool operator<(Key const& other) const
    {
        if (word != other.word)
            return word < other.word;
        return next != other.next ? next < other.next : index < other.index;
    }
    bool SameBytes(Key const& other) const { return word == other.word && next == other.next; }
};

} // namespace

std::vector<std::uint32_t> ZoOrderByKeys(std::size_t count, std::function<std::string_view(std::size_t)> const& key)
{
    // Sorted first by 16 bytes of each key at once; each run of items equal there whose keys
    // go on is sorted by the next 8 bytes, and so on. Only these small keys move, and a
    // comparison is one of integers.
    std::vector<Key> keys(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::string_view const text = key(i);
        keys[i] = Key{WordAt(text, 0), WordAt(text, 8), static_cast<std::uint32_t>(i)};
    }
    std::sort(keys.begin(), keys.end());
    struct Run {
        std::size_t begin, end, offset; // keys[begin, end) are equal before offset
    };
    std::vector<Run> runs;
    auto queueRuns = [&](std::size_t begin, std::size_t end, std::size_t offset) {
        for (std::size_t first = begin; first < end;) {
            std::size_t last = first + 1;
            while (last < end && keys[last].SameBytes(keys[first]))
                ++last;
            if (last - first > 1) {
                auto const from = keys.begin() + std::ptrdiff_t(first);
                auto const to = keys.begin() + std::ptrdiff_t(last);
                std::size_t const length = key(from->index).size();
                bool longer = false, lengthsDiffer = false;
                for (auto k = from; k != to; ++k) {
                    std::size_t const size = key(k->index).size();
                    longer = longer || size > offset;
                    lengthsDiffer = lengthsDiffer || size != length;
                }
                if (longer) {
                    runs.push_back({first, last, offset});
                } else if (lengthsDiffer) {
                    // Equal but for zero bytes at their ends: the shorter key comes first.
                    std::sort(from, to, [&key](Key const& a, Key const& b) {
                        std::size_t const sa = key(a.index).size(), sb = key(b.index).size();
                        return sa != sb ? sa < sb : a.index < b.index;
                    });
                }
            }
            first = last;
        }
    };
    queueRuns(0, keys.size(), 16);
    while (!runs.empty()) {
        Run const run = runs.back();
        runs.pop_back();
        for (std::size_t i = run.begin; i < run.end; ++i)
            keys[i] = Key{WordAt(key(keys[i].index), run.offset), 0, keys[i].index};
        std::sort(keys.begin() + std::ptrdiff_t(run.begin), keys.begin() + std::ptrdiff_t(run.end));
        queueRuns(run.begin, run.end, run.offset + 8);
    }
    std::vector<std::uint32_t> order(keys.size());
    for (std::size_t i = 0; i < keys.size(); ++i)
        order[i] = keys[i].index;
    return order;
}

void ZoAppendCaseFoldedKey(std::string& out, std::string_view utf8)
{
    std::size_t const start = out.size();
    out.append(utf8);
    std::size_t i = 0;
    for (; i < utf8.size(); ++i) {
        auto const byte = static_cast<unsigned char>(utf8[i]);
        if (byte >= 0x80)
            break;
        if (byte >= 'A' && byte <= 'Z')
            out[start + i] = static_cast<char>(byte + ('a' - 'A'));
    }
    if (i == utf8.size())
        return;
    out.resize(start + i);
    // Not plain ASCII from here on: each character folded on its own, as the comparison does.
    QString const rest = QString::fromUtf8(utf8.data() + i, static_cast<qsizetype>(utf8.size() - i));
    for (char32_t const c : rest.toUcs4()) {
        char32_t const folded = QChar::toCaseFolded(c);
        // Each UTF-16 unit written as UTF-8 writes a character of that value.
        if (QChar::requiresSurrogates(folded)) {
            ZoAppendUtf8(out, QChar::highSurrogate(folded));
            ZoAppendUtf8(out, QChar::lowSurrogate(folded));
        } else {
            ZoAppendUtf8(out, folded);
        }
    }
}
