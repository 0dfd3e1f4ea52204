// The project check's note on stamped events that no longer are what their template gives.
#include "check/ZoCheckContext.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "templates/TemplateDrift.h"

#include <unordered_map>

namespace zo::check {

void CheckTemplateDrift(ZoProjectChecker::Context& context)
{
    if (!context.docs.events || !context.catalog || !context.eventsElement)
        return;
    zo::templates::DriftReport const report = zo::templates::FindDrift(context.docs.events, *context.catalog);
    if (report.drifted.empty())
        return;
    std::unordered_map<XmlNode const*, std::uint32_t> positions;
    std::uint32_t position = 0;
    for (XmlNode const* event = context.eventsElement->FirstChild(); event; event = event->NextSibling())
        positions.emplace(event, position++);
    std::wstring const& format = context.Text(64800);
    for (zo::templates::DriftedEvent const& drifted : report.drifted) {
        std::wstring fields;
        for (zo::templates::FieldDifference const& difference : drifted.differences) {
            if (!fields.empty())
                fields += L", ";
            fields += difference.field;
        }
        ZoFinding& finding = context.AddAt(
            zo::project::ProjectDoc::Events, {context.eventsPosition, positions[drifted.event]}, ZoCheckSubject::Event,
            WideValue(*drifted.event, L"name"), WideValue(*drifted.event, L"id"), ZoSeverity::Note, "template-drift",
            ZoFormat(format.c_str(), WideValue(*drifted.templateEvent, L"name").c_str(), fields.c_str()));
        finding.field = ZoCheckField::None;
    }
}

} // namespace zo::check
