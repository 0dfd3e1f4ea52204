// The events pseudo-devices and the variables that the catalog's devices share.
#include "ZoCatalogXml.h"
#include "ZoDeviceCatalog.h"
#include "ZoEventVariables.h"
#include "platform/tools/ZoTexts.h"

#include <limits>

using namespace zo::catalog;

void ZoDeviceCatalog::MakeSharedVariables()
{
    ZoTextArena& texts = m_sharedTexts;
    m_digitalStates = {ZoNamedValue{0, texts.Add(ZoLoadString(61220))}, ZoNamedValue{1, texts.Add(ZoLoadString(61221))}};
    for (unsigned i = 0; i < m_eventStates.size(); ++i)
        m_eventStates[i] = ZoNamedValue{static_cast<double>(i), texts.Add(ZoLoadString(61210 + i))};

    struct Shape {
        ZoVariableKind kind;
        bool writable;
        bool seconds;
    };
    static constexpr Shape kShapes[6] = {
        {kZoInteger, false, false}, // ST
        {kZoDuration, false, true}, // TACT
        {kZoInteger, true, false},  // CACT
        {kZoInteger, true, false},  // CDIS
        {kZoInteger, true, false},  // CACK
        {kZoDuration, true, true},  // CTIM
    };
    for (unsigned i = 0; i < m_eventVariables.size(); ++i) {
        ZoVariableInfo& variable = m_eventVariables[i];
        variable.code = kZoEventVariableCodes[i];
        variable.description = texts.Add(ZoLoadString(61200 + i));
        variable.kind = kShapes[i].kind;
        variable.writable = kShapes[i].writable;
        variable.unit = kShapes[i].seconds ? std::wstring_view(L"s") : std::wstring_view();
        ZoValueInfo& info = variable.valueInfo;
        info.flags = kZoValueRange | (kShapes[i].seconds ? 0u : kZoValueWhole);
        info.min = 0;
        info.max = i == 0 ? 3.0 : std::numeric_limits<double>::infinity();
        if (i == 0) {
            info.flags |= kZoValueNamed;
            info.values = m_eventStates;
        }
    }
}

void ZoDeviceCatalog::LoadEvents(XmlNode const* node)
{
    EventsPart& part = m_events;
    part.names.Clear();
    part.drivers.clear();
    part.index.Clear();
    XmlNode const* events = node && !node->HasTag(L"events") ? node->Child(L"events") : node;
    if (events) {
        XmlDocument const& doc = *events->Document();
        void const* const eventTag = doc.TagKey(L"event");
        void const* const nameTag = doc.TagKey(L"name");
        part.drivers.reserve(static_cast<std::size_t>(events->Size()));
        zo::xml::ForEachKeyText(*events, eventTag, nameTag, [this, &part](XmlNode const&, std::string_view name) {
            if (name.empty())
                return;
            ZoDriver& driver = part.drivers.emplace_back();
            driver.m_name = part.names.AddUtf8(kZoEventsDevicePrefix, name);
            driver.m_description = driver.m_name.substr(kZoEventsDevicePrefix.size());
            driver.m_type = kZoEventsDeviceType;
            driver.m_variables = m_eventVariables.data();
            driver.m_variableCount = static_cast<std::uint32_t>(m_eventVariables.size());
            driver.m_eventsDevice = true;
        });
    }
    part.index.Build(static_cast<std::uint32_t>(part.drivers.size()),
                     [&part](std::uint32_t i) { return part.drivers[i].m_name; });
}
