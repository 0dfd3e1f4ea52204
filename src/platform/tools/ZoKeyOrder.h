#pragma once
#include <cstddef>
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

// Ordering many texts by keys made once per text, instead of comparing the texts themselves
// at every step of a sort.

// The order of `count` items by byte keys: keys compare as memcmp compares them (a key comes
// before the longer keys it begins), equal keys by item index, so the order is stable. The
// sort moves 16-byte integer keys (16 bytes of each key at first, then 8 bytes at a time
// within the runs still equal), so that it compares integers alone.
// key(i): the key of item i, valid for the whole call.
std::vector<std::uint32_t> ZoOrderByKeys(std::size_t count, std::function<std::string_view(std::size_t)> const& key);

// Appends the key of UTF-8 text (malformed bytes count as U+FFFD) that orders and matches
// texts without regard to case as QString::compare(a, b, Qt::CaseInsensitive) does: every
// character case-folded (QChar::toCaseFolded), then each UTF-16 unit of the result written
// as UTF-8 writes a character of that value (a character outside the basic plane is two
// units, so six bytes). Plain ASCII keeps one byte a character, memcmp orders two keys as
// that comparison orders their texts (UTF-16 order), and a text holds another one, case
// ignored, exactly when its key holds the other's key (no byte that starts a character can
// continue one, so a key found is found at a character).
void ZoAppendCaseFoldedKey(std::string& out, std::string_view utf8);
