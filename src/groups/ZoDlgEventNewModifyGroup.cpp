#include "groups/ZoDlgEventNewModifyGroup.h"
#include "groups/GroupNameCheck.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoOkCancelBox.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoMnemonics.h"
#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

ZoDlgEventNewModifyGroup::ZoDlgEventNewModifyGroup(QWidget* parent, XmlDocument::XmlNode* group,
                                                   XmlDocument::XmlNode* groups)
    : ZoDialog(parent)
    , m_group(group)
    , m_groups(groups)
{
    m_label = new QLabel(this);
    m_label->setObjectName(QStringLiteral("nameLabel"));
    m_nameEdit = new QLineEdit(this);
    m_nameEdit->setObjectName(QStringLiteral("nameEdit"));
    m_nameEdit->setMaxLength(64);
    m_label->setBuddy(m_nameEdit);

    m_buttons = ZoNewOkCancelBox(this, m_okButton, m_cancelButton);

    connect(m_okButton, &QPushButton::clicked, this, &ZoDlgEventNewModifyGroup::OnOK);
    connect(m_cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    Layout();
}

ZoDlgEventNewModifyGroup::~ZoDlgEventNewModifyGroup() = default;

void ZoDlgEventNewModifyGroup::Layout()
{
    auto* field = new QHBoxLayout;
    field->addWidget(m_label);
    field->addWidget(m_nameEdit, 1);


    auto* main = new QVBoxLayout(this);
    main->addLayout(field);
    main->addStretch(1);
    main->addWidget(m_buttons);
}

void ZoDlgEventNewModifyGroup::OnInitDialog()
{
    std::wstring const name = m_group ? m_group->Value(L"name", L"") : std::wstring();
    setWindowTitle(ZoText(name.empty() ? 32789 : 32790));
    ZoMnemonics keys;
    keys.Set(m_label, ZoText(355));
    m_nameEdit->setToolTip(ZoText(63000));
    m_okButton->setText(ZoText(311));
    m_cancelButton->setText(ZoText(312));
    m_nameEdit->setText(QString::fromStdWString(name));
    m_nameEdit->selectAll();
    m_nameEdit->setFocus();
    setMinimumWidth(360);
    resize(minimumSizeHint().expandedTo(QSize(380, 0)));
}

void ZoDlgEventNewModifyGroup::OnOK()
{
    if (!m_group)
        return reject();
    std::wstring const name = m_nameEdit->text().toStdWString();
    if (unsigned const fault = CheckGroupName(name, m_group, m_groups)) {
        ZoShowMessage(this, fault);
        m_nameEdit->setFocus();
        // An empty name has nothing to select; the other refusals select the whole name
        // so that typing replaces it.
        if (fault != 32907)
            m_nameEdit->selectAll();
        return;
    }
    if (name == m_group->Value(L"name", L"")) {
        reject();
        return;
    }
    m_group->SetValue(L"name", name);
    accept();
}
