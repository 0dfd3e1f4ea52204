#pragma once
// ScriptedAnswerer: while one lives, the module's message boxes (ZoShowMessage, ZoAskYesNo...)
// are not shown but recorded and answered at once. A Yes/No question takes the next scripted
// answer (Yes when none is left); a plain message is answered Ok and uses up no answer. On
// destruction the answerer installed before is put back.
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
    explicit ScriptedAnswerer(std::initializer_list<ZoAnswer> answers = {})
        : m_previous(ZoGetMessageAnswerer())
        , m_script(answers)
    {
        ZoSetMessageAnswerer([this](ZoMessage const& message) {
            m_messages.push_back(message);
            if (message.buttons == ZoMsgButtons::Ok)
                return ZoAnswer::Ok;
            if (m_script.empty())
                return ZoAnswer::Yes;
            ZoAnswer const answer = m_script.front();
            m_script.pop_front();
            return answer;
        });
    }
    ~ScriptedAnswerer() { ZoSetMessageAnswerer(m_previous); }
    ScriptedAnswerer(ScriptedAnswerer const&) = delete;
    ScriptedAnswerer& operator=(ScriptedAnswerer const&) = delete;

    // Appends the answer to one more question.
    ScriptedAnswerer& Then(ZoAnswer answer)
    {
        m_script.push_back(answer);
        return *this;
    }
    // The text ids of the messages shown so far, in order.
    std::vector<unsigned> Ids() const
    {
        std::vector<unsigned> ids;
        for (ZoMessage const& message : m_messages)
            ids.push_back(message.textId);
        return ids;
    }
    int Count() const { return static_cast<int>(m_messages.size()); }
    ZoMessage const& Last() const { return m_messages.back(); } // check Count() first
    std::wstring LastText() const { return m_messages.empty() ? std::wstring() : m_messages.back().text; }

private:
    ZoMessageAnswerer m_previous;
    std::deque<ZoAnswer> m_script;
    std::vector<ZoMessage> m_messages;
};
