// The timeline of a week program and of a calendar around Christmas (timeline.png,
// timeline-calendar.png) and Events > Time Table Coverage on that week with an hour chosen
// (coverage.png), on the demo project, at the smallest size they must be readable at.
#include "MainWindow.h"
#include "ProjectFolder.h"
#include "ShotSupport.h"
#include "timeline/ZoDlgTimeTableCoverage.h"
#include "timeline/ZoDlgTimeline.h"
#include "timeline/ZoEventTimelines.h"

#include <QComboBox>
#include <QDateEdit>
#include <QDateTimeEdit>

namespace {

using XmlNode = XmlDocument::XmlNode;

// The id of the time table named `name` among the root's containers.
std::wstring IdOfTable(XmlNode const* root, wchar_t const* container, std::wstring const& name)
{
    XmlNode const* tables = root ? root->Child(container) : nullptr;
    for (XmlNode const* table = tables ? tables->FirstChild() : nullptr; table; table = table->NextSibling())
        if (table->Value(L"name", L"") == name)
            return table->Value(L"id", L"");
    return {};
}

void ShootTimeline(XmlNode const* root, std::wstring const& id, char const* file)
{
    if (id.empty()) {
        Fail("timeline scene: the demo's time table is missing");
        return;
    }
    ZoDlgTimeline dialog(nullptr, root, id);
    dialog.EnsureInitialized();
    dialog.findChild<QDateEdit*>("startEdit")->setDate(QDate(2026, 12, 14));
    dialog.findChild<QDateTimeEdit*>("momentEdit")->setDateTime(QDateTime(QDate(2026, 12, 25), QTime(14, 0)));
    dialog.resize(1024, 700);
    Show(dialog);
    Save(dialog, file);
    dialog.close();
}

void Run(MainWindow& window, QString const&)
{
    XmlNode const* root = window.Project()->TimeTables().Root();
    ShootTimeline(root, IdOfTable(root, L"weeks", L"Operations week"), "timeline.png");
    ShootTimeline(root, IdOfTable(root, L"calendars", L"Public holidays"), "timeline-calendar.png");

    ZoDlgTimeTableCoverage coverage(nullptr, window.Project()->Events().Root()->Child(L"events"), root);
    coverage.EnsureInitialized();
    coverage.SetWeek(QDate(2026, 12, 21));
    coverage.ChooseHour(3 * 24 + 16); // Thursday 16:00
    coverage.resize(1024, 700);
    Show(coverage);
    Save(coverage, "coverage.png");
    coverage.close();
}

bool const registered = RegisterShotScene({"timeline", 3, Run});

} // namespace
