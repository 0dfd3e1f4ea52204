#include "check/ZoCheckFinding.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"

namespace {

unsigned SubjectText(ZoCheckSubject subject)
{
    switch (subject) {
    case ZoCheckSubject::Event: return 64503;
    case ZoCheckSubject::Group: return 64504;
    case ZoCheckSubject::DayProgram: return 64505;
    case ZoCheckSubject::WeekProgram: return 64506;
    case ZoCheckSubject::Calendar: return 64507;
    case ZoCheckSubject::Registration: return 64508;
    case ZoCheckSubject::Project: return 64509;
    }
    return 64509;
}

unsigned FieldTextId(ZoCheckField field)
{
    switch (field) {
    case ZoCheckField::Name: return 64510;
    case ZoCheckField::Condition: return 64511;
    case ZoCheckField::StopCondition: return 64512;
    case ZoCheckField::DelayActivate: return 64513;
    case ZoCheckField::DelayDeactivate: return 64514;
    case ZoCheckField::TimeTable: return 64515;
    case ZoCheckField::Groups: return 64516;
    case ZoCheckField::Annotation: return 64517;
    case ZoCheckField::DeaAnnotation: return 64518;
    case ZoCheckField::AckAnnotation: return 64519;
    case ZoCheckField::Argument: return 64520;
    case ZoCheckField::Action: return 64521;
    case ZoCheckField::Identity: return 64529;
    case ZoCheckField::None: return 0;
    }
    return 0;
}

std::wstring ActionPlace(ZoFinding const& finding)
{
    static constexpr unsigned kMoments[] = {32831, 32832, 32833, 32834};
    std::wstring const list = ZoLoadString(finding.list == 0 ? 34106 : 34107);
    std::wstring const moment =
        finding.moment >= 0 && finding.moment < 4 ? ZoLoadString(kMoments[finding.moment]) : L"?";
    return ZoFormat(ZoLoadString(64521).c_str(), list.c_str(), moment.c_str(), finding.index);
}

} // namespace

std::wstring ZoSubjectText(ZoFinding const& finding)
{
    return ZoFormat(ZoLoadString(SubjectText(finding.subject)).c_str(), finding.name.c_str());
}

std::wstring ZoFieldText(ZoFinding const& finding)
{
    std::wstring text;
    if (finding.field == ZoCheckField::Action)
        text = ActionPlace(finding);
    else if (finding.field == ZoCheckField::Argument)
        text = ZoFormat(ZoLoadString(64520).c_str(), finding.index);
    else if (unsigned const id = FieldTextId(finding.field))
        text = ZoLoadString(id);
    if (finding.column > 0)
        text += ZoFormat(ZoLoadString(64528).c_str(), finding.column);
    return text;
}

std::string_view ZoSeverityWord(ZoSeverity severity)
{
    switch (severity) {
    case ZoSeverity::Error: return "error";
    case ZoSeverity::Warning: return "warning";
    case ZoSeverity::Note: return "note";
    }
    return "error";
}
