#include "platform/ui/ZoMnemonics.h"

bool ZoMnemonics::Free(QChar c) const
{
    return c.isLetterOrNumber() && !m_used.contains(c.toUpper());
}

void ZoMnemonics::Reserve(QChar key)
{
    m_used += key.toUpper();
}

QString ZoMnemonics::operator()(QString const& text)
{
    if (text.contains(QLatin1Char('&')))
        return text;
    qsizetype chosen = -1;
    for (qsizetype i = 0; i < text.size() && chosen < 0; ++i) {
        bool const wordStart = i == 0 || !text[i - 1].isLetterOrNumber();
        if (wordStart && Free(text[i]))
            chosen = i;
    }
    for (qsizetype i = 0; i < text.size() && chosen < 0; ++i) {
        if (Free(text[i]))
            chosen = i;
    }
    if (chosen < 0)
        return text;
    m_used += text[chosen].toUpper();
    QString keyed = text;
    return keyed.insert(chosen, QLatin1Char('&'));
}
