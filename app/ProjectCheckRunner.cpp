#include "ProjectCheckRunner.h"

#include <QApplication>

#include <limits>

namespace {

// A step short enough for the window to stay responsive, long enough for few of them.
constexpr qint64 kStepMilliseconds = 15;
// Events checked between two looks at the clock.
constexpr std::size_t kEventsBetweenLooks = 256;
// How long to wait while a modal dialog is open.
constexpr int kModalWaitMilliseconds = 200;

} // namespace

ProjectCheckRunner::ProjectCheckRunner(QObject* parent) : QObject(parent)
{
    m_timer.setSingleShot(true);
    connect(&m_timer, &QTimer::timeout, this, &ProjectCheckRunner::Step);
}

ProjectCheckRunner::~ProjectCheckRunner() = default;

void ProjectCheckRunner::Start(ZoProjectDocs docs, ZoCheckOptions options, bool keepFindings)
{
    Stop();
    m_docs = std::move(docs);
    m_options = options;
    m_keepFindings = keepFindings;
    m_running = true;
    m_timer.start(0);
}

void ProjectCheckRunner::Stop()
{
    m_timer.stop();
    m_checker.reset();
    m_findings.clear();
    m_counts = {};
    m_running = false;
}

void ProjectCheckRunner::Finish()
{
    if (m_running && RunFor(std::numeric_limits<qint64>::max()))
        emit finished();
}

void ProjectCheckRunner::Step()
{
    if (!m_running)
        return;
    if (QApplication::activeModalWidget()) {
        m_timer.start(kModalWaitMilliseconds);
        return;
    }
    if (RunFor(kStepMilliseconds))
        emit finished();
    else
        m_timer.start(0);
}

// True when the check came to its end.
bool ProjectCheckRunner::RunFor(qint64 milliseconds)
{
    QElapsedTimer clock;
    clock.start();
    if (!m_checker) {
        // The indexes are read in the first step, not in the save that started the check.
        m_checker = std::make_unique<ZoProjectChecker>(m_docs, m_options);
        m_checker->BeginProject();
    }
    std::vector<ZoFinding> found;
    bool done = false;
    while (!done && clock.elapsed() < milliseconds) {
        std::vector<ZoFinding>& into = m_keepFindings ? m_findings : found;
        done = m_checker->StepProject(kEventsBetweenLooks, into);
        if (!m_keepFindings) {
            ZoCheckCounts const counts = ZoCountFindings(found);
            m_counts.errors += counts.errors;
            m_counts.warnings += counts.warnings;
            m_counts.notes += counts.notes;
            found.clear();
        }
    }
    if (done) {
        if (m_keepFindings)
            m_counts = ZoCountFindings(m_findings);
        m_running = false;
    }
    return done;
}
