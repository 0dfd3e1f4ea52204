#include "platform/ui/ZoMnemonics.h"
#include <QAbstractButton>
#include <QGroupBox>
#include <QLabel>

QString ZoMnemonics::Apply(QString const& text)
{
    QString escaped = text;
    escaped.replace(QLatin1Char('&'), QLatin1String("&&"));
    auto const usable = [&](qsizetype i) {
        QChar const c = escaped[i];
        return c.isLetterOrNumber() && c != QLatin1Char('&') && !m_taken.contains(c.toLower())
            && (i == 0 || escaped[i - 1] != QLatin1Char('&'));
    };
    qsizetype chosen = -1;
    for (qsizetype i = 0; i < escaped.size() && chosen < 0; ++i)
        if ((i == 0 || !escaped[i - 1].isLetterOrNumber()) && usable(i))
            chosen = i;
    for (qsizetype i = 0; i < escaped.size() && chosen < 0; ++i)
        if (usable(i))
            chosen = i;
    if (chosen < 0)
        return escaped;
    m_taken.insert(escaped[chosen].toLower());
    escaped.insert(chosen, QLatin1Char('&'));
    return escaped;
}

QChar ZoMnemonics::ShownLetter(QString const& marked)
{
    for (qsizetype i = marked.indexOf(QLatin1Char('&')); i >= 0 && i + 1 < marked.size();
         i = marked.indexOf(QLatin1Char('&'), i + 2)) {
        if (marked[i + 1] != QLatin1Char('&'))
            return marked[i + 1];
    }
    return {};
}

void ZoMnemonics::ReserveShown(QString const& marked)
{
    if (QChar const letter = ShownLetter(marked); !letter.isNull())
        Reserve(letter);
}

void ZoMnemonics::Set(QWidget* widget, QString const& text)
{
    if (auto* button = qobject_cast<QAbstractButton*>(widget))
        button->setText(Apply(text));
    else if (auto* label = qobject_cast<QLabel*>(widget))
        label->setText(Apply(text));
    else if (auto* group = qobject_cast<QGroupBox*>(widget))
        group->setTitle(Apply(text));
}
