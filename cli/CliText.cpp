#include "CliText.h"

#include "ProjectFolder.h"
#include "actions/ZoUsersDocument.h"
#include "platform/tools/ZoUtf.h"

void ZoCliLoadUsers(ProjectFolder& project)
{
    XmlDocument& users = project.Users();
    if (!ZoLoadUsersFile(users, project.FilePath(zo::project::ProjectDoc::Users).toStdWString()))
        users.Create(kUsersRootTag);
}

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
    auto const count = [](int n, char const* word) {
        return std::to_string(n) + " " + word + (n == 1 ? "" : "s");
    };
    return count(counts.errors, "error") + ", " + count(counts.warnings, "warning") + ", " + count(counts.notes, "note");
}
