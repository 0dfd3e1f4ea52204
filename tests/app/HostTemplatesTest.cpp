// Events > Templates, Stamp from Template and Update from Templates on a copy of the demo,
// whose pumps are stamped from the template "{device} stalled".
#include "HostTestSupport.h"
#include "editor/ZoEDlgEventCfg.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "support/ScriptedAnswerer.h"
#include "support/TableText.h"
#include "templates/TemplateStore.h"
#include "templatedialogs/ZoDlgEventTemplates.h"
#include "templatedialogs/ZoDlgStampTemplate.h"
#include "templatedialogs/ZoDlgUpdateFromTemplates.h"

#include <QCheckBox>
#include <QComboBox>
#include <QLineEdit>

using namespace host_test;
using HostTemplates = HostTest;

namespace {

// The rows of a list, one string each, its columns joined by " | ".
std::vector<std::string> Rows(QAbstractItemView const* list)
{
    std::vector<std::string> rows;
    QAbstractItemModel const* model = list->model();
    for (int row = 0; row < model->rowCount(); ++row) {
        QStringList cells;
        for (int column = 0; column < model->columnCount(); ++column)
            cells << model->index(row, column).data().toString();
        rows.push_back(cells.join(" | ").toStdString());
    }
    return rows;
}

template <class D>
QAbstractItemView* List(D& dialog, char const* name)
{
    return dialog.template findChild<QAbstractItemView*>(name);
}

void Check(QAbstractItemView* list, int row)
{
    list->model()->setData(list->model()->index(row, 0), Qt::Checked, Qt::CheckStateRole);
}

int StampLinks(XmlDocument& events)
{
    return int(zo::templates::StampLinks(events.Root()).size());
}

} // namespace

TEST_F(HostTemplates, StampPreviewsFiltersAndMakesOneSavedChange)
{
    DemoWindow demo;
    XmlDocument& events = demo.window.Project()->Events();
    {
        // Every pump is stamped already: the preview says so and OK stays off.
        ModalScript modal(ModalScript::As<ZoDlgStampTemplate>([](ZoDlgStampTemplate& dialog) {
            EXPECT_EQ(dialog.findChild<QComboBox*>("templateCombo")->currentText(), "{device} stalled");
            EXPECT_EQ(Rows(List(dialog, "devicesList")).size(), 6);
            dialog.findChild<QCheckBox*>("capableCheck")->setChecked(true);
            EXPECT_EQ(Rows(List(dialog, "devicesList")),
                      (std::vector<std::string>{"PUMP1 | Pump 1 variable-speed drive | MODBUS-RTU",
                                   "PUMP2 | Pump 2 variable-speed drive | MODBUS-RTU"}));
            dialog.findChild<QPushButton*>("selectAllButton")->click();
            EXPECT_EQ(Rows(List(dialog, "previewList")),
                      (std::vector<std::string>{"PUMP1 |  |  | " + ZoText(64817).toStdString(),
                                                "PUMP2 |  |  | " + ZoText(64817).toStdString()}));
            EXPECT_FALSE(dialog.findChild<QPushButton*>("okButton")->isEnabled());
            return ModalScript::ClickOk(dialog);
        }));
        demo.window.OnStampTemplate();
        EXPECT_EQ(modal.Classes(), QStringList{"ZoDlgStampTemplate"});
    }

    // Once the links are forgotten, the pumps get events again, with "_1" names.
    events.Root()->RemoveChild(events.Root()->Child(zo::templates::kStampsTag));
    QByteArray const devicesBefore = ReadBytes(demo.File(ProjectDoc::Devices));
    {
        ModalScript modal(ModalScript::As<ZoDlgStampTemplate>([](ZoDlgStampTemplate& dialog) {
            dialog.findChild<QLineEdit*>("patternEdit")->setText("p*");
            EXPECT_EQ(Rows(List(dialog, "devicesList")).size(), 3); // PLC1, PUMP1, PUMP2
            Check(List(dialog, "devicesList"), 0);
            Check(List(dialog, "devicesList"), 2);
            EXPECT_EQ(Rows(List(dialog, "previewList")),
                      (std::vector<std::string>{"PLC1 |  |  | " +
                                                    Said(64816, L"RUNNING, SPEED, START_CMD").toStdString(),
                                   "PUMP2 | PUMP2 stalled_1 | [PUMP2.RUNNING] == 1 AND [PUMP2.SPEED] < 5 | "}));
            EXPECT_EQ(dialog.findChild<QLabel*>("summaryLabel")->text(), Said(64811, 1, 1));
            // Narrowing the list keeps the checked pump checked.
            dialog.findChild<QLineEdit*>("patternEdit")->setText("PUMP2");
            EXPECT_EQ(Rows(List(dialog, "previewList")).size(), 1);
            dialog.findChild<QComboBox*>("groupCombo")->setCurrentText("Power supply");
            return ModalScript::ClickOk(dialog);
        }));
        demo.window.OnStampTemplate();
    }
    XmlDocument saved;
    ParseFile(demo.File(ProjectDoc::Events), saved);
    XmlNode* made = EventNamed(saved, L"PUMP2 stalled_1");
    ASSERT_TRUE(made);
    EXPECT_EQ(made->ValueUtf8(L"condition"), "[PUMP2.RUNNING] == 1 AND [PUMP2.SPEED] < 5");
    EXPECT_EQ(made->Child(L"eventsGroups")->Size(), 2); // the template's group and the one chosen
    EXPECT_EQ(StampLinks(saved), 1);
    QByteArray const devicesAfter = ReadBytes(demo.File(ProjectDoc::Devices));
    EXPECT_NE(devicesAfter, devicesBefore);
    EXPECT_TRUE(devicesAfter.contains(QByteArray::fromStdString(std::string(made->ValueUtf8(L"id")))));
    EXPECT_EQ(demo.Label("eventsCountLabel"), "25");
}

TEST_F(HostTemplates, UpdateListsDriftAndChangesOnlyTheCheckedEvents)
{
    DemoWindow demo;
    XmlDocument& events = demo.window.Project()->Events();
    {
        // Nothing drifted yet: a message, no dialog.
        ScriptedAnswerer answers;
        demo.window.OnUpdateFromTemplates();
        EXPECT_EQ(answers.Ids(), std::vector<unsigned>{64831});
    }
    zo::templates::FindTemplate(events.Root(), L"{device} stalled")->SetValue(L"delayToActivate", L"30");
    EventNamed(events, L"PUMP2 stalled")->SetValue(L"description", L"Edited by hand");
    ModalScript modal(ModalScript::As<ZoDlgUpdateFromTemplates>([](ZoDlgUpdateFromTemplates& dialog) {
        EXPECT_EQ(Rows(List(dialog, "driftList")),
                  (std::vector<std::string>{"PUMP1 stalled | {device} stalled | PUMP1 | 1", "PUMP2 stalled | {device} stalled | PUMP2 | 2"}));
        EXPECT_EQ(Rows(List(dialog, "differencesList")), std::vector<std::string>{"delayToActivate | 30 | 20"});
        EXPECT_FALSE(dialog.findChild<QPushButton*>("okButton")->isEnabled());
        List(dialog, "driftList")->setCurrentIndex(List(dialog, "driftList")->model()->index(1, 0));
        EXPECT_EQ(Rows(List(dialog, "differencesList")).size(), 2);
        Check(List(dialog, "driftList"), 0);
        EXPECT_EQ(dialog.findChild<QLabel*>("summaryLabel")->text(), Said(64832, 2, 2, 1));
        return ModalScript::ClickOk(dialog);
    }));
    demo.window.OnUpdateFromTemplates();
    XmlDocument saved;
    ParseFile(demo.File(ProjectDoc::Events), saved);
    EXPECT_EQ(EventNamed(saved, L"PUMP1 stalled")->ValueUtf8(L"delayToActivate"), "30");
    EXPECT_EQ(EventNamed(saved, L"PUMP2 stalled")->ValueUtf8(L"delayToActivate"), "20");
    EXPECT_EQ(EventNamed(saved, L"PUMP2 stalled")->ValueUtf8(L"description"), "Edited by hand");
}

TEST_F(HostTemplates, TemplatesAreEditedWithTheEventEditorWhoseChecksResolveThePlaceholder)
{
    DemoWindow demo;
    ScriptedAnswerer answers; // the delete question: Yes
    ModalScript modal(ModalScript::As<ZoDlgEventTemplates>([](ZoDlgEventTemplates& dialog) {
        QAbstractItemView* list = List(dialog, "templatesList");
        EXPECT_EQ(Rows(list), std::vector<std::string>{"{device} stalled | 2 | [{device}.RUNNING] == 1 AND [{device}.SPEED] < 5"});
        dialog.findChild<QPushButton*>("modifyButton")->click();
        EXPECT_EQ(Rows(list), std::vector<std::string>{"{device} stalled | 2 | [{device}.SPEED] < 3"});
        dialog.findChild<QPushButton*>("newButton")->click();
        EXPECT_EQ(Rows(list).size(), 2);
        EXPECT_EQ(Rows(list)[1], "{device} hot | 0 | [{device}.MOTOR_TEMP] > 90");
        dialog.findChild<QPushButton*>("deleteButton")->click(); // the new one, selected
        EXPECT_EQ(Rows(list).size(), 1);
        return ModalScript::ClickOk(dialog);
    }));
    // The editor accepts [{device}.SPEED] and [{device}.MOTOR_TEMP] (pumps have them), so OK
    // asks nothing; [{device}.NOPE] shows a fault.
    modal.Then(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
        EXPECT_TRUE(ZoDeviceCatalog::Installed()->Find(L"{device}"));
        auto* label = editor.findChild<QLabel*>("conditionLabel");
        editor.findChild<QLineEdit*>("conditionEdit")->setText("[{device}.NOPE] < 3");
        EXPECT_NE(label->toolTip(), "");
        editor.findChild<QLineEdit*>("conditionEdit")->setText("[{device}.SPEED] < 3");
        EXPECT_EQ(label->toolTip(), "") << label->text().toStdString();
        return ModalScript::ClickOk(editor);
    }));
    modal.Then(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
        editor.findChild<QLineEdit*>("nameEdit")->setText("{device} hot");
        editor.findChild<QLineEdit*>("conditionEdit")->setText("[{device}.MOTOR_TEMP] > 90");
        editor.findChild<QLineEdit*>("delayActivateEdit")->setText("10");
        return ModalScript::ClickOk(editor);
    }));
    // The project's catalog is set aside while a template is edited, never replaced: the
    // check keeps pointing at it.
    ZoDeviceCatalog const* const projectCatalog = ZoDeviceCatalog::Installed();
    demo.window.OnTemplates();
    EXPECT_EQ(ZoDeviceCatalog::Installed(), projectCatalog);
    EXPECT_EQ(modal.Classes(), (QStringList{"ZoDlgEventTemplates", "ZoEDlgEventCfg", "ZoEDlgEventCfg"}));
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{64838});
    XmlDocument saved;
    ParseFile(demo.File(ProjectDoc::Events), saved);
    ASSERT_EQ(zo::templates::Templates(saved.Root()).size(), 1u);
    EXPECT_EQ(zo::templates::Templates(saved.Root())[0]->ValueUtf8(L"condition"), "[{device}.SPEED] < 3");
    EXPECT_EQ(StampLinks(saved), 2);
}
