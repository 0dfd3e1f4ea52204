#pragma once
#include <QSet>
#include <QString>
#include <initializer_list>

class QWidget;

// Keyboard mnemonics for texts loaded from the text table, which carry none: each text gets
// an "&" before a letter (or digit) that no earlier text of the same dialog uses, preferring
// the first letter of a word, then any letter; a text with no free letter gets none. An "&"
// already in a text is shown as it is ("&&").
class ZoMnemonics {
public:
    // The text with a mnemonic, reserving its letter.
    QString Apply(QString const& text);
    // Sets the text of a label, button, check box or group box with a mnemonic (widgets of
    // other classes are left alone). Labels need a buddy for the mnemonic to work.
    void Set(QWidget* widget, QString const& text);
    // Reserves a letter used elsewhere (a fixed shortcut).
    void Reserve(QChar letter) { m_taken.insert(letter.toLower()); }
    // Reserves the letter that a caption already marked elsewhere shows, if any.
    void ReserveShown(QString const& marked);
    // The letter after the first single "&" of a marked caption ("&&" is a plain "&"); a
    // null QChar when the caption shows none.
    static QChar ShownLetter(QString const& marked);

private:
    QSet<QChar> m_taken;
};
