// The event editor's Actions tab on "Tank high level", its activation list given an SMS as
// well (event-editor-actions.png), and the actions wizard as a client list opens it
// (actions-wizard.png); both are cancelled.
#include "ShotSupport.h"
#include "actions/ZoActionKinds.h"
#include "actions/ZoEDlgEventActionsCfg.h"
#include "actions/ZoEDlgEventActionsWizzard.h"
#include "config/XmlDocument.h"
#include "editor/ZoEDlgEventCfg.h"

#include <QTabWidget>
#include <QTreeView>

namespace {

void Run(MainWindow&, QString const& projectCopy)
{
    XmlDocument project;
    XmlDocument timeTables;
    if (!LoadShotDocument(projectCopy, "Events.zocfg", project) || !LoadShotDocument(projectCopy, "TimeTables.zocfg", timeTables)) {
        Fail("actions scene: demo files");
        return;
    }
    XmlNode* eventsNode = project.Root()->Child(L"events");
    if (!eventsNode) {
        Fail("actions scene: no events");
        return;
    }
    XmlDocument copy(*eventsNode);
    XmlNode* event = copy.Root()->NodeV(L"/event?name=%s?", L"Tank high level");
    XmlNode* activate = event ? event->Node(L"actions/activate") : nullptr;
    if (!activate) {
        Fail("actions scene: no \"Tank high level\" with actions");
        return;
    }
    XmlNode* sms = activate->NewChild(L"sms");
    sms->SetValue(L"id", L"{7B1E4C2A-3D5F-4A6B-8C9D-0E1F2A3B4C5D}");
    sms->SetValue(L"message", L"Tank high level: pumps 1 and 2 stopped");

    XmlDocument users;
    users.Create(L"usersBD");
    ZoEDlgEventCfg editor(nullptr, event, copy.Root(), project.Root()->Child(L"eventsGroups"), timeTables.Root(),
                          &users);
    editor.EnsureInitialized();
    editor.resize(720, 520);
    Show(editor);
    if (auto* tabs = editor.findChild<QTabWidget*>(QStringLiteral("tabs")))
        tabs->setCurrentIndex(ZoEDlgEventCfg::TabActions);
    ZoEDlgEventActionsCfg* pane = editor.ActionPane(0, 0);
    if (!pane || pane->List()->model()->rowCount() != 4) {
        Fail("actions scene: the activation list");
        return;
    }
    pane->List()->setFocus();
    SelectRow(pane->List(), QStringLiteral("SMS"));
    Save(editor, "event-editor-actions.png");

    ZoEDlgEventActionsWizzard wizard(&editor, kClientActionsMask);
    wizard.EnsureInitialized();
    Show(wizard);
    Save(wizard, "actions-wizard.png");
    wizard.reject();
    editor.reject();
}

bool const registered = RegisterShotScene({"action lists and the actions wizard", 2, Run});

} // namespace
