// The mail and SMS action editors, each opened on a demo action that has users, a list and
// a free recipient (mail-editor.png, sms-editor.png); both are cancelled.
#include "ShotSupport.h"
#include "actions/ZoEDlgEventActionMailCfg.h"
#include "actions/ZoEDlgEventActionSmsCfg.h"
#include "config/XmlDocument.h"


namespace {

bool HasChildren(XmlNode const* action, wchar_t const* tag)
{
    XmlNode const* container = action->Child(tag);
    return container && container->Size() > 0;
}

// The first action of that tag that has users and lists chosen, or null.
XmlNode* FindAction(XmlDocument& events, wchar_t const* tag, wchar_t const* listsTag)
{
    XmlNode* list = events.Root() ? events.Root()->Child(L"events") : nullptr;
    for (XmlNode* event = list ? list->FirstChild() : nullptr; event; event = event->NextSibling()) {
        XmlNode* actions = event->Child(L"actions");
        for (XmlNode* moment = actions ? actions->FirstChild() : nullptr; moment; moment = moment->NextSibling())
            for (XmlNode* action = moment->FirstChild(); action; action = action->NextSibling())
                if (action->HasTag(tag) && HasChildren(action, L"users") && HasChildren(action, listsTag))
                    return action;
    }
    return nullptr;
}

template <class Editor>
void Shoot(XmlDocument& events, XmlDocument& users, wchar_t const* tag, wchar_t const* listsTag, char const* file)
{
    XmlNode* action = FindAction(events, tag, listsTag);
    if (!action) {
        Fail(file);
        return;
    }
    XmlDocument copy(*action);
    Editor editor(nullptr, copy.Root(), action->Parent(), &users);
    editor.EnsureInitialized();
    Show(editor);
    Save(editor, file);
    editor.reject();
}

void Run(MainWindow&, QString const& projectCopy)
{
    XmlDocument events;
    XmlDocument users;
    if (!LoadShotDocument(projectCopy, "Events.zocfg", events) || !LoadShotDocument(projectCopy, "Users.zocfg", users)) {
        Fail("mail scene: demo files");
        return;
    }
    Shoot<ZoEDlgEventActionMailCfg>(events, users, L"mail", L"mailLists", "mail-editor.png");
    Shoot<ZoEDlgEventActionSmsCfg>(events, users, L"sms", L"phoneLists", "sms-editor.png");
}

bool const registered = RegisterShotScene({"mail and SMS editors", 2, Run});

} // namespace
