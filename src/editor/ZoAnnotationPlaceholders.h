#pragma once
#include "platform/tools/ZoBasicString.h"

#include <string>

// The placeholders of an event's annotation texts, which the event runtime fills in when it
// uses the text: "%" and a letter, or "%a"/"%g" and a number counted from 1 (an argument of
// the event, a group the event belongs to). The annotation wizard offers them as ten choices.
enum ZoAnnotationChoice {
    ZoChoiceName = 0,         // "%n" the event's name
    ZoChoiceCondition = 1,    // "%c" its condition
    ZoChoiceStop = 2,         // "%s" its stop condition (offered only when it has one)
    ZoChoiceActivation = 3,   // "%b" activation time
    ZoChoiceDeactivation = 4, // "%e" deactivation time
    ZoChoiceDescription = 5,  // "%d"
    ZoChoiceNow = 6,          // "%t" current date and time
    ZoChoiceGroup = 7,        // "%g" and a group's number
    ZoChoiceArgument = 8,     // "%a" and an argument's number
    ZoChoicePercent = 9,      // "%%" a literal percent sign
    ZoAnnotationChoiceCount = 10
};

// The text a choice inserts ("%n"...; "%g" and "%a" without their number), "" outside 0..9.
ZoBasicString<wchar_t> ZoPlaceholderText(int choice);
// The text id of the choice's label, 0 outside 0..9.
unsigned ZoPlaceholderLabel(int choice);
// "%a" or "%g" (letter 'a' or 'g') followed by the number.
ZoBasicString<wchar_t> ZoNumberedPlaceholder(wchar_t letter, int number);

// Replaces the selection [selStart, selEnd) of text by the placeholder and returns the
// placeholder's length. The text before the selection is as many characters as selStart
// (all of it when shorter), the text after it starts at selEnd; a negative position counts
// as 0 and an end before the start as the start, so nothing is ever duplicated.
int ZoInsertPlaceholder(std::wstring& text, int selStart, int selEnd, std::wstring const& placeholder);
