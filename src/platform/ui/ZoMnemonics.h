#pragma once
#include <QString>

// Gives the labels, check boxes, tabs and buttons of one dialog each an Alt key of its own:
// "&" goes before the first letter of the text that no earlier text of the dialog took,
// trying the first letters of the words before the others. The texts of the text table
// stay free of "&", since the same text is also a column heading or part of a message.
//
//   ZoMnemonics keys;
//   nameLabel->setText(keys(ZoText(355)));       // "&Name"
//   notifyCheck->setText(keys(ZoText(32827)));   // "N&otify"
class ZoMnemonics {
public:
    QString operator()(QString const& text);
    // Takes a key without giving it to a text (for OK and Cancel, which Enter and Escape
    // press, or for keys the dialog uses otherwise).
    void Reserve(QChar key);

private:
    bool Free(QChar c) const;
    QString m_used;
};
