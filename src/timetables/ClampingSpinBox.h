#pragma once
#include <QSpinBox>

// A spin field of at most two digits that lets the user type a number above its range and,
// on leaving the field (or Enter), sets it to the range's maximum instead of refusing it:
// typing 30 in an hour field of 0 to 24 gives 24. Values show with two digits, as a clock's.
class ClampingSpinBox : public QSpinBox {
    Q_OBJECT
public:
    explicit ClampingSpinBox(QWidget* parent = nullptr);

protected:
    QValidator::State validate(QString& text, int& position) const override;
    void fixup(QString& text) const override;
    QString textFromValue(int value) const override;
};
