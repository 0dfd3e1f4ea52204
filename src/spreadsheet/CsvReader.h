#pragma once
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// Reads comma-separated text as spreadsheet programs write it: the separator is a comma or
// a semicolon (the one the first row uses more, outside quotes), cells may be quoted (a
// quoted cell holds separators, line breaks and doubled quotes), rows end with CR LF, LF or
// CR, a UTF-8 byte-order mark at the start is skipped, and empty lines are skipped. A quote
// inside an unquoted cell is taken as it stands.
//
// The text must be UTF-8 without NUL characters. Anything else, and text beyond the limits
// (which keep a hostile file from taking the machine's memory), refuses the whole text with
// the line and the column (the cell's number, from 1) where reading stopped.

struct ZoCsvLimits {
    std::size_t maxBytes = std::size_t(1) << 30;      // 1 GiB
    std::size_t maxCellBytes = std::size_t(1) << 20;  // 1 MiB
    std::size_t maxColumns = 1000;
    std::size_t maxRows = 4'000'000;
};

enum class ZoCsvFault {
    None,
    TooLarge,        // the text is longer than maxBytes
    NotUtf8,         // malformed UTF-8, or another encoding's byte-order mark
    NulCharacter,
    UnclosedQuote,   // a quoted cell runs to the end of the text
    TextAfterQuote,  // a quoted cell's closing quote is followed by other text
    CellTooLong,
    TooManyColumns,
    TooManyRows,
};

struct ZoCsvError {
    ZoCsvFault fault = ZoCsvFault::None;
    int line = 0;   // from 1
    int column = 0; // from 1
};

// The reason for a fault, for the user (one of the text table's texts).
std::wstring ZoCsvFaultText(ZoCsvFault fault);

class ZoCsvTable {
public:
    // Reads the text; false with Error() set (and no rows) when it is refused.
    bool Read(std::string_view text, ZoCsvLimits const& limits = {});
    ZoCsvError const& Error() const { return m_error; }
    char Separator() const { return m_separator; }

    std::size_t RowCount() const { return m_rows.size(); }
    // The line on which the row starts, from 1.
    int Line(std::size_t row) const { return m_rows[row].line; }
    std::size_t CellCount(std::size_t row) const { return m_rows[row].count; }
    // The cell's text, unquoted; empty beyond the row's last cell.
    std::string_view Cell(std::size_t row, std::size_t column) const;

private:
    struct Span {
        std::uint32_t offset;
        std::uint32_t length;
    };
    struct Row {
        std::uint32_t first;
        std::uint32_t count;
        int line;
    };
    class Parser;

    std::string m_text; // every cell's unquoted text, one after the other
    std::vector<Span> m_cells;
    std::vector<Row> m_rows;
    ZoCsvError m_error;
    char m_separator = ',';
};
