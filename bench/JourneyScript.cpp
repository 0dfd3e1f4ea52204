#include "JourneyScript.h"

#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoModal.h"

#include <QAbstractButton>

#include <algorithm>

namespace zo::bench {

JourneyScript::JourneyScript()
    : m_previousRunner(ZoGetModalRunner())
{
    ZoMessageAnswerer previous = ZoGetMessageAnswerer();
    m_restoreAnswerer = [previous] { ZoSetMessageAnswerer(previous); };
    ZoSetModalRunner([this](QDialog& dialog) { return RunDialog(dialog); });
    ZoSetMessageAnswerer([this](ZoMessage const& message) {
        m_messageIds.push_back(message.textId);
        return message.buttons == ZoMsgButtons::YesNo ? ZoAnswer::Yes : ZoAnswer::Ok;
    });
}

JourneyScript::~JourneyScript()
{
    ZoSetModalRunner(m_previousRunner);
    m_restoreAnswerer();
}

void JourneyScript::Then(Step step)
{
    m_steps.push_back(std::move(step));
}

void JourneyScript::Fail(std::string const& why)
{
    if (m_failure.empty())
        m_failure = why;
}

int JourneyScript::Asked(unsigned textId) const
{
    return static_cast<int>(std::count(m_messageIds.begin(), m_messageIds.end(), textId));
}

int JourneyScript::RunDialog(QDialog& dialog)
{
    if (m_steps.empty()) {
        Fail(std::string("unexpected dialog ") + dialog.metaObject()->className());
        return QDialog::Rejected;
    }
    Step const step = std::move(m_steps.front());
    m_steps.pop_front();
    return step(dialog);
}

int ClickButton(JourneyScript& script, QDialog& dialog, char const* button)
{
    auto* found = dialog.findChild<QAbstractButton*>(QString::fromLatin1(button));
    if (!found) {
        script.Fail(std::string("no ") + button + " in " + dialog.metaObject()->className());
        return QDialog::Rejected;
    }
    dialog.setResult(QDialog::Rejected);
    found->click();
    return dialog.result();
}

} // namespace zo::bench
