#pragma once
#include <cstddef>
#include <string>
#include <string_view>

// A single-pass XML scanner that hands what it reads straight to a handler, so that a
// document can be built without an intermediate DOM and without copying the text.
//
// It reads exactly the language XmlDocument has always read: the XML library's parser with
// CDATA, escapes and line-end normalisation on, whitespace-only text kept only as the only
// child of its element, UTF-8, and
//   - the five predefined entities and character references (&#N; &#xN;) are decoded in
//     text and attribute values; a reference that is unknown or malformed stays as it is
//     written; a code point is written in UTF-8 form whatever it is (surrogates and values
//     beyond U+10FFFF included: the caller cleans up what is not valid UTF-8); a reference
//     to code point 0 ends that value or text segment there;
//   - "\r\n" and "\r" become "\n" in text, CDATA and attribute values (tabs and "\n" in
//     attribute values stay as written);
//   - CDATA sections are text segments, never decoded;
//   - comments, processing instructions, the XML declaration and DOCTYPE (internal subset
//     included) are skipped: nothing is expanded and nothing outside the buffer is read;
//   - a NUL byte ends the document, as if the buffer stopped there; a UTF-8 byte order mark
//     at the start is skipped;
//   - character data outside the document element is ignored, except a CDATA section that
//     is not whitespace only ("Text outside the document element"); a second element at top
//     level is refused ("More than one document element"), and so is a text without one
//     ("No document element").
//
// Names and texts are raw bytes: nothing checks that they are valid UTF-8.
//
// Nothing recurses per level of nesting; the buffer is never read past `length` and need
// not be NUL-terminated; time is linear in the length. Memory: the open elements' names
// (pointers into the buffer) and one scratch string per decoded value.
namespace zo::xml {

class ScanHandler {
public:
    virtual ~ScanHandler() = default;
    // An element starts; `name` is the raw bytes of its tag. Its attributes follow, then its
    // content, then EndElement.
    virtual void StartElement(std::string_view name) = 0;
    // An attribute of the element just started, its value decoded.
    virtual void Attribute(std::string_view name, std::string_view value) = 0;
    // One text segment (character data or a CDATA section) of the element now open, decoded.
    // An element's text may come in several segments, also around child elements; a
    // segment may be empty.
    virtual void Text(std::string_view text) = 0;
    virtual void EndElement() = 0;
};

struct ScanResult {
    bool ok = false;
    std::string error;      // a short reason in English when !ok
    std::size_t offset = 0; // the byte offset where scanning stopped when !ok
};

// Whether a text is blanks only (space, tab, line feed, carriage return): such text between
// elements is what the scanner drops, and what a writer must not leave bare.
bool IsWhitespaceOnly(std::string_view text);

// Scans data[0, length). The views handed to the handler are valid only during the call.
// On failure the handler may already have received events for the part before the error:
// whatever it built must be discarded.
ScanResult ScanXml(char const* data, std::size_t length, ScanHandler& handler);

} // namespace zo::xml
