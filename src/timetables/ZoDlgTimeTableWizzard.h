#pragma once
#include "platform/ui/ZoModal.h"
#include <array>

class QCommandLinkButton;
class QLabel;
class QPushButton;

// The kind chooser, the first step of adding a time table: three link-style choices (day
// program, week program, calendar) and Cancel, no OK. A click on a choice sets the kind
// (0, 1 or 2, the numbers of TimeTableKind) and ends the dialog with OK at once.
//
// Object names: dayLink, weekLink, calendarLink, cancelButton.
class ZoDlgTimeTableWizzard : public ZoDialog {
    Q_OBJECT
public:
    explicit ZoDlgTimeTableWizzard(QWidget* parent);

    // The chosen kind; -1 before a choice.
    int Kind() const { return m_kind; }
    void Choose(int kind);

protected:
    void OnInitDialog() override;

private:
    int m_kind = -1;
    QLabel* m_explanation = nullptr;
    std::array<QCommandLinkButton*, 3> m_links{};
    QPushButton* m_cancel = nullptr;
};
