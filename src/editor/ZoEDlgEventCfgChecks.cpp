// The event editor's checks on OK: hard errors on the general fields, then questions about
// the formulas, the arguments and the actions.
#include "editor/ZoEDlgEventCfg.h"

#include "editor/ZoActionChecks.h"
#include "editor/ZoFormulaFaults.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMessage.h"

#include <QCheckBox>
#include <QLineEdit>

namespace {

std::wstring TextOf(QLineEdit const* edit)
{
    return edit->text().left(512).toStdWString();
}

} // namespace

// Hard errors first (name, condition); the formula, argument and action checks follow,
// each a question that the user may answer Yes to go on.
bool ZoEDlgEventCfg::IsValid()
{
    if (!IsValidName())
        return false;
    FillEmptyDelays();
    if (!HasCondition())
        return false;
    if (!IsValidFormulas())
        return false;
    if (!IsValidArguments())
        return false;
    return IsValidActions();
}

bool ZoEDlgEventCfg::IsValidFormulas()
{
    if (auto const fault = ZoFormulaFault(*m_evaluator, TextOf(m_condition), ZoFormulaRole::Condition)) {
        ShowTab(TabGeneral);
        if (!ZoAskYesNoText(this, 32798, ZoFormatN(1024, ZoLoadString(32798).c_str(), fault->c_str()))) {
            m_condition->setFocus(Qt::OtherFocusReason);
            return false;
        }
    }
    if (!m_stopEnabled->isChecked())
        return true;
    if (m_stopCondition->text().isEmpty()) {
        ShowTab(TabGeneral);
        ZoShowMessage(this, 33122);
        return false;
    }
    if (auto const fault = ZoFormulaFault(*m_evaluator, TextOf(m_stopCondition), ZoFormulaRole::StopCondition)) {
        ShowTab(TabGeneral);
        if (!ZoAskYesNoText(this, 33123, ZoFormatN(1024, ZoLoadString(33123).c_str(), fault->c_str()))) {
            FocusField(m_stopCondition);
            return false;
        }
    }
    return true;
}

// The arguments are checked in the event itself: their editor has written them there.
bool ZoEDlgEventCfg::IsValidArguments()
{
    XmlNode const* arguments = m_event->Child(L"arguments");
    if (!arguments)
        return true;
    int number = 0;
    for (auto it = arguments->ChildsBegin(); it != arguments->ChildsEnd(); ++it) {
        if ((*it)->Tag() != L"argument")
            continue;
        ++number;
        std::wstring const value = (*it)->Value(L"value", L"");
        auto const fault = ZoFormulaFault(*m_evaluator, value, ZoFormulaRole::Argument);
        if (!fault)
            continue;
        ShowTab(TabAdvanced);
        std::wstring const question =
            ZoFormatN(1024, ZoLoadString(32879).c_str(), number, fault->c_str()) + L"\n" + ZoLoadString(32883);
        if (!ZoAskYesNoText(this, 32879, question))
            return false;
    }
    return true;
}

bool ZoEDlgEventCfg::IsValidActions()
{
    int const moments = ZoMomentsToCheck(*m_event);
    for (int list = 0; list < 2; ++list) {
        XmlNode const* side = m_event->Child(kZoActionSides[list]);
        if (!side)
            continue;
        for (int moment = 0; moment < moments; ++moment) {
            XmlNode const* actions = side->Child(kZoActionMoments[moment]);
            if (!actions)
                continue;
            for (auto it = actions->ChildsBegin(); it != actions->ChildsEnd(); ++it) {
                XmlNode const& action = **it;
                std::wstring const& tag = action.Tag();
                bool passed = true;
                if (tag == L"force")
                    passed = IsValidActionForce(action, list, moment);
                else if (tag == L"device")
                    passed = IsValidActionDevice(action, list, moment);
                else if (tag == L"screen")
                    passed = IsValidActionScreen(action, list, moment);
                else if (tag == L"report")
                    passed = IsValidActionReport(action, list, moment);
                else if (tag == L"mail")
                    passed = IsValidActionMail(action, list, moment);
                if (!passed) {
                    ShowTab(list == 0 ? TabActions : TabClientActions);
                    return false;
                }
            }
        }
    }
    return true;
}

bool ZoEDlgEventCfg::AcceptAction(std::optional<ZoActionFault> const& fault, int list, int moment)
{
    if (!fault)
        return true;
    std::wstring question;
    ActionErrorMsg(question, list, moment, fault->kind, fault->detail.c_str());
    return ZoAskYesNoText(this, 32882, question);
}

bool ZoEDlgEventCfg::IsValidActionForce(XmlNode const& action, int list, int moment)
{
    return AcceptAction(ZoCheckForceAction(*m_evaluator, action), list, moment);
}

bool ZoEDlgEventCfg::IsValidActionDevice(XmlNode const& action, int list, int moment)
{
    return AcceptAction(ZoCheckDeviceAction(action), list, moment);
}

bool ZoEDlgEventCfg::IsValidActionScreen(XmlNode const& action, int list, int moment)
{
    return AcceptAction(ZoCheckScreenAction(action), list, moment);
}

bool ZoEDlgEventCfg::IsValidActionReport(XmlNode const& action, int list, int moment)
{
    return AcceptAction(ZoCheckReportAction(action), list, moment);
}

bool ZoEDlgEventCfg::IsValidActionMail(XmlNode const& action, int list, int moment)
{
    return AcceptAction(ZoCheckMailAction(action), list, moment);
}
