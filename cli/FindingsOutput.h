#pragma once
#include "check/ZoCheckFinding.h"
#include "check/ZoProjectChecker.h"

#include <QString>

#include <cstdio>
#include <vector>

// Writes findings as the program shows them, a batch at a time, so that a command can
// write what it has found and let it go: one line each, or one JSON object whose findings
// are closed by Finish with the counts of them all.
class FindingsOutput {
public:
    FindingsOutput(std::FILE* out, bool json, QString const& folder);
    void Write(std::vector<ZoFinding> const& findings);
    // Ends the output (the JSON object's counts) and flushes it; returns the counts.
    ZoCheckCounts Finish();

private:
    std::FILE* m_out;
    bool m_json;
    std::size_t m_written = 0;
    ZoCheckCounts m_counts;
};
