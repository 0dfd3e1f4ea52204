#include "ZoVariable.h"

#include "ZoDeviceCatalog.h"
#include "platform/formula/ZoVariableName.h"

bool ZoVariable::Setup(std::wstring_view name)
{
    m_setUp = false;
    m_device.clear();
    m_code.clear();
    m_filter.clear();
    OnSetup();
    if (name.size() >= 2 && name.front() == L'[' && name.back() == L']')
        name = name.substr(1, name.size() - 2);
    if (!SplitFilterDriverVariable(name, m_device, m_code, m_filter))
        return false;
    m_setUp = true;
    return true;
}

ZoBasicString<wchar_t> ZoVariable::Name() const
{
    return m_setUp ? m_device + L'.' + m_code : ZoBasicString<wchar_t>();
}

bool ZoDriverVariable::Lock(ZoDeviceCatalog const* catalog)
{
    Unlock();
    if (!catalog)
        catalog = ZoDeviceCatalog::Installed();
    if (!IsSetUp() || !catalog)
        return false;
    ZoDriver const* driver = catalog->Find(Device());
    ZoVariableInfo const* info = driver ? driver->FindVariable(Code()) : nullptr;
    if (!info)
        return false;
    m_driver = driver;
    m_info = info;
    return true;
}

void ZoDriverVariable::Unlock()
{
    m_driver = nullptr;
    m_info = nullptr;
}

ZoValueInfo const& ZoDriverVariable::ValueInfo() const
{
    static ZoValueInfo const kNone;
    return m_info ? m_info->valueInfo : kNone;
}
