#pragma once
#include <QString>
#include <string>

class QGridLayout;
class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QTreeView;
class QWidget;
class ZoRecipientsModel;

// Widgets the mail and SMS editors share: the checkable recipients lists, the message
// field and the placing of a faulty free recipient.

// A flat, sortable-looking list over a recipients model: no tree decoration, whole rows
// focused, the name column sized to its contents and the detail column stretched.
QTreeView* ZoNewRecipientsView(QWidget* parent, char const* objectName, ZoRecipientsModel* model);
// A multi-line message field of at most `lines` lines; Tab moves on to the next control
// instead of typing a tab.
QPlainTextEdit* ZoNewMessageEdit(QWidget* parent, int lines);
// Puts the focus in the message with the cursor at its end: a message is added to more
// often than it is replaced, so nothing is selected that one keystroke would wipe out.
void ZoStartMessage(QPlainTextEdit* edit);
// Puts the focus on the edit and selects the first occurrence of entry in it (all of the
// text when it is not found).
void ZoSelectEntry(QLineEdit* edit, std::wstring const& entry);
// Puts the focus on the list at its first row that can be checked.
void ZoFocusRecipients(QTreeView* list, ZoRecipientsModel const& model);
