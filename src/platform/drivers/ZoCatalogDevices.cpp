// Reading the devices of the device tree's `catalog` element.
#include "ZoCatalogXml.h"
#include "ZoDeviceCatalog.h"

#include <limits>

using namespace zo::catalog;

// The interned tags of the catalog's keys in one document (null when no element has one).
struct ZoDeviceCatalog::Tags {
    explicit Tags(XmlDocument const& doc)
        : driver(doc.TagKey(L"driver")), variable(doc.TagKey(L"variable")), states(doc.TagKey(L"states")),
          state(doc.TagKey(L"state")), id(doc.TagKey(L"id")), name(doc.TagKey(L"name")),
          description(doc.TagKey(L"description")), type(doc.TagKey(L"type")), address(doc.TagKey(L"address")),
          code(doc.TagKey(L"code")), unit(doc.TagKey(L"unit")), min(doc.TagKey(L"min")), max(doc.TagKey(L"max")),
          writable(doc.TagKey(L"writable")), value(doc.TagKey(L"value")), text(doc.TagKey(L"text"))
    {
    }
    void const* driver;
    void const* variable;
    void const* states;
    void const* state;
    void const* id;
    void const* name;
    void const* description;
    void const* type;
    void const* address;
    void const* code;
    void const* unit;
    void const* min;
    void const* max;
    void const* writable;
    void const* value;
    void const* text;
};

namespace {

XmlNode const* CatalogOf(XmlNode const* node)
{
    if (!node)
        return nullptr;
    return node->HasTag(L"catalog") ? node : node->Child(L"catalog");
}

// Devices with more variables than this get a hash index of their codes.
constexpr std::uint32_t kIndexedVariables = 12;

} // namespace

void ZoDeviceCatalog::LoadDevices(XmlNode const* node)
{
    m_devices.texts.Clear();
    m_devices.drivers.clear();
    m_devices.variables.clear();
    m_devices.namedValues.clear();
    m_devices.codeIndexes.clear();
    m_devices.index.Clear();
    XmlNode const* catalog = CatalogOf(node);
    if (!catalog) {
        IndexDevices();
        return;
    }
    Tags const tags(*catalog->Document());
    // Everything is counted first so that the lists never move while devices point into them.
    std::size_t drivers = 0;
    std::size_t variables = 0;
    std::size_t states = 0;
    for (XmlNode const* driver = catalog->FirstChild(); driver; driver = driver->NextSibling()) {
        if (driver->TagKey() != tags.driver)
            continue;
        ++drivers;
        for (XmlNode const* variable = driver->FirstChild(); variable; variable = variable->NextSibling()) {
            if (variable->TagKey() != tags.variable)
                continue;
            ++variables;
            if (XmlNode const* list = ChildByKey(*variable, tags.states))
                states += static_cast<std::size_t>(list->Size());
        }
    }
    m_devices.drivers.reserve(drivers);
    m_devices.variables.reserve(variables);
    m_devices.namedValues.reserve(states);
    for (XmlNode const* driver = catalog->FirstChild(); driver; driver = driver->NextSibling())
        if (driver->TagKey() == tags.driver)
            ReadDriver(*driver, tags);
    IndexDevices();
}

void ZoDeviceCatalog::ReadDriver(XmlNode const& element, Tags const& tags)
{
    std::string_view const name = TextOf(element, tags.name);
    if (name.empty())
        return;
    ZoTextArena& texts = m_devices.texts;
    ZoDriver driver;
    driver.m_name = texts.AddUtf8(name);
    driver.m_id = texts.AddUtf8(Trimmed(TextOf(element, tags.id)));
    driver.m_description = texts.AddUtf8(TextOf(element, tags.description));
    driver.m_type = texts.AddUtf8(Trimmed(TextOf(element, tags.type)));
    driver.m_address = texts.AddUtf8(TextOf(element, tags.address));
    driver.m_variables = m_devices.variables.data() + m_devices.variables.size();
    for (XmlNode const* variable = element.FirstChild(); variable; variable = variable->NextSibling())
        if (variable->TagKey() == tags.variable)
            ReadVariable(*variable, tags);
    driver.m_variableCount = static_cast<std::uint32_t>(m_devices.variables.data() + m_devices.variables.size() -
                                                        driver.m_variables);
    m_devices.drivers.push_back(driver);
}

void ZoDeviceCatalog::ReadVariable(XmlNode const& element, Tags const& tags)
{
    std::string_view const code = Trimmed(TextOf(element, tags.code));
    if (code.empty())
        return;
    ZoTextArena& texts = m_devices.texts;
    ZoVariableInfo variable;
    variable.code = texts.AddUtf8(code);
    variable.description = texts.AddUtf8(TextOf(element, tags.description));
    variable.unit = texts.AddUtf8(Trimmed(TextOf(element, tags.unit)));
    if (!ZoParseVariableKind(Trimmed(TextOf(element, tags.type)), variable.kind))
        variable.kind = kZoAnalog;
    variable.writable = Trimmed(TextOf(element, tags.writable)) == "T";

    ZoValueInfo& info = variable.valueInfo;
    double min = -std::numeric_limits<double>::infinity();
    double max = std::numeric_limits<double>::infinity();
    bool const hasMin = ReadNumber(TextOf(element, tags.min), min);
    bool const hasMax = ReadNumber(TextOf(element, tags.max), max);
    switch (variable.kind) {
    case kZoText:
        info.flags = kZoValueNoCheck;
        break;
    case kZoDigital:
        info.flags = kZoValueWhole | kZoValueRange | kZoValueNamed;
        info.min = 0;
        info.max = 1;
        info.values = m_digitalStates;
        break;
    case kZoInteger:
        info.flags = kZoValueWhole;
        break;
    default:
        break;
    }
    if (variable.kind != kZoText && variable.kind != kZoDigital && (hasMin || hasMax) && min <= max) {
        info.flags |= kZoValueRange;
        info.min = min;
        info.max = max;
    }
    if (variable.kind != kZoText)
        ReadStates(ChildByKey(element, tags.states), tags, info);
    m_devices.variables.push_back(variable);
}

void ZoDeviceCatalog::ReadStates(XmlNode const* states, Tags const& tags, ZoValueInfo& info)
{
    if (!states)
        return;
    std::vector<ZoNamedValue>& list = m_devices.namedValues;
    std::size_t const first = list.size();
    for (XmlNode const* state = states->FirstChild(); state; state = state->NextSibling()) {
        double value = 0;
        if (state->TagKey() != tags.state || !ReadNumber(TextOf(*state, tags.value), value))
            continue;
        list.push_back(ZoNamedValue{value, m_devices.texts.AddUtf8(TextOf(*state, tags.text))});
    }
    if (list.size() > first) {
        info.flags |= kZoValueNamed;
        info.values = std::span<ZoNamedValue const>(list.data() + first, list.size() - first);
    }
}

void ZoDeviceCatalog::IndexDevices()
{
    auto& part = m_devices;
    part.index.Build(static_cast<std::uint32_t>(part.drivers.size()),
                     [&part](std::uint32_t i) { return part.drivers[i].m_name; });
    std::size_t large = 0;
    for (ZoDriver const& driver : part.drivers)
        large += driver.m_variableCount > kIndexedVariables ? 1 : 0;
    part.codeIndexes.reserve(large);
    for (ZoDriver& driver : part.drivers) {
        if (driver.m_variableCount <= kIndexedVariables)
            continue;
        ZoNameIndex& codes = part.codeIndexes.emplace_back();
        ZoVariableInfo const* variables = driver.m_variables;
        codes.Build(driver.m_variableCount, [variables](std::uint32_t i) { return variables[i].code; });
        driver.m_codes = &codes;
    }
}
