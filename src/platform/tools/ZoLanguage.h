#pragma once
#include <QString>
#include <QStringList>

// The language of the editor and of the program: the one asked for with "--lang xx", else
// the first of the system's preferred languages (LANGUAGE, LC_ALL, LC_MESSAGES, LANG, as
// QLocale reads them) that has a text table; English when the one asked for has none or no
// preferred language has one. Texts, Qt's own standard texts and the dates shown follow it;
// formulas do not (their decimal separator is always the point).

// The tables are the resources ":/texts/<language>.tsv"; English is always loaded and gives
// a text another table lacks.
// The languages that have a table ("de", "en"...), sorted.
QStringList ZoTextLanguages();
// Chooses the table ZoLoadString reads; false (and nothing changed) when the language has
// none. Called at start-up, before any thread reads a text.
bool ZoSetTextLanguage(QString const& language);
// The language texts are loaded in: "en" until another one is chosen.
QString ZoTextLanguage();

// The choice itself. preferred holds QLocale's names ("de-DE", "de_AT", "en", "C");
// available the languages that have a table.
QString ZoPickLanguage(QString const& requested, QStringList const& preferred, QStringList const& available);

// Takes "--lang xx" or "--lang=xx" out of the command line (before Qt sees it) and returns
// xx; "" when the option is absent or has no value.
QString ZoTakeLanguageOption(int& argc, char** argv);

// Chooses the language from the one requested and the system's locale, loads its text table
// and makes dates follow it when it is not the locale's own. Returns the language chosen.
// Called at start-up, before any text is read and before QCoreApplication exists if need be.
QString ZoApplyLanguage(QString const& requested);

// Installs Qt's translations of its own texts (message box buttons, the colour dialog, the
// context menus of fields) for the chosen language, from Qt's translations folder (Debian:
// qt6-translations-l10n). Needs the application object. False when they are not installed.
bool ZoInstallQtTranslations();
