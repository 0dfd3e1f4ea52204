#pragma once
#include <QDialog>
#include <QString>

#include <deque>
#include <functional>
#include <string>
#include <vector>

// Plays the dialogs and message boxes of a journey through the host without showing them,
// for as long as it lives (the runner and answerer installed before are put back after).
//
// Each dialog that reaches the modal runner takes the next queued step, which receives it
// initialised, may fill its widgets and press its buttons (a dialog opened from there takes
// the following step) and returns QDialog::Accepted or Rejected. A dialog with no step left,
// or of another class than its step expects, is rejected and recorded as a failure.
// Every Yes/No question is answered Yes (delete this event? discard the list's changes?)
// and every plain message Ok; their text ids are recorded.
namespace zo::bench {

class JourneyScript {
public:
    using Step = std::function<int(QDialog&)>;

    JourneyScript();
    ~JourneyScript();
    JourneyScript(JourneyScript const&) = delete;
    JourneyScript& operator=(JourneyScript const&) = delete;

    void Then(Step step);
    // A step for a dialog of class D.
    template <class D>
    void ThenAs(std::function<int(D&)> step)
    {
        Then([this, step](QDialog& dialog) {
            auto* typed = qobject_cast<D*>(&dialog);
            if (!typed) {
                Fail("expected a " + std::string(D::staticMetaObject.className()) + ", got a "
                     + dialog.metaObject()->className());
                return int(QDialog::Rejected);
            }
            return step(*typed);
        });
    }

    // The first failure recorded (empty when none), and whether steps are left unused.
    std::string const& Failure() const { return m_failure; }
    void Fail(std::string const& why);
    bool HasUnusedSteps() const { return !m_steps.empty(); }
    // How often the question or message of this text id was answered.
    int Asked(unsigned textId) const;
    // How many questions and messages were answered since the last ForgetMessages.
    int MessageCount() const { return int(m_messageIds.size()); }
    void ForgetMessages() { m_messageIds.clear(); }

private:
    int RunDialog(QDialog& dialog);

    std::function<int(QDialog&)> m_previousRunner;
    std::function<void()> m_restoreAnswerer;
    std::deque<Step> m_steps;
    std::vector<unsigned> m_messageIds;
    std::string m_failure;
};

// Clicks the button of that object name; the dialog's result afterwards (Rejected when the
// click did not end it). Records a failure when there is no such button.
int ClickButton(JourneyScript& script, QDialog& dialog, char const* button);

} // namespace zo::bench
