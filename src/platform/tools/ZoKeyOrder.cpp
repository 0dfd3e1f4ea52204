#include "platform/tools/ZoKeyOrder.h"
#include "platform/tools/ZoUtf.h"

#include <QChar>
#include <QList>
#include <QString>

#include <algorithm>
#include <cstring>

namespace {

constexpr std::size_t kWords = 5;
constexpr std::size_t kPrefixBytes = kWords * 8;

// The first 8 bytes of a key, big-endian and zero-padded: comparing two of them as integers
// orders the keys as their first bytes do.
std::uint64_t Prefix(std::string_view key)
{
    if (key.size() >= 8) {
        std::uint64_t word;
        std::memcpy(&word, key.data(), 8);
        return __builtin_bswap64(word);
    }
    std::uint64_t prefix = 0;
    for (std::size_t i = 0; i < 8; ++i)
        prefix = (prefix << 8) | (i < key.size() ? static_cast<unsigned char>(key[i]) : 0u);
    return prefix;
}

struct Key {
    std::uint64_t prefix[kWords];
    std::uint32_t index;
    bool operator<(Key const& other) const
    {
        for (std::size_t word = 0; word < kWords; ++word) {
            if (prefix[word] != other.prefix[word])
                return prefix[word] < other.prefix[word];
        }
        return index < other.index;
    }
    bool SamePrefix(Key const& other) const { return std::equal(prefix, prefix + kWords, other.prefix); }
};

} // namespace

std::vector<std::uint32_t> ZoOrderByKeys(std::size_t count, std::function<std::string_view(std::size_t)> const& key)
{
    std::vector<Key> keys(count);
    for (std::size_t i = 0; i < count; ++i) {
        std::string_view const text = key(i);
        Key& k = keys[i];
        for (std::size_t word = 0; word < kWords; ++word)
            k.prefix[word] = Prefix(word * 8 < text.size() ? text.substr(word * 8) : std::string_view());
        k.index = static_cast<std::uint32_t>(i);
    }
    std::sort(keys.begin(), keys.end());
    // Keys equal in their first bytes are ordered by the whole keys when they differ past
    // them or in length (a key padded with zero bytes looks like a longer one there).
    auto byWhole = [&key](Key const& a, Key const& b) {
        if (int const order = key(a.index).compare(key(b.index)))
            return order < 0;
        return a.index < b.index;
    };
    for (std::size_t begin = 0; begin < keys.size();) {
        std::size_t end = begin + 1;
        while (end < keys.size() && keys[end].SamePrefix(keys[begin]))
            ++end;
        if (end - begin > 1) {
            std::size_t const length = key(keys[begin].index).size();
            bool const differ = std::any_of(keys.begin() + std::ptrdiff_t(begin), keys.begin() + std::ptrdiff_t(end),
                                            [&](Key const& k) {
                                                std::size_t const size = key(k.index).size();
                                                return size > kPrefixBytes || size != length;
                                            });
            if (differ)
                std::sort(keys.begin() + std::ptrdiff_t(begin), keys.begin() + std::ptrdiff_t(end), byWhole);
        }
        begin = end;
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
