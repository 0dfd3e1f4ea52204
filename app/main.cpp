#include "DisplayCheck.h"
#include "MainWindow.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoLanguage.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

#include <QApplication>
#include <QDir>

#include <cstdio>
#include <cstring>

namespace {

void PrintLine(FILE* stream, std::wstring const& text)
{
    std::string const line = ZoToUtf8(text);
    std::fprintf(stream, "%s\n", line.c_str());
}

} // namespace

// zoevents-editor [--lang en|de] [project folder]
int main(int argc, char** argv)
{
    // The version of the project, as `zoevents --version` and the About box show it.
    if (argc == 2 && std::strcmp(argv[1], "--version") == 0) {
        std::printf("zoevents-editor %s\n", ZO_VERSION);
        return 0;
    }
    ZoApplyLanguage(ZoTakeLanguageOption(argc, argv));
    if (argc > 2 || (argc == 2 && argv[1][0] == '-')) {
        bool const help = std::strcmp(argv[1], "-h") == 0 || std::strcmp(argv[1], "--help") == 0;
        std::wstring const languages = ZoTextLanguages().join(u'|').toStdWString();
        PrintLine(help ? stdout : stderr, ZoFormat(ZoLoadString(60051).c_str(), languages.c_str()));
        return help ? 0 : 2;
    }
    // Qt aborts with a message about platform plugins when it finds no display; say
    // plainly what is missing instead.
    if (!HostHasDisplay()) {
        PrintLine(stderr, ZoLoadString(60050));
        return 2;
    }

    QApplication app(argc, argv);
    ZoInstallQtTranslations();
    QApplication::setOrganizationName(QStringLiteral("zoevents"));
    QApplication::setApplicationName(QStringLiteral("zoevents-editor"));
    QApplication::setApplicationVersion(QStringLiteral(ZO_VERSION));
    QApplication::setApplicationDisplayName(ZoText(60000));

    MainWindow window;
    window.show();
    if (argc == 2)
        window.OpenFolder(QDir::current().absoluteFilePath(QString::fromLocal8Bit(argv[1])));
    return QApplication::exec();
}
