#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"

class EventChoiceModel;
class QLineEdit;
class QPushButton;
class QTreeView;

// Lets the user pick one event of an `events` element, by name, with a filter.
//
// Object names: filterEdit, eventsList, okButton, cancelButton.
class EventChooserDlg : public ZoDialog {
    Q_OBJECT
public:
    // titleId and promptId: the texts of the title and of the prompt above the filter.
    EventChooserDlg(QWidget* parent, XmlDocument::XmlNode const* events, unsigned titleId = 60060,
                    unsigned promptId = 60063);

    // After OK: the position of the chosen event among the `event` children, else -1.
    int ChosenIndex() const { return m_chosen; }
    // Selects the event shown with this name (as a test or a caller scripting the dialog would).
    bool SelectName(QString const& name);
    // Takes the selected event; refuses to close while none is selected.
    void accept() override;

protected:
    void OnInitDialog() override;

private:
    void OnChangeFilter(QString const& text);
    void OnDblclkList();
    void OnOK();
    void UpdateButtons();
    int SelectedSourceRow() const;

    XmlDocument::XmlNode const* m_events;
    unsigned m_titleId;
    unsigned m_promptId;
    EventChoiceModel* m_model = nullptr;
    QLineEdit* m_filter = nullptr;
    QTreeView* m_list = nullptr;
    QPushButton* m_ok = nullptr;
    int m_chosen = -1;
};
