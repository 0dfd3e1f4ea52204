// The text table: every id the code uses has a text, the table is well-formed, and the texts
// that are formatted carry exactly the placeholders their callers fill in.
#include "platform/tools/ZoTexts.h"

#include <QFile>
#include <gtest/gtest.h>

#include <algorithm>
#include <cctype>
#include <filesystem>
#include <fstream>
#include <map>
#include <set>
#include <sstream>
#include <string>
#include <vector>

namespace {

namespace fs = std::filesystem;

std::string ReadFile(fs::path const& path)
{
    std::ifstream in(path, std::ios::binary);
    std::ostringstream text;
    text << in.rdbuf();
    return text.str();
}

bool IsIdentifierChar(char c)
{
    return std::isalnum(static_cast<unsigned char>(c)) || c == '_';
}

// Position just past the first argument of a call whose '(' is at `open`: the top-level
// ',' (returned) or npos when the call has a single argument.
std::size_t SkipArgument(std::string const& text, std::size_t open)
{
    int depth = 0;
    for (std::size_t i = open + 1; i < text.size(); ++i) {
        char const c = text[i];
        if (c == '(' || c == '[' || c == '{')
            ++depth;
        else if (c == ')' || c == ']' || c == '}') {
            if (depth == 0)
                return std::string::npos;
            --depth;
        } else if (c == ',' && depth == 0)
            return i;
    }
    return std::string::npos;
}

// The decimal literal at `pos` (after blanks), or -1.
long LiteralAt(std::string const& text, std::size_t pos)
{
    while (pos < text.size() && std::isspace(static_cast<unsigned char>(text[pos])))
        ++pos;
    std::size_t end = pos;
    while (end < text.size() && std::isdigit(static_cast<unsigned char>(text[end])))
        ++end;
    if (end == pos || (end < text.size() && (IsIdentifierChar(text[end]) && text[end] != 'u' && text[end] != 'U')))
        return -1;
    return std::stol(text.substr(pos, end - pos));
}

struct Use {
    unsigned id;
    std::string where;
};

// Every text id written as a literal in a call that loads or shows a text.
std::vector<Use> IdsUsedIn(fs::path const& file)
{
    struct Function {
        char const* name;
        bool afterParent; // the id is the second argument
    };
    static Function const functions[] = {
        {"ZoText", false},        {"ZoLoadString", false},  {"ZoShowMessage", true},
        {"ZoShowMessageText", true}, {"ZoAskYesNo", true}, {"ZoAskYesNoText", true},
    };
    std::string const text = ReadFile(file);
    std::vector<Use> uses;
    for (Function const& function : functions) {
        std::string const name = function.name;
        for (std::size_t at = text.find(name); at != std::string::npos; at = text.find(name, at + 1)) {
            if (at > 0 && IsIdentifierChar(text[at - 1]))
                continue;
            std::size_t open = at + name.size();
            while (open < text.size() && std::isspace(static_cast<unsigned char>(text[open])))
                ++open;
            if (open >= text.size() || text[open] != '(')
                continue;
            std::size_t argument = open + 1;
            if (function.afterParent) {
                std::size_t const comma = SkipArgument(text, open);
                if (comma == std::string::npos)
                    continue;
                argument = comma + 1;
            }
            long const id = LiteralAt(text, argument);
            if (id >= 0) {
                auto const line = std::count(text.begin(), text.begin() + static_cast<long>(at), '\n') + 1;
                uses.push_back({static_cast<unsigned>(id), file.string() + ":" + std::to_string(line)});
            }
        }
    }
    return uses;
}

std::vector<Use> IdsUsedInSources()
{
    std::vector<Use> uses;
    for (char const* folder : {"src", "app"}) {
        fs::path const root = fs::path(ZO_SOURCE_DIR) / folder;
        if (!fs::exists(root))
            continue;
        for (auto const& entry : fs::recursive_directory_iterator(root)) {
            auto const ext = entry.path().extension();
            if (entry.is_regular_file() && (ext == ".cpp" || ext == ".h")) {
                std::vector<Use> const found = IdsUsedIn(entry.path());
                uses.insert(uses.end(), found.begin(), found.end());
            }
        }
    }
    return uses;
}

// The conversions of a text in order ("%s", "%d"...), "%%" left out.
std::string Conversions(std::wstring const& text)
{
    std::string out;
    for (std::size_t i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != L'%')
            continue;
        if (text[i + 1] == L'%') {
            ++i;
            continue;
        }
        out += static_cast<char>(text[i + 1]);
        ++i;
    }
    if (!text.empty() && text.back() == L'%' && (text.size() < 2 || text[text.size() - 2] != L'%'))
        out += '!'; // a lone percent sign at the end
    return out;
}

std::string TableFileText()
{
    return ReadFile(fs::path(ZO_SOURCE_DIR) / "resources" / "texts" / "en.tsv");
}

} // namespace

TEST(Texts, EveryIdTheSourcesUseHasAText)
{
    std::vector<Use> const uses = IdsUsedInSources();
    // The message functions themselves load their button texts by id, so the scan always
    // finds something; finding nothing would mean the scanner is broken.
    ASSERT_FALSE(uses.empty());
    for (Use const& use : uses)
        EXPECT_TRUE(ZoHasString(use.id)) << "text " << use.id << " used at " << use.where << " has no text";
}

TEST(Texts, ScannerFindsIdsInEveryCallForm)
{
    fs::path const sample = fs::temp_directory_path() / "zoevents_text_scan_sample.cpp";
    {
        std::ofstream out(sample);
        out << "void f() {\n"
               "  ZoText(311); ZoLoadString( 312u, text); ZoLoadString(kName);\n"
               "  ZoShowMessage(this, 32797);\n"
               "  ZoShowMessageText(parentWidget(), 32798, text);\n"
               "  ZoAskYesNo(Parent(a, b), 32792); ZoAskYesNoText(nullptr,\n   33123, text);\n"
               "  MyZoText(9); ZoTextual(8); ZoShowMessage(this, id);\n"
               "}\n";
    }
    std::set<unsigned> ids;
    for (Use const& use : IdsUsedIn(sample))
        ids.insert(use.id);
    fs::remove(sample);
    EXPECT_EQ(ids, (std::set<unsigned>{311, 312, 32797, 32798, 32792, 33123}));
}

TEST(Texts, TableIsWellFormedSortedAndCompiledIn)
{
    std::string const text = TableFileText();
    ASSERT_FALSE(text.empty());
    ASSERT_EQ(text.back(), '\n') << "the last line ends with a line break";
    std::istringstream lines(text);
    std::string line;
    int number = 0;
    long previous = -1;
    std::set<long> seen;
    while (std::getline(lines, line)) {
        ++number;
        std::size_t const tab = line.find('\t');
        ASSERT_NE(tab, std::string::npos) << "line " << number << " has no tab";
        ASSERT_GT(tab, 0u) << "line " << number << " has no id";
        std::string const id = line.substr(0, tab);
        for (char c : id)
            ASSERT_TRUE(std::isdigit(static_cast<unsigned char>(c))) << "line " << number << ": id " << id;
        std::string const value = line.substr(tab + 1);
        EXPECT_FALSE(value.empty()) << "line " << number << " has an empty text";
        EXPECT_EQ(value.find('\t'), std::string::npos) << "line " << number << " holds a second tab";
        EXPECT_EQ(value.find('\r'), std::string::npos) << "line " << number;
        long const n = std::stol(id);
        EXPECT_TRUE(seen.insert(n).second) << "id " << n << " appears twice";
        EXPECT_GT(n, previous) << "line " << number << ": ids are kept in ascending order";
        previous = n;
        EXPECT_TRUE(ZoHasString(static_cast<unsigned>(n))) << "id " << n << " is not in the compiled table";
    }
    // The compiled-in resource is the file of the source tree.
    QFile resource(QStringLiteral(":/texts/en.tsv"));
    ASSERT_TRUE(resource.open(QIODevice::ReadOnly));
    EXPECT_EQ(resource.readAll().toStdString(), text);
}

TEST(Texts, LoadingTextsAndEscapes)
{
    std::wstring text;
    EXPECT_TRUE(ZoLoadString(311, text));
    EXPECT_EQ(text, L"OK");
    EXPECT_EQ(ZoText(312), QStringLiteral("Cancel"));
    EXPECT_EQ(ZoLoadString(711), L"Yes");
    EXPECT_EQ(ZoLoadString(712), L"No");
    EXPECT_EQ(ZoLoadString(378) + ZoLoadString(379) + ZoLoadString(380), L"AddModifyDelete");

    // "\n" in the table is a line break; "\\" a backslash.
    EXPECT_NE(ZoLoadString(32798).find(L"\n%s\n"), std::wstring::npos);
    EXPECT_NE(ZoLoadString(32764).find(L" \\ "), std::wstring::npos);

    // An unknown id: false and a visible marker, never an empty label.
    EXPECT_FALSE(ZoHasString(1));
    EXPECT_FALSE(ZoLoadString(1, text));
    EXPECT_EQ(text, L"#1");
    EXPECT_EQ(ZoText(4000000000u), QStringLiteral("#4000000000"));
}

TEST(Texts, FormattedTextsCarryExactlyTheirPlaceholders)
{
    // Texts built with ZoFormat, and the arguments their callers pass, in order.
    std::map<unsigned, std::string> const formatted = {
        {197, "d"},    // limit of variables
        {32783, "s"},  // group name
        {32786, "s"},  // group name
        {32798, "s"},  // condition error detail
        {32811, "s"},  // argument value detail
        {32842, "s"},  // force variable detail
        {32843, "s"},  // force value detail
        {32879, "ds"}, // argument number, detail
        {32882, "ss"}, // moment label, kind label
        {33123, "s"},  // stop condition detail
    };
    for (auto const& [id, expected] : formatted)
        EXPECT_EQ(Conversions(ZoLoadString(id)), expected) << "text " << id;

    // Every other text of the module is shown as it stands (or is itself passed as an
    // argument), so it holds no conversion at all; the host's texts (60000 and above) may
    // be formatted, with %s and %d only.
    std::istringstream lines(TableFileText());
    std::string line;
    while (std::getline(lines, line)) {
        unsigned const id = static_cast<unsigned>(std::stoul(line.substr(0, line.find('\t'))));
        std::string const conversions = Conversions(ZoLoadString(id));
        if (formatted.count(id))
            continue;
        if (id < 60000)
            EXPECT_EQ(conversions, "") << "text " << id << " is not formatted";
        else
            EXPECT_EQ(conversions.find_first_not_of("sd"), std::string::npos) << "text " << id;
    }
}

TEST(Texts, EveryDocumentedTextIdHasAText)
{
    // The ids the dialogs of the module are documented to show, including those of dialogs
    // built later: the table must not lose one of them.
    unsigned const documented[] = {
        196, 197, 284, 311, 312, 355, 378, 379, 380, 382, 411, 415, 416, 420, 428, 429, 457,
        461, 462, 463, 469, 473, 474, 544, 607, 608, 711, 712, 732, 736, 742, 753, 767, 774, 825,
        32044, 32085, 32110, 32336, 32401, 32432, 32433, 32446, 32449, 32452, 32475, 32479,
        32485, 32486, 32487, 32696, 32697, 32736, 32737, 32738, 32764, 32771, 32772, 32773,
        32774, 32775, 32776, 32777, 32778, 32779, 32780, 32781, 32782, 32783, 32784, 32785,
        32786, 32787, 32788, 32789, 32790, 32791, 32792, 32793, 32794, 32795, 32796, 32797,
        32798, 32799, 32800, 32802, 32803, 32807, 32809, 32810, 32811, 32812, 32813, 32817,
        32818, 32819, 32820, 32821, 32822, 32823, 32824, 32825, 32826, 32827, 32828, 32829,
        32830, 32831, 32832, 32833, 32834, 32835, 32838, 32839, 32840, 32841, 32842, 32843,
        32844, 32845, 32846, 32847, 32848, 32849, 32850, 32851, 32852, 32853, 32878, 32879,
        32882, 32883, 32907, 32908, 33119, 33120, 33122, 33123, 33137, 34099, 34106, 34107,
        34108, 34109, 34110, 34111, 34112, 34117, 34118, 34141, 34169, 34170, 34173, 34174,
        34175, 34709, 34710, 34711, 34893, 34894, 34899, 35472, 36029, 36261, 36276, 36366,
        36787, 36788, 36789, 36790, 37540, 37889, 38456, 38457, 38460, 39954, 39957,
    };
    for (unsigned id : documented)
        EXPECT_TRUE(ZoHasString(id)) << "text " << id;
    // Month names, weekday labels of the week editor and short weekday names of the year view.
    for (unsigned id = 436; id <= 455; ++id)
        EXPECT_TRUE(ZoHasString(id)) << "text " << id;
    for (unsigned id = 34857; id <= 34863; ++id)
        EXPECT_TRUE(ZoHasString(id)) << "text " << id;
    EXPECT_EQ(ZoText(436), QStringLiteral("January"));
    EXPECT_EQ(ZoText(447), QStringLiteral("December"));
}
