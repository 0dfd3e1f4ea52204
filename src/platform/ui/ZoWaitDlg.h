#pragma once
#include "platform/ui/ZoModal.h"
#include <atomic>

class QLabel;
class QProgressBar;

// A modal wait box: a short text and a busy bar, shown while work runs on another thread.
// The user cannot close it; the work closes it when done.
//
//   ZoWaitDlg wait(parent, 36261);
//   std::thread worker([&] {
//       while (!wait.IsReady()) std::this_thread::yield();
//       ...work...
//       wait.Close();
//   });
//   wait.DoModal();
//   worker.join();
//
// IsReady() turns true once the box is on screen (or once its modal run returned without
// showing it, so that a worker never waits for a box that will not come); Close() may be
// called from any thread and ends the modal run through a queued call.
//
// Object names: waitText, waitProgress.
class ZoWaitDlg : public ZoDialog {
    Q_OBJECT
public:
    ZoWaitDlg(QWidget* parent, unsigned textId);
    ~ZoWaitDlg() override;

    bool IsReady() const { return m_ready.load(std::memory_order_acquire); }
    void Close();
    // Runs the box modally; Close() ends it. Marks it ready when it returns.
    int DoModal();

    // True while any wait box is on screen (readable from any thread).
    static bool AnyShown();

    // Escape does not close the box; Close() does.
    void reject() override;

protected:
    void showEvent(QShowEvent* event) override;
    void hideEvent(QHideEvent* event) override;
    void closeEvent(QCloseEvent* event) override;

private:
    void Finish();

    std::atomic<bool> m_ready{false};
    bool m_closing = false;
    bool m_shown = false;
    QLabel* m_text = nullptr;
    QProgressBar* m_progress = nullptr;
};
