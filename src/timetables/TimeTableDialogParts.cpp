#include "timetables/TimeTableDialogParts.h"
#include "platform/calendar/ZoColourWord.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoMessage.h"
#include <QDialogButtonBox>
#include <QItemSelectionModel>
#include <QLineEdit>
#include <QPainter>
#include <QPixmap>
#include <QPushButton>
#include <QTreeView>
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

QDialogButtonBox* NewOkCancelBox(QWidget* parent, QPushButton*& ok, QPushButton*& cancel)
{
    ok = new QPushButton(ZoImageIcon(L"OK-16.png"), QString(), parent);
    ok->setObjectName(QStringLiteral("okButton"));
    ok->setDefault(true);
    cancel = new QPushButton(ZoImageIcon(L"CANCEL-16.png"), QString(), parent);
    cancel->setObjectName(QStringLiteral("cancelButton"));
    auto* box = new QDialogButtonBox(parent);
    box->addButton(ok, QDialogButtonBox::AcceptRole);
    box->addButton(cancel, QDialogButtonBox::RejectRole);
    return box;
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

std::vector<int> SelectedListRows(QTreeView const* list)
{
    std::vector<int> rows;
    for (QModelIndex const& index : list->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

bool ConfirmDiscardChanges(QWidget* dialog)
{
    return ZoAskYesNo(dialog, 61530);
}
