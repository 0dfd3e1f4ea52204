#include "events/ZoEDlgEventsCfg.h"
#include "editor/ZoEDlgEventCfg.h"
#include "events/DeviceRegistration.h"
#include "events/EventSearch.h"
#include "events/EventsClipboard.h"
#include "events/EventsListModel.h"
#include "platform/reports/CDlgSearchReplace.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoClipboard.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoListDialogLayout.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoMnemonics.h"
#include <QApplication>
#include <QCursor>
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QMenu>
#include <QPushButton>
#include <QTableView>
#include <algorithm>
#include <cmath>

namespace {

constexpr int kClipboardSelector = 1;

// Shows the wait cursor for as long as it lives.
class WaitCursor {
public:
    WaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~WaitCursor() { QApplication::restoreOverrideCursor(); }
    WaitCursor(WaitCursor const&) = delete;
    WaitCursor& operator=(WaitCursor const&) = delete;
};

QPushButton* NewButton(QWidget* parent, char const* objectName)
{
    auto* button = new QPushButton(parent);
    button->setObjectName(QString::fromLatin1(objectName));
    return button;
}

} // namespace

ZoEDlgEventsCfg::ZoEDlgEventsCfg(QWidget* parent, XmlNode* deviceGroups, XmlDocument* eventsCfg,
                                 XmlDocument const* timeTables, XmlDocument* users)
    : ZoDialog(parent)
    , m_deviceGroups(deviceGroups)
    , m_eventsCfg(eventsCfg)
    , m_timeTables(timeTables)
    , m_users(users)
{
    m_model = new EventsListModel(eventsCfg, timeTables, this);

    m_label = new QLabel(this);
    m_list = ZoNewLongListView(this, "eventsList", m_model);
    m_list->setIconSize(QSize(16, 16));
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    // Sorting stays off on the view: a heading click sorts once, here, by the list's rules.
    m_list->setSortingEnabled(false);
    m_list->horizontalHeader()->setSectionsClickable(true);
    m_list->horizontalHeader()->setSortIndicatorShown(true);
    m_list->horizontalHeader()->setStretchLastSection(false);
    m_list->horizontalHeader()->setSectionResizeMode(QHeaderView::Interactive);

    m_addButton = NewButton(this, "addButton");
    m_modifyButton = NewButton(this, "modifyButton");
    m_deleteButton = NewButton(this, "deleteButton");
    m_okButton = NewButton(this, "okButton");
    m_cancelButton = NewButton(this, "cancelButton");
    m_okButton->setDefault(true);

    connect(m_addButton, &QPushButton::clicked, this, &ZoEDlgEventsCfg::OnAdd);
    connect(m_modifyButton, &QPushButton::clicked, this, &ZoEDlgEventsCfg::OnModify);
    connect(m_deleteButton, &QPushButton::clicked, this, &ZoEDlgEventsCfg::OnDelete);
    connect(m_okButton, &QPushButton::clicked, this, &ZoEDlgEventsCfg::OnOK);
    connect(m_cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_list->horizontalHeader(), &QHeaderView::sectionClicked, this, &ZoEDlgEventsCfg::OnColumnclickList);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZoEDlgEventsCfg::UpdateButtons);
    connect(m_list, &QWidget::customContextMenuRequested, this, &ZoEDlgEventsCfg::OnRclickZoeList);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);

    setSizeGripEnabled(true);
    Layout();
}

ZoEDlgEventsCfg::~ZoEDlgEventsCfg()
{
    delete m_searchDialog; // before the walk it reports to
    m_list->removeEventFilter(this);
    m_list->viewport()->removeEventFilter(this);
}

void ZoEDlgEventsCfg::Layout()
{
    ZoLayoutListDialog(this, m_label, m_list, {m_addButton, m_modifyButton, m_deleteButton}, m_okButton,
                       m_cancelButton);
}

void ZoEDlgEventsCfg::OnInitDialog()
{
    setWindowIcon(ZoVelmoraSetup::instance().ProgramIcon());
    setWindowTitle(ZoText(32791));
    m_label->setText(ZoText(32782));
    ZoMnemonics keys;
    m_addButton->setText(keys.Apply(ZoText(378)));
    m_addButton->setIcon(ZoBitmapIcon(2402));
    m_modifyButton->setText(keys.Apply(ZoText(379)));
    m_modifyButton->setIcon(ZoBitmapIcon(2403));
    m_deleteButton->setText(keys.Apply(ZoText(380)));
    m_deleteButton->setIcon(ZoBitmapIcon(2404));
    m_okButton->setText(ZoText(311));
    m_okButton->setIcon(ZoImageIcon(L"OK-16.png"));
    m_cancelButton->setText(ZoText(312));
    m_cancelButton->setIcon(ZoImageIcon(L"CANCEL-16.png"));

    UpdateList();
    resize(sizeHint().expandedTo(QSize(780, 520)));
    setMinimumSize(size());
    AdjustColumnsSize();
}

void ZoEDlgEventsCfg::UpdateList()
{
    WaitCursor wait;
    m_list->setUpdatesEnabled(false);
    m_model->UpdateList();
    UpdateSortIndicator();
    AdjustColumnsSize();
    m_list->setUpdatesEnabled(true);
    UpdateButtons();
}

void ZoEDlgEventsCfg::UpdateSortIndicator()
{
    ZoShowSortIndicator(m_list, m_model->SortColumn(), m_model->Descending());
}

void ZoEDlgEventsCfg::AdjustColumnsSize()
{
    int const width = m_list->viewport()->width();
    int const timeTable = int(std::lround(0.30 * width));
    int const other = int(std::lround(0.15 * width));
    QHeaderView* header = m_list->horizontalHeader();
    header->resizeSection(EventsListModel::TimeTableColumn, timeTable);
    header->resizeSection(EventsListModel::NotifyColumn, other);
    header->resizeSection(EventsListModel::RecordColumn, other);
    header->resizeSection(EventsListModel::EnabledColumn, other);
    header->resizeSection(EventsListModel::NameColumn, std::max(0, width - timeTable - 3 * other));
}

void ZoEDlgEventsCfg::UpdateButtons()
{
    auto const selected = m_list->selectionModel()->selectedRows().size();
    m_addButton->setEnabled(true);
    m_modifyButton->setEnabled(selected == 1);
    m_deleteButton->setEnabled(selected >= 1);
}

std::vector<int> ZoEDlgEventsCfg::SelectedRows() const
{
    return ZoSelectedRows(m_list);
}

void ZoEDlgEventsCfg::SelectRow(int row)
{
    QModelIndex const index = m_model->index(row, 0);
    if (!index.isValid())
        return;
    m_list->selectionModel()->setCurrentIndex(
        index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_list->scrollTo(index);
}

void ZoEDlgEventsCfg::SelectEvent(std::wstring const& name)
{
    int const row = m_model->FindName(name);
    if (row >= 0)
        SelectRow(row);
}

void ZoEDlgEventsCfg::SelectEvent(XmlNode const* event)
{
    if (event)
        SelectEvent(event->Value(L"name", L""));
}

bool ZoEDlgEventsCfg::RunEventEditor(XmlNode* event, XmlNode* copyRoot, std::wstring const& storedName)
{
    XmlNode const* groups = m_eventsCfg->Root() ? m_eventsCfg->Root()->Child(L"eventsGroups") : nullptr;
    XmlNode const* timeTablesRoot = m_timeTables ? m_timeTables->Root() : nullptr;
    ZoEDlgEventCfg editor(this, event, copyRoot, groups, timeTablesRoot, m_users);
    // The rows hold every other event's name: only a name that one of them bears without
    // regard to case sends the editor through all the events.
    editor.m_mayClash = [this, stored = FoldedName(storedName)](std::wstring_view name) {
        std::string const folded = FoldedName(name);
        return m_model->CountFoldedName(folded) > (folded == stored && !stored.empty() ? 1 : 0);
    };
    return editor.DoModal() == QDialog::Accepted;
}

void ZoEDlgEventsCfg::OnAdd()
{
    XmlNode* root = m_eventsCfg->Root();
    if (!root)
        return;
    // The host creates `events` with the document; should it be missing, the first event
    // added creates it (and a cancelled editor leaves the document as it was).
    XmlNode* events = root->Child(L"events");
    auto copy = events ? std::make_unique<XmlDocument>(*events) : std::make_unique<XmlDocument>();
    if (!events)
        copy->Create(L"events");
    XmlNode* event = copy->Root()->NewChild(L"event");
    event->SetValue(L"id", ZoNewGuidText());
    if (!RunEventEditor(event, copy->Root(), std::wstring()))
        return;

    AddEventToDeviceGroupsNode(m_deviceGroups, *event);
    std::wstring const name = event->Value(L"name", L"");
    m_model->Clear();
    if (!events)
        events = root->NewChild(L"events");
    *events = *copy->Root();
    m_modified = true;
    UpdateList();
    SelectEvent(name);
}

namespace {

// The element of a fresh copy of `container` that stands where `child` stands in it: the
// copy holds the same children in the same order, so both are walked side by side, with no
// name read.
XmlNode* CopyOfChild(XmlNode& container, XmlNode& copy, XmlNode const* child)
{
    XmlNode* copied = copy.FirstChild();
    for (XmlNode const* live = container.FirstChild(); live && copied; live = live->NextSibling()) {
        if (live == child)
            return copied;
        copied = copied->NextSibling();
    }
    return nullptr;
}

} // namespace

void ZoEDlgEventsCfg::OnModify()
{
    std::vector<int> const rows = SelectedRows();
    if (rows.empty())
        return;
    XmlNode* events = m_eventsCfg->Root() ? m_eventsCfg->Root()->Child(L"events") : nullptr;
    if (!events)
        return;
    XmlDocument copy(*events);
    XmlNode* event = CopyOfChild(*events, *copy.Root(), m_model->EventAt(rows.front()));
    if (!event || !RunEventEditor(event, copy.Root(), m_model->NameAt(rows.front())))
        return;

    // The device groups refer to the event by its id, which the editor never changes: a
    // rename needs no further work.
    // The rows are read again right after the assignment, before any view asks for them:
    // an edit that leaves the order as it was then changes the view's rows alone.
    std::wstring const newName = event->Value(L"name", L"");
    *events = *copy.Root();
    m_modified = true;
    UpdateList();
    SelectEvent(newName);
}

void ZoEDlgEventsCfg::OnDelete()
{
    std::vector<int> const rows = SelectedRows();
    if (rows.empty() || !ZoAskYesNo(this, 32792))
        return;

    std::vector<XmlNode*> doomed;
    std::vector<std::wstring> ids;
    for (int row : rows) {
        if (XmlNode* event = m_model->EventAt(row)) {
            doomed.push_back(event);
            ids.push_back(event->Value(L"id", L""));
        }
    }
    int const firstRow = rows.front();

    m_model->Clear();
    m_model->ForgetEvents({doomed.begin(), doomed.end()});
    RemoveEventsFromDeviceGroupsNode(m_deviceGroups, ids);
    for (XmlNode* event : doomed)
        event->Parent()->RemoveChild(event);
    m_modified = true;
    UpdateList();
    if (m_model->rowCount() > 0)
        SelectRow(std::min(firstRow, m_model->rowCount() - 1));
}

void ZoEDlgEventsCfg::OnOK()
{
    if (m_modified)
        accept();
    else
        reject();
}

void ZoEDlgEventsCfg::OnColumnclickList(int column)
{
    m_model->ClickColumn(column);
    UpdateSortIndicator();
    UpdateButtons();
}

void ZoEDlgEventsCfg::CopyToClipboard()
{
    std::vector<int> const rows = SelectedRows();
    if (rows.empty())
        return;
    std::vector<XmlNode const*> events;
    events.reserve(rows.size());
    for (int row : rows)
        events.push_back(m_model->EventAt(row));
    std::string const text = BuildEventsClipboardText(events);
    PutToClipboard(text.c_str(), text.size() + 1, kClipboardSelector);
}

void ZoEDlgEventsCfg::PasteFromClipboard()
{
    std::string buffer;
    int const length = GetFromClipboard(buffer, kClipboardSelector);
    if (length < 1)
        return;
    EventNameSet const names = m_model->NameSet();
    if (!PasteEventsText(std::string_view(buffer).substr(0, std::size_t(length)), *m_eventsCfg,
                         m_deviceGroups, names))
        return;
    m_modified = true;
    UpdateList();
    m_list->selectionModel()->clearSelection();
}

std::unique_ptr<QMenu> ZoEDlgEventsCfg::CreateContextMenu()
{
    std::vector<int> const rows = SelectedRows();
    m_searchStart = rows.empty() ? -1 : rows.front() + 1;

    std::string buffer;
    bool const canPaste = GetFromClipboard(buffer, kClipboardSelector) >= 1 && IsEventsClipboardText(buffer);

    auto menu = std::make_unique<QMenu>(this);
    if (!rows.empty()) {
        QAction* copy = menu->addAction(ZoText(732) + QStringLiteral("\tCtrl+C"), this,
                                        &ZoEDlgEventsCfg::CopyToClipboard);
        copy->setObjectName(QStringLiteral("copyAction"));
    }
    if (canPaste) {
        QAction* paste = menu->addAction(ZoText(742) + QStringLiteral("\tCtrl+V"), this,
                                         &ZoEDlgEventsCfg::PasteFromClipboard);
        paste->setObjectName(QStringLiteral("pasteAction"));
    }
    QAction* search = menu->addAction(ZoText(34894) + QStringLiteral("\tCtrl+F"), this,
                                      &ZoEDlgEventsCfg::OnGroupsSearchReplace);
    search->setObjectName(QStringLiteral("searchAction"));
    if (m_whereUsed && !rows.empty()) {
        XmlNode const* event = m_model->EventAt(rows.front());
        QAction* uses = menu->addAction(ZoText(64767), this, [this, event] {
            if (XmlNode const* chosen = m_whereUsed(this, event))
                SelectEvent(chosen);
        });
        uses->setObjectName(QStringLiteral("whereUsedAction"));
    }
    return menu;
}

void ZoEDlgEventsCfg::OnRclickZoeList(QPoint const& position)
{
    std::unique_ptr<QMenu> menu = CreateContextMenu();
    menu->exec(m_list->viewport()->mapToGlobal(position));
}

bool ZoEDlgEventsCfg::OnKeydownList(QKeyEvent* key)
{
    if (key->matches(QKeySequence::Find)) {
        // As the context menu would: the search starts at the first selected event.
        std::vector<int> const rows = SelectedRows();
        m_searchStart = rows.empty() ? -1 : rows.front() + 1;
        OnGroupsSearchReplace();
        return true;
    }
    // Enter opens the selected event, as a double click does (without a selection it
    // falls through to the dialog's default button).
    return ZoListKey(key, !SelectedRows().empty(),
                     {.copy = [this] { CopyToClipboard(); },
                      .paste = [this] { PasteFromClipboard(); },
                      .add = [this] { OnAdd(); },
                      .remove = [this] { OnDelete(); },
                      .open = [this] { OnModify(); }});
}

// A double click modifies the selected event (the first click has selected its row).
void ZoEDlgEventsCfg::OnDblclkZoeList()
{
    if (!SelectedRows().empty())
        OnModify();
}

bool ZoEDlgEventsCfg::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress)
        return OnKeydownList(static_cast<QKeyEvent*>(event));
    if (ZoListViewportEvent(m_list, watched, event, [this] { AdjustColumnsSize(); }, [this] { OnDblclkZoeList(); }))
        return true;
    return ZoDialog::eventFilter(watched, event);
}
