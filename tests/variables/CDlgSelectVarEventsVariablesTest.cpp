#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "support/ModalScript.h"
#include "support/ScriptedAnswerer.h"
#include "variables/CDlgSelectVarEventsVariables.h"

#include <QCheckBox>
#include <QLabel>
#include <QPushButton>
#include <gtest/gtest.h>

namespace {

using Chosen = std::list<std::wstring>;

// A catalog with the events pseudo-devices of two events.
class EventVariablesTest : public ::testing::Test {
protected:
    EventVariablesTest()
    {
        XmlDocument events;
        EXPECT_TRUE(events.Parse("<events><event><name>Pump fault</name></event>"
                                 "<event><name>Door open</name></event></events>"));
        m_catalog.LoadEvents(events.Root());
    }
    ZoDriver const* Device(wchar_t const* name) const { return m_catalog.Find(name); }
    std::unique_ptr<CDlgSelectVarEventsVariables> Open(Chosen& chosen, std::bitset<34> mask, int maximum)
    {
        auto dialog = std::make_unique<CDlgSelectVarEventsVariables>(nullptr, Device(L"R$EVE_Pump fault"), &chosen,
                                                                     mask, maximum);
        dialog->EnsureInitialized();
        return dialog;
    }
    static QCheckBox* Box(QDialog& dialog, int row)
    {
        return dialog.findChild<QCheckBox*>(QStringLiteral("variableCheck%1").arg(row));
    }
    static void Ok(QDialog& dialog) { dialog.findChild<QPushButton*>("okButton")->click(); }

    ZoDeviceCatalog m_catalog;
};

} // namespace

// Six rows in their fixed order, each with the device's description; the title names the
// event without the pseudo-device's prefix.
TEST_F(EventVariablesTest, RowsFollowTheFixedOrderAndTheMask)
{
    Chosen chosen;
    auto dialog = Open(chosen, std::bitset<34>().set(), 0);
    EXPECT_EQ(dialog->windowTitle(), ZoText(196) + " - " + ZoText(34099) + " - Pump fault");
    QStringList codes;
    for (int row = 0; row < 6; ++row) {
        ASSERT_TRUE(Box(*dialog, row));
        codes << Box(*dialog, row)->text().remove('&');
        QLabel* label = dialog->findChild<QLabel*>(QStringLiteral("variableLabel%1").arg(row));
        EXPECT_EQ(label->text().toStdWString(), Device(L"R$EVE_Pump fault")->Variables()[std::size_t(row)].description);
    }
    EXPECT_EQ(codes, (QStringList{"ST", "TACT", "CACT", "CDIS", "CACK", "CTIM"}));
    EXPECT_FALSE(Box(*dialog, 6));
    // Each box has a key of its own.
    QStringList keys;
    for (int row = 0; row < 6; ++row)
        keys << Box(*dialog, row)->text().section('&', 1).left(1);
    keys.removeDuplicates();
    EXPECT_EQ(keys.size(), 6);

    // A mask of durations offers TACT and CTIM only; a mask that matches nothing cannot
    // open: no dialog is run.
    auto durations = Open(chosen, std::bitset<34>().set(kZoDuration), 0);
    EXPECT_EQ(Box(*durations, 0)->text().remove('&'), "TACT");
    EXPECT_EQ(Box(*durations, 1)->text().remove('&'), "CTIM");
    EXPECT_FALSE(Box(*durations, 2));
    ModalScript modal;
    CDlgSelectVarEventsVariables none(nullptr, Device(L"R$EVE_Pump fault"), &chosen, std::bitset<34>().set(kZoText), 0);
    EXPECT_FALSE(none.IsCreated());
    EXPECT_EQ(none.DoModal(), QDialog::Rejected);
    CDlgSelectVarEventsVariables noDevice(nullptr, nullptr, &chosen, std::bitset<34>().set(), 0);
    EXPECT_EQ(noDevice.DoModal(), QDialog::Rejected);
    EXPECT_EQ(modal.Count(), 0);
}

// Variables chosen before are locked and not appended again; new ones go to the end of
// the list in row order, whatever order they were checked in.
TEST_F(EventVariablesTest, InitialVariablesAreLockedAndNewOnesAppendedInRowOrder)
{
    Chosen chosen{L"R$EVE_Door open.ST", L"R$EVE_Pump fault.CACT", L"PLC1.LEVEL"};
    auto dialog = Open(chosen, std::bitset<34>().set(), 2);
    EXPECT_TRUE(Box(*dialog, 2)->isChecked());
    EXPECT_FALSE(Box(*dialog, 2)->isEnabled());
    EXPECT_FALSE(Box(*dialog, 0)->isChecked()); // ST of another event
    EXPECT_TRUE(Box(*dialog, 0)->isEnabled());
    Box(*dialog, 5)->click();
    Box(*dialog, 0)->click();
    ScriptedAnswerer answers;
    Ok(*dialog);
    EXPECT_EQ(dialog->result(), QDialog::Accepted);
    EXPECT_TRUE(answers.Ids().empty());
    EXPECT_EQ(chosen, (Chosen{L"R$EVE_Door open.ST", L"R$EVE_Pump fault.CACT", L"PLC1.LEVEL",
                              L"R$EVE_Pump fault.ST", L"R$EVE_Pump fault.CTIM"}));
}

// The maximum counts new choices only: one past it is refused with its message and the
// box is unchecked again; unchecking frees a place; 0 means no maximum.
TEST_F(EventVariablesTest, MaximumRefusesOneMoreWithItsMessage)
{
    Chosen chosen{L"R$EVE_Pump fault.ST"};
    {
        auto dialog = Open(chosen, std::bitset<34>().set(), 1);
        ScriptedAnswerer answers;
        Box(*dialog, 1)->click();
        Box(*dialog, 2)->click();
        EXPECT_EQ(answers.Ids(), std::vector<unsigned>{32336});
        EXPECT_FALSE(Box(*dialog, 2)->isChecked());
        Box(*dialog, 1)->click(); // unchecked: a place is free again
        Box(*dialog, 2)->click();
        EXPECT_TRUE(Box(*dialog, 2)->isChecked());
        EXPECT_EQ(answers.Count(), 1);
    }
    {
        auto dialog = Open(chosen, std::bitset<34>().set(), 2);
        ScriptedAnswerer answers;
        for (int row : {1, 2, 3})
            Box(*dialog, row)->click();
        EXPECT_EQ(answers.Ids(), std::vector<unsigned>{197});
        EXPECT_EQ(answers.LastText(), ZoFormat(ZoLoadString(197).c_str(), 2));
    }
    Chosen all;
    auto dialog = Open(all, std::bitset<34>().set(), 0);
    for (int row = 0; row < 6; ++row)
        Box(*dialog, row)->click();
    Ok(*dialog);
    EXPECT_EQ(all.size(), 6u);
}
