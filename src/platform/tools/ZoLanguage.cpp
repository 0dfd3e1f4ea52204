#include "ZoLanguage.h"

#include "ZoTexts.h"

#include <QCoreApplication>
#include <QLibraryInfo>
#include <QLocale>
#include <QRegularExpression>
#include <QTranslator>

#include <algorithm>
#include <cstring>

namespace {

// "de-DE", "de_AT.UTF-8" and "de" all name German.
QString LanguageOf(QString const& name)
{
    static QRegularExpression const separator(QStringLiteral("[-_.@]"));
    qsizetype const end = name.indexOf(separator);
    return (end < 0 ? name : name.left(end)).toLower();
}

} // namespace

QString ZoPickLanguage(QString const& requested, QStringList const& preferred, QStringList const& available)
{
    QString const english = QStringLiteral("en");
    if (!requested.isEmpty())
        return available.contains(requested.toLower()) ? requested.toLower() : english;
    for (QString const& name : preferred) {
        QString const language = LanguageOf(name);
        if (available.contains(language))
            return language;
    }
    return english;
}

QString ZoTakeLanguageOption(int& argc, char** argv)
{
    QString language;
    int kept = std::min(argc, 1); // the program's name stays (a program run without one has argc 0)
    for (int i = 1; i < argc; ++i) {
        if (std::strcmp(argv[i], "--lang") == 0) {
            if (i + 1 < argc)
                language = QString::fromLocal8Bit(argv[++i]);
            continue;
        }
        if (std::strncmp(argv[i], "--lang=", 7) == 0) {
            language = QString::fromLocal8Bit(argv[i] + 7);
            continue;
        }
        argv[kept++] = argv[i];
    }
    argc = kept;
    argv[kept] = nullptr; // argv ends with a null pointer, as main received it
    return language;
}

QString ZoApplyLanguage(QString const& requested)
{
    QLocale const system = QLocale::system();
    QString const language = ZoPickLanguage(requested, system.uiLanguages(), ZoTextLanguages());
    ZoSetTextLanguage(language);
    // Dates follow the system's locale (with its territory's formats) when the texts are in
    // its language; otherwise they follow the texts' language, so a screen never mixes two.
    if (LanguageOf(system.name()) != language)
        QLocale::setDefault(QLocale(language));
    return language;
}

bool ZoInstallQtTranslations()
{
    QString const language = ZoTextLanguage();
    if (language == QLatin1String("en") || !QCoreApplication::instance())
        return true;
    auto* translator = new QTranslator(QCoreApplication::instance());
    if (!translator->load(QLocale(language), QStringLiteral("qt"), QStringLiteral("_"),
                          QLibraryInfo::path(QLibraryInfo::TranslationsPath))) {
        delete translator;
        return false;
    }
    return QCoreApplication::installTranslator(translator);
}
