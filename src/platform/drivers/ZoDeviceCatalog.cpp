#include "ZoDeviceCatalog.h"

namespace {

std::unique_ptr<ZoDeviceCatalog>& InstalledCatalog()
{
    static std::unique_ptr<ZoDeviceCatalog> catalog;
    return catalog;
}

} // namespace

ZoDeviceCatalog::ZoDeviceCatalog()
{
    MakeSharedVariables();
}

ZoDeviceCatalog::~ZoDeviceCatalog() = default;

ZoDriver const* ZoDeviceCatalog::Find(std::wstring_view name) const
{
    std::uint32_t i = m_devices.index.Find(name, [this](std::uint32_t k) { return m_devices.drivers[k].m_name; });
    if (i != ZoNameIndex::kNone)
        return &m_devices.drivers[i];
    i = m_events.index.Find(name, [this](std::uint32_t k) { return m_events.drivers[k].m_name; });
    return i == ZoNameIndex::kNone ? nullptr : &m_events.drivers[i];
}

ZoVariableInfo const* ZoDeviceCatalog::FindVariable(std::wstring_view device, std::wstring_view code) const
{
    ZoDriver const* driver = Find(device);
    return driver ? driver->FindVariable(code) : nullptr;
}

std::size_t ZoDeviceCatalog::MemoryUsed() const
{
    std::size_t total = m_devices.texts.MemoryUsed() + m_devices.index.MemoryUsed() +
                        m_devices.drivers.capacity() * sizeof(ZoDriver) +
                        m_devices.variables.capacity() * sizeof(ZoVariableInfo) +
                        m_devices.namedValues.capacity() * sizeof(ZoNamedValue);
    for (ZoNameIndex const& codes : m_devices.codeIndexes)
        total += codes.MemoryUsed();
    total += m_events.names.MemoryUsed() + m_events.index.MemoryUsed() + m_events.drivers.capacity() * sizeof(ZoDriver);
    return total;
}

ZoDeviceCatalog* ZoDeviceCatalog::Installed()
{
    return InstalledCatalog().get();
}

void ZoDeviceCatalog::Install(std::unique_ptr<ZoDeviceCatalog> catalog)
{
    InstalledCatalog() = std::move(catalog);
}

std::unique_ptr<ZoDeviceCatalog> ZoDeviceCatalog::Exchange(std::unique_ptr<ZoDeviceCatalog> catalog)
{
    std::swap(InstalledCatalog(), catalog);
    return catalog;
}

void ZoInstallProjectCatalog(XmlDocument::XmlNode const* deviceTree, XmlDocument::XmlNode const* events)
{
    auto catalog = std::make_unique<ZoDeviceCatalog>();
    catalog->LoadDevices(deviceTree);
    catalog->LoadEvents(events);
    ZoDeviceCatalog::Install(std::move(catalog));
}

void ZoRefreshProjectEvents(XmlDocument::XmlNode const* events)
{
    if (!ZoDeviceCatalog::Installed())
        ZoDeviceCatalog::Install(std::make_unique<ZoDeviceCatalog>());
    ZoDeviceCatalog::Installed()->LoadEvents(events);
}
