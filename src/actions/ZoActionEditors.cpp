#include "actions/ZoActionEditors.h"
#include "actions/ZoActionKinds.h"
#include "actions/ZoEDlgEventActionForceCfg.h"
#include "actions/ZoEDlgEventActionLaunchWebCfg.h"
#include "actions/ZoEDlgEventActionShellExecuteCfg.h"
#include "actions/ZoEDlgEventActionsScreenReportCfg.h"
#include "actions/ZoEDlgEventActionMailCfg.h"
#include "actions/ZoEDlgEventActionSmsCfg.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

ZoActionEditorRunner& Runner()
{
    static ZoActionEditorRunner runner;
    return runner;
}

template <class Editor, class... Args>
bool Run(ZoActionEditorFlags const& flags, Args&&... args)
{
    Editor editor(std::forward<Args>(args)...);
    editor.m_skipCheck = flags.skipCheck;
    editor.m_keep = flags.keep;
    editor.m_presetIndex = flags.presetIndex;
    return editor.DoModal() == QDialog::Accepted;
}

} // namespace

bool ZoRunActionEditor(QWidget* parent, unsigned kind, XmlNode* action, XmlNode* moment, XmlDocument* users,
                       ZoActionEditorFlags const& flags)
{
    if (ZoActionEditorRunner const runner = Runner())
        return runner(kind, action, moment, users, flags);
    switch (kind) {
    case kActionForce:
        return Run<ZoEDlgEventActionForceCfg>(flags, parent, action, moment);
    case kActionShellExecute:
        return Run<ZoEDlgEventActionShellExecuteCfg>(flags, parent, action, moment);
    case kActionScreen:
    case kActionReport:
        return Run<ZoEDlgEventActionsScreenReportCfg>(flags, parent, action, moment);
    case kActionLaunchWeb:
        return Run<ZoEDlgEventActionLaunchWebCfg>(flags, parent, action, moment);
    case kActionMail:
        return Run<ZoEDlgEventActionMailCfg>(flags, parent, action, moment, users);
    case kActionSms:
        return Run<ZoEDlgEventActionSmsCfg>(flags, parent, action, moment, users);
    default:
        return false;
    }
}

void ZoSetActionEditorRunner(ZoActionEditorRunner runner)
{
    Runner() = std::move(runner);
}

ZoActionEditorRunner ZoGetActionEditorRunner()
{
    return Runner();
}
