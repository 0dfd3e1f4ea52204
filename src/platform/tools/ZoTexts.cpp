#include "ZoTexts.h"

#include <QFile>
#include <QString>

#include <unordered_map>

namespace {

// The table, read once from the resource. A function-local static is initialised exactly
// once even when several threads ask for a text at the same time.
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

TextTable LoadTable()
{
    TextTable table;
    QFile file(QStringLiteral(":/texts/en.tsv"));
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

TextTable const& Table()
{
    static TextTable const table = LoadTable();
    return table;
}

} // namespace

bool ZoLoadString(unsigned id, ZoBasicString<wchar_t>& text)
{
    TextTable const& table = Table();
    auto const found = table.find(id);
    if (found == table.end()) {
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
    return Table().count(id) != 0;
}
