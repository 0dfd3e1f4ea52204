#pragma once
#include "project/ProjectFiles.h"

#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

// One finding of the project check: what is wrong, how badly, and where, precisely enough
// for a person to read it in a log and for the editor to open the event at the field.

enum class ZoSeverity { Error, Warning, Note };

// The element a finding is about.
enum class ZoCheckSubject { Event, Group, DayProgram, WeekProgram, Calendar, Registration, Project };

// The part of an event a finding lies in; the editor opens the event at its tab.
enum class ZoCheckField {
    None,
    Name,
    Condition,
    StopCondition,
    DelayActivate,
    DelayDeactivate,
    TimeTable,
    Groups,
    Annotation,
    DeaAnnotation,
    AckAnnotation,
    Argument, // index: the argument's number, from 1
    Action,   // list 0 `actions`, 1 `clientActions`; moment 0..3; index: from 1 in the moment
    Identity, // the id, or the device registration
};

struct ZoFinding {
    ZoSeverity severity = ZoSeverity::Error;
    std::string_view rule; // a static text: "unknown-variable"
    zo::project::ProjectDoc file = zo::project::ProjectDoc::Events;
    // The positions of the element among its parents' children, from the root's children
    // down: what the line of the element is found by (ZoFindLines), and what tells the
    // editor which event to open (path[1] is the event's position in `events`).
    std::vector<std::uint32_t> path;
    ZoCheckSubject subject = ZoCheckSubject::Event;
    std::wstring name; // the element's name (an id for a registration)
    std::wstring id;
    ZoCheckField field = ZoCheckField::None;
    int list = -1;
    int moment = -1;
    int index = 0;
    int column = 0; // a formula fault's position, from 1; 0 when none
    std::wstring message;
    int line = 0;   // filled in by ZoFindLines; 0 when unknown
    // Made by the rules of one event (ZoProjectChecker::CheckEvent makes it again), not by
    // those that compare elements with each other.
    bool perEvent = false;
};

// "event "Pump 1 fault"": the subject as people read it.
std::wstring ZoSubjectText(ZoFinding const& finding);
// "condition, column 14" or "actions, activation, action 2"; empty when the finding is
// about the element as a whole.
std::wstring ZoFieldText(ZoFinding const& finding);
// "error", "warning", "note" (fixed words: tools read them).
std::string_view ZoSeverityWord(ZoSeverity severity);
