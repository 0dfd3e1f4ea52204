#pragma once
#include "ProblemsModel.h"

#include <QDialog>

class QCheckBox;
class QTreeView;

// The Problems window (Events > Check Project, F7): the project's findings in a sortable
// table, filtered by severity, with the counts in the title. It is modeless: the user
// keeps working in the editor beside it. Enter or a double click on a row asks the host to
// open the event editor at the finding's field (openRequested).
//
// Object names: problemsList, errorsCheck, warningsCheck, notesCheck, checkAgainButton,
// closeButton.
class ProblemsWindow : public QDialog {
    Q_OBJECT
public:
    explicit ProblemsWindow(QWidget* parent);

    void SetFindings(std::vector<ZoFinding> findings);
    void ReplaceEventFindings(std::uint32_t position, std::vector<ZoFinding> findings);
    ProblemsModel const& Model() const { return m_model; }
    QTreeView* List() const { return m_list; }

signals:
    void openRequested(ZoFinding const& finding);
    void checkAgainRequested();

protected:
    bool eventFilter(QObject* watched, QEvent* event) override;

private:
    void OpenCurrent();
    void UpdateTitle();

    ProblemsModel m_model;
    ProblemsFilter m_filter;
    QTreeView* m_list = nullptr;
};
