#pragma once
#include "platform/ui/ZoModal.h"
#include <string>
#include <vector>

class ChoiceRowsModel;
class QLabel;
class QDialogButtonBox;
class QPushButton;
class QTreeView;

// The selection dialog: a list of names of which the user picks any number.
//
// names: in, the choices, shown one per row in the order given; out, after OK, the chosen
// ones in row order. mode 1 chooses groups (title 32785, prompt 382, group image); any
// other mode chooses events (title 32784, prompt 32782, event image). OK with no row
// selected empties the list and ends with Cancel, so the caller changes nothing. A double
// click on a row chooses that row and ends with OK.
//
// Object names: selectPrompt, selectList, okButton, cancelButton.
class ZoDlgSelect : public ZoDialog {
    Q_OBJECT
public:
    ZoDlgSelect(QWidget* parent, std::vector<std::wstring>& names, int mode);
    ~ZoDlgSelect() override;

    static constexpr int kGroupsMode = 1;

protected:
    void OnInitDialog() override;

private slots:
    void OnOK();
    void OnDblclkList(class QModelIndex const& index);

private:
    void Layout();

    std::vector<std::wstring>& m_names;
    int m_mode;
    ChoiceRowsModel* m_model = nullptr;
    QLabel* m_prompt = nullptr;
    QTreeView* m_list = nullptr;
    QDialogButtonBox* m_buttons = nullptr;
    QPushButton* m_okButton = nullptr;
    QPushButton* m_cancelButton = nullptr;
};
