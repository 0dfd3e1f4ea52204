// Any bytes as a command line and a system's preferred languages, for the choice of the
// language. The text up to the first NUL byte is the command line (arguments separated by
// blanks); the rest the preferred languages as LANGUAGE writes them (separated by ':').
// Aborts when:
//   - taking "--lang" out leaves more arguments, changes their order, or leaves one that
//     starts with "--lang";
//   - the language picked is neither English nor one that has a table.
#include "platform/tools/ZoLanguage.h"

#include <QString>
#include <QStringList>

#include <algorithm>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {

[[noreturn]] void Fail(char const* what)
{
    std::fprintf(stderr, "fuzz_language: %s\n", what);
    std::abort();
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* data, std::size_t size)
{
    std::string const input(reinterpret_cast<char const*>(data), size);
    std::size_t const nul = input.find('\0');
    std::string const line = input.substr(0, nul);
    std::string const rest = nul == std::string::npos ? std::string() : input.substr(nul + 1);

    std::vector<std::string> words{"zoevents"};
    for (std::size_t start = 0; start <= line.size();) {
        std::size_t const blank = std::min(line.find(' ', start), line.size());
        words.push_back(line.substr(start, blank - start));
        start = blank + 1;
    }
    std::vector<char*> argv;
    for (std::string& word : words)
        argv.push_back(word.data());
    argv.push_back(nullptr);
    std::vector<char*> const before = argv;
    int argc = static_cast<int>(words.size());
    QString const requested = ZoTakeLanguageOption(argc, argv.data());
    if (argc < 1 || argc > static_cast<int>(words.size()) || argv[static_cast<std::size_t>(argc)] != nullptr)
        Fail("the arguments left are not a command line");
    for (int i = 1, from = 1; i < argc; ++i, ++from) {
        while (from < static_cast<int>(words.size()) && before[static_cast<std::size_t>(from)] != argv[static_cast<std::size_t>(i)])
            ++from;
        if (from == static_cast<int>(words.size()))
            Fail("an argument was reordered or invented");
        if (std::strncmp(argv[static_cast<std::size_t>(i)], "--lang", 6) == 0
            && (argv[i][6] == '\0' || argv[i][6] == '='))
            Fail("a language option was left");
    }

    QStringList const available = {QStringLiteral("de"), QStringLiteral("en")};
    QStringList const preferred = QString::fromUtf8(rest.data(), static_cast<qsizetype>(rest.size())).split(u':');
    QString const language = ZoPickLanguage(requested, preferred, available);
    if (!available.contains(language))
        Fail("a language without a table was picked");
    return 0;
}
