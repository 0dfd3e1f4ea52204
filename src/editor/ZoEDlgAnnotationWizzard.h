#pragma once
#include "editor/ZoAnnotationPlaceholders.h"
#include "platform/ui/ZoModal.h"

#include <array>

class QButtonGroup;
class QLabel;
class QPushButton;
class QRadioButton;

// The annotation wizard's first step: what to insert in an annotation text, as ten radio
// choices (ZoAnnotationChoice), each with the placeholder it inserts beside it. Without a
// stop condition the stop-condition choice (2) is hidden and disabled. OK stores the chosen
// index; the first choice is selected when it opens. A double click on a choice is OK.
//
// Object names: wizardPrompt, choice0 ... choice9 (the radio buttons), placeholder0 ...
// placeholder9 (the placeholders shown beside them), okButton, cancelButton.
class ZoEDlgAnnotationWizzard : public ZoDialog {
    Q_OBJECT
public:
    ZoEDlgAnnotationWizzard(QWidget* parent, bool stopCondition);
    ~ZoEDlgAnnotationWizzard() override;

    // After OK: the chosen index (0 to 9); -1 before.
    int Choice() const { return m_choice; }
    void accept() override;

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    bool m_stopCondition;
    int m_choice = -1;
    QLabel* m_prompt = nullptr;
    QButtonGroup* m_group = nullptr;
    std::array<QRadioButton*, ZoAnnotationChoiceCount> m_choices{};
    std::array<QLabel*, ZoAnnotationChoiceCount> m_placeholders{};
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};
