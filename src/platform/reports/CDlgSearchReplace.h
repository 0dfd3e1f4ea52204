#pragma once
#include "platform/ui/ZoModal.h"

#include <string>
#include <string_view>

class QCheckBox;
class QLabel;
class QLineEdit;
class QPushButton;

// What the search dialog asks its owner to do.
struct ZoSearchReplaceRequest {
    static constexpr wchar_t const* kSearch = L"Search";
    static constexpr wchar_t const* kReplace = L"Replace";
    static constexpr wchar_t const* kReplaceAll = L"ReplaceAll";

    std::wstring find;
    std::wstring replace; // with Replace and Replace All (empty for Search, and while hidden)
    bool matchCase = false;
    std::wstring command; // kSearch, kReplace or kReplaceAll
};

// The find and replace dialog: MODELESS. It does no searching itself; each button sends a
// request to its owner, who searches whatever it holds and answers with its own messages.
//
//   Find what:    [findEdit              ]   [Find Next  ]
//   Replace with: [replaceEdit           ]   [Replace    ]
//   [x] Match case                           [Replace All]
//                                            [Replace... ]   (find mode only)
//                                            [Close      ]
//
// SetReplace(false) shows the find controls alone; "Replace..." (or Ctrl+H) switches to
// SetReplace(true), which shows the replace row and its buttons. Enter is Find Next,
// Escape closes. The texts stay as the user left them for as long as the dialog lives (its
// owner keeps it until the owner closes); each show puts the focus in the find field with
// its text selected.
//
// Notification: SearchReplaceNotify(wParam, request), with wParam 0 for a request from
// a button, and 1 (with an empty request) when the dialog closes (Close, Escape or the
// window's close button). Hiding it with hide() sends nothing.
//
// Object names: findEdit, replaceLabel, replaceEdit, matchCaseCheck, findNextButton,
// replaceButton, replaceAllButton, replaceModeButton, closeButton.
class CDlgSearchReplace : public ZoDialog {
    Q_OBJECT
public:
    explicit CDlgSearchReplace(QWidget* parent);
    ~CDlgSearchReplace() override;

    // Shows the dialog, or brings it to the front when it is shown, with the focus in the
    // find field and its text selected.
    void Present();
    // Shows (true) or hides (false) the replace text and the Replace and Replace All buttons.
    void SetReplace(bool replace);
    bool IsReplace() const { return m_replaceMode; }

    // The request the buttons send, as the fields stand now.
    ZoSearchReplaceRequest Request(wchar_t const* command) const;

    // The buttons' actions (tests and keys use them as the buttons do).
    void OnFindNext();
    void OnReplace();
    void OnReplaceAll();

    void done(int result) override;

signals:
    void SearchReplaceNotify(int wParam, ZoSearchReplaceRequest const& request);

protected:
    void OnInitDialog() override;
    void showEvent(QShowEvent* event) override;

private:
    void Send(wchar_t const* command);
    // Replace mode, with the focus in the replacement ("Replace..." and Ctrl+H).
    void ShowReplace();
    void UpdateTitle();

    bool m_replaceMode = false;
    QLabel* m_findLabel = nullptr;
    QLineEdit* m_find = nullptr;
    QLabel* m_replaceLabel = nullptr;
    QLineEdit* m_replace = nullptr;
    QCheckBox* m_matchCase = nullptr;
    QPushButton* m_findNext = nullptr;
    QPushButton* m_replaceButton = nullptr;
    QPushButton* m_replaceAll = nullptr;
    QPushButton* m_replaceModeButton = nullptr;
    QPushButton* m_close = nullptr;
};
