#include "actions/ZoEDlgEventActionShellExecuteCfg.h"

#include "actions/ZoActionDuplicates.h"
#include "actions/ZoActionEditorParts.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoMnemonics.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QGridLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>

namespace {

constexpr int kFieldLength = 1024;

} // namespace

ZoEDlgEventActionShellExecuteCfg::ZoEDlgEventActionShellExecuteCfg(QWidget* parent, XmlNode* action, XmlNode* moment)
    : ZoActionEditorDlg(parent, action, moment)
{
    setObjectName(QStringLiteral("commandActionEditor"));
    m_commandEdit = ZoNewActionEdit(this, "commandEdit", kFieldLength);
    m_parameterEdit = ZoNewActionEdit(this, "parameterEdit", kFieldLength);
}

void ZoEDlgEventActionShellExecuteCfg::OnInitDialog()
{
    setWindowTitle(ZoText(63310));
    setWindowIcon(ZoVelmoraSetup::instance().ProgramIcon());
    QLabel* commandLabel = ZoNewBuddyLabel(this, "commandLabel", m_commandEdit);
    QLabel* parameterLabel = ZoNewBuddyLabel(this, "parameterLabel", m_parameterEdit);
    QDialogButtonBox* buttons = NewButtons();
    ZoMnemonics mnemonics;
    mnemonics.Set(commandLabel, ZoText(32851));
    mnemonics.Set(parameterLabel, ZoText(63311));
    SetButtonCaptions(mnemonics);
    m_browseButton = ZoNewIconButton(this, "browseCommandButton", ZoImageIcon(L"SEARCH-16.png"), ZoText(63312),
                                     mnemonics);
    connect(m_browseButton, &QToolButton::clicked, this, &ZoEDlgEventActionShellExecuteCfg::OnBrowseCommand);
    m_commandEdit->setToolTip(ZoText(63314));
    m_parameterEdit->setToolTip(ZoText(63315));
    m_commandEdit->setText(Stored(L"command"));
    m_parameterEdit->setText(Stored(L"parameter"));

    auto* fields = new QGridLayout;
    fields->setHorizontalSpacing(2);
    fields->addWidget(commandLabel, 0, 0, 1, 2);
    fields->addWidget(m_commandEdit, 1, 0);
    fields->addWidget(m_browseButton, 1, 1);
    fields->setRowMinimumHeight(2, 8);
    fields->addWidget(parameterLabel, 3, 0, 1, 2);
    fields->addWidget(m_parameterEdit, 4, 0);
    fields->setColumnStretch(0, 1);
    PlaceFields(fields, buttons);
    ZoFocusField(m_commandEdit);
}

// Starts in the folder of the command typed (the project folder when there is none) and
// puts the chosen file's native path into the command.
void ZoEDlgEventActionShellExecuteCfg::OnBrowseCommand()
{
    QString folder = QString::fromStdWString(ZoVelmoraSetup::instance().CfgPath());
    QFileInfo const typed(m_commandEdit->text().trimmed());
    if (!m_commandEdit->text().trimmed().isEmpty() && typed.absoluteDir().exists())
        folder = typed.absolutePath();
    QFileDialog chooser(this, ZoText(63313), folder);
    chooser.setObjectName(QStringLiteral("commandFileDialog"));
    chooser.setFileMode(QFileDialog::ExistingFile);
    chooser.setAcceptMode(QFileDialog::AcceptOpen);
    if (ZoRunModal(chooser) != QDialog::Accepted || chooser.selectedFiles().isEmpty())
        return;
    m_commandEdit->setText(QDir::toNativeSeparators(chooser.selectedFiles().constFirst()));
    m_commandEdit->setFocus(Qt::OtherFocusReason);
}

bool ZoEDlgEventActionShellExecuteCfg::IsValid()
{
    if (m_skipCheck)
        return true;
    if (m_commandEdit->text().isEmpty()) {
        ZoShowMessage(this, 32848);
        ZoFocusField(m_commandEdit);
        return false;
    }
    if (ZoRepeatsStoredCommand(m_moment, *m_action)) {
        ZoShowMessage(this, 32849);
        ZoFocusField(m_commandEdit);
        return false;
    }
    return true;
}

bool ZoEDlgEventActionShellExecuteCfg::HasChanged() const
{
    return m_commandEdit->text() != Stored(L"command") || m_parameterEdit->text() != Stored(L"parameter");
}

void ZoEDlgEventActionShellExecuteCfg::UpdateCfg()
{
    m_action->SetValue(L"command", m_commandEdit->text().toStdWString());
    m_action->SetValue(L"parameter", m_parameterEdit->text().toStdWString());
}
