#pragma once
// ScriptedAnswerer: answers the module's message boxes and Yes/No questions in a test.
//
// While one lives, no message box is shown: every message goes through
// ZoMessageBox (ZoShowMessage, ZoAskYesNo...) is recorded and answered at once.
//   - Questions (Yes/No) take their answers from the script, first queued first used; when
//     the script is empty a question is answered Yes.
//   - Plain messages (OK button) are always answered Ok and leave the script untouched, so
//     a script only lists the answers to questions.
// On destruction the answerer that was installed before is put back (none: real boxes).
//
//   ScriptedAnswerer answers{ZoAnswer::No};          // the first question gets No
//   dialog.OnDelete();
//   EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{32792}));
//   EXPECT_EQ(answers.Last().buttons, ZoMsgButtons::YesNo);
#include "platform/ui/ZoMessage.h"

#include <deque>
#include <initializer_list>
#include <string>
#include <vector>

class ScriptedAnswerer {
public:
    ScriptedAnswerer()
        : m_previous(ZoGetMessageAnswerer())
    {
        ZoSetMessageAnswerer([this](ZoMessage const& message) { return Answer(message); });
    }
    explicit ScriptedAnswerer(std::initializer_list<ZoAnswer> answers)
        : ScriptedAnswerer()
    {
        m_script.assign(answers.begin(), answers.end());
    }
    ~ScriptedAnswerer() { ZoSetMessageAnswerer(m_previous); }
    ScriptedAnswerer(ScriptedAnswerer const&) = delete;
    ScriptedAnswerer& operator=(ScriptedAnswerer const&) = delete;

    // Appends the answer for one more question.
    ScriptedAnswerer& Then(ZoAnswer answer)
    {
        m_script.push_back(answer);
        return *this;
    }

    // Every message shown so far, in order.
    std::vector<ZoMessage> const& Messages() const { return m_messages; }
    // Their text ids, in order.
    std::vector<unsigned> Ids() const
    {
        std::vector<unsigned> ids;
        for (ZoMessage const& message : m_messages)
            ids.push_back(message.textId);
        return ids;
    }
    int Count() const { return static_cast<int>(m_messages.size()); }
    // The last message (check Count() first).
    ZoMessage const& Last() const { return m_messages.back(); }
    std::wstring LastText() const { return m_messages.empty() ? std::wstring() : m_messages.back().text; }
    // Answers queued and not used yet.
    int Unused() const { return static_cast<int>(m_script.size()); }
    // Forgets the recorded messages (the script stays).
    void Clear() { m_messages.clear(); }

private:
    ZoAnswer Answer(ZoMessage const& message)
    {
        m_messages.push_back(message);
        if (message.buttons == ZoMsgButtons::Ok)
            return ZoAnswer::Ok;
        if (m_script.empty())
            return ZoAnswer::Yes;
        ZoAnswer const answer = m_script.front();
        m_script.pop_front();
        return answer;
    }

    ZoMessageAnswerer m_previous;
    std::deque<ZoAnswer> m_script;
    std::vector<ZoMessage> m_messages;
};
