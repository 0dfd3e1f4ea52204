#include "ZoTexts.h"

#include "ZoLanguage.h"

#include <QDir>
#include <QFile>
#include <QString>

#include <unordered_map>

namespace {

// The tables, read from the resources: English once, on first use (a function-local static
// is initialised exactly once even when several threads ask for a text at the same time),
// another language when it is chosen at start-up.
using TextTable = std::unordered_map<unsigned, std::wstring>;

// "\n", "\t" and "\\" inside a text stand for a line break, a tab and a backslash; any
// other backslash is kept as it stands. Works on the UTF-16 text and converts once, so
// characters outside the basic plane survive on either width of wchar_t.
std::wstring Unescape(QStringView text)
{
    QString out;
    out.reserve(text.size());
    for (qsizetype i = 0; i < text.size(); ++i) {
        QChar const c = text[i];
        if (c == u'\\' && i + 1 < text.size()) {
            QChar const next = text[i + 1];
            if (next == u'n') { out += u'\n'; ++i; continue; }
            if (next == u't') { out += u'\t'; ++i; continue; }
            if (next == u'\\') { out += u'\\'; ++i; continue; }
        }
        out += c;
    }
    return out.toStdWString();
}

TextTable LoadTable(QString const& language)
{
    TextTable table;
    QFile file(QStringLiteral(":/texts/%1.tsv").arg(language));
    if (!file.open(QIODevice::ReadOnly))
        return table;
    QString const all = QString::fromUtf8(file.readAll());
    for (QStringView line : QStringView(all).split(u'\n')) {
        if (line.endsWith(u'\r'))
            line.chop(1);
        qsizetype const tab = line.indexOf(u'\t');
        if (tab <= 0)
            continue;
        bool ok = false;
        unsigned const id = line.left(tab).toUInt(&ok);
        if (!ok)
            continue;
        table.emplace(id, Unescape(line.mid(tab + 1)));
    }
    return table;
}

// English is always loaded: a text missing from another table falls back to it.
struct Texts {
    TextTable english = LoadTable(QStringLiteral("en"));
    TextTable chosen; // empty while the language is English
    QString language = QStringLiteral("en");
};

Texts& State()
{
    static Texts texts;
    return texts;
}

TextTable::const_iterator Find(unsigned id, TextTable const*& table)
{
    Texts const& texts = State();
    auto const found = texts.chosen.find(id);
    if (found != texts.chosen.end()) {
        table = &texts.chosen;
        return found;
    }
    table = &texts.english;
    return texts.english.find(id);
}

} // namespace

bool ZoLoadString(unsigned id, ZoBasicString<wchar_t>& text)
{
    TextTable const* table = nullptr;
    auto const found = Find(id, table);
    if (found == table->end()) {
        text = L"#" + std::to_wstring(id);
        return false;
    }
    text = found->second;
    return true;
}

ZoBasicString<wchar_t> ZoLoadString(unsigned id)
{
    ZoBasicString<wchar_t> text;
    ZoLoadString(id, text);
    return text;
}

QString ZoText(unsigned id)
{
    return QString::fromStdWString(ZoLoadString(id));
}

bool ZoHasString(unsigned id)
{
    return State().english.count(id) != 0;
}

QStringList ZoTextLanguages()
{
    QStringList languages;
    for (QString const& name : QDir(QStringLiteral(":/texts")).entryList({QStringLiteral("*.tsv")}, QDir::Files, QDir::Name))
        languages << name.chopped(4);
    return languages;
}

bool ZoSetTextLanguage(QString const& language)
{
    Texts& texts = State();
    if (!ZoTextLanguages().contains(language))
        return false;
    texts.chosen = language == QLatin1String("en") ? TextTable() : LoadTable(language);
    texts.language = language;
    return true;
}

QString ZoTextLanguage()
{
    return State().language;
}
