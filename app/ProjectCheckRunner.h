#pragma once
#include "check/ZoProjectChecker.h"

#include <QElapsedTimer>
#include <QObject>
#include <QTimer>

#include <memory>
#include <vector>

// Runs the project check in the editor's idle time, a few milliseconds at a time, so that
// a save of a large project returns at once and the counts follow when the check is done.
//
// The check reads the live documents between the steps. It never steps while a modal
// dialog is open (a dialog may change the documents before the host saves them); every
// change of the documents starts it again (Start), and closing the project stops it.
class ProjectCheckRunner : public QObject {
    Q_OBJECT
public:
    explicit ProjectCheckRunner(QObject* parent = nullptr);
    ~ProjectCheckRunner() override;

    // Starts a check of docs from the beginning, dropping one under way. keepFindings:
    // the findings are kept for Findings(); otherwise only counted, so that a check of a
    // large project holds little memory.
    void Start(ZoProjectDocs docs, ZoCheckOptions options, bool keepFindings);
    void Stop();
    bool IsRunning() const { return m_running; }
    bool KeepsFindings() const { return m_keepFindings; }
    // Runs the check to its end now (as a test or a closing window may need).
    void Finish();

    // After finished(): the counts, the findings (when kept) and the checker, which can
    // check one event again.
    ZoCheckCounts Counts() const { return m_counts; }
    std::vector<ZoFinding> TakeFindings() { return std::move(m_findings); }
    std::unique_ptr<ZoProjectChecker> TakeChecker() { return std::move(m_checker); }

signals:
    void finished();

private:
    // One step of at most kStepMilliseconds.
    void Step();
    bool RunFor(qint64 milliseconds);

    QTimer m_timer;
    ZoProjectDocs m_docs;
    ZoCheckOptions m_options;
    std::unique_ptr<ZoProjectChecker> m_checker;
    std::vector<ZoFinding> m_findings;
    ZoCheckCounts m_counts;
    bool m_keepFindings = false;
    bool m_running = false;
};
