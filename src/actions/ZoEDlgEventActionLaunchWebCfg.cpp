#include "actions/ZoEDlgEventActionLaunchWebCfg.h"

#include "actions/ZoActionEditorParts.h"
#include "actions/ZoWebPagePlace.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoMnemonics.h"

#include <QAbstractItemView>
#include <QBoxLayout>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>

namespace {

constexpr int kAddressLength = 2048;
// The drop-down list is given this much room below the closed box.
constexpr int kDropDownExtra = 150;

} // namespace

ZoEDlgEventActionLaunchWebCfg::ZoEDlgEventActionLaunchWebCfg(QWidget* parent, XmlNode* action, XmlNode* moment)
    : ZoActionEditorDlg(parent, action, moment)
{
    setObjectName(QStringLiteral("webPageActionEditor"));
    m_addressEdit = ZoNewActionEdit(this, "addressEdit", kAddressLength);
    m_placeCombo = new QComboBox(this);
    m_placeCombo->setObjectName(QStringLiteral("placeCombo"));
}

void ZoEDlgEventActionLaunchWebCfg::OnInitDialog()
{
    setWindowTitle(ZoText(63320));
    setWindowIcon(ZoVelmoraSetup::instance().ProgramIcon());
    QLabel* addressLabel = ZoNewBuddyLabel(this, "addressLabel", m_addressEdit);
    QLabel* placeLabel = ZoNewBuddyLabel(this, "placeLabel", m_placeCombo);
    QDialogButtonBox* buttons = NewButtons();
    ZoMnemonics mnemonics;
    mnemonics.Set(addressLabel, ZoText(7786));
    mnemonics.Set(placeLabel, ZoText(7788));
    SetButtonCaptions(mnemonics);
    m_addressEdit->setToolTip(ZoText(63321));
    m_addressEdit->setPlaceholderText(QStringLiteral("https://"));
    m_addressEdit->setText(Stored(L"url"));

    // Entry texts as the action list words the place; item data: the place's number.
    for (int place : {kZoWebPlaceTab, kZoWebPlaceWindow})
        m_placeCombo->addItem(QString::fromStdWString(ZoWebPlaceText(place)), place);
    ZoBasicString<wchar_t> const stored = m_action->Value(L"window", L"");
    m_placeCombo->setCurrentIndex(m_placeCombo->findData(ZoInitialWebPlace(stored)));
    // Without a place chosen the box says what the action does now: a new or unset action
    // opens a window; an unusual stored text is shown as it is, and kept.
    if (m_placeCombo->currentIndex() < 0)
        m_placeCombo->setPlaceholderText(
            stored.empty() ? QString::fromStdWString(ZoWebPlaceText(kZoWebPlaceWindow))
                           : QString::fromStdWString(ZoFormat(ZoLoadString(63322).c_str(), stored.c_str())));

    auto* fields = new QFormLayout;
    fields->setFieldGrowthPolicy(QFormLayout::AllNonFixedFieldsGrow);
    fields->addRow(addressLabel, m_addressEdit);
    fields->addRow(placeLabel, m_placeCombo);
    PlaceFields(fields, buttons);
    m_placeCombo->view()->setMinimumHeight(kDropDownExtra);
    ZoFocusField(m_addressEdit);
}

bool ZoEDlgEventActionLaunchWebCfg::IsValid()
{
    if (m_skipCheck || !m_addressEdit->text().isEmpty())
        return true;
    ZoShowMessage(this, 39957);
    ZoFocusField(m_addressEdit);
    return false;
}

int ZoEDlgEventActionLaunchWebCfg::SelectedPlace() const
{
    return m_placeCombo->currentIndex() < 0 ? -1 : m_placeCombo->currentData().toInt();
}

bool ZoEDlgEventActionLaunchWebCfg::HasChanged() const
{
    ZoBasicString<wchar_t> const window = m_action->Value(L"window", L"");
    return m_addressEdit->text().toStdWString() != m_action->Value(L"url", L"")
        || ZoWebPlaceToWrite(SelectedPlace(), window) != window;
}

void ZoEDlgEventActionLaunchWebCfg::UpdateCfg()
{
    m_action->SetValue(L"url", m_addressEdit->text().toStdWString());
    ZoBasicString<wchar_t> const window = m_action->Value(L"window", L"");
    ZoBasicString<wchar_t> const place = ZoWebPlaceToWrite(SelectedPlace(), window);
    if (place != window)
        m_action->SetValue(L"window", place);
}
