#include "templates/TemplateDevices.h"

#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoUtf.h"
#include "templates/TemplatePlaceholders.h"

#include <QRegularExpression>

#include <algorithm>
#include <unordered_set>

namespace zo::templates {

using XmlNode = XmlDocument::XmlNode;

bool HasVariables(ZoDriver const& device, std::vector<std::wstring> const& codes)
{
    return std::all_of(codes.begin(), codes.end(),
                       [&](std::wstring const& code) { return device.FindVariable(code) != nullptr; });
}

std::vector<ZoDriver const*> FilterDevices(ZoDeviceCatalog const& catalog, DeviceFilter const& filter,
                                           std::vector<std::wstring> const& required)
{
    QRegularExpression const expression(
        QRegularExpression::wildcardToRegularExpression(filter.pattern.isEmpty() ? QStringLiteral("*") : filter.pattern),
        QRegularExpression::CaseInsensitiveOption);
    std::vector<ZoDriver const*> devices;
    for (ZoDriver const& device : catalog.Devices()) {
        if (!filter.type.empty() && device.Type() != filter.type)
            continue;
        if (filter.onlyCapable && !HasVariables(device, required))
            continue;
        if (expression.match(QString::fromStdWString(std::wstring(device.Name()))).hasMatch())
            devices.push_back(&device);
    }
    return devices;
}

std::vector<std::wstring> DeviceTypes(ZoDeviceCatalog const& catalog)
{
    std::vector<std::wstring> types;
    for (ZoDriver const& device : catalog.Devices()) {
        if (!device.Type().empty())
            types.emplace_back(device.Type());
    }
    std::sort(types.begin(), types.end());
    types.erase(std::unique(types.begin(), types.end()), types.end());
    return types;
}

std::unique_ptr<ZoDeviceCatalog> PlaceholderDeviceCatalog(XmlNode const* deviceTree, XmlNode const* eventsRoot)
{
    auto catalog = std::make_unique<ZoDeviceCatalog>();
    XmlNode const* element = deviceTree && !deviceTree->HasTag(L"catalog") ? deviceTree->Child(L"catalog") : deviceTree;
    if (!element) {
        catalog->LoadEvents(eventsRoot);
        return catalog;
    }
    XmlDocument copy(*element);
    XmlNode* placeholder = copy.Root()->NewChild(L"driver");
    placeholder->SetValue(L"name", ZoFromUtf8(kDevicePlaceholder));
    std::unordered_set<std::string_view> codes;
    for (XmlNode const* driver = element->FirstChild(); driver; driver = driver->NextSibling()) {
        if (!driver->HasTag(L"driver"))
            continue;
        for (XmlNode const* variable = driver->FirstChild(); variable; variable = variable->NextSibling()) {
            if (variable->HasTag(L"variable") && codes.insert(variable->ValueUtf8(L"code")).second)
                *placeholder->NewChild(L"variable") = *variable;
        }
    }
    catalog->LoadDevices(copy.Root());
    catalog->LoadEvents(eventsRoot);
    return catalog;
}

} // namespace zo::templates
