#pragma once
#include "platform/ui/ZoModal.h"

#include <string>
#include <vector>

class QLabel;
class QModelIndex;
class QPushButton;
class QTreeView;
class ZoNumberedListModel;

// The annotation wizard's second step for "%a" and "%g": which argument or group. A list of
// the names given, numbered from 1 as the placeholders count them (kind 1: the arguments'
// values, title 32826 and prompt 32807; kind 0: the groups' names, title 32785 and prompt
// 382). The first row is selected when it opens; Enter or a double click on a row is OK.
// OK with no row selected acts as Cancel.
//
// Object names: selectPrompt, selectList, okButton, cancelButton.
class ZoEDlgAnnotationSelectWizzard : public ZoDialog {
    Q_OBJECT
public:
    static constexpr int kGroups = 0;
    static constexpr int kArguments = 1;

    ZoEDlgAnnotationSelectWizzard(QWidget* parent, std::vector<std::wstring> const& names, int kind);
    ~ZoEDlgAnnotationSelectWizzard() override;

    // After OK: the chosen row's number (its position plus 1); 0 before.
    int Position() const { return m_position; }
    void accept() override;

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OnDblclkList(QModelIndex const& index);

    int m_kind;
    int m_position = 0;
    ZoNumberedListModel* m_model = nullptr;
    QLabel* m_prompt = nullptr;
    QTreeView* m_list = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};
