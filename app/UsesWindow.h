#pragma once
#include "UsesModel.h"

#include <QDialog>

class QLabel;
class QLineEdit;
class QTreeView;

// The where-used window (Events > Where Used…): the reference the user types (as a formula
// writes it, or device:, event:, timetable:, group:... and a name) and every place of the
// project that uses it. It is modeless, like the Problems window: Enter or a double click on
// a row asks the host to open the event editor at the field (openRequested); Enter in the
// reference, or Find, asks the host to look the reference up (findRequested), which answers
// with SetUses or SetRefused.
//
// Object names: usesWindow, referenceEdit, findButton, usesList, countLabel, closeButton.
class UsesWindow : public QDialog {
    Q_OBJECT
public:
    explicit UsesWindow(QWidget* parent);

    QString Reference() const;
    // Shows the reference in the field and asks for its uses.
    void Find(QString const& reference);
    void SetUses(std::vector<ZoFinding> uses);
    // The reference names nothing: the message in place of the count, no rows.
    void SetRefused(QString const& message);

    UsesModel const& Model() const { return m_model; }
    QTreeView* List() const { return m_list; }

signals:
    void openRequested(ZoFinding const& use);
    void findRequested(QString const& reference);

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OpenCurrent();

    UsesModel m_model;
    QLineEdit* m_reference = nullptr;
    QTreeView* m_list = nullptr;
    QLabel* m_count = nullptr;
};
