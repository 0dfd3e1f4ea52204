// Differential: the lines of the root's children and grandchildren found in one pass
// (ZoFindChildLines, what `zoevents check` finds while it checks) against the lines the
// scanner by findings' paths gives the same elements (ZoFindLines). Aborts when they differ,
// or when a line is not a line of the text.
#include "check/ZoCheckLines.h"

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <vector>

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    char const* const text = reinterpret_cast<char const*>(data);
    ZoChildLines const lines = ZoFindChildLines(text, size);
    if (lines.children.size() != lines.grandchildren.size())
        std::abort();
    int const lastLine = 1 + static_cast<int>(std::count(text, text + size, '\n'));
    std::vector<ZoFinding> findings;
    for (std::uint32_t child = 0; child < lines.children.size(); ++child) {
        findings.emplace_back().path = {child};
        for (std::uint32_t grandchild = 0; grandchild < lines.grandchildren[child].size(); ++grandchild)
            findings.emplace_back().path = {child, grandchild};
    }
    // A path the text lacks keeps line 0 in both.
    findings.emplace_back().path = {static_cast<std::uint32_t>(lines.children.size())};
    std::vector<ZoFinding> applied = findings;
    ZoApplyChildLines(applied, zo::project::ProjectDoc::Events, lines);
    ZoFindLines(findings, zo::project::ProjectDoc::Events, text, size);
    for (std::size_t i = 0; i < findings.size(); ++i) {
        if (applied[i].line != findings[i].line || findings[i].line < 0 || findings[i].line > lastLine)
            std::abort();
    }
    return 0;
}
