#pragma once
#include "platform/tools/ZoBasicString.h"
#include <functional>

class QWidget;

// The one way every dialog talks to the user with a message box or a Yes/No question.
enum class ZoMsgButtons { Ok, YesNo };
enum class ZoMsgIcon { Information, Warning, Error, Question };
enum class ZoAnswer { Ok, Yes, No };

struct ZoMessage {
    unsigned textId = 0;        // the text id the message was built from (0 when none)
    ZoBasicString<wchar_t> text; // the final text shown
    ZoMsgButtons buttons = ZoMsgButtons::Ok;
    ZoMsgIcon icon = ZoMsgIcon::Information;
};

// Shows the message modally over parent and returns the answer.
ZoAnswer ZoMessageBox(QWidget* parent, ZoMessage const& message);
// A plain message (OK button) with a loaded text.
void ZoShowMessage(QWidget* parent, unsigned textId, ZoMsgIcon icon = ZoMsgIcon::Warning);
// A plain message with a text already built; textId names the text it was built from.
void ZoShowMessageText(QWidget* parent, unsigned textId, ZoBasicString<wchar_t> const& text,
                       ZoMsgIcon icon = ZoMsgIcon::Warning);
// A Yes/No question with the question icon; true for Yes.
bool ZoAskYesNo(QWidget* parent, unsigned textId);
bool ZoAskYesNoText(QWidget* parent, unsigned textId, ZoBasicString<wchar_t> const& text);

// Test seam: while an answerer is installed no box is shown; the answerer receives each
// message and returns the answer. An empty function restores the real message boxes.
using ZoMessageAnswerer = std::function<ZoAnswer(ZoMessage const&)>;
void ZoSetMessageAnswerer(ZoMessageAnswerer answerer);
// The answerer installed now (empty when real boxes are shown), so that a guard can put
// back whatever was there before it.
ZoMessageAnswerer ZoGetMessageAnswerer();
