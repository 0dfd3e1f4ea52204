// Differential: zo::xml::ScanXml against the XML library it replaces. Every input is parsed
// by the library with the flags XmlDocument::Parse has always used, and its tree is turned
// into events the way Parse turned it into our tree (the document rules included); the
// scanner's events are recorded alongside. Aborts when one accepts what the other refuses,
// or when both accept and the events differ (consecutive text segments of one element are
// joined first: the tree joins them too).
#include "config/XmlScanner.h"

#include <pugixml.hpp>

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <string>
#include <string_view>

namespace {

// The events as one string: each one a letter, then its fields, each with its length.
class EventLog {
public:
    void Start(std::string_view name) { Put('S', name); }
    void Attribute(std::string_view name, std::string_view value) { Put('A', name, value); }
    void Text(std::string_view text)
    {
        if (!m_inText) {
            m_inText = true;
            m_text.clear();
        }
        m_text += text;
    }
    void End() { Put('E'); }
    std::string const& Finish()
    {
        Flush();
        return m_out;
    }

private:
    void Flush()
    {
        if (m_inText) {
            m_inText = false;
            Field('T');
            Field(m_text);
        }
    }
    void Field(char kind) { m_out.push_back(kind); }
    void Field(std::string_view bytes)
    {
        m_out += std::to_string(bytes.size());
        m_out.push_back(':');
        m_out += bytes;
    }
    template <class... Fields>
    void Put(char kind, Fields... fields)
    {
        Flush();
        Field(kind);
        (Field(std::string_view(fields)), ...);
    }

    std::string m_out;
    std::string m_text;
    bool m_inText = false;
};

class Recorder : public zo::xml::ScanHandler {
public:
    void StartElement(std::string_view name) override { log.Start(name); }
    void Attribute(std::string_view name, std::string_view value) override { log.Attribute(name, value); }
    void Text(std::string_view text) override { log.Text(text); }
    void EndElement() override { log.End(); }
    EventLog log;
};

bool IsWhitespaceOnly(std::string_view text)
{
    for (char c : text)
        if (c != ' ' && c != '\t' && c != '\n' && c != '\r')
            return false;
    return true;
}

// XmlDocument::Parse as it was over the library: its flags, its document rules, and its
// walk over the library's tree (names and values read as C strings, attributes before the
// children, character data and CDATA as text). Returns false when Parse refused the text.
bool Reference(char const* data, std::size_t size, EventLog& log, std::string& error)
{
    constexpr unsigned kFlags = pugi::parse_cdata | pugi::parse_escapes | pugi::parse_eol | pugi::parse_ws_pcdata_single;
    pugi::xml_document parsed;
    pugi::xml_parse_result const result = parsed.load_buffer(data, size, kFlags, pugi::encoding_utf8);
    if (!result) {
        error = result.description();
        return false;
    }
    pugi::xml_node top;
    for (pugi::xml_node child = parsed.first_child(); child; child = child.next_sibling()) {
        if (child.type() == pugi::node_pcdata || child.type() == pugi::node_cdata) {
            if (!IsWhitespaceOnly(child.value())) {
                error = "Text outside the document element";
                return false;
            }
        } else if (child.type() == pugi::node_element) {
            if (top) {
                error = "More than one document element";
                return false;
            }
            top = child;
        }
    }
    if (!top) {
        error = "No document element";
        return false;
    }
    // Depth first without recursion: a node is entered, then its next sibling is visited
    // after its subtree, and leaving an element ends it.
    pugi::xml_node node = top;
    for (;;) {
        if (node.type() == pugi::node_element) {
            log.Start(node.name());
            for (pugi::xml_attribute attribute = node.first_attribute(); attribute; attribute = attribute.next_attribute())
                log.Attribute(attribute.name(), attribute.value());
            if (node.first_child()) {
                node = node.first_child();
                continue;
            }
            log.End();
        } else if (node.type() == pugi::node_pcdata || node.type() == pugi::node_cdata) {
            log.Text(node.value());
        }
        while (node != top && !node.next_sibling()) {
            node = node.parent();
            log.End();
        }
        if (node == top)
            break;
        node = node.next_sibling();
    }
    return true;
}

[[noreturn]] void Differ(char const* what, std::string const& expected, std::string const& actual)
{
    std::fprintf(stderr, "fuzz_scan: %s\n--- library (%zu bytes) ---\n%.3000s\n--- scanner (%zu bytes) ---\n%.3000s\n",
                 what, expected.size(), expected.c_str(), actual.size(), actual.c_str());
    __builtin_trap();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    // libFuzzer hands over a heap block of exactly `size` bytes, not NUL-terminated: a read
    // past the end is a sanitizer report.
    char const* const text = reinterpret_cast<char const*>(data);

    EventLog expected;
    std::string expectedError;
    bool const accepted = Reference(size ? text : "", size, expected, expectedError);

    Recorder recorder;
    zo::xml::ScanResult const scanned = zo::xml::ScanXml(text, size, recorder);
    if (scanned.ok != accepted)
        Differ(accepted ? "the library accepts, the scanner refuses" : "the library refuses, the scanner accepts",
               accepted ? std::string("accepted") : expectedError,
               scanned.ok ? std::string("accepted") : scanned.error + " at " + std::to_string(scanned.offset));
    if (!scanned.ok) {
        if (scanned.error.empty() || scanned.offset > size)
            Differ("a refusal without a reason or past the end", expectedError, scanned.error);
        return 0;
    }
    std::string const& want = expected.Finish();
    std::string const& got = recorder.log.Finish();
    if (want != got)
        Differ("the events differ", want, got);
    return 0;
}
