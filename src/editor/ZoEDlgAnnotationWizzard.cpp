#include "editor/ZoEDlgAnnotationWizzard.h"

#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/ui/ZoOkCancelBox.h"

#include <QButtonGroup>
#include <QDialogButtonBox>
#include <QEvent>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>
#include <QRadioButton>
#include <QVBoxLayout>

ZoEDlgAnnotationWizzard::ZoEDlgAnnotationWizzard(QWidget* parent, bool stopCondition)
    : ZoDialog(parent)
    , m_stopCondition(stopCondition)
{
    setObjectName(QStringLiteral("annotationWizard"));
    m_prompt = new QLabel(this);
    m_prompt->setObjectName(QStringLiteral("wizardPrompt"));
    m_group = new QButtonGroup(this);
    auto* choices = new QGridLayout;
    choices->setHorizontalSpacing(24);
    choices->setContentsMargins(12, 4, 0, 4);
    for (int choice = 0; choice < ZoAnnotationChoiceCount; ++choice) {
        auto* radio = new QRadioButton(this);
        radio->setObjectName(QStringLiteral("choice%1").arg(choice));
        radio->installEventFilter(this);
        auto* placeholder = new QLabel(QString::fromStdWString(ZoPlaceholderText(choice)), this);
        placeholder->setObjectName(QStringLiteral("placeholder%1").arg(choice));
        placeholder->setEnabled(false); // shown in grey: what goes into the text
        if (choice == ZoChoiceGroup || choice == ZoChoiceArgument)
            placeholder->setText(placeholder->text() + QStringLiteral("1, ") + placeholder->text()
                                 + QStringLiteral("2..."));
        m_group->addButton(radio, choice);
        choices->addWidget(radio, choice, 0);
        choices->addWidget(placeholder, choice, 1);
        m_choices[std::size_t(choice)] = radio;
        m_placeholders[std::size_t(choice)] = placeholder;
    }
    choices->setColumnStretch(2, 1);

    QDialogButtonBox* buttons = ZoNewDialogButtons(this, m_ok, m_cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_prompt);
    layout->addLayout(choices);
    layout->addStretch(1);
    layout->addWidget(buttons);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

ZoEDlgAnnotationWizzard::~ZoEDlgAnnotationWizzard()
{
    for (QRadioButton* radio : m_choices)
        radio->removeEventFilter(this);
}

void ZoEDlgAnnotationWizzard::OnInitDialog()
{
    setWindowTitle(ZoText(34169));
    m_prompt->setText(ZoText(34170));
    ZoMnemonics keys;
    keys.Set(m_ok, ZoText(311));
    keys.Set(m_cancel, ZoText(312));
    for (int choice = 0; choice < ZoAnnotationChoiceCount; ++choice)
        keys.Set(m_choices[std::size_t(choice)], ZoText(ZoPlaceholderLabel(choice)));
    // The stop condition's placeholder means nothing to an event that has none.
    m_choices[ZoChoiceStop]->setVisible(m_stopCondition);
    m_choices[ZoChoiceStop]->setEnabled(m_stopCondition);
    m_placeholders[ZoChoiceStop]->setVisible(m_stopCondition);
    m_choices[ZoChoiceName]->setChecked(true);
    m_choices[ZoChoiceName]->setFocus(Qt::OtherFocusReason);
}

void ZoEDlgAnnotationWizzard::accept()
{
    int const checked = m_group->checkedId();
    if (checked < 0 || !m_choices[std::size_t(checked)]->isEnabled())
        return;
    m_choice = checked;
    ZoDialog::accept();
}

bool ZoEDlgAnnotationWizzard::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::MouseButtonDblClick) {
        if (auto* radio = qobject_cast<QRadioButton*>(watched); radio && radio->isEnabled()) {
            radio->setChecked(true);
            accept();
            return true;
        }
    }
    return ZoDialog::eventFilter(watched, event);
}
