#pragma once

class QDialog;
class QDialogButtonBox;
class QPushButton;
class QWidget;

// OK (the default button, "OK-16.png") and Cancel ("CANCEL-16.png"), named okButton and
// cancelButton, in a button box. Captions are set by the caller (with its mnemonics).
QDialogButtonBox* ZoNewOkCancelBox(QWidget* parent, QPushButton*& ok, QPushButton*& cancel);

// The same, with OK calling the dialog's accept() and Cancel its reject().
QDialogButtonBox* ZoNewDialogButtons(QDialog* dialog, QPushButton*& ok, QPushButton*& cancel);
