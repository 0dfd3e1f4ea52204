// Any bytes as a time-tables document and a moment: the first line is read as a moment
// ("YYYY-MM-DD HH:MM"), the rest parsed as the time-tables document. Afterwards:
//   - a moment that parses writes back as the same text (24:00 as the next day's
//     00:00);
//   - for every table of the document, for no table and for a deleted one, the allowed
//     intervals over two years are in order, inside the span, neither overlapping nor
//     touching, and "allowed at" agrees with them at each interval's first and last minute
//     and at the minute after it;
//   - a week's coverage of one notifying event per table counts at most as many events in
//     an hour as there are tables, and lists as many events as it counts.
#include "config/XmlDocument.h"
#include "timeline/ZoTimeTableCoverage.h"
#include "timeline/ZoTimeline.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <vector>

namespace {

using XmlNode = XmlDocument::XmlNode;

[[noreturn]] void Fail(char const* what)
{
    std::fprintf(stderr, "fuzz_timeline: %s\n", what);
    std::abort();
}

void CheckMoment(std::string const& line)
{
    std::wstring const text(line.begin(), line.end());
    ZoMoment moment = 0;
    if (!ZoParseMoment(text, moment))
        return;
    std::wstring written = text;
    written[10] = L' ';
    if (written.substr(11) == L"24:00") {
        if (ZoMinuteOf(moment) != 0 || ZoMomentText(moment - 1440).substr(0, 10) != written.substr(0, 10))
            Fail("24:00 is not the next day's 00:00");
    } else if (ZoMomentText(moment) != written) {
        Fail("a parsed moment writes back differently");
    }
}

void CheckIntervals(ZoTimeTableResolution const& tables, std::wstring const& reference)
{
    QDate const from(2026, 1, 1);
    QDate const to(2027, 12, 31);
    std::vector<ZoInterval> const intervals = ZoAllowedIntervals(tables, reference, from, to);
    ZoMoment previous = ZoMomentOf(from) - 1;
    for (ZoInterval const& interval : intervals) {
        if (interval.from <= previous || interval.to <= interval.from || interval.to > ZoMomentOf(to, 1440))
            Fail("intervals out of order, empty, touching or outside the span");
        if (!ZoAllowedAt(tables, reference, interval.from) || !ZoAllowedAt(tables, reference, interval.to - 1))
            Fail("an interval's minute is not allowed");
        if (interval.to < ZoMomentOf(to, 1440) && ZoAllowedAt(tables, reference, interval.to))
            Fail("the minute after an interval is allowed");
        previous = interval.to;
    }
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string const input(reinterpret_cast<char const*>(data), size);
    std::size_t const lineEnd = input.find('\n');
    CheckMoment(input.substr(0, lineEnd));
    if (lineEnd == std::string::npos)
        return 0;
    XmlDocument doc;
    std::string const xml = input.substr(lineEnd + 1);
    if (!doc.Parse(xml.c_str(), xml.size()) || !doc.Root())
        return 0;
    ZoTimeTableResolution const tables(doc.Root());
    std::vector<std::wstring> references{L"", L"{gone}"};
    for (XmlNode const* container = doc.Root()->FirstChild(); container; container = container->NextSibling())
        for (XmlNode const* table = container->FirstChild(); table && references.size() < 64; table = table->NextSibling())
            references.push_back(table->Value(L"id", L""));
    std::string events = "<events>";
    for (std::wstring const& reference : references) {
        CheckIntervals(tables, reference);
        XmlDocument name;
        name.Create(L"timeTable");
        name.Root()->SetValue(reference);
        std::string text;
        name.Root()->CreateXmlCode(text);
        events += "<event><notify>T</notify><disabled>F</disabled>" + text + "</event>";
    }
    XmlDocument eventsDoc;
    if (!eventsDoc.Parse((events + "</events>").c_str()))
        Fail("the events written do not parse");
    ZoTimeTableCoverage const coverage(eventsDoc.Root(), tables, QDate(2026, 12, 28));
    for (int hour = 0; hour < ZoTimeTableCoverage::kHours; ++hour) {
        if (coverage.CountAt(hour) > static_cast<int>(references.size())
            || coverage.EventsAt(hour).size() != static_cast<std::size_t>(coverage.CountAt(hour)))
            Fail("the coverage counts other events than it lists");
    }
    return 0;
}
