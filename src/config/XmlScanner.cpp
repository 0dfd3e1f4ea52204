#include "XmlScanner.h"

#include <array>
#include <cstdint>
#include <cstring>
#include <vector>

#if defined(__SSE2__)
#include <emmintrin.h>
#endif

namespace zo::xml {
namespace {

using Byte = unsigned char;

// Character classes. A NUL byte is in every "stop" class: it ends whatever is being read,
// exactly like the end of the buffer.
enum : Byte {
    kSpace = 1,      // \t \n \r and space
    kName = 2,       // a byte of a name: letters, digits, _ : - . and every byte >= 0x80
    kNameStart = 4,  // a byte that starts a name: letters, _ : and every byte >= 0x80
    kTextStop = 8,   // NUL & \r <
    kValueStop = 16, // NUL & \r ' "
    kCdataStop = 32, // NUL \r ]
};

constexpr std::array<Byte, 256> MakeClasses()
{
    std::array<Byte, 256> table{};
    for (int c = 0; c < 256; ++c) {
        bool const letter = (c >= 'a' && c <= 'z') || (c >= 'A' && c <= 'Z') || c >= 0x80;
        Byte bits = 0;
        if (c == ' ' || c == '\t' || c == '\n' || c == '\r')
            bits |= kSpace;
        if (letter || c == '_' || c == ':')
            bits |= kNameStart | kName;
        if ((c >= '0' && c <= '9') || c == '-' || c == '.')
            bits |= kName;
        if (c == 0 || c == '&' || c == '\r' || c == '<')
            bits |= kTextStop;
        if (c == 0 || c == '&' || c == '\r' || c == '\'' || c == '"')
            bits |= kValueStop;
        if (c == 0 || c == '\r' || c == ']')
            bits |= kCdataStop;
        table[static_cast<std::size_t>(c)] = bits;
    }
    return table;
}

constexpr std::array<Byte, 256> kClasses = MakeClasses();

inline bool Is(Byte c, Byte cls) { return (kClasses[c] & cls) != 0; }

// The first byte at or after p (before end) in class cls, or end.
template <Byte cls>
inline Byte const* Find(Byte const* p, Byte const* end)
{
    while (end - p >= 4) {
        if (Is(p[0], cls)) return p;
        if (Is(p[1], cls)) return p + 1;
        if (Is(p[2], cls)) return p + 2;
        if (Is(p[3], cls)) return p + 3;
        p += 4;
    }
    while (p != end && !Is(*p, cls))
        ++p;
    return p;
}

#if defined(__SSE2__)
// The same for a class of at most four bytes, sixteen bytes at a time.
template <Byte cls, char c0, char c1, char c2, char c3>
inline Byte const* FindAny(Byte const* p, Byte const* end)
{
    __m128i const b0 = _mm_set1_epi8(c0), b1 = _mm_set1_epi8(c1), b2 = _mm_set1_epi8(c2), b3 = _mm_set1_epi8(c3);
    while (end - p >= 16) {
        __m128i const v = _mm_loadu_si128(reinterpret_cast<__m128i const*>(p));
        __m128i const hit = _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, b0), _mm_cmpeq_epi8(v, b1)),
                                         _mm_or_si128(_mm_cmpeq_epi8(v, b2), _mm_cmpeq_epi8(v, b3)));
        if (int const mask = _mm_movemask_epi8(hit))
            return p + __builtin_ctz(static_cast<unsigned>(mask));
        p += 16;
    }
    return Find<cls>(p, end);
}
inline Byte const* FindTextStop(Byte const* p, Byte const* end) { return FindAny<kTextStop, '<', '&', '\r', '\0'>(p, end); }
#else
inline Byte const* FindTextStop(Byte const* p, Byte const* end) { return Find<kTextStop>(p, end); }
#endif

// The first byte at or after p (before end) not in class cls, or end.
template <Byte cls>
inline Byte const* Skip(Byte const* p, Byte const* end)
{
    while (end - p >= 4) {
        if (!Is(p[0], cls)) return p;
        if (!Is(p[1], cls)) return p + 1;
        if (!Is(p[2], cls)) return p + 2;
        if (!Is(p[3], cls)) return p + 3;
        p += 4;
    }
    while (p != end && Is(*p, cls))
        ++p;
    return p;
}

// Appends code point `code` in UTF-8 form. Values beyond U+10FFFF keep the four-byte form
// with the lead byte's excess bits cut off, as documents have always been read.
void AppendCodePoint(std::string& out, std::uint32_t code)
{
    auto const byte = [&out](std::uint32_t b) { out.push_back(static_cast<char>(static_cast<Byte>(b))); };
    if (code < 0x80) {
        byte(code);
    } else if (code < 0x800) {
        byte(0xC0 | (code >> 6));
        byte(0x80 | (code & 0x3F));
    } else if (code < 0x10000) {
        byte(0xE0 | (code >> 12));
        byte(0x80 | ((code >> 6) & 0x3F));
        byte(0x80 | (code & 0x3F));
    } else {
        byte(0xF0 | (code >> 18));
        byte(0x80 | ((code >> 12) & 0x3F));
        byte(0x80 | ((code >> 6) & 0x3F));
        byte(0x80 | (code & 0x3F));
    }
}

class Scanner {
public:
    Scanner(char const* data, std::size_t length, ScanHandler& handler)
        : m_begin(reinterpret_cast<Byte const*>(data)), m_end(m_begin + length), m_handler(handler)
    {
    }

    ScanResult Run();

private:
    // An open element's name is kept in m_openNames, not read again from the text: the
    // reader of a large file may hand back the text before the element now read.
    struct Open {
        std::size_t offset; // in m_openNames
        std::size_t length;
    };

    // The byte at q, or 0 at and past the end (a NUL byte reads the same).
    Byte At(Byte const* q) const { return q < m_end ? *q : 0; }
    bool Fail(char const* reason, Byte const* where)
    {
        m_result.error = reason;
        m_result.offset = static_cast<std::size_t>(where - m_begin);
        return false;
    }
    static std::string_view View(Byte const* from, Byte const* to)
    {
        return {reinterpret_cast<char const*>(from), static_cast<std::size_t>(to - from)};
    }

    bool Markup();
    bool StartTag();
    bool Attributes();
    bool EndTag();
    bool Exclamation();
    bool Comment();
    bool Cdata();
    bool Doctype();
    bool ProcessingInstruction();
    bool CharacterData(Byte const* from);
    bool Value(Byte quote, std::string_view& value);
    Byte const* LineEnd(Byte const* cr, std::string& out) const;
    Byte const* Reference(Byte const* amp, std::string& out, std::size_t& cut);
    void Close()
    {
        m_handler.EndElement();
        m_openNames.resize(m_open.back().offset);
        m_open.pop_back();
        m_hasChild = true;
    }

    Byte const* const m_begin;
    Byte const* const m_end;
    Byte const* m_p = nullptr;
    ScanHandler& m_handler;
    std::vector<Open> m_open;
    std::string m_openNames;
    bool m_hasChild = false; // the innermost open element has a child node (element or text)
    bool m_rootSeen = false;
    std::string m_text;  // decoded text segment
    std::string m_value; // decoded attribute value
    ScanResult m_result;
};

ScanResult Scanner::Run()
{
    m_p = m_begin;
    if (m_end - m_p >= 3 && m_p[0] == 0xEF && m_p[1] == 0xBB && m_p[2] == 0xBF)
        m_p += 3;
    for (;;) {
        Byte c = At(m_p);
        if (c == 0)
            break;
        if (c == '<') {
            ++m_p;
            if (!Markup())
                return std::move(m_result);
            continue;
        }
        Byte const* const mark = m_p;
        m_p = Skip<kSpace>(m_p, m_end);
        c = At(m_p);
        if (c == '<' || c == 0) {
            // Whitespace only: kept when it is all an element holds (it is followed by the
            // element's end tag and nothing came before it), dropped otherwise.
            if (m_open.empty() || m_hasChild || c != '<' || At(m_p + 1) != '/')
                continue;
        }
        if (m_open.empty()) {
            // Character data outside the document element is skipped unread.
            while ((c = At(m_p)) != 0 && c != '<')
                ++m_p;
            if (c == 0)
                break;
            ++m_p;
        } else if (!CharacterData(mark)) {
            return std::move(m_result);
        }
        if (!Markup())
            return std::move(m_result);
    }
    if (!m_open.empty())
        Fail("Unexpected end of data: an element is not closed", m_p);
    else if (!m_rootSeen)
        Fail("No document element", m_p);
    else
        m_result.ok = true;
    return std::move(m_result);
}

// After "<".
bool Scanner::Markup()
{
    Byte const c = At(m_p);
    if (Is(c, kNameStart))
        return StartTag();
    if (c == '/')
        return EndTag();
    if (c == '!')
        return Exclamation();
    if (c == '?')
        return ProcessingInstruction();
    return Fail(c == 0 ? "Unexpected end of data" : "Unrecognized tag", m_p);
}

bool Scanner::StartTag()
{
    Byte const* const name = m_p;
    m_p = Skip<kName>(m_p, m_end);
    if (m_open.empty()) {
        if (m_rootSeen)
            return Fail("More than one document element", name - 1);
        m_rootSeen = true;
    }
    m_handler.StartElement(View(name, m_p));
    m_open.push_back({m_openNames.size(), static_cast<std::size_t>(m_p - name)});
    m_openNames.append(reinterpret_cast<char const*>(name), m_open.back().length);
    m_hasChild = false;

    Byte const c = At(m_p);
    if (c == '>') {
        ++m_p;
        return true;
    }
    if (c == '/') {
        if (At(m_p + 1) != '>')
            return Fail("Bad start tag", m_p + 1);
        m_p += 2;
        Close();
        return true;
    }
    if (Is(c, kSpace)) {
        ++m_p;
        return Attributes();
    }
    return Fail(c == 0 ? "Unexpected end of data" : "Bad start tag", m_p);
}

// After a blank that follows the element's name.
bool Scanner::Attributes()
{
    for (;;) {
        m_p = Skip<kSpace>(m_p, m_end);
        Byte c = At(m_p);
        if (Is(c, kNameStart)) {
            Byte const* const name = m_p;
            m_p = Skip<kName>(m_p, m_end);
            std::string_view const nameView = View(name, m_p);
            m_p = Skip<kSpace>(m_p, m_end);
            if (At(m_p) != '=')
                return Fail("Bad attribute: '=' expected", m_p);
            m_p = Skip<kSpace>(m_p + 1, m_end);
            c = At(m_p);
            if (c != '"' && c != '\'')
                return Fail("Bad attribute: quote expected", m_p);
            ++m_p;
            std::string_view value;
            if (!Value(c, value))
                return false;
            m_handler.Attribute(nameView, value);
            if (Is(At(m_p), kNameStart))
                return Fail("Bad attribute: blank expected", m_p);
        } else if (c == '/') {
            if (At(m_p + 1) != '>')
                return Fail("Bad start tag", m_p + 1);
            m_p += 2;
            Close();
            return true;
        } else if (c == '>') {
            ++m_p;
            return true;
        } else {
            return Fail(c == 0 ? "Unexpected end of data" : "Bad start tag", m_p);
        }
    }
}

// At "/" after "<".
bool Scanner::EndTag()
{
    ++m_p;
    if (m_open.empty())
        return Fail("Start-end tags mismatch", m_p);
    Open const& open = m_open.back();
    if (static_cast<std::size_t>(m_end - m_p) < open.length
        || std::memcmp(m_p, m_openNames.data() + open.offset, open.length) != 0 ||
        Is(At(m_p + open.length), kName))
        return Fail("Start-end tags mismatch", m_p);
    m_p = Skip<kSpace>(m_p + open.length, m_end);
    Close();
    Byte const c = At(m_p);
    if (c != '>')
        return Fail(c == 0 ? "Unexpected end of data" : "Bad end tag", m_p);
    ++m_p;
    return true;
}

// At "!" after "<".
bool Scanner::Exclamation()
{
    Byte const* const s = m_p + 1;
    Byte const c = At(s);
    if (c == '-') {
        if (At(s + 1) != '-')
            return Fail("Bad comment", s + 1);
        m_p = s + 2;
        return Comment();
    }
    if (c == '[') {
        static constexpr char kCdata[] = "CDATA[";
        for (int i = 0; i < 6; ++i)
            if (At(s + 1 + i) != static_cast<Byte>(kCdata[i]))
                return Fail("Bad CDATA section", s + 1 + i);
        m_p = s + 7;
        return Cdata();
    }
    static constexpr char kDoctype[] = "DOCTYPE";
    for (int i = 0; i < 7; ++i)
        if (At(s + i) != static_cast<Byte>(kDoctype[i]))
            return Fail(c == 0 ? "Unexpected end of data" : "Unrecognized tag", s);
    if (!m_open.empty())
        return Fail("DOCTYPE inside an element", s - 1);
    m_p = s;
    return Doctype();
}

// After "<!--": skipped up to the first "-->".
bool Scanner::Comment()
{
    for (Byte c; (c = At(m_p)) != 0; ++m_p)
        if (c == '-' && At(m_p + 1) == '-' && At(m_p + 2) == '>') {
            m_p += 3;
            return true;
        }
    return Fail("Unterminated comment", m_p);
}

// After "<![CDATA[".
bool Scanner::Cdata()
{
    Byte const* const start = m_p;
    Byte const* run = start;
    bool copying = false;
    Byte const* q = start;
    for (;;) {
        q = Find<kCdataStop>(q, m_end);
        Byte const c = At(q);
        if (c == 0)
            return Fail("Unterminated CDATA section", q);
        if (c == ']') {
            if (At(q + 1) == ']' && At(q + 2) == '>')
                break;
            ++q;
            continue;
        }
        if (!copying) {
            m_text.clear();
            copying = true;
        }
        m_text.append(reinterpret_cast<char const*>(run), static_cast<std::size_t>(q - run));
        q = LineEnd(q, m_text);
        run = q;
    }
    std::string_view text = View(start, q);
    if (copying) {
        m_text.append(reinterpret_cast<char const*>(run), static_cast<std::size_t>(q - run));
        text = m_text;
    }
    m_p = q + 3;
    if (m_open.empty()) {
        if (!IsWhitespaceOnly(text))
            return Fail("Text outside the document element", start);
        return true;
    }
    m_handler.Text(text);
    m_hasChild = true;
    return true;
}

// At "DOCTYPE" after "<!": skipped up to its closing ">", through its internal subset
// (quoted strings, comments, processing instructions, nested declarations, conditional
// sections), without interpreting anything.
bool Scanner::Doctype()
{
    std::size_t depth = 0;
    Byte c;
    while ((c = At(m_p)) != 0) {
        if (c == '<' && At(m_p + 1) == '!' && At(m_p + 2) != '-') {
            if (At(m_p + 2) == '[') {
                // A conditional section, with nested ones, up to its "]]>".
                m_p += 3;
                std::size_t nested = 0;
                for (;;) {
                    Byte const d = At(m_p);
                    if (d == 0)
                        return Fail("Bad DOCTYPE", m_p);
                    if (d == '<' && At(m_p + 1) == '!' && At(m_p + 2) == '[') {
                        m_p += 3;
                        ++nested;
                    } else if (d == ']' && At(m_p + 1) == ']' && At(m_p + 2) == '>') {
                        m_p += 3;
                        if (nested == 0)
                            break;
                        --nested;
                    } else {
                        ++m_p;
                    }
                }
            } else {
                m_p += 2;
                ++depth;
            }
        } else if (c == '"' || c == '\'') {
            ++m_p;
            while (At(m_p) != 0 && *m_p != c)
                ++m_p;
            if (At(m_p) == 0)
                return Fail("Bad DOCTYPE", m_p);
            ++m_p;
        } else if (c == '<') {
            std::string_view terminator;
            if (At(m_p + 1) == '?') {
                m_p += 2;
                terminator = "?>";
            } else if (At(m_p + 1) == '!' && At(m_p + 2) == '-' && At(m_p + 3) == '-') {
                m_p += 4;
                terminator = "-->";
            } else {
                return Fail("Bad DOCTYPE", m_p);
            }
            while (!(static_cast<std::size_t>(m_end - m_p) >= terminator.size() &&
                     std::memcmp(m_p, terminator.data(), terminator.size()) == 0)) {
                if (At(m_p) == 0)
                    return Fail("Bad DOCTYPE", m_p);
                ++m_p;
            }
            m_p += terminator.size();
        } else if (c == '>') {
            ++m_p;
            if (depth == 0)
                return true;
            --depth;
        } else {
            ++m_p;
        }
    }
    return Fail("Bad DOCTYPE", m_p);
}

// At "?" after "<": a processing instruction or the XML declaration, skipped up to "?>".
bool Scanner::ProcessingInstruction()
{
    ++m_p;
    if (!Is(At(m_p), kNameStart))
        return Fail("Bad processing instruction", m_p);
    m_p = Skip<kName>(m_p, m_end);
    for (Byte c; (c = At(m_p)) != 0; ++m_p)
        if (c == '?' && At(m_p + 1) == '>') {
            m_p += 2;
            return true;
        }
    return Fail("Bad processing instruction", m_p);
}

// A text segment of the open element from `from` to the next "<", decoded; leaves m_p
// after that "<".
bool Scanner::CharacterData(Byte const* from)
{
    Byte const* q = FindTextStop(from, m_end);
    if (At(q) == '<') { // nothing to decode: the text as it is in the buffer
        m_handler.Text(View(from, q));
        m_hasChild = true;
        m_p = q + 1;
        return true;
    }
    m_text.assign(reinterpret_cast<char const*>(from), static_cast<std::size_t>(q - from));
    std::size_t cut = std::string::npos;
    for (;;) {
        Byte const c = At(q);
        if (c == '<')
            break;
        if (c == 0)
            return Fail("Unexpected end of data: an element is not closed", q);
        q = c == '\r' ? LineEnd(q, m_text) : Reference(q, m_text, cut);
        Byte const* const run = q;
        q = FindTextStop(q, m_end);
        m_text.append(reinterpret_cast<char const*>(run), static_cast<std::size_t>(q - run));
    }
    m_handler.Text(std::string_view(m_text).substr(0, cut));
    m_hasChild = true;
    m_p = q + 1;
    return true;
}

// After the opening quote; leaves m_p after the closing one.
bool Scanner::Value(Byte quote, std::string_view& value)
{
    Byte const* const start = m_p;
    Byte const* run = start;
    Byte const* q = start;
    bool copying = false;
    std::size_t cut = std::string::npos;
    for (;;) {
        q = Find<kValueStop>(q, m_end);
        Byte const c = At(q);
        if (c == quote)
            break;
        if (c == 0)
            return Fail("Bad attribute: unterminated value", start);
        if (c == '"' || c == '\'') { // the other quote
            ++q;
            continue;
        }
        if (!copying) {
            m_value.clear();
            copying = true;
        }
        m_value.append(reinterpret_cast<char const*>(run), static_cast<std::size_t>(q - run));
        q = c == '\r' ? LineEnd(q, m_value) : Reference(q, m_value, cut);
        run = q;
    }
    if (copying) {
        m_value.append(reinterpret_cast<char const*>(run), static_cast<std::size_t>(q - run));
        value = std::string_view(m_value).substr(0, cut);
    } else {
        value = View(start, q);
    }
    m_p = q + 1;
    return true;
}

// At "\r": appends the "\n" that "\r\n" or "\r" becomes and returns the position after it.
Byte const* Scanner::LineEnd(Byte const* cr, std::string& out) const
{
    out.push_back('\n');
    return At(cr + 1) == '\n' ? cr + 2 : cr + 1;
}

// At "&": appends what the reference stands for and returns the position after it. A
// reference that is not one of the five entities or a well-formed character reference is
// kept as written: "&" is appended and reading goes on after it. A character reference to
// code 0 (modulo 2^32) ends the value: `cut` keeps the first such position.
Byte const* Scanner::Reference(Byte const* amp, std::string& out, std::size_t& cut)
{
    Byte const* s = amp + 1;
    auto const entity = [&](char const* rest, char replacement) -> Byte const* {
        std::size_t const n = std::strlen(rest);
        for (std::size_t i = 0; i < n; ++i)
            if (At(s + i) != static_cast<Byte>(rest[i]))
                return nullptr;
        out.push_back(replacement);
        return s + n;
    };
    Byte const* after = nullptr;
    switch (At(s)) {
    case '#': {
        std::uint32_t code = 0;
        Byte const* d = s + 1;
        bool const hex = At(d) == 'x';
        if (hex)
            ++d;
        if (At(d) == ';')
            break;
        for (;; ++d) {
            Byte const c = At(d);
            if (c >= '0' && c <= '9')
                code = code * (hex ? 16u : 10u) + (c - '0');
            else if (hex && (c | 0x20) >= 'a' && (c | 0x20) <= 'f')
                code = code * 16u + ((c | 0x20) - 'a' + 10u);
            else
                break;
        }
        if (At(d) != ';')
            break;
        if (code == 0 && cut == std::string::npos)
            cut = out.size();
        AppendCodePoint(out, code);
        after = d + 1;
        break;
    }
    case 'a':
        after = At(s + 1) == 'm' ? entity("amp;", '&') : entity("apos;", '\'');
        break;
    case 'g':
        after = entity("gt;", '>');
        break;
    case 'l':
        after = entity("lt;", '<');
        break;
    case 'q':
        after = entity("quot;", '"');
        break;
    default:
        break;
    }
    if (after)
        return after;
    out.push_back('&');
    return amp + 1;
}

} // namespace

bool IsWhitespaceOnly(std::string_view text)
{
    for (char c : text)
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r')
            return false;
    return true;
}

ScanResult ScanXml(char const* data, std::size_t length, ScanHandler& handler)
{
    if (!data)
        length = 0;
    Scanner scanner(data ? data : "", length, handler);
    return scanner.Run();
}

} // namespace zo::xml
