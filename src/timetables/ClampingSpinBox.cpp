#include "timetables/ClampingSpinBox.h"
#include <QLineEdit>

ClampingSpinBox::ClampingSpinBox(QWidget* parent)
    : QSpinBox(parent)
{
    lineEdit()->setMaxLength(2);
    setAlignment(Qt::AlignRight);
}

QValidator::State ClampingSpinBox::validate(QString& text, int& position) const
{
    if (text.isEmpty())
        return QValidator::Intermediate;
    if (text.size() > 2)
        return QValidator::Invalid;
    for (QChar c : text)
        if (!c.isDigit())
            return QValidator::Invalid;
    int const value = text.toInt();
    if (value > maximum())
        return QValidator::Intermediate;
    return QSpinBox::validate(text, position);
}

void ClampingSpinBox::fixup(QString& text) const
{
    bool number = false;
    int const value = text.toInt(&number);
    if (number && value > maximum())
        text = QString::number(maximum());
    else if (!number || value < minimum())
        text = QString::number(minimum());
}

QString ClampingSpinBox::textFromValue(int value) const
{
    return QStringLiteral("%1").arg(value, 2, 10, QLatin1Char('0'));
}
