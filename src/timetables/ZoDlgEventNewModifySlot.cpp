#include "timetables/ZoDlgEventNewModifySlot.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoMessage.h"
#include "timetables/ClampingSpinBox.h"
#include "timetables/SlotGrid.h"
#include "timetables/SlotGridCtrl.h"
#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QLabel>
#include <QPushButton>

namespace {

QSpinBox* NewSpin(QWidget* parent, char const* objectName, int maximum, QString const& toolTip)
{
    auto* spin = new ClampingSpinBox(parent);
    spin->setObjectName(QLatin1String(objectName));
    spin->setRange(0, maximum);
    spin->setToolTip(toolTip);
    spin->setMinimumWidth(spin->fontMetrics().horizontalAdvance(QStringLiteral("000")) + 36);
    return spin;
}

} // namespace

ZoDlgEventNewModifySlot::ZoDlgEventNewModifySlot(QWidget* parent, XmlDocument::XmlNode* slot,
                                                 unsigned labelColour, unsigned selectionColour)
    : ZoDialog(parent)
    , m_slot(slot)
{
    setObjectName(QStringLiteral("slotEditor"));
    m_grid = new SlotGridCtrl(labelColour, selectionColour, this);
    m_hint = new QLabel(this);
    m_hint->setWordWrap(true);
    QString const hourTip = ZoText(61510);
    QString const minuteTip = ZoText(61511);
    m_fromHour = NewSpin(this, "fromHourSpin", 24, hourTip);
    m_fromMinute = NewSpin(this, "fromMinuteSpin", 59, minuteTip);
    m_toHour = NewSpin(this, "toHourSpin", 24, hourTip);
    m_toMinute = NewSpin(this, "toMinuteSpin", 59, minuteTip);
    m_fromLabel = new QLabel(this);
    m_fromLabel->setBuddy(m_fromHour);
    m_toLabel = new QLabel(this);
    m_toLabel->setBuddy(m_toHour);
    m_hourHeading = new QLabel(this);
    m_minuteHeading = new QLabel(this);
    m_ok = new QPushButton(this);
    m_ok->setObjectName(QStringLiteral("okButton"));
    m_ok->setDefault(true);
    m_cancel = new QPushButton(this);
    m_cancel->setObjectName(QStringLiteral("cancelButton"));

    connect(m_grid, &SlotGridCtrl::dragStarted, this, [this] { m_slotChanged = true; });
    connect(m_grid, &SlotGridCtrl::dragRangeChanged, this, &ZoDlgEventNewModifySlot::OnDragRange);
    connect(m_fromHour, &QSpinBox::valueChanged, this, [this] { ApplyHourRule(m_fromHour, m_fromMinute); });
    connect(m_toHour, &QSpinBox::valueChanged, this, [this] { ApplyHourRule(m_toHour, m_toMinute); });
    for (QSpinBox* spin : {m_fromHour, m_fromMinute, m_toHour, m_toMinute})
        connect(spin, &QSpinBox::valueChanged, this, &ZoDlgEventNewModifySlot::OnFieldsChanged);
    connect(m_ok, &QPushButton::clicked, this, &ZoDlgEventNewModifySlot::OnOK);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    Layout();
}

ZoDlgEventNewModifySlot::~ZoDlgEventNewModifySlot() = default;

void ZoDlgEventNewModifySlot::Layout()
{
    auto* fields = new QGridLayout;
    fields->addWidget(m_hourHeading, 0, 1, Qt::AlignCenter);
    fields->addWidget(m_minuteHeading, 0, 2, Qt::AlignCenter);
    fields->addWidget(m_fromLabel, 1, 0);
    fields->addWidget(m_fromHour, 1, 1);
    fields->addWidget(m_fromMinute, 1, 2);
    fields->addWidget(m_toLabel, 2, 0);
    fields->addWidget(m_toHour, 2, 1);
    fields->addWidget(m_toMinute, 2, 2);
    fields->setColumnStretch(3, 1);

    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(m_ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(m_cancel, QDialogButtonBox::RejectRole);

    auto* main = new QVBoxLayout(this);
    main->addWidget(m_grid);
    main->addWidget(m_hint);
    main->addSpacing(4);
    main->addLayout(fields);
    main->addStretch(1);
    main->addWidget(buttons);
}

void ZoDlgEventNewModifySlot::OnInitDialog()
{
    setWindowTitle(ZoText(461));
    m_hint->setText(ZoText(420));
    m_hourHeading->setText(ZoText(473));
    m_minuteHeading->setText(ZoText(474));
    ZoMnemonics mnemonics;
    mnemonics.Set(m_ok, ZoText(311));
    mnemonics.Set(m_cancel, ZoText(312));
    mnemonics.Set(m_fromLabel, ZoText(462));
    mnemonics.Set(m_toLabel, ZoText(463));
    m_ok->setIcon(ZoImageIcon(L"OK-16.png"));
    m_cancel->setIcon(ZoImageIcon(L"CANCEL-16.png"));

    if (m_slot) {
        SlotFieldTime const from = ParseSlotFieldTime(m_slot->Value(L"from", L""));
        SlotFieldTime const to = ParseSlotFieldTime(m_slot->Value(L"to", L""));
        m_fromHour->setValue(from.hour);
        m_fromMinute->setValue(from.minute);
        m_toHour->setValue(to.hour);
        m_toMinute->setValue(to.minute);
    }
    ApplyHourRule(m_fromHour, m_fromMinute);
    ApplyHourRule(m_toHour, m_toMinute);
    OnFieldsChanged();
    resize(sizeHint().expandedTo(QSize(620, 0)));
    m_fromHour->setFocus();
    m_fromHour->selectAll();
}

void ZoDlgEventNewModifySlot::ApplyHourRule(QSpinBox* hour, QSpinBox* minute)
{
    if (hour->value() >= 24) {
        minute->setRange(0, 0);
        minute->setValue(0);
        minute->setEnabled(false);
    } else {
        minute->setRange(0, 59);
        minute->setEnabled(true);
    }
}

int ZoDlgEventNewModifySlot::FromMinutes() const
{
    return m_fromHour->value() * 60 + m_fromMinute->value();
}

int ZoDlgEventNewModifySlot::ToMinutes() const
{
    return m_toHour->value() * 60 + m_toMinute->value();
}

void ZoDlgEventNewModifySlot::OnFieldsChanged()
{
    m_grid->SetRange(FromMinutes(), ToMinutes());
}

void ZoDlgEventNewModifySlot::OnDragRange(int from, int to)
{
    m_fromHour->setValue(from / 60);
    m_fromMinute->setValue(from % 60);
    m_toHour->setValue(to / 60);
    m_toMinute->setValue(to % 60);
}

bool ZoDlgEventNewModifySlot::Check()
{
    if (FromMinutes() > ToMinutes()) {
        ZoShowMessage(this, 469);
        m_fromHour->setFocus();
        m_fromHour->selectAll();
        return false;
    }
    return true;
}

void ZoDlgEventNewModifySlot::OnOK()
{
    // A value still being typed counts as the user sees it once the field is left.
    for (QSpinBox* spin : {m_fromHour, m_fromMinute, m_toHour, m_toMinute})
        spin->interpretText();
    if (!Check())
        return;
    if (m_slot) {
        m_slot->SetValue(L"from", ZoFormat(L"%02d:%02d", m_fromHour->value(), m_fromMinute->value()));
        m_slot->SetValue(L"to", ZoFormat(L"%02d:%02d", m_toHour->value(), m_toMinute->value()));
    }
    accept();
}
