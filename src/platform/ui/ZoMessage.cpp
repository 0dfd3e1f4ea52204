#include "ZoMessage.h"

#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/tools/ZoTexts.h"

#include <QGuiApplication>
#include <QMessageBox>
#include <QPushButton>
#include <QString>

namespace {

ZoMessageAnswerer& Answerer()
{
    static ZoMessageAnswerer answerer;
    return answerer;
}

QMessageBox::Icon ToBoxIcon(ZoMsgIcon icon)
{
    switch (icon) {
    case ZoMsgIcon::Information: return QMessageBox::Information;
    case ZoMsgIcon::Warning: return QMessageBox::Warning;
    case ZoMsgIcon::Error: return QMessageBox::Critical;
    case ZoMsgIcon::Question: return QMessageBox::Question;
    }
    return QMessageBox::NoIcon;
}

ZoAnswer ShowBox(QWidget* parent, ZoMessage const& message)
{
    QMessageBox box(parent);
    box.setObjectName(QStringLiteral("messageBox"));
    box.setIcon(ToBoxIcon(message.icon));
    box.setWindowTitle(QGuiApplication::applicationDisplayName());
    box.setWindowIcon(ZoVelmoraSetup::instance().ProgramIcon());
    box.setText(QString::fromStdWString(message.text));
    if (message.buttons == ZoMsgButtons::YesNo) {
        QPushButton* yes = box.addButton(ZoText(711), QMessageBox::YesRole);
        QPushButton* no = box.addButton(ZoText(712), QMessageBox::NoRole);
        yes->setObjectName(QStringLiteral("yesButton"));
        no->setObjectName(QStringLiteral("noButton"));
        box.setDefaultButton(yes);
        box.setEscapeButton(no);
        box.exec();
        return box.clickedButton() == yes ? ZoAnswer::Yes : ZoAnswer::No;
    }
    QPushButton* ok = box.addButton(ZoText(311), QMessageBox::AcceptRole);
    ok->setObjectName(QStringLiteral("okButton"));
    box.setDefaultButton(ok);
    box.setEscapeButton(ok);
    box.exec();
    return ZoAnswer::Ok;
}

} // namespace

ZoAnswer ZoMessageBox(QWidget* parent, ZoMessage const& message)
{
    // A copy, so that an answerer may replace itself while it answers.
    ZoMessageAnswerer const answerer = Answerer();
    if (answerer)
        return answerer(message);
    return ShowBox(parent, message);
}

void ZoShowMessage(QWidget* parent, unsigned textId, ZoMsgIcon icon)
{
    ZoShowMessageText(parent, textId, ZoLoadString(textId), icon);
}

void ZoShowMessageText(QWidget* parent, unsigned textId, ZoBasicString<wchar_t> const& text,
                       ZoMsgIcon icon)
{
    ZoMessage message;
    message.textId = textId;
    message.text = text;
    message.buttons = ZoMsgButtons::Ok;
    message.icon = icon;
    ZoMessageBox(parent, message);
}

bool ZoAskYesNo(QWidget* parent, unsigned textId)
{
    return ZoAskYesNoText(parent, textId, ZoLoadString(textId));
}

bool ZoAskYesNoText(QWidget* parent, unsigned textId, ZoBasicString<wchar_t> const& text)
{
    ZoMessage message;
    message.textId = textId;
    message.text = text;
    message.buttons = ZoMsgButtons::YesNo;
    message.icon = ZoMsgIcon::Question;
    return ZoMessageBox(parent, message) == ZoAnswer::Yes;
}

void ZoSetMessageAnswerer(ZoMessageAnswerer answerer)
{
    Answerer() = std::move(answerer);
}

ZoMessageAnswerer ZoGetMessageAnswerer()
{
    return Answerer();
}
