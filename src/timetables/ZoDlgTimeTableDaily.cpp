#include "timetables/ZoDlgTimeTableDaily.h"
#include "timeline/ZoDlgTimeline.h"
#include "platform/calendar/ZoColourWord.h"
#include "platform/calendar/ZoDayCtrl.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMessage.h"
#include "timetables/DaySlotEditing.h"
#include "timetables/DaySlotsModel.h"
#include "platform/ui/ZoOkCancelBox.h"
#include "timetables/TimeTableDialogParts.h"
#include "timetables/TimeTableNameCheck.h"
#include <QBoxLayout>
#include <QColorDialog>
#include <QDialogButtonBox>
#include <QGridLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QMouseEvent>
#include <QPushButton>
#include <QTreeView>

using XmlNode = XmlDocument::XmlNode;


ZoDlgTimeTableDaily::ZoDlgTimeTableDaily(QWidget* parent, XmlNode* element, XmlNode* days, XmlNode const* weeks,
                                         XmlNode const* calendars)
    : ZoDialog(parent)
    , m_element(element)
    , m_days(days)
    , m_weeks(weeks)
    , m_calendars(calendars)
{
    setObjectName(QStringLiteral("dayEditor"));
    m_model = new DaySlotsModel(this);
    m_name = NewTimeTableNameEdit(this);
    m_nameLabel = new QLabel(this);
    m_nameLabel->setBuddy(m_name);
    m_colourSwatch = new QLabel(this);
    m_colourSwatch->setObjectName(QStringLiteral("colourSwatch"));
    m_colourButton = NewTimeTableButton(this, "colourButton");
    m_colourLabel = new QLabel(this);
    m_colourLabel->setBuddy(m_colourButton);
    m_slots = ZoNewListView(this, "slotsList", m_model);
    m_slots->header()->setStretchLastSection(true);
    m_slots->header()->setSectionsClickable(false);
    m_slotsLabel = new QLabel(this);
    m_slotsLabel->setBuddy(m_slots);
    m_add = NewTimeTableButton(this, "addSlotButton", L"NEW-16.png");
    m_modify = NewTimeTableButton(this, "modifySlotButton", L"MODIFY-16.png");
    m_delete = NewTimeTableButton(this, "deleteSlotButton", L"REMOVE-16.png");
    m_picture = new ZoDayCtrl(this);
    m_picture->setObjectName(QStringLiteral("dayPicture"));
    m_buttons = ZoNewOkCancelBox(this, m_ok, m_cancel);
    ZoAddTimelineButton(m_buttons, this, m_element, m_days, m_weeks, m_calendars,
                        [this](XmlNode* day) { WriteDaySlots(day, m_model->Map()); });

    connect(m_colourButton, &QPushButton::clicked, this, &ZoDlgTimeTableDaily::OnChooseColour);
    connect(m_add, &QPushButton::clicked, this, &ZoDlgTimeTableDaily::OnAddSlot);
    connect(m_modify, &QPushButton::clicked, this, &ZoDlgTimeTableDaily::OnModifySlot);
    connect(m_delete, &QPushButton::clicked, this, &ZoDlgTimeTableDaily::OnDeleteSlots);
    connect(m_ok, &QPushButton::clicked, this, &ZoDlgTimeTableDaily::OnOK);
    connect(m_cancel, &QPushButton::clicked, this, &ZoDlgTimeTableDaily::reject);
    connect(m_slots->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZoDlgTimeTableDaily::UpdateButtons);
    connect(m_model, &QAbstractItemModel::modelReset, this, &ZoDlgTimeTableDaily::UpdateButtons);
    m_slots->installEventFilter(this);
    m_slots->viewport()->installEventFilter(this);
    setSizeGripEnabled(true);
    Layout();
}

ZoDlgTimeTableDaily::~ZoDlgTimeTableDaily()
{
    m_slots->removeEventFilter(this);
    m_slots->viewport()->removeEventFilter(this);
}

void ZoDlgTimeTableDaily::Layout()
{
    auto* top = new QGridLayout;
    top->addWidget(m_nameLabel, 0, 0);
    top->addWidget(m_name, 0, 1, 1, 3);
    top->addWidget(m_colourLabel, 1, 0);
    top->addWidget(m_colourSwatch, 1, 1);
    top->addWidget(m_colourButton, 1, 2);
    top->setColumnStretch(3, 1);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(m_add);
    buttons->addWidget(m_modify);
    buttons->addWidget(m_delete);
    buttons->addStretch(1);

    auto* middle = new QHBoxLayout;
    middle->addWidget(m_slots, 1);
    middle->addLayout(buttons);

    auto* main = new QVBoxLayout(this);
    main->addLayout(top);
    main->addSpacing(6);
    main->addWidget(m_slotsLabel);
    main->addLayout(middle, 1);
    main->addWidget(m_picture);
    main->addWidget(m_buttons);
}

void ZoDlgTimeTableDaily::OnInitDialog()
{
    std::wstring const name = m_element ? m_element->Value(L"name", L"") : std::wstring();
    setWindowTitle(ZoText(name.empty() ? 32778 : 32777));
    ZoMnemonics mnemonics;
    mnemonics.Set(m_ok, ZoText(311));
    mnemonics.Set(m_cancel, ZoText(312));
    mnemonics.Set(m_nameLabel, ZoText(355));
    mnemonics.Set(m_add, ZoText(378));
    mnemonics.Set(m_modify, ZoText(379));
    mnemonics.Set(m_delete, ZoText(380));
    mnemonics.Set(m_slotsLabel, ZoText(416));
    mnemonics.Set(m_colourLabel, ZoText(411));
    mnemonics.Set(m_colourButton, ZoText(415));

    m_name->setText(QString::fromStdWString(name));
    m_colour = ZoDayColourWord(m_element);
    m_openedName = name;
    m_openedColour = m_colour;
    m_model->Load(m_element);
    SetColour(m_colour);
    SlotsChanged();
    resize(sizeHint().expandedTo(QSize(460, 420)));
    m_name->setFocus();
    m_name->selectAll();
}

void ZoDlgTimeTableDaily::SetColour(unsigned colourWord)
{
    m_colour = colourWord & 0xFFFFFFu;
    int const side = m_colourButton->sizeHint().height() - 4;
    m_colourSwatch->setPixmap(ColourSwatch(m_colour, 2 * side, side));
    m_colourSwatch->setToolTip(QString::fromStdWString(ZoColourWordText(m_colour)));
    m_picture->SetSlots(m_model->Slots(), m_colour);
}

void ZoDlgTimeTableDaily::SlotsChanged()
{
    m_picture->SetSlots(m_model->Slots(), m_colour);
    UpdateButtons();
}

void ZoDlgTimeTableDaily::UpdateButtons()
{
    std::size_t const selected = ZoSelectedRows(m_slots).size();
    m_modify->setEnabled(selected == 1);
    m_delete->setEnabled(selected >= 1);
}

bool ZoDlgTimeTableDaily::HasChanged() const
{
    return m_changed || m_name->text().toStdWString() != m_openedName || m_colour != m_openedColour;
}

void ZoDlgTimeTableDaily::OnAddSlot()
{
    std::optional<DaySlot> const slot = RunSlotEditor(this, nullptr);
    if (!slot)
        return;
    m_changed = true;
    m_model->Add(*slot);
    SlotsChanged();
}

void ZoDlgTimeTableDaily::OnModifySlot()
{
    std::vector<int> const rows = ZoSelectedRows(m_slots);
    if (rows.empty())
        return;
    DaySlot const old = m_model->SlotAt(rows.front());
    std::optional<DaySlot> const slot = RunSlotEditor(this, &old);
    if (!slot)
        return;
    // A changed slot counts as a change of the day, or OK would not write it.
    m_changed = true;
    m_model->Replace(old, *slot);
    SlotsChanged();
}

void ZoDlgTimeTableDaily::OnDeleteSlots()
{
    std::vector<int> const rows = ZoSelectedRows(m_slots);
    if (rows.empty())
        return;
    m_model->Remove(rows);
    m_changed = true;
    SlotsChanged();
}

void ZoDlgTimeTableDaily::OnChooseColour()
{
    QColorDialog chooser(ZoColorFromWord(m_colour), this);
    chooser.setObjectName(QStringLiteral("colourDialog"));
    chooser.setOption(QColorDialog::DontUseNativeDialog);
    chooser.setWindowTitle(ZoText(415));
    if (ZoRunModal(chooser) != QDialog::Accepted)
        return;
    SetColour(ZoWordFromColor(chooser.selectedColor()));
}

void ZoDlgTimeTableDaily::OnOK()
{
    if (!m_element)
        return;
    if (!ConfirmTimeTableName(this, m_name, m_element, DayNameRules(m_days, m_weeks, m_calendars)))
        return;
    if (IsDayColourShared(m_days, m_element, m_colour) && !ZoAskYesNo(this, 32781))
        return;
    std::wstring const name = m_name->text().toStdWString();
    if (name != m_element->Value(L"name", L"")) {
        m_element->SetValue(L"name", name);
        m_changed = true;
    }
    std::wstring const colour = ZoColourWordText(m_colour);
    if (colour != m_element->Value(L"color", L"")) {
        m_element->SetValue(L"color", colour);
        m_changed = true;
    }
    if (!m_changed) {
        QDialog::reject();
        return;
    }
    WriteDaySlots(m_element, m_model->Map());
    accept();
}

void ZoDlgTimeTableDaily::reject()
{
    if (HasChanged() && !ConfirmDiscardChanges(this))
        return;
    QDialog::reject();
}

bool ZoDlgTimeTableDaily::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_slots && event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (!(key->modifiers() & ~Qt::KeypadModifier)) {
            bool const selected = !ZoSelectedRows(m_slots).empty();
            switch (key->key()) {
            case Qt::Key_Insert: OnAddSlot(); return true;
            case Qt::Key_Delete: if (selected) OnDeleteSlots(); return true;
            case Qt::Key_Return:
            case Qt::Key_Enter:
                if (selected) {
                    OnModifySlot();
                    return true;
                }
                break;
            default: break;
            }
        }
    }
    if (watched == m_slots->viewport() && event->type() == QEvent::MouseButtonDblClick
        && static_cast<QMouseEvent*>(event)->button() == Qt::LeftButton) {
        if (!ZoSelectedRows(m_slots).empty())
            OnModifySlot();
        return true;
    }
    return ZoDialog::eventFilter(watched, event);
}
