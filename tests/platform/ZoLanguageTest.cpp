// Every language's table is complete and keeps what callers rely on (placeholders, mnemonic
// marks, letters unique within a menu or dialog); the language follows the command line, then
// the system's preferred languages, and falls back to English.
#include "platform/tools/ZoLanguage.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMnemonics.h"

#include <QDialogButtonBox>
#include <QFile>
#include <QPushButton>
#include <gtest/gtest.h>

#include <map>
#include <vector>

namespace {

using Table = std::map<unsigned, QString>;

// A table as the source tree holds it: id -> text as written (escapes kept).
Table ReadTable(QString const& language)
{
    Table table;
    QFile file(QStringLiteral(ZO_SOURCE_DIR "/resources/texts/%1.tsv").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        return table;
    for (QString const& line : QString::fromUtf8(file.readAll()).split(u'\n', Qt::SkipEmptyParts)) {
        qsizetype const tab = line.indexOf(u'\t');
        table.emplace(line.left(tab).toUInt(), line.mid(tab + 1));
    }
    return table;
}

// The conversions of a text in order: "%s ... %d" gives "sd", "%1 %2" gives "12"; "%%" is
// a plain percent sign.
QString Conversions(QString const& text)
{
    QString out;
    for (qsizetype i = 0; i < text.size(); ++i) {
        if (text[i] != u'%')
            continue;
        if (++i == text.size())
            out += u'!';
        else if (text[i] != u'%')
            out += text[i];
    }
    return out;
}

// How many mnemonic marks a text carries: an "&" before a letter or digit ("&&" is a plain "&").
int Marks(QString const& text)
{
    int marks = 0;
    for (qsizetype i = 0; i + 1 < text.size(); ++i) {
        if (text[i] != u'&')
            continue;
        if (text[i + 1] == u'&')
            ++i;
        else if (text[i + 1].isLetterOrNumber())
            ++marks;
    }
    return marks;
}

// The texts with marks that are shown together: a menu, or the labels and buttons of one
// dialog. Texts of the module's dialogs carry no marks; those get free letters at run time.
std::vector<std::vector<unsigned>> const kShownTogether = {
    {60001, 60006, 60014},                                                         // menu bar
    {60002, 60003, 60004, 60005},                                                  // File
    {60007, 60008, 60009, 60010, 60011, 60012, 64572, 64767, 64768, 64680, 64681}, // Events
    {64566, 64567, 64568, 64569, 64570},                                           // problems
    {64744, 64746, 64570},                                                         // where used
    {64757, 64758, 64759, 64763, 64764},                                           // rename
    {64671, 64672, 64673, 64676, 64677},                                           // sheet import
};

} // namespace

TEST(Languages, EveryTableHasEveryTextWithTheSamePlaceholdersAndMarks)
{
    QStringList const languages = ZoTextLanguages();
    ASSERT_TRUE(languages.contains("en") && languages.contains("de")) << languages.join(' ').toStdString();
    Table const english = ReadTable("en");
    ASSERT_GT(english.size(), 500u);
    for (QString const& language : languages) {
        SCOPED_TRACE(language.toStdString());
        Table const table = ReadTable(language);
        QFile resource(":/texts/" + language + ".tsv");
        ASSERT_TRUE(resource.open(QIODevice::ReadOnly));
        QFile source(ZO_SOURCE_DIR "/resources/texts/" + language + ".tsv");
        ASSERT_TRUE(source.open(QIODevice::ReadOnly));
        EXPECT_EQ(resource.readAll(), source.readAll()) << "the compiled-in table is the source tree's";
        for (auto const& [id, text] : table)
            EXPECT_TRUE(english.count(id)) << "text " << id << " is not in the English table";
        for (auto const& [id, text] : english) {
            auto const found = table.find(id);
            if (found == table.end()) {
                ADD_FAILURE() << "text " << id << " is missing";
                continue;
            }
            QString const& translated = found->second;
            EXPECT_FALSE(translated.trimmed().isEmpty()) << "text " << id;
            EXPECT_EQ(Conversions(translated), Conversions(text)) << "text " << id << ": " << translated.toStdString();
            EXPECT_EQ(Marks(translated), Marks(text)) << "text " << id << ": " << translated.toStdString();
            EXPECT_LE(Marks(translated), 1) << "text " << id;
            EXPECT_EQ(translated.count(QLatin1String("\\n")), text.count(QLatin1String("\\n"))) << "text " << id;
        }
        for (std::vector<unsigned> const& together : kShownTogether) {
            std::map<QChar, unsigned> letters;
            for (unsigned const id : together) {
                QChar const letter = ZoMnemonics::ShownLetter(table.count(id) ? table.at(id) : QString()).toLower();
                EXPECT_FALSE(letter.isNull()) << "text " << id << " has no mnemonic";
                auto const [other, unique] = letters.emplace(letter, id);
                EXPECT_TRUE(unique || letter.isNull())
                    << "texts " << other->second << " and " << id << " share the letter " << QString(letter).toStdString();
            }
        }
    }
}

TEST(Languages, TheOneAskedForThenTheSystemsPreferredThenEnglish)
{
    QStringList const available = {"de", "en"};
    EXPECT_EQ(ZoPickLanguage("de", {"en-US"}, available), "de");
    EXPECT_EQ(ZoPickLanguage("DE", {}, available), "de");
    EXPECT_EQ(ZoPickLanguage("en", {"de-DE"}, available), "en") << "the command line wins over the locale";
    EXPECT_EQ(ZoPickLanguage("fr", {"de-DE"}, available), "en") << "an unknown language asked for gives English";
    EXPECT_EQ(ZoPickLanguage("", {"de-AT", "en"}, available), "de");
    EXPECT_EQ(ZoPickLanguage("", {"fr-FR", "de_CH.UTF-8", "en"}, available), "de") << "LANGUAGE=fr:de";
    EXPECT_EQ(ZoPickLanguage("", {"fr-FR", "it"}, available), "en");
    EXPECT_EQ(ZoPickLanguage("", {"C"}, available), "en");
    EXPECT_EQ(ZoPickLanguage("", {}, available), "en");
}

TEST(Languages, TheLanguageOptionIsTakenOutOfTheCommandLine)
{
    char program[] = "zoevents", lang[] = "--lang", de[] = "de", check[] = "check", folder[] = "/p", eq[] = "--lang=en";
    char* argv[] = {program, check, lang, de, folder, nullptr};
    int argc = 5;
    EXPECT_EQ(ZoTakeLanguageOption(argc, argv), "de");
    ASSERT_EQ(argc, 3);
    EXPECT_STREQ(argv[1], "check");
    EXPECT_STREQ(argv[2], "/p");
    EXPECT_EQ(argv[3], nullptr);

    char* second[] = {program, eq, folder, nullptr};
    argc = 3;
    EXPECT_EQ(ZoTakeLanguageOption(argc, second), "en");
    EXPECT_EQ(argc, 2);

    char* dangling[] = {program, lang, nullptr}; // "--lang" with nothing after it
    argc = 2;
    EXPECT_EQ(ZoTakeLanguageOption(argc, dangling), "");
    EXPECT_EQ(argc, 1);

    char* empty[] = {nullptr}; // a program started without even its name
    argc = 0;
    EXPECT_EQ(ZoTakeLanguageOption(argc, empty), "");
    EXPECT_EQ(argc, 0);

    char* none[] = {program, folder, nullptr};
    argc = 2;
    EXPECT_EQ(ZoTakeLanguageOption(argc, none), "");
    EXPECT_EQ(argc, 2);
}

TEST(Languages, TextsSwitchTablesAndAnUnknownLanguageChangesNothing)
{
    QString const running = ZoTextLanguage();
    ASSERT_TRUE(ZoSetTextLanguage("de"));
    EXPECT_EQ(ZoText(712), "Nein");
    EXPECT_EQ(ZoText(60001), "&Datei");
    EXPECT_EQ(ZoText(4000000000u), "#4000000000") << "an id no table has still shows its number";
    EXPECT_FALSE(ZoSetTextLanguage("xx"));
    EXPECT_EQ(ZoTextLanguage(), "de");
    ASSERT_TRUE(ZoSetTextLanguage("en"));
    EXPECT_EQ(ZoText(712), "No");
    ASSERT_TRUE(ZoSetTextLanguage(running));
}

// Runs in both languages: the buttons Qt labels itself speak the language of the texts.
TEST(Languages, QtsOwnStandardTextsFollow)
{
    QDialogButtonBox buttons(QDialogButtonBox::Ok | QDialogButtonBox::Cancel);
    QString const cancel = buttons.button(QDialogButtonBox::Cancel)->text().remove(u'&');
    EXPECT_EQ(cancel, ZoTextLanguage() == "de" ? "Abbrechen" : "Cancel");
}
