#include "timetables/TimeTableDialogParts.h"
#include "platform/calendar/ZoColourWord.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoMessage.h"
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <algorithm>

QPushButton* NewTimeTableButton(QWidget* parent, char const* objectName, wchar_t const* image)
{
    auto* button = new QPushButton(parent);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false);
    if (image)
        button->setIcon(ZoImageIcon(image));
    return button;
}

QLineEdit* NewTimeTableNameEdit(QWidget* parent)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QStringLiteral("nameEdit"));
    edit->setMaxLength(64);
    edit->setToolTip(ZoText(61512));
    return edit;
}

QPixmap ColourSwatch(unsigned colourWord, int width, int height)
{
    QPixmap pixmap(width, height);
    pixmap.fill(Qt::transparent);
    QPainter painter(&pixmap);
    painter.fillRect(QRect(0, 0, width, height), ZoColorFromWord(colourWord));
    painter.setPen(QColor(0x70, 0x70, 0x70));
    painter.drawRect(QRect(0, 0, width - 1, height - 1));
    return pixmap;
}

bool ConfirmDiscardChanges(QWidget* dialog)
{
    return ZoAskYesNo(dialog, 61530);
}
