#include "CliText.h"

#include "platform/tools/ZoUtf.h"

void WriteLine(std::FILE* file, std::string const& text)
{
    std::fwrite(text.data(), 1, text.size(), file);
    std::fputc('\n', file);
}

std::string ZoCliText(std::wstring const& text)
{
    std::string line = ZoToUtf8(text);
    for (char& c : line)
        if (c == '\n')
            c = ' ';
    return line;
}

std::string ZoCliCounts(ZoCheckCounts const& counts)
{
    // "%d error" / "%d errors", then the warnings and the notes.
    auto const count = [](int n, unsigned singular) { return ZoCliMessage(singular + (n == 1 ? 0 : 1), n).toStdString(); };
    return count(counts.errors, 65000) + ", " + count(counts.warnings, 65002) + ", " + count(counts.notes, 65004);
}
