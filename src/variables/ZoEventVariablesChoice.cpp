#include "variables/ZoEventVariablesChoice.h"

#include "platform/drivers/ZoDriver.h"
#include "platform/drivers/ZoEventVariables.h"
#include "platform/formula/ZoVariableName.h"
#include "platform/tools/ZoUtf.h"

ZoEventVariablesChoice::ZoEventVariablesChoice(ZoDriver const* driver, std::bitset<34> const& mask, int maximum)
    : m_driver(driver)
    , m_maximum(maximum)
{
    if (!driver)
        return;
    for (std::wstring_view code : kZoEventVariableCodes) {
        ZoVariableInfo const* variable = driver->FindVariable(code);
        if (!variable || (variable->Type() & mask).none())
            continue;
        Row row;
        row.code = code;
        // The catalog keeps descriptions as written in the document: entities are read here.
        ParseXMLText(ZoToUtf8(std::wstring(variable->description)), row.description);
        m_rows.push_back(std::move(row));
    }
}

ZoBasicString<wchar_t> ZoEventVariablesChoice::DriverName() const
{
    return m_driver ? ZoBasicString<wchar_t>(m_driver->Name()) : ZoBasicString<wchar_t>();
}

void ZoEventVariablesChoice::CheckInitialVariables(std::list<ZoBasicString<wchar_t>> const& chosen)
{
    ZoBasicString<wchar_t> const name = DriverName();
    for (ZoBasicString<wchar_t> const& text : chosen) {
        ZoBasicString<wchar_t> device, code;
        if (!SplitDriverVariable(text, device, code) || device != name)
            continue;
        for (Row& row : m_rows) {
            if (row.code == code) {
                row.checked = true;
                row.locked = true;
            }
        }
    }
}

bool ZoEventVariablesChoice::CanSelect(int n)
{
    if (m_maximum != 0 && m_selected + n > m_maximum)
        return false;
    m_selected += n;
    return true;
}

void ZoEventVariablesChoice::UnSelect(int n)
{
    m_selected -= n;
}

bool ZoEventVariablesChoice::SetChecked(std::size_t index, bool checked)
{
    if (index >= m_rows.size() || m_rows[index].locked || m_rows[index].checked == checked)
        return true;
    if (checked && !CanSelect(1))
        return false;
    if (!checked)
        UnSelect(1);
    m_rows[index].checked = checked;
    return true;
}

bool ZoEventVariablesChoice::IsValid() const
{
    int count = 0;
    for (Row const& row : m_rows)
        count += row.checked && !row.locked ? 1 : 0;
    return m_maximum == 0 || count <= m_maximum;
}

void ZoEventVariablesChoice::SelectVariables(std::list<ZoBasicString<wchar_t>>& result) const
{
    ZoBasicString<wchar_t> const name = DriverName();
    for (Row const& row : m_rows) {
        if (row.checked && !row.locked)
            result.push_back(name + L"." + row.code);
    }
}
