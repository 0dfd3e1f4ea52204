#pragma once
#include "ZoDriver.h"
#include "platform/tools/ZoBasicString.h"

#include <string_view>

class ZoDeviceCatalog;

// A variable named by its device and code, as the force action and the variable choosers
// handle it. Setup takes "DEVICE.CODE", with or without the brackets of a formula, and
// with an optional period filter ("[MAINS.ENERGY/day]").
class ZoVariable {
public:
    virtual ~ZoVariable() = default;
    // False (and nothing set up) when name is not a variable name.
    bool Setup(std::wstring_view name);
    bool IsSetUp() const { return m_setUp; }
    ZoBasicString<wchar_t> const& Device() const { return m_device; }
    ZoBasicString<wchar_t> const& Code() const { return m_code; }
    // The period filter without its "/", empty when there is none.
    ZoBasicString<wchar_t> const& Filter() const { return m_filter; }
    // "DEVICE.CODE".
    ZoBasicString<wchar_t> Name() const;

protected:
    // Called by Setup before it reads the new name.
    virtual void OnSetup() {}

private:
    ZoBasicString<wchar_t> m_device;
    ZoBasicString<wchar_t> m_code;
    ZoBasicString<wchar_t> m_filter;
    bool m_setUp = false;
};

// A variable looked up in a device catalog. Lock finds it (in the installed catalog unless
// another is given) and keeps pointers to its device and its description until Unlock, a
// new Setup, or the catalog part that holds them is reloaded.
class ZoDriverVariable : public ZoVariable {
public:
    ZoDriverVariable() = default;
    ~ZoDriverVariable() override = default;
    // False when the variable is not set up, or no catalog is installed, or the catalog
    // has no such device or the device no such variable.
    bool Lock(ZoDeviceCatalog const* catalog = nullptr);
    void Unlock();
    bool IsLocked() const { return m_info != nullptr; }
    ZoDriver const* Driver() const { return m_driver; }
    ZoVariableInfo const* Info() const { return m_info; }
    // The locked variable's value information; empty (flags 0, no values) when not locked.
    ZoValueInfo const& ValueInfo() const;

private:
    void OnSetup() override { Unlock(); }
    ZoDriver const* m_driver = nullptr;
    ZoVariableInfo const* m_info = nullptr;
};
