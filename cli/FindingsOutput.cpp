#include "FindingsOutput.h"

#include "CliText.h"
#include "check/ZoCheckReport.h"

#include <QDir>

FindingsOutput::FindingsOutput(std::FILE* out, bool json, QString const& folder) : m_out(out), m_json(json)
{
    if (m_json) {
        std::string const head = ZoFindingsJsonHead(QDir::toNativeSeparators(folder).toStdWString());
        std::fwrite(head.data(), 1, head.size(), m_out);
    }
}

void FindingsOutput::Write(std::vector<ZoFinding> const& findings)
{
    for (ZoFinding const& finding : findings) {
        if (m_json) {
            std::string const item = ZoFindingJson(finding, m_written == 0);
            std::fwrite(item.data(), 1, item.size(), m_out);
        } else {
            WriteLine(m_out, ZoFindingLine(finding));
        }
        ++m_written;
    }
    ZoCheckCounts const counts = ZoCountFindings(findings);
    m_counts.errors += counts.errors;
    m_counts.warnings += counts.warnings;
    m_counts.notes += counts.notes;
}

ZoCheckCounts FindingsOutput::Finish()
{
    if (m_json) {
        std::string const tail = ZoFindingsJsonTail(m_counts, m_written == 0);
        std::fwrite(tail.data(), 1, tail.size(), m_out);
    }
    std::fflush(m_out);
    return m_counts;
}
