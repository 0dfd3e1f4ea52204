// The event editor's annotation area on "Tank high level", given a second argument and a
// second group (event-editor-annotations.png), and the argument dialog opened on its first
// argument (event-argument.png); both are cancelled.
#include "ShotSupport.h"
#include "config/XmlDocument.h"
#include "editor/ZoEDlgEventArgumentCfg.h"
#include "editor/ZoEDlgEventCfg.h"

#include <QLineEdit>
#include <QTabWidget>
#include <QTreeView>

namespace {

void AddArgument(XmlNode* event, wchar_t const* value, wchar_t const* format, wchar_t const* thousands)
{
    XmlNode* arguments = event->Child(L"arguments");
    if (!arguments)
        arguments = event->NewChild(L"arguments");
    XmlNode* argument = arguments->NewChild(L"argument");
    argument->SetValue(L"id", L"{5A0C2C6E-1B7D-4B8E-9C41-6F1E2D3A4B5C}");
    argument->SetValue(L"value", value);
    argument->SetValue(L"format", format);
    argument->SetValue(L"thousandSeparator", thousands);
}

void Run(MainWindow&, QString const& projectCopy)
{
    XmlDocument project;
    XmlDocument timeTables;
    if (!LoadShotDocument(projectCopy, "Events.zocfg", project) || !LoadShotDocument(projectCopy, "TimeTables.zocfg", timeTables)) {
        Fail("annotations scene: demo files");
        return;
    }
    XmlNode* eventsNode = project.Root()->Child(L"events");
    XmlNode const* groups = project.Root()->Child(L"eventsGroups");
    if (!eventsNode || !groups) {
        Fail("annotations scene: no events or groups");
        return;
    }
    XmlDocument copy(*eventsNode);
    XmlNode* event = copy.Root()->NodeV(L"/event?name=%s?", L"Tank high level");
    if (!event) {
        Fail("annotations scene: no \"Tank high level\"");
        return;
    }
    AddArgument(event, L"[PLC1.FLOW] * 3.6", L".1", L"T");
    event->Child(L"eventsGroups")->NewChild(L"eventsGroup")->SetValue(L"{5C5D44A2-1645-516A-896F-A940689D4B82}");
    event->SetValue(L"annotation", L"Reservoir high: %a1 %% (%g1), inflow %a2 m3/h");

    XmlDocument users;
    users.Create(L"usersBD");
    ZoEDlgEventCfg editor(nullptr, event, copy.Root(), groups, timeTables.Root(), &users);
    editor.EnsureInitialized();
    Show(editor);
    if (auto* tabs = editor.findChild<QTabWidget*>(QStringLiteral("tabs")))
        tabs->setCurrentIndex(ZoEDlgEventCfg::TabAdvanced);
    auto* arguments = editor.findChild<QTreeView*>(QStringLiteral("argumentsList"));
    if (!arguments || arguments->model()->rowCount() != 2) {
        Fail("annotations scene: the argument list");
        return;
    }
    arguments->setCurrentIndex(arguments->model()->index(1, 0));
    if (auto* annotation = editor.findChild<QLineEdit*>(QStringLiteral("annotationEdit"))) {
        annotation->setFocus();
        annotation->setCursorPosition(int(annotation->text().size()));
    }
    Save(editor, "event-editor-annotations.png");

    XmlNode* first = event->Node(L"arguments")->FirstChild();
    ZoEDlgEventArgumentCfg argument(&editor, first);
    argument.EnsureInitialized();
    Show(argument);
    Save(argument, "event-argument.png");
    argument.reject();
    editor.reject();
}

bool const registered = RegisterShotScene({"annotations and arguments", 2, Run});

} // namespace
