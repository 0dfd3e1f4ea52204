#pragma once
#include "config/XmlDocument.h"
#include "platform/tools/ZoBasicString.h"
#include "platform/ui/ZoModal.h"

class QDialogButtonBox;
class QIcon;
class QLabel;
class QLayout;
class QLineEdit;
class QPushButton;
class QString;
class QToolButton;
class QWidget;
class ZoMnemonics;

// Pieces the action editors (force, command, web page, screen and report, mail, SMS) share.

// An icon-only button beside a field: the icon, and a tooltip naming what it does and its
// key. The key is Alt with a free mnemonic letter of the tooltip, so that the button is
// reached from the keyboard like every labelled control.
QToolButton* ZoNewIconButton(QWidget* parent, char const* objectName, QIcon const& icon, QString const& toolTip,
                             ZoMnemonics& mnemonics);

// A label named objectName, whose mnemonic moves the focus to buddy.
QLabel* ZoNewBuddyLabel(QWidget* parent, char const* objectName, QWidget* buddy);

// A one-line field of at most maxLength characters, wide enough for a long entry.
QLineEdit* ZoNewActionEdit(QWidget* parent, char const* objectName, int maxLength);

// A refused field: the focus on it, its whole text selected.
void ZoFocusField(QLineEdit* field);

// How an editor ends once its checks passed: a change is written and ends with OK; an
// unchanged element ends with OK only when the caller asked to keep it, else with Cancel,
// so that the list does not count an edit that changed nothing.
enum class ZoEditorEnd { Write, KeepOk, Cancel };
inline ZoEditorEnd ZoEditorEndOf(bool changed, bool keep)
{
    return changed ? ZoEditorEnd::Write : keep ? ZoEditorEnd::KeepOk : ZoEditorEnd::Cancel;
}

// What every action editor has: the action it edits and the moment that holds it, the
// flags the list pane sets before DoModal, OK and Cancel, and the way OK ends: the input
// is checked, then a change is written (see ZoEditorEndOf).
class ZoActionEditorDlg : public ZoDialog {
    Q_OBJECT
public:
    // Set by the list pane before DoModal.
    bool m_skipCheck = false;
    bool m_keep = false;
    int m_presetIndex = -1;

    // OK: checks the input, then writes what changed.
    void accept() override;

protected:
    ZoActionEditorDlg(QWidget* parent, XmlDocument::XmlNode* action, XmlDocument::XmlNode* moment);

    // False stops OK; the editor has told the user why.
    virtual bool IsValid() = 0;
    virtual bool HasChanged() const = 0;
    // Writes the controls into the action.
    virtual void UpdateCfg() = 0;

    // The OK and Cancel buttons in their box (ZoNewDialogButtons).
    QDialogButtonBox* NewButtons();
    // The captions of OK ("Replace" with the skip-check flag) and Cancel, with mnemonics.
    void SetButtonCaptions(ZoMnemonics& mnemonics);
    // The fields at the top, the buttons at the bottom; wide enough for a long entry, as
    // high as the layout needs, never taller.
    void PlaceFields(QLayout* fields, QDialogButtonBox* buttons);
    // The action's value of key, empty when it has none.
    QString Stored(wchar_t const* key) const;

    XmlDocument::XmlNode* m_action;
    XmlDocument::XmlNode* m_moment;
    QPushButton* m_okButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
};
