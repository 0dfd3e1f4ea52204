#pragma once
#include <QString>
#include <vector>

class QDialog;
class QLineEdit;
class QPixmap;
class QPushButton;
class QWidget;

// Small pieces the time-table dialogs share.

// A push button with an object name; not a default button.
QPushButton* NewTimeTableButton(QWidget* parent, char const* objectName, wchar_t const* image = nullptr);
// The name field of an editor: at most 64 characters, with the name rule as its tooltip.
QLineEdit* NewTimeTableNameEdit(QWidget* parent);
// A swatch of a colour word, framed, of the given size.
QPixmap ColourSwatch(unsigned colourWord, int width, int height);
// Asks whether to throw the changes away (text 61530); true for Yes.
bool ConfirmDiscardChanges(QWidget* dialog);
