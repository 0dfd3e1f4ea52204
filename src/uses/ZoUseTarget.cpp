#include "uses/ZoUseTarget.h"

#include "platform/drivers/ZoEventVariables.h"
#include "platform/formula/ZoVariableName.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"
#include "uses/ZoProjectNames.h"

#include <QString>

namespace {

using XmlNode = XmlDocument::XmlNode;
using namespace zo::uses;

bool Refuse(std::wstring& error, unsigned text, std::wstring_view name)
{
    error = ZoFormat(ZoLoadString(text).c_str(), std::wstring(name).c_str());
    return false;
}

// "timetable:Name" -> "Name" when text starts with prefix (letters in any case).
bool TakePrefix(std::wstring_view text, std::wstring_view prefix, std::wstring& rest)
{
    if (text.size() < prefix.size() ||
        QString::fromWCharArray(text.data(), static_cast<qsizetype>(prefix.size()))
                .compare(QString::fromWCharArray(prefix.data(), static_cast<qsizetype>(prefix.size())),
                         Qt::CaseInsensitive) != 0)
        return false;
    rest.assign(text.substr(prefix.size()));
    return true;
}

bool ReadVariable(std::wstring_view text, ZoUseDocs const& docs, ZoUseTarget& target, std::wstring& error)
{
    ZoVariableNameParts parts;
    if (!ZoSplitVariableName(text, parts))
        return Refuse(error, 64705, text);
    target.kind = ZoUseKind::Variable;
    target.device.assign(parts.device);
    target.code.assign(parts.code);
    target.name = target.device + L"." + target.code;
    if (target.device.starts_with(kZoEventsDevicePrefix)) {
        std::wstring const event = target.device.substr(kZoEventsDevicePrefix.size());
        if (!FindEvent(docs.events, event))
            return Refuse(error, 64701, event);
        return true;
    }
    if (!FindDriver(docs.devices, target.device))
        return Refuse(error, 64700, target.device);
    return true;
}

} // namespace

bool ZoReadUseTarget(std::wstring_view text, ZoUseDocs const& docs, ZoUseTarget& target, std::wstring& error)
{
    target = ZoUseTarget();
    std::wstring name;
    if (text.size() >= 2 && text.front() == L'[' && text.back() == L']')
        return ReadVariable(text.substr(1, text.size() - 2), docs, target, error);
    if (TakePrefix(text, L"device:", name)) {
        target.kind = ZoUseKind::Device;
        target.device = target.name = name;
        return FindDriver(docs.devices, name) || Refuse(error, 64700, name);
    }
    if (TakePrefix(text, L"event:", name)) {
        target.kind = ZoUseKind::Event;
        target.name = name;
        target.device = std::wstring(kZoEventsDevicePrefix) + name;
        return FindEvent(docs.events, name) || Refuse(error, 64701, name);
    }
    if (TakePrefix(text, L"timetable:", name)) {
        target.kind = ZoUseKind::TimeTable;
        target.name = name;
        target.id = FindTimeTableId(docs.timeTables, name);
        return !target.id.empty() || Refuse(error, 64702, name);
    }
    if (TakePrefix(text, L"group:", name)) {
        target.kind = ZoUseKind::Group;
        target.name = name;
        target.id = FindGroupId(docs.events, name);
        return !target.id.empty() || Refuse(error, 64703, name);
    }
    if (TakePrefix(text, L"screen:", name) || TakePrefix(text, L"report:", name)) {
        target.kind = text[0] == L's' || text[0] == L'S' ? ZoUseKind::Screen : ZoUseKind::Report;
        target.name = name;
        return !name.empty() || Refuse(error, 64705, text);
    }
    if (TakePrefix(text, L"user:", name) || TakePrefix(text, L"maillist:", name) ||
        TakePrefix(text, L"phonelist:", name)) {
        target.kind = ZoUseKind::Recipient;
        target.name = name;
        target.id = FindRecipientId(docs.users, text.substr(0, text.size() - name.size() - 1), name);
        return !target.id.empty() || Refuse(error, 64704, name);
    }
    if (FindDriver(docs.devices, text)) {
        target.kind = ZoUseKind::Device;
        target.device = target.name = std::wstring(text);
        return true;
    }
    std::wstring_view variable = text;
    if (std::size_t const slash = variable.find(L'/'); slash != std::wstring_view::npos)
        variable = variable.substr(0, slash);
    return ReadVariable(variable, docs, target, error);
}
