#pragma once
#include <initializer_list>

class QDialog;
class QWidget;

// The layout of the list dialogs (the events list, the time-tables setup): a prompt above,
// the list with its command buttons in a column at its right, and OK and Cancel at the
// bottom right. The list takes the room the dialog gains when it grows.
void ZoLayoutListDialog(QDialog* dialog, QWidget* prompt, QWidget* list, std::initializer_list<QWidget*> commands,
                        QWidget* ok, QWidget* cancel);
