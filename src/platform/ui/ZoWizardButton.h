#pragma once
class QAbstractButton;
class QHBoxLayout;
class QString;
class QToolButton;
class QWidget;

// The small wand button beside a formula or text field that opens a wizard on it;
// Ctrl+Space in the field clicks it too.
QToolButton* ZoNewWizardButton(QWidget* parent, char const* objectName, QWidget* field, QString const& toolTip);

// Ctrl+Space in the field clicks the button (for a button made another way).
void ZoBindWizardKey(QWidget* field, QAbstractButton* button);

// A row with the field stretched and its button close beside it.
QHBoxLayout* ZoFieldWithButton(QWidget* field, QWidget* button);
