#include "platform/ui/ZoWizardButton.h"

#include "platform/ui/ZoIcons.h"

#include <QHBoxLayout>
#include <QKeySequence>
#include <QShortcut>
#include <QToolButton>

QToolButton* ZoNewWizardButton(QWidget* parent, char const* objectName, QWidget* field, QString const& toolTip)
{
    auto* button = new QToolButton(parent);
    button->setObjectName(QLatin1String(objectName));
    button->setIcon(ZoImageIcon(L"WIZARD-16.png"));
    button->setToolTip(toolTip);
    button->setAutoRaise(true);
    ZoBindWizardKey(field, button);
    return button;
}

void ZoBindWizardKey(QWidget* field, QAbstractButton* button)
{
    auto* shortcut = new QShortcut(QKeySequence(Qt::CTRL | Qt::Key_Space), field);
    shortcut->setContext(Qt::WidgetShortcut);
    QObject::connect(shortcut, &QShortcut::activated, button, &QAbstractButton::click);
}

QHBoxLayout* ZoFieldWithButton(QWidget* field, QWidget* button)
{
    auto* row = new QHBoxLayout;
    row->setSpacing(2);
    row->addWidget(field, 1);
    row->addWidget(button);
    return row;
}
