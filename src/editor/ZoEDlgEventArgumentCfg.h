#pragma once
#include "config/XmlDocument.h"
#include "platform/ui/ZoModal.h"

#include <memory>
#include <string>

class QCheckBox;
class QComboBox;
class QGroupBox;
class QLabel;
class QLineEdit;
class QPushButton;
class QToolButton;
class ZoEvaluator;

// Edits one annotation argument of an event: its `value` (a numeric formula), its display
// `format` (ZoCardFormule) and `thousandSeparator`.
//
//   Value (1,234.50)                      the label shows the formula's sample value in the
//   [value formula              ] [wiz]   chosen format as the user types, or its fault
//   Format
//     Integer digits [Automatic v]   [ ] Pad the integer part with zeros
//     Decimals       [3         v]   [ ] Pad the decimals with zeros
//     [ ] Thousands separator
//                                         OK  Cancel
//
// The two count lists offer Automatic and the counts the format can hold (integer digits
// 1 to 9, decimals 0 to 9); a padding check is enabled only for a fixed count. OK refuses
// an empty value (text 32812) and asks before keeping a value with a fault (32811, Yes/No;
// No goes back to the value); it writes the value cut at 1023 characters.
// The formula wizard opens from its button or Ctrl+Space in the value.
//
// Object names: valueLabel, valueEdit, valueWizardButton, formatGroup, integerDigitsLabel,
// integerDigitsCombo, decimalsLabel, decimalsCombo, padIntegerCheck, padDecimalsCheck,
// thousandsCheck, okButton, cancelButton.
class ZoEDlgEventArgumentCfg : public ZoDialog {
    Q_OBJECT
public:
    ZoEDlgEventArgumentCfg(QWidget* parent, XmlDocument::XmlNode* argument);
    ~ZoEDlgEventArgumentCfg() override;

    static constexpr int kMaxValue = 1023;

    // OK: checks, writes the argument and closes (also what Enter does).
    void accept() override;

protected:
    void OnInitDialog() override;

private:
    void BuildControls();
    void LoadFields();
    void OnChangeValue();
    void OnChangeFormat();
    void OnWizzard();
    bool IsValid();
    void UpdateCfg();
    int Digits() const;
    int Decimals() const;

    XmlDocument::XmlNode* m_argument;
    std::unique_ptr<ZoEvaluator> m_evaluator;

    QLabel* m_valueLabel = nullptr;
    QLineEdit* m_value = nullptr;
    QToolButton* m_wizard = nullptr;
    QGroupBox* m_format = nullptr;
    QLabel* m_digitsLabel = nullptr;
    QComboBox* m_digits = nullptr;
    QLabel* m_decimalsLabel = nullptr;
    QComboBox* m_decimals = nullptr;
    QCheckBox* m_padInteger = nullptr;
    QCheckBox* m_padDecimals = nullptr;
    QCheckBox* m_thousands = nullptr;
    QPushButton* m_ok = nullptr;
    QPushButton* m_cancel = nullptr;
};
