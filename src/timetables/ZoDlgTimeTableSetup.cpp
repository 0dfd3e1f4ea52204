#include "timetables/ZoDlgTimeTableSetup.h"
#include "timeline/ZoDlgTimeline.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoClipboard.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoListDialogLayout.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMessage.h"
#include "timetables/TimeTableDialogParts.h"
#include "timetables/TimeTableKinds.h"
#include "timetables/TimeTablesClipboard.h"
#include "timetables/TimeTablesListModel.h"
#include "timetables/ZoDlgTimeTableDaily.h"
#include "timetables/ZoDlgTimeTableWeekly.h"
#include "timetables/ZoDlgTimeTableWizzard.h"
#include "timetables/ZoDlgTimeTableYearly.h"
#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTreeView>

using XmlNode = XmlDocument::XmlNode;

namespace {
constexpr int kClipboardSelector = 1;
}

ZoDlgTimeTableSetup::ZoDlgTimeTableSetup(QWidget* parent, XmlDocument* document)
    : ZoDialog(parent)
    , m_document(document)
{
    setObjectName(QStringLiteral("timeTableSetup"));
    m_model = new TimeTablesListModel(document, this);
    m_label = new QLabel(this);
    m_list = ZoNewListView(this, "timeTablesList", m_model);
    m_list->setIconSize(QSize(16, 16));
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->setSortingEnabled(false);
    m_list->header()->setSectionsClickable(true);
    m_list->header()->setSortIndicatorShown(true);
    m_list->header()->setStretchLastSection(false);
    m_list->header()->setSectionResizeMode(QHeaderView::Interactive);
    m_label->setBuddy(m_list);

    m_addButton = NewTimeTableButton(this, "addButton");
    m_modifyButton = NewTimeTableButton(this, "modifyButton");
    m_deleteButton = NewTimeTableButton(this, "deleteButton");
    m_timelineButton = NewTimeTableButton(this, "timelineButton");
    m_okButton = NewTimeTableButton(this, "okButton", L"OK-16.png");
    m_okButton->setDefault(true);
    m_cancelButton = NewTimeTableButton(this, "cancelButton", L"CANCEL-16.png");

    connect(m_addButton, &QPushButton::clicked, this, &ZoDlgTimeTableSetup::OnAdd);
    connect(m_modifyButton, &QPushButton::clicked, this, &ZoDlgTimeTableSetup::OnModify);
    connect(m_deleteButton, &QPushButton::clicked, this, &ZoDlgTimeTableSetup::OnDelete);
    connect(m_timelineButton, &QPushButton::clicked, this, &ZoDlgTimeTableSetup::OnTimeline);
    connect(m_okButton, &QPushButton::clicked, this, &ZoDlgTimeTableSetup::OnOK);
    // Cancel undoes nothing (every change is already in the document) but ends with Cancel.
    connect(m_cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_list->header(), &QHeaderView::sectionClicked, this, &ZoDlgTimeTableSetup::OnColumnclickList);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZoDlgTimeTableSetup::UpdateButtons);
    connect(m_list, &QWidget::customContextMenuRequested, this, &ZoDlgTimeTableSetup::OnRclickZoeList);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
    setSizeGripEnabled(true);
    Layout();
}

ZoDlgTimeTableSetup::~ZoDlgTimeTableSetup()
{
    m_list->removeEventFilter(this);
    m_list->viewport()->removeEventFilter(this);
}

void ZoDlgTimeTableSetup::Layout()
{
    ZoLayoutListDialog(this, m_label, m_list, {m_addButton, m_modifyButton, m_deleteButton, m_timelineButton},
                       m_okButton,
                       m_cancelButton);
}

void ZoDlgTimeTableSetup::OnInitDialog()
{
    setWindowTitle(ZoText(32772));
    ZoMnemonics mnemonics;
    mnemonics.Set(m_okButton, ZoText(311));
    mnemonics.Set(m_cancelButton, ZoText(312));
    mnemonics.Set(m_addButton, ZoText(378));
    mnemonics.Set(m_modifyButton, ZoText(379));
    mnemonics.Set(m_deleteButton, ZoText(380));
    mnemonics.Set(m_timelineButton, ZoText(64923));
    mnemonics.Set(m_label, ZoText(32773));
    m_addButton->setIcon(ZoImageIcon(L"NEW-16.png"));
    m_modifyButton->setIcon(ZoImageIcon(L"MODIFY-16.png"));
    m_deleteButton->setIcon(ZoImageIcon(L"REMOVE-16.png"));

    UpdateList();
    resize(sizeHint().expandedTo(QSize(560, 420)));
    AdjustColumnsSize();
    m_list->setFocus();
    if (m_model->rowCount() > 0)
        m_list->selectionModel()->setCurrentIndex(m_model->index(0, 0), QItemSelectionModel::NoUpdate);
}

void ZoDlgTimeTableSetup::UpdateList()
{
    m_model->UpdateList();
    UpdateSortIndicator();
    AdjustColumnsSize();
    UpdateButtons();
}

void ZoDlgTimeTableSetup::UpdateSortIndicator()
{
    ZoShowSortIndicator(m_list, m_model->SortColumn(), m_model->Descending());
}

void ZoDlgTimeTableSetup::AdjustColumnsSize()
{
    int const half = m_list->viewport()->width() / 2;
    m_list->header()->resizeSection(TimeTablesListModel::NameColumn, half);
    m_list->header()->resizeSection(TimeTablesListModel::KindColumn, half);
}

void ZoDlgTimeTableSetup::UpdateButtons()
{
    std::size_t const selected = SelectedRows().size();
    m_modifyButton->setEnabled(selected == 1);
    m_timelineButton->setEnabled(selected == 1);
    m_deleteButton->setEnabled(selected >= 1);
}

std::vector<int> ZoDlgTimeTableSetup::SelectedRows() const
{
    return ZoSelectedRows(m_list);
}

void ZoDlgTimeTableSetup::SelectName(std::wstring const& name)
{
    for (int row = 0; row < m_model->rowCount(); ++row) {
        if (m_model->NameAt(row) == name) {
            QModelIndex const index = m_model->index(row, 0);
            m_list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect
                                                                 | QItemSelectionModel::Rows);
            m_list->scrollTo(index);
            return;
        }
    }
}

bool ZoDlgTimeTableSetup::RunEditor(int kind, XmlNode* element, XmlNode* copyRoot)
{
    XmlNode* days = TimeTableContainer(m_document, KindDay);
    XmlNode* weeks = TimeTableContainer(m_document, KindWeek);
    XmlNode* calendars = TimeTableContainer(m_document, KindCalendar);
    switch (kind) {
    case KindDay: {
        ZoDlgTimeTableDaily editor(this, element, copyRoot, weeks, calendars);
        return editor.DoModal() == QDialog::Accepted;
    }
    case KindWeek: {
        ZoDlgTimeTableWeekly editor(this, element, copyRoot, days, calendars);
        return editor.DoModal() == QDialog::Accepted;
    }
    case KindCalendar: {
        ZoDlgTimeTableYearly editor(this, element, copyRoot, days, weeks);
        return editor.DoModal() == QDialog::Accepted;
    }
    default:
        return false;
    }
}

bool ZoDlgTimeTableSetup::AddNew(int kind)
{
    XmlNode* root = m_document ? m_document->Root() : nullptr;
    if (!root)
        return false;
    TimeTableKindInfo const& info = KindInfo(kind);
    XmlNode* live = root->Child(info.container);
    auto copy = live ? std::make_unique<XmlDocument>(*live) : std::make_unique<XmlDocument>();
    if (!live)
        copy->Create(info.container);
    XmlNode* element = copy->Root()->NewChild(info.tag);
    element->SetValue(L"id", ZoNewGuidText());
    if (kind == KindDay)
        element->SetValue(L"color", L"FFFFFF");
    if (!RunEditor(kind, element, copy->Root()))
        return false;
    m_lastEdited = element->Value(L"name", L"");
    m_model->Clear();
    // A document without this container gets it with its first table, so that nothing
    // the user confirmed is lost.
    if (!live)
        live = root->NewChild(info.container);
    *live = *copy->Root();
    return true;
}

bool ZoDlgTimeTableSetup::Modify(int kind, XmlNode* element)
{
    XmlNode* live = TimeTableContainer(m_document, kind);
    if (!live || !element)
        return false;
    std::wstring const name = element->Value(L"name", L"");
    XmlDocument copy(*live);
    XmlNode* edited = copy.Root()->NodeV(KindInfo(kind).byName, name.c_str());
    if (!edited || !RunEditor(kind, edited, copy.Root()))
        return false;
    m_lastEdited = edited->Value(L"name", L"");
    m_model->Clear();
    *live = *copy.Root();
    return true;
}

bool ZoDlgTimeTableSetup::AddNewTimeTableDaily() { return AddNew(KindDay); }
bool ZoDlgTimeTableSetup::AddNewTimeTableWeekly() { return AddNew(KindWeek); }
bool ZoDlgTimeTableSetup::AddNewTimeTableYearly() { return AddNew(KindCalendar); }
bool ZoDlgTimeTableSetup::ModifyTimeTableDaily(XmlNode* element) { return Modify(KindDay, element); }
bool ZoDlgTimeTableSetup::ModifyTimeTableWeekly(XmlNode* element) { return Modify(KindWeek, element); }
bool ZoDlgTimeTableSetup::ModifyTimeTableYearly(XmlNode* element) { return Modify(KindCalendar, element); }

void ZoDlgTimeTableSetup::OnAdd()
{
    ZoDlgTimeTableWizzard chooser(this);
    if (chooser.DoModal() != QDialog::Accepted)
        return;
    bool added = false;
    switch (chooser.Kind()) {
    case KindDay: added = AddNewTimeTableDaily(); break;
    case KindWeek: added = AddNewTimeTableWeekly(); break;
    case KindCalendar: added = AddNewTimeTableYearly(); break;
    default: break;
    }
    if (!added)
        return;
    m_modified = true;
    UpdateList();
    SelectName(m_lastEdited);
}

void ZoDlgTimeTableSetup::OnModify()
{
    std::vector<int> const rows = SelectedRows();
    if (rows.empty())
        return;
    TimeTablesListModel::Row const row = *m_model->RowAt(rows.front());
    bool changed = false;
    switch (row.kind) {
    case KindDay: changed = ModifyTimeTableDaily(row.element); break;
    case KindWeek: changed = ModifyTimeTableWeekly(row.element); break;
    case KindCalendar: changed = ModifyTimeTableYearly(row.element); break;
    default: break;
    }
    if (!changed)
        return;
    m_modified = true;
    UpdateList();
    SelectName(m_lastEdited);
}

void ZoDlgTimeTableSetup::OnTimeline()
{
    std::vector<int> const rows = SelectedRows();
    if (rows.size() == 1)
        ZoShowTimeline(this, m_document->Root(), m_model->RowAt(rows.front())->element->Value(L"id", L""));
}

void ZoDlgTimeTableSetup::OnDelete()
{
    std::vector<int> const rows = SelectedRows();
    if (rows.empty() || !ZoAskYesNo(this, 32774))
        return;
    std::vector<XmlNode*> doomed;
    doomed.reserve(rows.size());
    for (int row : rows)
        if (TimeTablesListModel::Row const* entry = m_model->RowAt(row))
            doomed.push_back(entry->element);
    int const firstRow = rows.front();
    m_model->Clear();
    // References to the deleted tables are left as they are: readers accept dangling ids.
    for (XmlNode* element : doomed)
        element->Parent()->RemoveChild(element);
    m_modified = true;
    UpdateList();
    ZoSelectRowAfterRemoval(m_list, firstRow);
}

void ZoDlgTimeTableSetup::CopyToClipboard()
{
    std::vector<int> const rows = SelectedRows();
    if (rows.empty())
        return;
    std::vector<XmlNode const*> elements;
    elements.reserve(rows.size());
    for (int row : rows)
        elements.push_back(m_model->RowAt(row)->element);
    std::string const text = BuildTimeTablesClipboardText(elements);
    PutToClipboard(text.c_str(), text.size() + 1, kClipboardSelector);
}

void ZoDlgTimeTableSetup::PasteFromClipboard()
{
    std::string buffer;
    int const length = GetFromClipboard(buffer, kClipboardSelector);
    if (length < 1 || !m_document)
        return;
    EventNameSet const names = m_model->NameSet();
    m_model->Clear();
    bool const pasted = PasteTimeTablesText(std::string_view(buffer).substr(0, std::size_t(length)), *m_document, names);
    if (pasted)
        m_modified = true;
    UpdateList();
}

std::unique_ptr<QMenu> ZoDlgTimeTableSetup::CreateContextMenu()
{
    bool const selected = !SelectedRows().empty();
    std::string buffer;
    bool const canPaste = GetFromClipboard(buffer, kClipboardSelector) >= 1 && IsTimeTablesClipboardText(buffer);
    std::unique_ptr<QMenu> menu = ZoNewCopyPasteMenu(this, selected, canPaste, [this] { CopyToClipboard(); },
                                                     [this] { PasteFromClipboard(); });
    std::vector<int> const rows = SelectedRows();
    if (m_whereUsed && rows.size() == 1) {
        if (!menu)
            menu = std::make_unique<QMenu>(this);
        QString const reference = QStringLiteral("timetable:") + QString::fromStdWString(m_model->NameAt(rows.front()));
        QAction* uses = menu->addAction(ZoText(64767), this, [this, reference] { m_whereUsed(this, reference); });
        uses->setObjectName(QStringLiteral("whereUsedAction"));
    }
    return menu;
}

void ZoDlgTimeTableSetup::OnRclickZoeList(QPoint const& position)
{
    if (std::unique_ptr<QMenu> menu = CreateContextMenu())
        menu->exec(m_list->viewport()->mapToGlobal(position));
}

void ZoDlgTimeTableSetup::OnColumnclickList(int column)
{
    m_model->ClickColumn(column);
    UpdateSortIndicator();
    UpdateButtons();
}

void ZoDlgTimeTableSetup::OnOK()
{
    if (m_modified)
        accept();
    else
        reject();
}

bool ZoDlgTimeTableSetup::OnKeydownList(QKeyEvent* key)
{
    return ZoListKey(key, !SelectedRows().empty(),
                     {.copy = [this] { CopyToClipboard(); },
                      .paste = [this] { PasteFromClipboard(); },
                      .add = [this] { OnAdd(); },
                      .remove = [this] { OnDelete(); },
                      .open = [this] { OnModify(); }});
}

void ZoDlgTimeTableSetup::OnDblclkZoeList()
{
    if (!SelectedRows().empty())
        OnModify();
}

bool ZoDlgTimeTableSetup::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress)
        return OnKeydownList(static_cast<QKeyEvent*>(event));
    if (ZoListViewportEvent(m_list, watched, event, [this] { AdjustColumnsSize(); }, [this] { OnDblclkZoeList(); }))
        return true;
    return ZoDialog::eventFilter(watched, event);
}
