#include "ZoEDlgEventCfg.h"

#include "editor/ZoTimeTableChoiceModel.h"
#include "timeline/ZoDlgTimeline.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/setup/ZoEventSystem.h"
#include "platform/tools/ZoIds.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoWizardButton.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoUtf.h"
#include "uses/ZoRename.h"

#include <algorithm>
#include <QCheckBox>
#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QFrame>
#include <QGridLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QTabWidget>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

QLineEdit* NewEdit(QWidget* parent, char const* objectName, int maxLength)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(objectName));
    edit->setMaxLength(maxLength);
    return edit;
}

// The label keeps its text as "caption", so that a status can be added to it later.
QLabel* NewLabel(QWidget* parent, char const* objectName, QString const& text, QWidget* buddy)
{
    auto* label = new QLabel(text, parent);
    label->setProperty("caption", text);
    label->setObjectName(QLatin1String(objectName));
    label->setBuddy(buddy);
    return label;
}

QCheckBox* NewCheck(QWidget* parent, char const* objectName, QString const& text)
{
    auto* check = new QCheckBox(text, parent);
    check->setObjectName(QLatin1String(objectName));
    return check;
}

QFrame* NewSeparator(QWidget* parent)
{
    auto* line = new QFrame(parent);
    line->setFrameShape(QFrame::HLine);
    line->setFrameShadow(QFrame::Sunken);
    return line;
}

std::wstring TextOf(QLineEdit const* edit)
{
    return edit->text().toStdWString();
}

void SetTextOf(QLineEdit* edit, std::wstring const& text)
{
    edit->setText(QString::fromStdWString(text));
}

} // namespace

ZoEDlgEventCfg::ZoEDlgEventCfg(QWidget* parent, XmlNode* event, XmlNode const* eventsRoot,
                               XmlNode const* groupsRoot, XmlNode const* timeTablesRoot,
                               XmlDocument* users)
    : ZoDialog(parent)
    , m_event(event)
    , m_eventsRoot(eventsRoot)
    , m_groupsRoot(groupsRoot)
    , m_timeTablesRoot(timeTablesRoot)
    , m_users(users)
    , m_id(event ? event->Value(L"id", L"") : std::wstring())
    , m_evaluator(std::make_unique<ZoEvaluator>())
{
    setObjectName(QStringLiteral("eventEditor"));
    setSizeGripEnabled(true);
    BuildControls();
    ConnectHandlers();
}

ZoEDlgEventCfg::~ZoEDlgEventCfg() = default;

// ---- controls ---------------------------------------------------------------------------

void ZoEDlgEventCfg::BuildControls()
{
    m_tabs = new QTabWidget(this);
    m_tabs->setObjectName(QStringLiteral("tabs"));
    // The fields take their keys first, then the tabs (Ctrl+Tab also switches tabs).
    QWidget* const general = BuildGeneralTab();
    QWidget* const advanced = BuildAdvancedTab();
    QWidget* const actions = BuildActionsTab(0);
    QWidget* const clientActions = BuildActionsTab(1);
    m_tabs->addTab(general, m_keys.Apply(ZoText(825)));
    m_tabs->addTab(advanced, m_keys.Apply(ZoText(34173)));
    m_tabs->addTab(actions, m_keys.Apply(ZoText(34106)));
    m_tabs->addTab(clientActions, m_keys.Apply(ZoText(34107)));

    m_ok = new QPushButton(ZoImageIcon(L"OK-16.png"), ZoText(311), this);
    m_ok->setObjectName(QStringLiteral("okButton"));
    m_ok->setDefault(true);
    m_cancel = new QPushButton(ZoImageIcon(L"CANCEL-16.png"), ZoText(312), this);
    m_cancel->setObjectName(QStringLiteral("cancelButton"));
    auto* buttons = new QDialogButtonBox(this);
    buttons->addButton(m_ok, QDialogButtonBox::AcceptRole);
    buttons->addButton(m_cancel, QDialogButtonBox::RejectRole);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_tabs, 1);
    layout->addWidget(buttons);

    setMinimumSize(540, 460);
    resize(640, 520);
}

QWidget* ZoEDlgEventCfg::BuildGeneralTab()
{
    auto* page = new QWidget(this);
    m_name = NewEdit(page, "nameEdit", 50);
    m_description = NewEdit(page, "descriptionEdit", 256);
    m_condition = NewEdit(page, "conditionEdit", 512);
    m_stopEnabled = NewCheck(page, "stopConditionCheck", m_keys.Apply(ZoText(33119)));
    m_stopCondition = NewEdit(page, "stopConditionEdit", 512);
    m_delayActivate = NewEdit(page, "delayActivateEdit", 512);
    m_delayDeactivate = NewEdit(page, "delayDeactivateEdit", 512);
    // The formula fields show the language's syntax in their tooltip and an example.
    for (QLineEdit* logical : {m_condition, m_stopCondition}) {
        logical->setToolTip(ZoText(60200));
        logical->setPlaceholderText(ZoText(60202));
    }
    for (QLineEdit* numeric : {m_delayActivate, m_delayDeactivate}) {
        numeric->setToolTip(ZoText(60201));
        numeric->setPlaceholderText(ZoText(60203));
    }
    m_timeTables = new ZoTimeTableChoiceModel(this);
    m_timeTable = new QComboBox(page);
    m_timeTable->setObjectName(QStringLiteral("timeTableCombo"));
    m_timeTable->setModel(m_timeTables);
    m_timeTable->setSizeAdjustPolicy(QComboBox::AdjustToMinimumContentsLengthWithIcon);
    m_timeTable->setMinimumContentsLength(24);
    m_notify = NewCheck(page, "notifyCheck", m_keys.Apply(ZoText(32827)));
    m_record = NewCheck(page, "recordCheck", m_keys.Apply(ZoText(32828)));
    m_enabled = NewCheck(page, "enabledCheck", m_keys.Apply(ZoText(37889)));

    m_conditionLabel = NewLabel(page, "conditionLabel", m_keys.Apply(ZoText(32479)), m_condition);
    m_stopLabel = NewLabel(page, "stopConditionLabel", m_keys.Apply(ZoText(33120)), m_stopCondition);
    m_delayActivateLabel = NewLabel(page, "delayActivateLabel", m_keys.Apply(ZoText(32802)), m_delayActivate);
    m_delayDeactivateLabel =
        NewLabel(page, "delayDeactivateLabel", m_keys.Apply(ZoText(32803)), m_delayDeactivate);

    // The timeline of the chosen time table, beside it.
    auto* timeline = new QPushButton(m_keys.Apply(ZoText(64923)), page);
    timeline->setObjectName(QStringLiteral("timelineButton"));
    timeline->setAutoDefault(false);
    connect(timeline, &QPushButton::clicked, this, [this] {
        XmlNode const* table = m_timeTables->EntryAt(m_timeTable->currentIndex()).node;
        ZoShowTimeline(this, m_timeTablesRoot, table ? table->Value(L"id", L"") : std::wstring());
    });
    auto* timeTableRow = new QHBoxLayout;
    timeTableRow->addWidget(m_timeTable);
    timeTableRow->addWidget(timeline);
    timeTableRow->addStretch(1);
    auto* flags = new QHBoxLayout;
    flags->setSpacing(24);
    flags->addWidget(m_enabled);
    flags->addWidget(m_notify);
    flags->addWidget(m_record);
    flags->addStretch(1);

    auto* form = new QFormLayout(page);
    form->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    form->setRowWrapPolicy(QFormLayout::DontWrapRows);
    form->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    form->addRow(NewLabel(page, "nameLabel", m_keys.Apply(ZoText(355)), m_name), m_name);
    form->addRow(NewLabel(page, "descriptionLabel", m_keys.Apply(ZoText(32795)), m_description), m_description);
    form->addRow(NewSeparator(page));
    // A formula's status can be a long sentence: its label wraps instead of squeezing the
    // fields. The labels' column is as wide as the widest label needs unwrapped (a long word
    // of another language included), at most 220 pixels, and the wrapped labels get exactly
    // that width, so the height of their rows is worked out for the width they are shown at.
    int column = 0;
    for (QLabel* label : {m_conditionLabel, m_stopLabel, m_delayActivateLabel, m_delayDeactivateLabel})
        column = std::max(column, label->sizeHint().width());
    for (QLabel* label : {m_conditionLabel, m_stopLabel, m_delayActivateLabel, m_delayDeactivateLabel}) {
        label->setWordWrap(true);
        label->setFixedWidth(std::min(column, 220));
    }
    // The button that opens the formula wizard on each formula field.
    m_conditionWizard = ZoNewWizardButton(page, "conditionWizardButton", m_condition, ZoText(60204));
    m_stopWizard = ZoNewWizardButton(page, "stopConditionWizardButton", m_stopCondition, ZoText(60204));
    m_delayActivateWizard = ZoNewWizardButton(page, "delayActivateWizardButton", m_delayActivate, ZoText(60204));
    m_delayDeactivateWizard =
        ZoNewWizardButton(page, "delayDeactivateWizardButton", m_delayDeactivate, ZoText(60204));
    form->addRow(m_conditionLabel, ZoFieldWithButton(m_condition, m_conditionWizard));
    form->addRow(QString(), m_stopEnabled);
    form->addRow(m_stopLabel, ZoFieldWithButton(m_stopCondition, m_stopWizard));
    form->addRow(m_delayActivateLabel, ZoFieldWithButton(m_delayActivate, m_delayActivateWizard));
    form->addRow(m_delayDeactivateLabel, ZoFieldWithButton(m_delayDeactivate, m_delayDeactivateWizard));
    form->addRow(NewSeparator(page));
    form->addRow(NewLabel(page, "timeTableLabel", m_keys.Apply(ZoText(32829)), m_timeTable), timeTableRow);
    form->addRow(QString(), flags);
    return page;
}

QWidget* ZoEDlgEventCfg::BuildAdvancedTab()
{
    auto* page = new QWidget(this);

    m_feedGroup = new QGroupBox(page);
    m_feedGroup->setObjectName(QStringLiteral("feedGroup"));
    m_rssActivate = NewCheck(m_feedGroup, "rssActivateCheck", m_keys.Apply(ZoText(34709)));
    m_rssDeactivate = NewCheck(m_feedGroup, "rssDeactivateCheck", m_keys.Apply(ZoText(34710)));
    m_rssAcknowledge = NewCheck(m_feedGroup, "rssAcknowledgeCheck", m_keys.Apply(ZoText(34711)));
    auto* feed = new QVBoxLayout(m_feedGroup);
    feed->addWidget(m_rssActivate);
    feed->addWidget(m_rssDeactivate);
    feed->addWidget(m_rssAcknowledge);

    auto* layout = new QVBoxLayout(page);
    layout->addWidget(m_feedGroup);
    layout->addWidget(BuildAnnotationArea(page), 1);
    return page;
}

// One page per moment: the action pane of that moment (see ZoEDlgEventCfgActions.cpp).
QWidget* ZoEDlgEventCfg::BuildActionsTab(int side)
{
    auto* page = new QWidget(this);
    auto* moments = new QTabWidget(page);
    moments->setObjectName(side == 0 ? QStringLiteral("actionsMomentTabs")
                                     : QStringLiteral("clientActionsMomentTabs"));
    m_momentTabs[side] = moments;
    AddActionPanes(side, moments);
    auto* layout = new QVBoxLayout(page);
    layout->addWidget(moments);
    return page;
}

void ZoEDlgEventCfg::ConnectHandlers()
{
    connect(m_ok, &QPushButton::clicked, this, &ZoEDlgEventCfg::OnOK);
    connect(m_cancel, &QPushButton::clicked, this, &ZoEDlgEventCfg::reject);
    connect(m_tabs, &QTabWidget::currentChanged, this, &ZoEDlgEventCfg::OnSelchangeTab);
    connect(m_condition, &QLineEdit::textChanged, this, &ZoEDlgEventCfg::OnEditchangeCondition);
    connect(m_stopCondition, &QLineEdit::textChanged, this,
            &ZoEDlgEventCfg::OnEditchangeConditionStop);
    connect(m_delayActivate, &QLineEdit::textChanged, this, &ZoEDlgEventCfg::OnEditchangeActivationFormule);
    connect(m_delayDeactivate, &QLineEdit::textChanged, this,
            &ZoEDlgEventCfg::OnEditchangeDeactivationFormule);
    connect(m_stopEnabled, &QCheckBox::toggled, this, &ZoEDlgEventCfg::OnEnableConditionStop);
    connect(m_conditionWizard, &QToolButton::clicked, this, &ZoEDlgEventCfg::OnWizzard);
    connect(m_stopWizard, &QToolButton::clicked, this, &ZoEDlgEventCfg::OnStopWizzard);
    connect(m_delayActivateWizard, &QToolButton::clicked, this, &ZoEDlgEventCfg::OnActivationFormuleWizzard);
    connect(m_delayDeactivateWizard, &QToolButton::clicked, this, &ZoEDlgEventCfg::OnDeactivationFormuleWizzard);
    connect(m_notify, &QCheckBox::toggled, this, &ZoEDlgEventCfg::OnClickedNotify);
    ConnectAnnotationHandlers();
}

// ---- opening ----------------------------------------------------------------------------

void ZoEDlgEventCfg::OnInitDialog()
{
    if (!m_event)
        return;
    setWindowTitle(m_event->Value(L"name", L"").empty() ? ZoText(32793) : ZoText(32794));
    if (m_skipCheck && m_focusCode != 0)
        m_ok->setText(ZoText(34893));
    LoadFields();
    m_tabs->setCurrentIndex(TabGeneral);
    SelectTabOfFocusCode();
    UpdateFeedControls();
    OpenAtControl();
}

void ZoEDlgEventCfg::OpenAtControl()
{
    QWidget* control = m_openAtControl.isEmpty() ? nullptr : findChild<QWidget*>(m_openAtControl);
    if (!control)
        return;
    for (int tab = 0; tab < m_tabs->count(); ++tab)
        if (m_tabs->widget(tab)->isAncestorOf(control))
            ShowTab(static_cast<Tab>(tab));
    if (auto* moments = qobject_cast<QTabWidget*>(control); moments && m_openAtMoment >= 0) {
        moments->setCurrentIndex(m_openAtMoment);
        control = moments->currentWidget()->findChild<QTreeView*>();
    }
    if (!control)
        return;
    control->setFocus(Qt::OtherFocusReason);
    if (auto* edit = qobject_cast<QLineEdit*>(control))
        edit->selectAll();
}

void ZoEDlgEventCfg::LoadFields()
{
    ZoEventFields const fields = ZoReadEventFields(*m_event);
    SetTextOf(m_name, fields.name);
    SetTextOf(m_description, fields.description);
    SetTextOf(m_condition, fields.condition);
    m_stopEnabled->setChecked(fields.stopEnabled);
    SetTextOf(m_stopCondition, fields.conditionStop);
    SetTextOf(m_delayActivate, fields.delayToActivate);
    SetTextOf(m_delayDeactivate, fields.delayToDeactivate);
    m_notify->setChecked(fields.notify);
    m_record->setChecked(fields.record);
    m_enabled->setChecked(fields.enabled);
    m_rssActivate->setChecked(fields.rssActivate);
    m_rssDeactivate->setChecked(fields.rssDeactivate);
    m_rssAcknowledge->setChecked(fields.rssAcknowledge);
    FillTimeTableList(fields.timeTable);
    UpdateGroupsList();
    SetTextOf(m_annotation, fields.annotation);
    SetTextOf(m_deaAnnotation, fields.deaAnnotation);
    SetTextOf(m_ackAnnotation, fields.ackAnnotation);
    UpdateAnnotationList();
    ZoEnsureActionLists(*m_event);
    InitializeActionPanes();
    OnEnableConditionStop();
    m_changed = false;
}

void ZoEDlgEventCfg::FillTimeTableList(std::optional<std::wstring> const& timeTable)
{
    m_timeTables->Fill(m_timeTablesRoot);
    m_timeTable->setCurrentIndex(m_timeTables->RowOfId(timeTable));
}

void ZoEDlgEventCfg::SelectTabOfFocusCode()
{
    if (m_focusCode == 1)
        m_tabs->setCurrentIndex(TabGeneral);
    else if (m_focusCode == 2)
        m_tabs->setCurrentIndex(TabAdvanced);
    else if (m_focusCode >= 3 && m_focusCode <= 6) {
        m_tabs->setCurrentIndex(TabActions);
        m_momentTabs[0]->setCurrentIndex(m_focusCode - 3);
    } else if (m_focusCode >= 7 && m_focusCode <= 10) {
        m_tabs->setCurrentIndex(TabClientActions);
        m_momentTabs[1]->setCurrentIndex(m_focusCode - 7);
    }
}

// ---- change detection and writing -------------------------------------------------------

ZoEventFields ZoEDlgEventCfg::FieldsFromControls() const
{
    ZoEventFields fields;
    fields.name = TextOf(m_name);
    fields.description = TextOf(m_description);
    fields.condition = TextOf(m_condition);
    fields.stopEnabled = m_stopEnabled->isChecked();
    fields.conditionStop = TextOf(m_stopCondition);
    fields.delayToActivate = TextOf(m_delayActivate);
    fields.delayToDeactivate = TextOf(m_delayDeactivate);
    fields.notify = m_notify->isChecked();
    fields.record = m_record->isChecked();
    fields.enabled = m_enabled->isChecked();
    fields.rssActivate = m_rssActivate->isChecked();
    fields.rssDeactivate = m_rssDeactivate->isChecked();
    fields.rssAcknowledge = m_rssAcknowledge->isChecked();
    if (XmlNode const* table = m_timeTables->EntryAt(m_timeTable->currentIndex()).node)
        fields.timeTable = table->Value(L"id", L"");
    fields.annotation = TextOf(m_annotation);
    fields.deaAnnotation = TextOf(m_deaAnnotation);
    fields.ackAnnotation = TextOf(m_ackAnnotation);
    return fields;
}

ZoEventChange ZoEDlgEventCfg::FirstChange() const
{
    if (!m_event)
        return ZoEventChange::None;
    return ZoFirstEventChange(*m_event, FieldsFromControls(), m_id, m_changed,
                              ActionPanelsModified());
}

bool ZoEDlgEventCfg::HasChanged() const
{
    return FirstChange() != ZoEventChange::None;
}

bool ZoEDlgEventCfg::UpdateCfg()
{
    ZoWriteEventFields(*m_event, FieldsFromControls());
    return true;
}

// ---- OK ---------------------------------------------------------------------------------

void ZoEDlgEventCfg::accept()
{
    OnOK();
}

void ZoEDlgEventCfg::OnOK()
{
    if (!m_event) {
        ZoDialog::reject();
        return;
    }
    // A non-zero focus code opened the event to show a place: OK only closes.
    if (m_focusCode == 0 && !IsValid())
        return;
    std::wstring const oldName = ZoFromUtf8(m_event->ValueUtf8(L"name"));
    bool const updateReferences = m_focusCode == 0 && AskToUpdateReferences(oldName);
    if (m_focusCode == 0 && HasChanged())
        UpdateCfg();
    // Read again after the event was written, so that its own references are found too.
    if (updateReferences)
        ZoApplyRename(ZoEventReferenceChanges(*m_eventsRoot->Document(), oldName, TextOf(m_name)));
    ZoDialog::accept();
}

// A new name: when other events refer to the event by its old name, asks whether to update
// their references (the number of them in the question).
bool ZoEDlgEventCfg::AskToUpdateReferences(std::wstring const& oldName)
{
    std::wstring const newName = TextOf(m_name);
    if (!m_eventsRoot || oldName.empty() || newName == oldName)
        return false;
    int others = 0;
    for (ZoRenameChange const& change : ZoEventReferenceChanges(*m_eventsRoot->Document(), oldName, newName)) {
        XmlNode const* node = change.node;
        while (node && node != m_event)
            node = node->Parent();
        if (!node)
            others += change.count;
    }
    return others > 0 &&
        ZoAskYesNoText(this, 64730, ZoFormat(ZoLoadString(64730).c_str(), oldName.c_str(), others, newName.c_str()));
}

// ---- validation -------------------------------------------------------------------------

bool ZoEDlgEventCfg::IsValidName()
{
    std::wstring const name = TextOf(m_name);
    if (name.empty()) {
        ShowTab(TabGeneral);
        ZoShowMessage(this, 32797);
        FocusField(m_name);
        return false;
    }
    if (!IsValidId(name.c_str(), true)) {
        ShowTab(TabGeneral);
        ZoShowMessage(this, 32764);
        FocusField(m_name);
        return false;
    }
    // The event's own stored name is found as itself and passes.
    bool const mayClash = !m_mayClash || m_mayClash(name);
    XmlNode const* owner = m_eventsRoot && mayClash ? m_eventsRoot->NodeV(L"/event?name=%s?", name.c_str())
                                                    : nullptr;
    if (owner && owner != m_event) {
        ShowTab(TabGeneral);
        ZoShowMessage(this, 32796);
        FocusField(m_name);
        return false;
    }
    return true;
}

// A saved event always carries both delays: empty ones become "0".
void ZoEDlgEventCfg::FillEmptyDelays()
{
    if (m_delayActivate->text().isEmpty())
        m_delayActivate->setText(QStringLiteral("0"));
    if (m_delayDeactivate->text().isEmpty())
        m_delayDeactivate->setText(QStringLiteral("0"));
}

bool ZoEDlgEventCfg::HasCondition()
{
    if (!m_condition->text().isEmpty())
        return true;
    ShowTab(TabGeneral);
    ZoShowMessage(this, 32813);
    FocusField(m_condition);
    return false;
}

void ZoEDlgEventCfg::ShowTab(Tab tab)
{
    m_tabs->setCurrentIndex(tab);
}

void ZoEDlgEventCfg::FocusField(QLineEdit* field)
{
    field->setFocus(Qt::OtherFocusReason);
    field->selectAll();
}

// ---- handlers ---------------------------------------------------------------------------

void ZoEDlgEventCfg::OnSelchangeTab(int index)
{
    if (index == TabAdvanced)
        UpdateFeedControls();
    else if (index == TabActions || index == TabClientActions)
        ShowActionPane(index - TabActions);
}

void ZoEDlgEventCfg::OnEnableConditionStop()
{
    bool const on = m_stopEnabled->isChecked();
    m_stopLabel->setEnabled(on);
    m_stopCondition->setEnabled(on);
    m_stopWizard->setEnabled(on);
    m_changed = true;
}

void ZoEDlgEventCfg::OnClickedNotify()
{
    UpdateFeedControls();
}

// The feed check boxes exist only where the event system offers the feed; acknowledgements
// are published only for notified events.
void ZoEDlgEventCfg::UpdateFeedControls()
{
    bool const feed = ZoEventSystem::instance()->IsFeedAvailable();
    m_feedGroup->setVisible(feed);
    m_rssActivate->setVisible(feed);
    m_rssDeactivate->setVisible(feed);
    m_rssAcknowledge->setVisible(feed && m_notify->isChecked());
}
