#include "spreadsheet/CsvWriter.h"

namespace {

bool NeedsQuotes(std::string_view text)
{
    if (text.empty())
        return false;
    if (text.front() == ' ' || text.back() == ' ' || text.front() == '\t' || text.back() == '\t')
        return true;
    return text.find_first_of(",;\"\r\n") != std::string_view::npos;
}

} // namespace

void ZoCsvWriter::Cell(std::string_view text)
{
    if (m_rowStarted)
        m_out.push_back(',');
    m_rowStarted = true;
    if (!NeedsQuotes(text)) {
        m_out.append(text);
        return;
    }
    m_out.push_back('"');
    for (char c : text) {
        if (c == '"')
            m_out.push_back('"');
        m_out.push_back(c);
    }
    m_out.push_back('"');
}

void ZoCsvWriter::EndRow()
{
    m_out.append("\r\n");
    m_rowStarted = false;
}
