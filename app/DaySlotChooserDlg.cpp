#include "DaySlotChooserDlg.h"

#include "platform/calendar/ZoDaySlots.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoMnemonics.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QKeyEvent>
#include <QLabel>
#include <QListWidget>
#include <QPushButton>
#include <QVBoxLayout>

DaySlotChooserDlg::DaySlotChooserDlg(QWidget* parent, XmlDocument::XmlNode* days)
    : ZoDialog(parent)
{
    setObjectName(QStringLiteral("daySlotChooser"));
    if (days) {
        for (auto it = days->ChildsBegin(); it != days->ChildsEnd(); ++it) {
            if ((*it)->Tag() == L"day")
                m_days.push_back(*it);
        }
    }
}

void DaySlotChooserDlg::OnInitDialog()
{
    setWindowTitle(ZoText(60074));
    ZoMnemonics keys;
    m_dayCombo = new QComboBox(this);
    m_dayCombo->setObjectName(QStringLiteral("dayCombo"));
    for (XmlDocument::XmlNode const* day : m_days)
        m_dayCombo->addItem(QString::fromStdWString(day->Value(L"name", L"")));
    auto* dayLabel = new QLabel(keys.Apply(ZoText(60075)), this);
    dayLabel->setBuddy(m_dayCombo);
    m_slots = new QListWidget(this);
    m_slots->setObjectName(QStringLiteral("slotsList"));
    auto* slotsLabel = new QLabel(keys.Apply(ZoText(60076)), this);
    slotsLabel->setBuddy(m_slots);

    m_ok = new QPushButton(ZoImageIcon(L"OK-16.png"), ZoText(311), this);
    m_ok->setObjectName(QStringLiteral("okButton"));
    m_ok->setDefault(true);
    auto* cancel = new QPushButton(ZoImageIcon(L"CANCEL-16.png"), ZoText(312), this);
    cancel->setObjectName(QStringLiteral("cancelButton"));
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(m_ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(cancel, QDialogButtonBox::RejectRole);
    connect(m_ok, &QPushButton::clicked, this, &DaySlotChooserDlg::accept);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_dayCombo, &QComboBox::currentIndexChanged, this, &DaySlotChooserDlg::FillSlots);
    connect(m_slots, &QListWidget::itemDoubleClicked, this, &DaySlotChooserDlg::accept);
    m_slots->installEventFilter(this);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(dayLabel);
    layout->addWidget(m_dayCombo);
    layout->addWidget(slotsLabel);
    layout->addWidget(m_slots, 1);
    layout->addWidget(buttons);
    FillSlots();
    m_dayCombo->setFocus(Qt::OtherFocusReason);
    resize(360, 380);
}

// The slots as the day editor lists them (merged and sorted), after the new-slot row.
void DaySlotChooserDlg::FillSlots()
{
    m_slots->clear();
    m_slots->addItem(ZoText(60077));
    int const index = m_dayCombo->currentIndex();
    if (index >= 0 && index < static_cast<int>(m_days.size())) {
        DayMinuteMap map;
        map.MarkSlotsOf(m_days[static_cast<std::size_t>(index)]);
        for (DaySlot const& slot : map.Slots()) {
            m_slots->addItem(QString::fromStdWString(ZoFormat(ZoLoadString(60080).c_str(),
                                                              SlotTimeText(slot.from).c_str(),
                                                              SlotTimeText(slot.to).c_str())));
        }
    }
    m_slots->setCurrentRow(0);
    m_ok->setEnabled(index >= 0);
}

// Enter on the list chooses its row, as a double click does.
bool DaySlotChooserDlg::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_slots && event->type() == QEvent::KeyPress) {
        int const key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            accept();
            return true;
        }
    }
    return ZoDialog::eventFilter(watched, event);
}

void DaySlotChooserDlg::accept()
{
    int const index = m_dayCombo->currentIndex();
    if (index < 0 || index >= static_cast<int>(m_days.size()))
        return;
    m_chosenDay = m_days[static_cast<std::size_t>(index)];
    m_chosenSlot = std::max(m_slots->currentRow(), 0) - 1;
    ZoDialog::accept();
}
