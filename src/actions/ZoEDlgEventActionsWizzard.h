#pragma once
#include "actions/ZoActionKinds.h"
#include "platform/ui/ZoModal.h"
#include <array>

class QLabel;
class QPushButton;
class ZoHyperlink;

// The kind chooser, the first step of adding an action: one link per kind that the moment
// allows (kind mask, see ZoAllowedActionKinds), in the fixed order of the kinds, and Cancel;
// no OK. A click on a link (or Enter, Space or its Alt key) sets the kind and ends the
// dialog with OK at once. The dialog is as tall as its visible links need.
//
// Object names: introText, forceLink, shellExecuteLink, screenLink, reportLink, deviceLink,
// beepLink, mailLink, smsLink, launchWebLink, cancelButton.
class ZoEDlgEventActionsWizzard : public ZoDialog {
    Q_OBJECT
public:
    ZoEDlgEventActionsWizzard(QWidget* parent, unsigned kindMask);

    // The chosen kind bit; 0 before a choice.
    unsigned Kind() const { return m_kind; }
    void Choose(unsigned kind);
    unsigned KindMask() const { return m_mask; }

protected:
    void OnInitDialog() override;

private:
    unsigned m_mask;
    unsigned m_kind = 0;
    QLabel* m_intro = nullptr;
    std::array<ZoHyperlink*, kActionKindCount> m_links{};
    QPushButton* m_cancel = nullptr;
};
