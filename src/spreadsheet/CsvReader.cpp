#include "spreadsheet/CsvReader.h"

#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"
#include "spreadsheet/CsvWriter.h"

namespace {

// The separator the first row uses more, outside quotes; a comma when they are even.
char DetectSeparator(std::string_view text)
{
    std::size_t commas = 0;
    std::size_t semicolons = 0;
    bool quoted = false;
    for (char c : text) {
        if (c == '"')
            quoted = !quoted;
        else if (!quoted && (c == '\n' || c == '\r'))
            break;
        else if (!quoted && c == ',')
            ++commas;
        else if (!quoted && c == ';')
            ++semicolons;
    }
    return semicolons > commas ? ';' : ',';
}

bool StartsWith(std::string_view text, std::string_view prefix)
{
    return text.substr(0, prefix.size()) == prefix;
}

} // namespace

std::wstring ZoCsvFaultText(ZoCsvFault fault)
{
    switch (fault) {
    case ZoCsvFault::None: break;
    case ZoCsvFault::TooLarge: return ZoLoadString(64600);
    case ZoCsvFault::NotUtf8: return ZoLoadString(64601);
    case ZoCsvFault::NulCharacter: return ZoLoadString(64602);
    case ZoCsvFault::UnclosedQuote: return ZoLoadString(64603);
    case ZoCsvFault::TextAfterQuote: return ZoLoadString(64604);
    case ZoCsvFault::CellTooLong: return ZoLoadString(64605);
    case ZoCsvFault::TooManyColumns: return ZoLoadString(64606);
    case ZoCsvFault::TooManyRows: return ZoLoadString(64607);
    }
    return {};
}

// One pass over the text: each cell's unquoted bytes are appended to the table's text as
// they are read, so that the table never holds more than the text itself.
class ZoCsvTable::Parser {
public:
    Parser(ZoCsvTable& table, std::string_view text, ZoCsvLimits const& limits)
        : m_table(table), m_text(text), m_limits(limits), m_separator(table.m_separator)
    {
    }

    bool Run()
    {
        while (m_at < m_text.size()) {
            if (!ReadRow())
                return false;
        }
        return true;
    }

private:
    bool Fail(ZoCsvFault fault, int line)
    {
        m_table.m_error = {fault, line, static_cast<int>(m_column)};
        return false;
    }

    bool AtRowEnd() const { return m_at >= m_text.size() || m_text[m_at] == '\n' || m_text[m_at] == '\r'; }

    void SkipRowEnd()
    {
        if (m_at < m_text.size() && m_text[m_at] == '\r')
            ++m_at;
        if (m_at < m_text.size() && m_text[m_at] == '\n')
            ++m_at;
        ++m_line;
    }

    bool ReadRow()
    {
        Row row{static_cast<std::uint32_t>(m_table.m_cells.size()), 0, m_line};
        m_column = 0;
        for (;;) {
            ++m_column;
            if (m_column > m_limits.maxColumns)
                return Fail(ZoCsvFault::TooManyColumns, row.line);
            if (!ReadCell())
                return false;
            ++row.count;
            if (m_at < m_text.size() && m_text[m_at] == m_separator) {
                ++m_at;
                continue;
            }
            break;
        }
        SkipRowEnd();
        // An empty line holds one empty cell: it is no row.
        if (row.count == 1 && m_table.m_cells.back().length == 0) {
            m_table.m_cells.pop_back();
            return true;
        }
        if (m_table.m_rows.size() >= m_limits.maxRows)
            return Fail(ZoCsvFault::TooManyRows, row.line);
        m_table.m_rows.push_back(row);
        return true;
    }

    bool ReadCell()
    {
        std::size_t const offset = m_table.m_text.size();
        int const line = m_line;
        if (m_at < m_text.size() && m_text[m_at] == '"') {
            if (!ReadQuoted(line))
                return false;
        } else {
            std::size_t const start = m_at;
            while (m_at < m_text.size() && m_text[m_at] != m_separator && m_text[m_at] != '\n' && m_text[m_at] != '\r')
                ++m_at;
            if (!Append(m_text.substr(start, m_at - start), offset, line))
                return false;
        }
        std::string_view const cell(m_table.m_text.data() + offset, m_table.m_text.size() - offset);
        if (!ZoIsValidUtf8(cell))
            return Fail(ZoCsvFault::NotUtf8, line);
        m_table.m_cells.push_back({static_cast<std::uint32_t>(offset), static_cast<std::uint32_t>(cell.size())});
        return true;
    }

    bool ReadQuoted(int line)
    {
        std::size_t const offset = m_table.m_text.size();
        ++m_at; // the opening quote
        for (;;) {
            std::size_t const quote = m_text.find('"', m_at);
            if (quote == std::string_view::npos)
                return Fail(ZoCsvFault::UnclosedQuote, line);
            std::string_view const part = m_text.substr(m_at, quote - m_at);
            for (char c : part)
                if (c == '\n')
                    ++m_line;
            if (!Append(part, offset, line))
                return false;
            m_at = quote + 1;
            if (m_at < m_text.size() && m_text[m_at] == '"') {
                if (!Append("\"", offset, line))
                    return false;
                ++m_at;
                continue;
            }
            break;
        }
        if (!AtRowEnd() && m_text[m_at] != m_separator)
            return Fail(ZoCsvFault::TextAfterQuote, m_line);
        return true;
    }

    bool Append(std::string_view part, std::size_t offset, int line)
    {
        if (part.find('\0') != std::string_view::npos)
            return Fail(ZoCsvFault::NulCharacter, line);
        if (m_table.m_text.size() - offset + part.size() > m_limits.maxCellBytes)
            return Fail(ZoCsvFault::CellTooLong, line);
        m_table.m_text.append(part);
        return true;
    }

    ZoCsvTable& m_table;
    std::string_view m_text;
    ZoCsvLimits const& m_limits;
    char const m_separator;
    std::size_t m_at = 0;
    int m_line = 1;
    std::size_t m_column = 0;
};

bool ZoCsvTable::Read(std::string_view text, ZoCsvLimits const& limits)
{
    m_text.clear();
    m_cells.clear();
    m_rows.clear();
    m_error = {};
    if (text.size() > limits.maxBytes) {
        m_error = {ZoCsvFault::TooLarge, 1, 1};
        return false;
    }
    if (StartsWith(text, kZoUtf8Bom))
        text.remove_prefix(kZoUtf8Bom.size());
    else if (StartsWith(text, "\xFF\xFE") || StartsWith(text, "\xFE\xFF")) {
        m_error = {ZoCsvFault::NotUtf8, 1, 1};
        return false;
    }
    m_separator = DetectSeparator(text);
    m_text.reserve(text.size());
    if (!Parser(*this, text, limits).Run()) {
        m_text = std::string();
        m_cells = {};
        m_rows = {};
        return false;
    }
    return true;
}

std::string_view ZoCsvTable::Cell(std::size_t row, std::size_t column) const
{
    Row const& r = m_rows[row];
    if (column >= r.count)
        return {};
    Span const& span = m_cells[r.first + column];
    return std::string_view(m_text).substr(span.offset, span.length);
}
