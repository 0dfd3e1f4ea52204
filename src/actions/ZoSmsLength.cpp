#include "actions/ZoSmsLength.h"

#include <vector>

namespace {

constexpr int kGsmSingle = 160;
constexpr int kGsmPart = 153;
constexpr int kUcsSingle = 70;
constexpr int kUcsPart = 67;

// The basic GSM 7-bit alphabet beyond printable ASCII, and the ASCII characters it lacks.
constexpr std::u32string_view kGsmBasicExtra =
    U"\u00A3\u00A5\u00E8\u00E9\u00F9\u00EC\u00F2\u00C7\u00D8\u00F8\u00C5\u00E5"
    U"\u0394\u03A6\u0393\u039B\u03A9\u03A0\u03A8\u03A3\u0398\u039E\u00C6\u00E6\u00DF\u00C9"
    U"\u00A4\u00A1\u00C4\u00D6\u00D1\u00DC\u00A7\u00BF\u00E4\u00F6\u00F1\u00FC\u00E0";
constexpr std::u32string_view kAsciiNotInGsm = U"`";
constexpr std::u32string_view kGsmExtension = U"^{}\\[~]|\u20AC\f";

// The code points of a wide text, whatever the width of wchar_t; a lone surrogate is kept
// as it stands (it is no GSM character either way).
std::vector<char32_t> CodePoints(std::wstring_view text)
{
    std::vector<char32_t> points;
    points.reserve(text.size());
    for (std::size_t i = 0; i < text.size(); ++i) {
        char32_t c = static_cast<char32_t>(text[i]);
        if constexpr (sizeof(wchar_t) == 2) {
            if (c >= 0xD800 && c <= 0xDBFF && i + 1 < text.size()) {
                char32_t const low = static_cast<char32_t>(text[i + 1]);
                if (low >= 0xDC00 && low <= 0xDFFF) {
                    c = 0x10000 + ((c - 0xD800) << 10) + (low - 0xDC00);
                    ++i;
                }
            }
        }
        points.push_back(c);
    }
    return points;
}

int UcsUnits(char32_t c)
{
    return c > 0xFFFF ? 2 : 1;
}

// Characters of the text that fit in `limit` units, taking each character whole.
int CharactersWithin(std::vector<char32_t> const& points, bool gsm, int limit)
{
    int used = 0;
    int count = 0;
    for (char32_t c : points) {
        int const size = gsm ? ZoGsm7Septets(c) : UcsUnits(c);
        if (used + size > limit)
            break;
        used += size;
        ++count;
    }
    return count;
}

// Parts of a split text: characters are packed into parts of `part` units, a character
// that does not fit whole starts the next part.
int PartsOf(std::vector<char32_t> const& points, bool gsm, int part)
{
    int parts = 1;
    int used = 0;
    for (char32_t c : points) {
        int const size = gsm ? ZoGsm7Septets(c) : UcsUnits(c);
        if (used + size > part) {
            ++parts;
            used = 0;
        }
        used += size;
    }
    return parts;
}

} // namespace

int ZoGsm7Septets(char32_t c)
{
    if (kGsmExtension.find(c) != std::u32string_view::npos)
        return 2;
    if (c == U'\n' || c == U'\r')
        return 1;
    if (c >= 0x20 && c < 0x7F)
        return kAsciiNotInGsm.find(c) == std::u32string_view::npos ? 1 : 0;
    return kGsmBasicExtra.find(c) != std::u32string_view::npos ? 1 : 0;
}

ZoSmsLength ZoMeasureSms(std::wstring_view text, bool forceBreak)
{
    std::vector<char32_t> const points = CodePoints(text);
    ZoSmsLength length;
    length.characters = static_cast<int>(points.size());
    bool gsm = true;
    for (char32_t c : points)
        if (ZoGsm7Septets(c) == 0) {
            gsm = false;
            break;
        }
    length.encoding = gsm ? ZoSmsEncoding::Gsm7 : ZoSmsEncoding::Ucs2;
    for (char32_t c : points)
        length.units += gsm ? ZoGsm7Septets(c) : UcsUnits(c);

    int const single = gsm ? kGsmSingle : kUcsSingle;
    int const part = gsm ? kGsmPart : kUcsPart;
    length.sentCharacters = length.characters;
    if (points.empty()) {
        length.perMessage = single;
    } else if (length.units <= single) {
        length.messages = 1;
        length.perMessage = single;
    } else if (forceBreak) {
        length.messages = PartsOf(points, gsm, part);
        length.perMessage = part;
    } else {
        length.messages = 1;
        length.perMessage = single;
        length.cut = true;
        length.sentCharacters = CharactersWithin(points, gsm, single);
    }
    return length;
}
