// Any bytes given to XmlDocument::Parse: no crash, no sanitizer report, and when the text
// parses, what CreateXmlCode writes must parse again and be written back identically (the
// writer's output is a fixed point of parse-and-write).
#include "config/XmlDocument.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

[[noreturn]] void Fail(char const* what, std::string const& first, std::string const& second)
{
    std::fprintf(stderr, "fuzz_parse: %s\n--- first write (%zu bytes) ---\n%.2000s\n--- second (%zu bytes) ---\n%.2000s\n",
                 what, first.size(), first.c_str(), second.size(), second.c_str());
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    XmlDocument doc;
    if (!doc.Parse(reinterpret_cast<char const*>(data), size))
        return 0;
    if (!doc.IsOK() || !doc.Root())
        Fail("Parse succeeded without a root", {}, {});

    std::string first;
    doc.Root()->CreateXmlCode(first);

    XmlDocument again;
    if (!again.Parse(first.data(), first.size()))
        Fail(("the written text does not parse: " + again.ErrorText()).c_str(), first, {});
    std::string second;
    again.Root()->CreateXmlCode(second);
    if (second != first)
        Fail("writing the re-parsed text gives another text", first, second);

    // A deep copy writes the same text as its source.
    XmlDocument copy(*again.Root());
    std::string third;
    copy.Root()->CreateXmlCode(third);
    if (third != first)
        Fail("a deep copy writes another text", first, third);
    return 0;
}
