#include "templates/TemplateDevices.h"

#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoUtf.h"
#include "templates/TemplatePlaceholders.h"

#include <QRegularExpression>

#include <algorithm>

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

std::unique_ptr<ZoDeviceCatalog> SampleDeviceCatalog(XmlNode const* deviceTree, XmlNode const* eventsRoot,
                                                     XmlNode const& templateEvent, std::wstring& sample)
{
    auto catalog = std::make_unique<ZoDeviceCatalog>();
    catalog->LoadDevices(deviceTree);
    sample.clear();
    std::vector<std::wstring> const required = UsedVariables(templateEvent);
    for (ZoDriver const& device : catalog->Devices()) {
        if (HasVariables(device, required)) {
            sample = device.Name();
            break;
        }
    }
    if (sample.empty() && !catalog->Devices().empty())
        sample = catalog->Devices().front().Name();
    XmlNode const* element = deviceTree && !deviceTree->HasTag(L"catalog") ? deviceTree->Child(L"catalog") : deviceTree;
    if (!element || sample.empty()) {
        catalog->LoadEvents(eventsRoot);
        return catalog;
    }
    XmlDocument copy(*element);
    std::string const name = ZoToUtf8(sample);
    for (XmlNode* driver = copy.Root()->FirstChild(); driver; driver = driver->NextSibling()) {
        if (driver->HasTag(L"driver") && driver->ValueUtf8(L"name") == name) {
            XmlNode* placeholder = copy.Root()->NewChild(L"driver");
            *placeholder = *driver;
            placeholder->SetValue(L"name", ZoFromUtf8(kDevicePlaceholder));
            break;
        }
    }
    catalog->LoadDevices(copy.Root());
    catalog->LoadEvents(eventsRoot);
    return catalog;
}

} // namespace zo::templates
