#pragma once
#include <string>
#include <string_view>

// Writes comma-separated text as spreadsheet programs read it: rows end with CR LF, a cell
// is quoted when it holds a comma, a quote, a line break or a leading or trailing blank (a
// quote inside is doubled), and the text starts with a UTF-8 byte-order mark so that the
// programs take it as UTF-8.
inline constexpr std::string_view kZoUtf8Bom = "\xEF\xBB\xBF";

class ZoCsvWriter {
public:
    explicit ZoCsvWriter(std::string& out) : m_out(out) {}
    // The byte-order mark, once at the start.
    void Begin() { m_out.append(kZoUtf8Bom); }
    void Cell(std::string_view text);
    void EndRow();

private:
    std::string& m_out;
    bool m_rowStarted = false;
};
