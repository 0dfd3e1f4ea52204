// Every text id and image the sources name exists (a typo would otherwise show "#id" or a
// stand-in icon, and nothing else would notice); the text table is sound; formatted texts
// carry exactly the placeholders their callers fill in.
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"

#include <QFile>
#include <gtest/gtest.h>

#include <algorithm>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <map>
#include <regex>
#include <sstream>
#include <string>

namespace {

std::string TableOfTheSourceTree()
{
    QFile file(QStringLiteral(ZO_SOURCE_DIR "/resources/texts/en.tsv"));
    return file.open(QIODevice::ReadOnly) ? file.readAll().toStdString() : std::string();
}

// The conversions of a text in order ("%s ... %d" gives "sd"); "%%" left out, a lone "%" at
// the end gives '!'.
std::string Conversions(std::wstring const& text)
{
    std::string out;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (text[i] != L'%')
            continue;
        if (++i == text.size())
            out += '!';
        else if (text[i] != L'%')
            out += static_cast<char>(text[i]);
    }
    return out;
}

// Calls found(match, "file:line") for every match of pattern in src/, app/ and cli/; returns how
// many there were.
template <class Found>
int ScanSources(std::regex const& pattern, Found found)
{
    namespace fs = std::filesystem;
    int count = 0;
    for (char const* folder : {"src", "app", "cli"}) {
        for (auto const& entry : fs::recursive_directory_iterator(fs::path(ZO_SOURCE_DIR) / folder)) {
            if (entry.path().extension() != ".cpp" && entry.path().extension() != ".h")
                continue;
            std::ifstream in(entry.path(), std::ios::binary);
            std::string const text{std::istreambuf_iterator<char>(in), std::istreambuf_iterator<char>()};
            for (std::sregex_iterator it(text.begin(), text.end(), pattern), end; it != end; ++it, ++count) {
                auto const line = std::count(text.begin(), text.begin() + it->position(), '\n') + 1;
                found(*it, entry.path().filename().string() + ":" + std::to_string(line));
            }
        }
    }
    return count;
}

} // namespace

TEST(Texts, EveryIdTheSourcesUseHasAText)
{
    // The id is the first argument of ZoText/ZoLoadString/ZoCliMessage, the second of the
    // message functions.
    std::regex const call(R"(\b(?:ZoText|ZoLoadString|ZoCliMessage)\s*\(\s*(\d+))"
                          R"(|\b(?:ZoShowMessage|ZoAskYesNo)(?:Text)?\s*\([^,;()]*(?:\([^()]*\))?[^,;()]*,\s*(\d+))");
    int const calls = ScanSources(call, [](std::smatch const& match, std::string const& where) {
        unsigned const id = std::stoul(match[1].matched ? match[1].str() : match[2].str());
        EXPECT_TRUE(ZoHasString(id)) << "text " << id << " used at " << where << " has no text";
    });
    EXPECT_GT(calls, 50) << "the scan finds the sources' calls";
}

TEST(Icons, EveryImageTheSourcesUseIsBuiltIn)
{
    std::regex const call(R"(\bZoImage(?:Icon|Pixmap)\s*\(\s*L"([^"]+)\"|\bZoBitmap(?:Icon|Pixmap)\s*\(\s*(\d+))");
    int const calls = ScanSources(call, [](std::smatch const& match, std::string const& where) {
        if (match[1].matched)
            EXPECT_TRUE(QFile::exists(QStringLiteral(":/images/") + QString::fromStdString(match[1].str()))) << where;
        else
            EXPECT_FALSE(ZoBitmapPixmap(std::stoi(match[2].str())).isNull()) << where;
    });
    EXPECT_GT(calls, 5) << "the scan finds the sources' calls";
}

TEST(Texts, TableIsWellFormedCompiledInAndUnescaped)
{
    std::string const table = TableOfTheSourceTree();
    ASSERT_FALSE(table.empty());
    EXPECT_EQ(table.back(), '\n') << "the last line ends with a line break";
    std::istringstream lines(table);
    std::string line;
    long previous = -1;
    while (std::getline(lines, line)) {
        // "id<TAB>text": ids ascending (so none twice), a text without a second tab or a CR.
        std::size_t const tab = line.find('\t');
        ASSERT_TRUE(tab > 0 && tab != std::string::npos && line.find_first_not_of("0123456789") == tab) << line;
        long const id = std::stol(line.substr(0, tab));
        EXPECT_GT(id, previous) << line;
        previous = id;
        EXPECT_TRUE(tab + 1 < line.size() && line.find_first_of("\t\r", tab + 1) == std::string::npos) << line;
        EXPECT_TRUE(ZoHasString(static_cast<unsigned>(id))) << "text " << id << " is not compiled in";
    }
    QFile resource(QStringLiteral(":/texts/en.tsv"));
    ASSERT_TRUE(resource.open(QIODevice::ReadOnly));
    EXPECT_EQ(resource.readAll().toStdString(), table) << "the compiled-in table is the source tree's";

    EXPECT_EQ(ZoText(311), QStringLiteral("OK"));
    EXPECT_EQ(ZoLoadString(712), L"No");
    // "\n" in the table is a line break, "\\" a backslash.
    EXPECT_NE(ZoLoadString(32798).find(L"\n%s\n"), std::wstring::npos);
    EXPECT_NE(ZoLoadString(32764).find(L" \\ "), std::wstring::npos);
    // An unknown id gives false and a visible marker, never an empty label.
    std::wstring text;
    EXPECT_FALSE(ZoLoadString(1, text));
    EXPECT_EQ(text, L"#1");
    EXPECT_EQ(ZoText(4000000000u), QStringLiteral("#4000000000"));
}

TEST(Texts, FormattedTextsCarryExactlyTheirPlaceholders)
{
    // The texts built with ZoFormat and the arguments their callers pass, in order.
    std::map<unsigned, std::string> const formatted = {
        {197, "d"},   {32783, "s"}, {32786, "s"}, {32798, "s"},  {32811, "s"},
        {32842, "s"}, {32843, "s"}, {32879, "ds"}, {32882, "ss"}, {33123, "s"},
    };
    // The module's other texts are shown as they stand; the host's (60000 and above) may be
    // formatted, with %s and %d only.
    std::istringstream lines(TableOfTheSourceTree());
    std::string line;
    while (std::getline(lines, line)) {
        unsigned const id = static_cast<unsigned>(std::stoul(line));
        std::string const conversions = Conversions(ZoLoadString(id));
        if (formatted.count(id))
            EXPECT_EQ(conversions, formatted.at(id)) << "text " << id;
        else if (id < 60000)
            EXPECT_EQ(conversions, "") << "text " << id;
        else
            EXPECT_EQ(conversions.find_first_not_of("sd"), std::string::npos) << "text " << id;
    }
}
