#include "ZoDriver.h"

ZoVariableInfo const* ZoDriver::FindVariable(std::wstring_view code) const
{
    if (m_codes) {
        std::uint32_t const i = m_codes->Find(code, [this](std::uint32_t k) { return m_variables[k].code; });
        return i == ZoNameIndex::kNone ? nullptr : &m_variables[i];
    }
    for (std::uint32_t i = 0; i < m_variableCount; ++i)
        if (m_variables[i].code == code)
            return &m_variables[i];
    return nullptr;
}
