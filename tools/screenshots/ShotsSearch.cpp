// The events list with its search dialog open beside it in replace mode, about to replace
// a tank level variable in the conditions (search-replace.png). Nothing is replaced.
#include "ShotSupport.h"
#include "config/XmlDocument.h"
#include "events/ZoEDlgEventsCfg.h"
#include "platform/reports/CDlgSearchReplace.h"

#include <QAction>
#include <QCheckBox>
#include <QFont>
#include <QLabel>
#include <QLineEdit>
#include <QMenu>
#include <QPainter>
#include <QPixmap>
#include <QTreeView>

namespace {

// The window's picture under a plain title bar, as a desktop would frame it.
QPixmap Framed(QWidget& window)
{
    QPixmap const content = window.grab();
    int const bar = 26;
    QPixmap framed(content.width() + 2, content.height() + bar + 1);
    framed.fill(QColor(0x5A, 0x66, 0x75));
    QPainter painter(&framed);
    painter.fillRect(1, 1, content.width(), bar - 1, QColor(0x3B, 0x4A, 0x5C));
    QFont font = window.font();
    font.setBold(true);
    painter.setFont(font);
    painter.setPen(Qt::white);
    painter.drawText(QRect(10, 1, content.width() - 20, bar - 1), Qt::AlignVCenter | Qt::AlignLeft, window.windowTitle());
    painter.drawPixmap(1, bar, content);
    return framed;
}

void Run(MainWindow&, QString const& projectCopy)
{
    XmlDocument events;
    XmlDocument timeTables;
    XmlDocument devices;
    XmlDocument users;
    if (!LoadShotDocument(projectCopy, "Events.zocfg", events) || !LoadShotDocument(projectCopy, "TimeTables.zocfg", timeTables)) {
        Fail("search scene: demo files");
        return;
    }
    devices.Create(L"deviceGroups");
    users.Create(L"usersBD");

    ZoEDlgEventsCfg list(nullptr, devices.Root(), &events, &timeTables, &users);
    list.EnsureInitialized();
    list.resize(880, 500);
    list.move(20, 20);
    Show(list);
    auto* view = list.findChild<QAbstractItemView*>(QStringLiteral("eventsList"));
    if (!view) {
        Fail("search scene: no events list");
        return;
    }
    SelectRow(view, QStringLiteral("Tank high level"));

    // Opened as the context menu's entry opens it.
    std::unique_ptr<QMenu> const menu = list.CreateContextMenu();
    for (QAction* action : menu->actions())
        if (action->objectName() == QLatin1String("searchAction"))
            action->trigger();
    CDlgSearchReplace* search = list.SearchDialog();
    if (!search) {
        Fail("search scene: the search dialog did not open");
        return;
    }
    search->SetReplace(true);
    search->findChild<QLineEdit*>(QStringLiteral("findEdit"))->setText(QStringLiteral("PLC1.TANK_LEVEL"));
    auto* replace = search->findChild<QLineEdit*>(QStringLiteral("replaceEdit"));
    replace->setText(QStringLiteral("PLC1.TANK1_LEVEL"));
    search->findChild<QCheckBox*>(QStringLiteral("matchCaseCheck"))->setChecked(true);
    search->move(list.x() + list.width() + 16, list.y());
    Settle();
    replace->setFocus();
    replace->selectAll();
    Settle(150);

    // Without a window manager the two windows are drawn side by side on one picture.
    QPixmap const listPicture = Framed(list);
    QPixmap const searchPicture = Framed(*search);
    int const gap = 16;
    int const searchTop = 48;
    QPixmap both(listPicture.width() + gap + searchPicture.width(),
                 std::max(listPicture.height(), searchTop + searchPicture.height()));
    both.fill(QColor(0xD8, 0xDC, 0xE2));
    {
        QPainter painter(&both);
        painter.drawPixmap(0, 0, listPicture);
        painter.drawPixmap(listPicture.width() + gap, searchTop, searchPicture);
    }
    QLabel picture;
    picture.setPixmap(both);
    picture.resize(both.size());
    picture.setContentsMargins(0, 0, 0, 0);
    Save(picture, "search-replace.png");
    search->hide();
    list.reject();
}

bool const registered = RegisterShotScene({"search and replace", 1, Run});

} // namespace
