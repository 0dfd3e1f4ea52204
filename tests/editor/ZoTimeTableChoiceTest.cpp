#include "EventEditorFixture.h"

#include "editor/ZoTimeTableChoiceModel.h"
#include "platform/tools/ZoTexts.h"

#include <QAbstractItemModelTester>

namespace {

QStringList Entries(QComboBox const* combo)
{
    QStringList texts;
    for (int row = 0; row < combo->count(); ++row)
        texts << combo->itemText(row);
    return texts;
}

} // namespace

TEST_F(EventEditorTest, TimeTableListGoesDaysWeeksCalendarsAndSelectsTheLastMatch)
{
    // Containers out of document order and a foreign child; the id {X} is used twice.
    XmlDocument tables;
    ASSERT_TRUE(tables.Parse("<t><calendars><calendar><id>{X}</id><name>Cal</name></calendar></calendars>"
                             "<weeks><week><id>{W}</id><name>Week</name></week></weeks>"
                             "<days><day><id>{D2}</id><name>Day B</name></day><note/>"
                             "<day><id>{X}</id><name>Day A</name></day></days></t>"));
    XmlNode* event = AddEvent("<id>{E-1}</id><name>A</name><timeTable>{X}</timeTable>");
    Open(event, tables.Root()).EnsureInitialized();

    QComboBox* combo = TimeTables();
    QAbstractItemModelTester tester(combo->model());
    EXPECT_EQ(Entries(combo), (QStringList{ZoText(32830), "Day B", "Day A", "Week", "Cal"}));
    EXPECT_EQ(combo->currentText(), "Cal");
    std::vector<int> kinds;
    for (int row = 0; row < combo->count(); ++row) {
        kinds.push_back(combo->itemData(row, ZoTimeTableChoiceModel::KindRole).toInt());
        EXPECT_FALSE(combo->itemIcon(row).isNull()) << row;
    }
    EXPECT_EQ(kinds, (std::vector<int>{0, 1, 1, 2, 3}));
    EXPECT_NE(combo->itemIcon(1).pixmap(16).toImage(), combo->itemIcon(3).pixmap(16).toImage());
    EXPECT_NE(combo->itemIcon(3).pixmap(16).toImage(), combo->itemIcon(4).pixmap(16).toImage());
    // The selection matches the reference; what differs next are the missing booleans.
    EXPECT_EQ(m_dialog->FirstChange(), ZoEventChange::Notify);

    // Without a time-tables root only "no time table" is offered.
    Open(event, nullptr).EnsureInitialized();
    EXPECT_EQ(Entries(TimeTables()), QStringList{ZoText(32830)});
}

TEST_F(EventEditorTest, DanglingTimeTableSelectsNothingAndIsErasedWithAnotherChange)
{
    XmlNode* event = AddEvent("<id>{E-1}</id><name>A</name><condition>1</condition>"
                              "<timeTable>{GONE}</timeTable><notify>F</notify><record>F</record>"
                              "<disabled>F</disabled><delayToActivate>0</delayToActivate>"
                              "<delayToDeactivate>0</delayToDeactivate><rssActivate>F</rssActivate>"
                              "<rssDeactivate>F</rssDeactivate><rssAcknowledge>F</rssAcknowledge>");
    OpenInitialized(event);
    EXPECT_EQ(TimeTables()->currentIndex(), 0);
    EXPECT_FALSE(m_dialog->HasChanged());
    ClickOk();
    EXPECT_EQ(event->Value(L"timeTable", L""), L"{GONE}");

    OpenInitialized(event);
    SetText("descriptionEdit", "now described");
    ClickOk();
    EXPECT_EQ(event->Node(L"timeTable"), nullptr);
}
