#include "actions/ZoActionKinds.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

using XmlNode = XmlDocument::XmlNode;

namespace {

constexpr ZoActionKindInfo kKinds[kActionKindCount] = {
    {kActionForce, L"force", 32850, 32846, 2442, nullptr, "forceLink"},
    {kActionShellExecute, L"shellExecute", 32851, 32847, 2443, nullptr, "shellExecuteLink"},
    {kActionScreen, L"screen", 767, 34108, 2445, nullptr, "screenLink"},
    {kActionReport, L"report", 32401, 34109, 2446, nullptr, "reportLink"},
    {kActionDevice, L"device", 34112, 34110, 2447, nullptr, "deviceLink"},
    {kActionBeep, L"beep", 34111, 34111, 2448, nullptr, "beepLink"},
    {kActionMail, L"mail", 34141, 34141, 0, L"MAIL-48.png", "mailLink"},
    {kActionSms, L"sms", 36276, 36276, 1409, nullptr, "smsLink"},
    {kActionLaunchWeb, L"launchWeb", 39954, 39954, 0, L"LAUNCH-WEB-48.png", "launchWebLink"},
};

void AppendValue(std::string& out, XmlNode const& action, std::wstring_view key)
{
    out.append(action.ValueUtf8(key));
}

// The two places of a web page as UTF-8, loaded once.
std::string const& TabPlaceText()
{
    static std::string const text = ZoToUtf8(ZoLoadString(38456)) + " (" + ZoToUtf8(ZoLoadString(38460)) + ")";
    return text;
}

std::string const& WindowPlaceText()
{
    static std::string const text = ZoToUtf8(ZoLoadString(38457));
    return text;
}

} // namespace

ZoActionKindInfo const& ZoActionKindAt(int index)
{
    return kKinds[index >= 0 && index < kActionKindCount ? index : 0];
}

ZoActionKindInfo const* ZoActionKindInfoOf(unsigned kind)
{
    for (ZoActionKindInfo const& info : kKinds)
        if (info.kind == kind)
            return &info;
    return nullptr;
}

unsigned ZoActionKindOfTag(std::wstring_view tag)
{
    for (ZoActionKindInfo const& info : kKinds)
        if (tag == info.tag)
            return info.kind;
    return 0;
}

unsigned ZoActionKindOf(XmlNode const& element)
{
    for (ZoActionKindInfo const& info : kKinds)
        if (element.HasTag(info.tag))
            return info.kind;
    return 0;
}

unsigned ZoAllowedActionKinds(XmlNode const* moment, int momentIndex, bool client)
{
    bool const whileActive = momentIndex == 1;
    if (!client)
        return whileActive ? kServerWhileMask : kServerActionsMask;
    unsigned mask = kClientActionsMask;
    if (moment && (moment->Child(L"device") || moment->Child(L"screen") || moment->Child(L"report")))
        mask = kClientRestrictedMask;
    if (whileActive)
        mask &= ~kClientSingleUseKinds;
    return mask;
}

QString ZoActionKindText(unsigned kind)
{
    ZoActionKindInfo const* info = ZoActionKindInfoOf(kind);
    return info ? ZoText(info->nameText) : QString();
}

void ZoAppendActionSummary(std::string& out, XmlNode const& action, unsigned kind)
{
    switch (kind) {
    case kActionForce:
        AppendValue(out, action, L"variable");
        out += " = (";
        AppendValue(out, action, L"value");
        out += ')';
        break;
    case kActionShellExecute:
        // The blank is written even without a parameter.
        AppendValue(out, action, L"command");
        out += ' ';
        AppendValue(out, action, L"parameter");
        break;
    case kActionScreen:
    case kActionReport:
    case kActionDevice:
        AppendValue(out, action, L"name");
        break;
    case kActionMail:
    case kActionSms:
        AppendValue(out, action, L"message");
        break;
    case kActionLaunchWeb:
        AppendValue(out, action, L"url");
        out += " - ";
        // Exactly "TAB": any other spelling is a window.
        out += action.ValueUtf8(L"window") == "TAB" ? TabPlaceText() : WindowPlaceText();
        break;
    default:
        break;
    }
}

std::wstring ZoActionSummary(XmlNode const& action)
{
    std::string utf8;
    ZoAppendActionSummary(utf8, action, ZoActionKindOf(action));
    return ZoFromUtf8(utf8);
}
