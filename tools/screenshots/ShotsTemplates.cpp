// The templates' dialogs on the demo project: the templates list (templates.png), Stamp
// from Template with a second template previewed over every device (stamp-template.png),
// and Update from Templates after the template's delay changed and one stamped event was
// edited by hand (update-from-templates.png). Every dialog is cancelled; the documents are
// copies read for the scene.
#include "ShotSupport.h"
#include "config/XmlDocument.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "templates/TemplateDrift.h"
#include "templates/TemplateStore.h"
#include "templatedialogs/ZoDlgEventTemplates.h"
#include "templatedialogs/ZoDlgStampTemplate.h"
#include "templatedialogs/ZoDlgUpdateFromTemplates.h"

#include <QAbstractItemView>
#include <QCheckBox>
#include <QComboBox>
#include <QPushButton>

namespace {

using XmlNode = XmlDocument::XmlNode;

constexpr char kSecondTemplate[] =
    "<event><id>{6F1D2C3B-0A4E-4B5F-9C8D-7E6F5A4B3C2D}</id><name>{device} high current</name>"
    "<description>{description} draws more than 40 A</description>"
    "<condition>[{device}.CURRENT] &gt; 40</condition><conditionStop>[{device}.CURRENT] &lt; 35</conditionStop>"
    "<delayToActivate>5</delayToActivate><delayToDeactivate>5</delayToDeactivate><notify>T</notify></event>";

void Run(MainWindow&, QString const& projectCopy)
{
    XmlDocument events;
    XmlDocument devices;
    XmlDocument second;
    if (!LoadShotDocument(projectCopy, "Events.zocfg", events) || !LoadShotDocument(projectCopy, "Devices.zocfg", devices) ||
        !second.Parse(kSecondTemplate)) {
        Fail("templates scene: the demo's documents");
        return;
    }
    *zo::templates::TemplatesElement(events.Root(), true)->NewChild(L"event") = *second.Root();
    ZoDeviceCatalog catalog;
    catalog.LoadDevices(devices.Root());
    catalog.LoadEvents(events.Root());

    {
        ZoDlgEventTemplates dialog(nullptr, &events, devices.Root(), nullptr, nullptr);
        dialog.EnsureInitialized();
        Show(dialog);
        Save(dialog, "templates.png");
        dialog.reject();
    }
    {
        ZoDlgStampTemplate dialog(nullptr, &events, devices.Root()->Child(L"deviceGroups"), &catalog);
        dialog.EnsureInitialized();
        dialog.findChild<QComboBox*>(QStringLiteral("templateCombo"))->setCurrentIndex(1);
        dialog.findChild<QComboBox*>(QStringLiteral("groupCombo"))->setCurrentText(QStringLiteral("Pumps"));
        ClickButton(dialog, "selectAllButton");
        Show(dialog);
        Save(dialog, "stamp-template.png");
        dialog.reject();
    }
    zo::templates::FindTemplate(events.Root(), L"{device} stalled")->SetValue(L"delayToActivate", L"30");
    if (XmlNode* edited = events.Root()->Node(L"events/event?name=PUMP2 stalled?"))
        edited->SetValue(L"conditionStop", L"[PUMP2.SPEED] > 20");
    zo::templates::DriftReport report = zo::templates::FindDrift(events.Root(), catalog);
    if (report.drifted.size() != 2) {
        Fail("templates scene: the stamped pumps do not drift");
        return;
    }
    {
        ZoDlgUpdateFromTemplates dialog(nullptr, &events, &catalog, std::move(report));
        dialog.EnsureInitialized();
        auto* list = dialog.findChild<QAbstractItemView*>(QStringLiteral("driftList"));
        list->model()->setData(list->model()->index(0, 0), Qt::Checked, Qt::CheckStateRole);
        list->setCurrentIndex(list->model()->index(1, 0));
        Show(dialog);
        Save(dialog, "update-from-templates.png");
        dialog.reject();
    }
}

bool const registered = RegisterShotScene({"templates", 3, Run});

} // namespace
