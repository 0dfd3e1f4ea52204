// The sheet reader on what spreadsheet programs write, and on text that must be refused.
#include "spreadsheet/CsvReader.h"
#include "spreadsheet/CsvWriter.h"

#include <gtest/gtest.h>

namespace {

// The rows as "line:cell|cell" lines.
std::string Rows(ZoCsvTable const& table)
{
    std::string text;
    for (std::size_t row = 0; row < table.RowCount(); ++row) {
        text += std::to_string(table.Line(row)) + ":";
        for (std::size_t cell = 0; cell < table.CellCount(row); ++cell)
            text += (cell ? "|" : "") + std::string(table.Cell(row, cell));
        text += "\n";
    }
    return text;
}

TEST(CsvReader, ReadsWhatSpreadsheetProgramsWrite)
{
    struct Case {
        std::string text;
        std::string rows;
    } const cases[] = {
        {"\xEF\xBB\xBF" "a,b\r\n1,2\r\n", "1:a|b\n2:1|2\n"},
        {"a;b;c\n\"x;y\";\"say \"\"hi\"\"\";\n", "1:a|b|c\n2:x;y|say \"hi\"|\n"},
        {"a,b\n\"two\nlines\",z\n\nlast,row", "1:a|b\n2:two\nlines|z\n5:last|row\n"},
        {"a\rb\r\n", "1:a\n2:b\n"},
        {"say \"so\",1\n", "1:say \"so\"|1\n"},
        {"\"a,b\";c;d\n", "1:a,b|c|d\n"}, // two semicolons outside quotes against none
    };
    for (Case const& c : cases) {
        ZoCsvTable table;
        ASSERT_TRUE(table.Read(c.text)) << c.text;
        EXPECT_EQ(Rows(table), c.rows) << c.text;
    }
}

TEST(CsvReader, WriterOutputReadsBackCellForCell)
{
    std::string const cells[] = {"plain", "", "comma, inside", "semi;colon", "\"quoted\"", "line\r\nbreak", " blank ", "é ü 水"};
    std::string text;
    ZoCsvWriter writer(text);
    writer.Begin();
    for (std::string const& cell : cells)
        writer.Cell(cell);
    writer.EndRow();
    ZoCsvTable table;
    ASSERT_TRUE(table.Read(text));
    ASSERT_EQ(table.RowCount(), 1u);
    for (std::size_t i = 0; i < std::size(cells); ++i)
        EXPECT_EQ(table.Cell(0, i), cells[i]);
}

TEST(CsvReader, RefusesBadTextWithItsLineAndColumn)
{
    ZoCsvLimits small;
    small.maxColumns = 3;
    small.maxCellBytes = 8;
    small.maxBytes = 64;
    small.maxRows = 3;
    struct Case {
        std::string text;
        ZoCsvFault fault;
        int line;
        int column;
    } const cases[] = {
        {"a,b\n1,\"open\n\n", ZoCsvFault::UnclosedQuote, 2, 2},
        {std::string("a,b\n1,x\0y\n", 10), ZoCsvFault::NulCharacter, 2, 2},
        {"a,b\n\xC3\x28,2\n", ZoCsvFault::NotUtf8, 2, 1},
        {"\xFF\xFE" "a\0", ZoCsvFault::NotUtf8, 1, 1},
        {"a,b\n\"x\"y,2\n", ZoCsvFault::TextAfterQuote, 2, 1},
        {"a,b,c,d\n", ZoCsvFault::TooManyColumns, 1, 4},
        {"a,123456789\n", ZoCsvFault::CellTooLong, 1, 2},
        {std::string(65, 'a'), ZoCsvFault::TooLarge, 1, 1},
        {"a\nb\nc\nd\n", ZoCsvFault::TooManyRows, 4, 1},
    };
    for (Case const& c : cases) {
        ZoCsvTable table;
        std::string_view const text(c.text.data(), c.text.size());
        EXPECT_FALSE(table.Read(text, small)) << c.text;
        EXPECT_EQ(table.Error().fault, c.fault) << c.text;
        EXPECT_EQ(table.Error().line, c.line) << c.text;
        EXPECT_EQ(table.Error().column, c.column) << c.text;
        EXPECT_EQ(table.RowCount(), 0u);
        EXPECT_FALSE(ZoCsvFaultText(c.fault).empty());
    }
}

} // namespace
