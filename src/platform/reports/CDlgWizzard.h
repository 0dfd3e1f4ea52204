#pragma once
#include "ZoWizardStatus.h"
#include "platform/drivers/ZoVariableType.h"
#include "platform/tools/ZoBasicString.h"
#include "platform/ui/ZoModal.h"

#include <memory>

class QLabel;
class QLineEdit;
class QPlainTextEdit;
class QPushButton;
class QSplitter;
class QTreeWidget;
class ZoDeviceCatalog;
class ZoDeviceTreePanel;
class ZoEvaluator;
struct ZoFormulaEdit;

// The formula wizard: composes a formula of the formula language (docs/formulas.md).
//
//   Formula: [the expression, several lines, with the caller's selection]
//   [icon] Logical formula (Correct)        the status the editor's label will show, at once
//          the evaluator's sentence          on every edit
//   Filter / Devices and variables / details  | Operators (buttons) / Functions (list)
//   [Insert variable]                          | [Insert function]
//                                                               OK  Cancel
//
// A variable (double click, Enter, or "Insert variable") goes in as "[DEVICE.CODE]" in place
// of the selection; an operator goes in at the caret with blanks around it; a function goes
// in as "name(arguments)" with the arguments selected, or around the selection. Whatever
// the buttons insert can also be typed, so the operator buttons take no focus; every other
// control has a mnemonic. Ctrl+Enter in the expression is OK. After OK, Expression() is the
// formula on one line: the line breaks typed in the wizard become blanks, since the callers'
// fields hold one line.
//
// Constructor arguments:
//  - kinds: the kinds of value the formula works on, as bits of the variable type set
//    (ZoVariableType.h). The tree offers the variables whose values the formula can use as
//    one of them: bit 2 (analog, real numbers) takes every variable read as a number or
//    logical value (digital, integer, analog, counter, duration), bit 1 (integer) takes
//    integers, durations and digitals, bit 0 (digital) digitals, bit 3 (text) texts, and the
//    others their own kind. The event editor passes 4: its formulas compute numbers and
//    conditions, never texts.
//  - writeTarget: false for a formula that is read (the event editor); true to compose the
//    variable a force action writes: the tree offers writable variables only, a variable
//    replaces the whole expression, operators and functions are off, and the status checks
//    that the formula is one writable variable without a period filter.
//  - context: who calls, so that the wizard opened again from the same place comes back as
//    the user left it in this session: its size, the split between tree and operators, and
//    the last variable inserted, current in the tree. The event editor passes 13 for its
//    four formulas; 0 remembers nothing.
//
// Object names: expressionEdit, statusIcon, statusLabel, statusDetail, filterEdit,
// devicesTree, detailsText, insertVariableButton, operatorButton_<text> ("operatorButton_AND",
// "operatorButton_()"), functionsList, insertFunctionButton, okButton, cancelButton.
class CDlgWizzard : public ZoDialog {
    Q_OBJECT
public:
    CDlgWizzard(QWidget* parent, std::bitset<34> const& kinds, bool writeTarget, int context);
    ~CDlgWizzard() override;

    // The expression to start from and the selection in it (positions in QString units, as
    // the caller's line edit reports them; an end below 0 means the end of the text, a start
    // below 0 puts the caret at the end). Call before DoModal.
    void SetExpression(ZoBasicString<wchar_t> const& text, int selStart, int selEnd);
    // After OK: the composed formula on one line.
    ZoBasicString<wchar_t> Expression() const { return m_result; }

    // Shows the status line (set by the caller before running the wizard; the event editor
    // always sets it). Without it the wizard shows no status, for callers whose fields
    // take text that is not checked as a formula.
    bool m_bShowStatus = false;

    // What the status line checks the formula as; Any (the default) follows the formula's
    // own kind: numeric when it analyses as a number, logical otherwise. Set before DoModal.
    void SetExpected(ZoWizardStatus::Expect expect) { m_expect = expect; }
    // The catalog whose devices are offered; null (the default) uses the installed one.
    void SetCatalog(ZoDeviceCatalog const* catalog) { m_catalog = catalog; }

    // The variable types the tree offers for a kinds argument (see above).
    static ZoTypeSet OfferedTypes(std::bitset<34> const& kinds);

    // The actions behind the controls (tests and keyboard use them as the buttons do).
    void InsertVariable(QString const& reference);
    void InsertOperator(QString const& text);
    void InsertFunction(QString const& name);

    void accept() override;
    void done(int result) override;

protected:
    void OnInitDialog() override;
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    QWidget* CreateOperatorsPane(class ZoMnemonics& mnemonics);
    void OnChangeExpression();
    void OnInsertVariable();
    void OnInsertFunction();
    void Apply(ZoFormulaEdit const& edit);
    void UpdateButtons();
    void Remember();

    std::bitset<34> m_kinds;
    bool m_writeTarget;
    int m_context;
    ZoWizardStatus::Expect m_expect = ZoWizardStatus::Expect::Any;
    ZoDeviceCatalog const* m_catalog = nullptr;
    ZoBasicString<wchar_t> m_initial;
    int m_initialStart = 0;
    int m_initialEnd = 0;
    ZoBasicString<wchar_t> m_result;
    QString m_lastVariable;
    std::unique_ptr<ZoEvaluator> m_evaluator;

    QPlainTextEdit* m_expression = nullptr;
    QLabel* m_statusIcon = nullptr;
    QLabel* m_status = nullptr;
    QLabel* m_statusDetail = nullptr;
    ZoDeviceTreePanel* m_tree = nullptr;
    QPushButton* m_insertVariable = nullptr;
    QTreeWidget* m_functions = nullptr;
    QPushButton* m_insertFunction = nullptr;
    QWidget* m_operators = nullptr;
    QSplitter* m_splitter = nullptr;
};

// Runs the wizard, with its status line, on a formula field: the field's text, its
// selection (or the caret) as the place to insert. On OK the field takes the composed
// formula and the focus. True on OK.
bool ZoRunWizardOnField(CDlgWizzard& wizard, QLineEdit* field);
