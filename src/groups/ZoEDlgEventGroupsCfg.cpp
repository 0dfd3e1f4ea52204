#include "groups/ZoEDlgEventGroupsCfg.h"
#include "groups/EventGroupsModel.h"
#include "groups/GroupMembers.h"
#include "groups/NameRowsModel.h"
#include "groups/ZoDlgEventNewModifyGroup.h"
#include "groups/ZoDlgSelect.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMessage.h"
#include <QBoxLayout>
#include <QEvent>
#include <QGroupBox>
#include <QHeaderView>
#include <QMenu>
#include <QKeyEvent>
#include <QPushButton>
#include <QTreeView>
#include <algorithm>
#include <memory>

using XmlNode = XmlDocument::XmlNode;

namespace {

QPushButton* NewButton(QWidget* parent, char const* objectName, QIcon const& icon)
{
    auto* button = new QPushButton(icon, QString(), parent);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false);
    return button;
}

std::vector<int> SortedRows(QTreeView const* list)
{
    std::vector<int> rows;
    for (QModelIndex const& index : list->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    return rows;
}

bool IsEnter(QKeyEvent const* key)
{
    return key->key() == Qt::Key_Return || key->key() == Qt::Key_Enter;
}

} // namespace

ZoEDlgEventGroupsCfg::ZoEDlgEventGroupsCfg(QWidget* parent, XmlDocument* eventsCfg)
    : ZoDialog(parent)
    , m_eventsCfg(eventsCfg)
{
    m_model = new EventGroupsModel(eventsCfg, this);
    m_members = new NameRowsModel(this);
    m_members->SetSorted(true);

    m_groupsBox = new QGroupBox(this);
    m_groupsBox->setObjectName(QStringLiteral("groupsBox"));
    m_list = ZoNewListView(m_groupsBox, "groupsList", m_model);
    m_list->setIconSize(QSize(16, 16));
    m_list->setSortingEnabled(false); // a heading click refills the list in the other order
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    connect(m_list, &QWidget::customContextMenuRequested, this, [this](QPoint const& position) {
        if (std::unique_ptr<QMenu> menu = CreateContextMenu())
            menu->exec(m_list->viewport()->mapToGlobal(position));
    });
    m_list->header()->setSectionsClickable(true);
    m_list->header()->setSortIndicatorShown(true);
    m_list->header()->setStretchLastSection(true);
    m_addButton = NewButton(m_groupsBox, "addButton", ZoBitmapIcon(2405));
    m_modifyButton = NewButton(m_groupsBox, "modifyButton", ZoBitmapIcon(2406));
    m_deleteButton = NewButton(m_groupsBox, "deleteButton", ZoBitmapIcon(2407));

    m_membersBox = new QGroupBox(this);
    m_membersBox->setObjectName(QStringLiteral("membersBox"));
    m_memberList = ZoNewListView(m_membersBox, "membersList", m_members);
    m_memberList->setIconSize(QSize(16, 16));
    m_memberList->header()->setSectionsClickable(false);
    m_memberList->header()->setStretchLastSection(true);
    m_addMemberButton = NewButton(m_membersBox, "addMemberButton", ZoBitmapIcon(2417));
    m_removeMemberButton = NewButton(m_membersBox, "removeMemberButton", ZoBitmapIcon(2419));

    m_okButton = NewButton(this, "okButton", ZoImageIcon(L"OK-16.png"));
    m_okButton->setDefault(true);
    m_cancelButton = NewButton(this, "cancelButton", ZoImageIcon(L"CANCEL-16.png"));

    connect(m_addButton, &QPushButton::clicked, this, &ZoEDlgEventGroupsCfg::OnAdd);
    connect(m_modifyButton, &QPushButton::clicked, this, &ZoEDlgEventGroupsCfg::OnModify);
    connect(m_deleteButton, &QPushButton::clicked, this, &ZoEDlgEventGroupsCfg::OnDelete);
    connect(m_addMemberButton, &QPushButton::clicked, this, &ZoEDlgEventGroupsCfg::OnAddEvent);
    connect(m_removeMemberButton, &QPushButton::clicked, this, &ZoEDlgEventGroupsCfg::OnDeleteEvent);
    connect(m_okButton, &QPushButton::clicked, this, &ZoEDlgEventGroupsCfg::OnOK);
    connect(m_cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_list->header(), &QHeaderView::sectionClicked, this, &ZoEDlgEventGroupsCfg::OnColumnclickList);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZoEDlgEventGroupsCfg::OnItemchangedList);
    connect(m_memberList->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZoEDlgEventGroupsCfg::UpdateButtons);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
    m_memberList->installEventFilter(this);

    setSizeGripEnabled(true);
    Layout();
}

ZoEDlgEventGroupsCfg::~ZoEDlgEventGroupsCfg()
{
    m_list->removeEventFilter(this);
    m_list->viewport()->removeEventFilter(this);
    m_memberList->removeEventFilter(this);
}

void ZoEDlgEventGroupsCfg::Layout()
{
    auto const listWithButtons = [](QGroupBox* box, QTreeView* list, std::initializer_list<QPushButton*> buttons) {
        auto* column = new QVBoxLayout;
        for (QPushButton* button : buttons)
            column->addWidget(button);
        column->addStretch(1);
        auto* row = new QHBoxLayout(box);
        row->addWidget(list, 1);
        row->addLayout(column);
    };
    listWithButtons(m_groupsBox, m_list, {m_addButton, m_modifyButton, m_deleteButton});
    listWithButtons(m_membersBox, m_memberList, {m_addMemberButton, m_removeMemberButton});

    auto* boxes = new QHBoxLayout;
    boxes->addWidget(m_groupsBox, 1);
    boxes->addWidget(m_membersBox, 1);

    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(m_okButton);
    bottom->addWidget(m_cancelButton);

    auto* main = new QVBoxLayout(this);
    main->addLayout(boxes, 1);
    main->addLayout(bottom);
}

void ZoEDlgEventGroupsCfg::OnInitDialog()
{
    setWindowTitle(ZoText(32787));
    m_keys.Set(m_groupsBox, ZoText(382));
    // Both lists have an Add and a Delete: the member Add takes its letter before the group
    // Delete does, so that each of the five buttons gets a letter of its own.
    m_addButton->setText(m_keys.Apply(ZoText(378)));
    m_modifyButton->setText(m_keys.Apply(ZoText(379)));
    m_addMemberButton->setText(m_keys.Apply(ZoText(378)));
    m_deleteButton->setText(m_keys.Apply(ZoText(380)));
    m_removeMemberButton->setText(m_keys.Apply(ZoText(380)));
    m_okButton->setText(ZoText(311));
    m_cancelButton->setText(ZoText(312));
    m_members->SetIcon(ZoBitmapIcon(2416));

    m_eventCount = CountEvents(Events());
    UpdateList();
    resize(sizeHint().expandedTo(QSize(760, 480)));
    m_list->setFocus();
}

XmlNode* ZoEDlgEventGroupsCfg::Events() const
{
    return m_eventsCfg && m_eventsCfg->Root() ? m_eventsCfg->Root()->Child(L"events") : nullptr;
}

void ZoEDlgEventGroupsCfg::UpdateList()
{
    m_model->UpdateList();
    UpdateSortIndicator();
    UpdateButtons();
    UpdateEventList();
}

void ZoEDlgEventGroupsCfg::UpdateSortIndicator()
{
    m_list->header()->setSortIndicator(0, m_model->Descending() ? Qt::DescendingOrder : Qt::AscendingOrder);
}

void ZoEDlgEventGroupsCfg::UpdateEventList()
{
    std::vector<int> const rows = SelectedGroupRows();
    GroupRecord const* record = rows.size() == 1 ? m_model->RecordAt(rows.front()) : nullptr;
    // A copy of the fixed texts' letters: the title changes, its mnemonic must stay free.
    ZoMnemonics keys = m_keys;
    if (record) {
        std::wstring const title =
            ZoFormatN(1023, ZoLoadString(32783).c_str(), record->name.toStdWString().c_str());
        keys.Set(m_membersBox, QString::fromStdWString(title));
        m_members->SetNames(record->members);
    } else {
        keys.Set(m_membersBox, ZoText(32782));
        m_members->Clear();
    }
    UpdateButtons();
}

void ZoEDlgEventGroupsCfg::UpdateButtons()
{
    std::vector<int> const rows = SelectedGroupRows();
    GroupRecord const* record = rows.size() == 1 ? m_model->RecordAt(rows.front()) : nullptr;
    m_addButton->setEnabled(true);
    m_modifyButton->setEnabled(rows.size() == 1);
    m_deleteButton->setEnabled(!rows.empty());
    m_addMemberButton->setEnabled(record && record->members.size() < std::size_t(std::max(0, m_eventCount)));
    m_removeMemberButton->setEnabled(record && m_memberList->selectionModel()->hasSelection());
}

std::unique_ptr<QMenu> ZoEDlgEventGroupsCfg::CreateContextMenu()
{
    std::vector<int> const rows = SelectedGroupRows();
    if (!m_whereUsed || rows.size() != 1)
        return nullptr;
    auto menu = std::make_unique<QMenu>(this);
    QString const reference = QStringLiteral("group:") + m_model->index(rows.front(), 0).data().toString();
    QAction* uses = menu->addAction(ZoText(64767), this, [this, reference] { m_whereUsed(this, reference); });
    uses->setObjectName(QStringLiteral("whereUsedAction"));
    return menu;
}

std::vector<int> ZoEDlgEventGroupsCfg::SelectedGroupRows() const
{
    return SortedRows(m_list);
}

std::vector<int> ZoEDlgEventGroupsCfg::SelectedMemberRows() const
{
    return SortedRows(m_memberList);
}

void ZoEDlgEventGroupsCfg::SelectRow(int row)
{
    QModelIndex const index = m_model->index(row, 0);
    if (!index.isValid())
        return;
    m_list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_list->scrollTo(index);
}

void ZoEDlgEventGroupsCfg::SelectGroup(QString const& name)
{
    int const row = m_model->FindName(name);
    if (row >= 0)
        SelectRow(row);
}

void ZoEDlgEventGroupsCfg::OnItemchangedList()
{
    UpdateEventList();
}

void ZoEDlgEventGroupsCfg::OnAdd()
{
    XmlNode* root = m_eventsCfg ? m_eventsCfg->Root() : nullptr;
    if (!root)
        return;
    // A project without groups gets its `eventsGroups` with its first group; a cancelled
    // name dialog leaves the document as it was.
    XmlNode* groups = root->Child(L"eventsGroups");
    auto copy = groups ? std::make_unique<XmlDocument>(*groups) : std::make_unique<XmlDocument>();
    if (!groups)
        copy->Create(L"eventsGroups");
    XmlNode* group = copy->Root()->NewChild(L"eventsGroup");
    group->SetValue(L"id", ZoNewGuidText());
    ZoDlgEventNewModifyGroup dialog(this, group, copy->Root());
    if (dialog.DoModal() != QDialog::Accepted)
        return;

    QString const name = QString::fromStdWString(group->Value(L"name", L""));
    m_model->Clear();
    if (!groups)
        groups = root->NewChild(L"eventsGroups");
    *groups = *copy->Root();
    m_modified = true;
    UpdateList();
    SelectGroup(name);
}

void ZoEDlgEventGroupsCfg::OnModify()
{
    std::vector<int> const rows = SelectedGroupRows();
    XmlNode* groups = m_eventsCfg && m_eventsCfg->Root() ? m_eventsCfg->Root()->Child(L"eventsGroups") : nullptr;
    if (rows.empty() || !groups)
        return;
    std::wstring const name = m_model->RecordAt(rows.front())->name.toStdWString();
    XmlDocument copy(*groups);
    // Found again by name: a name the path cannot find leaves the group as it is.
    XmlNode* group = copy.Root()->NodeV(L"/eventsGroup?name=%s?", name.c_str());
    if (!group)
        return;
    ZoDlgEventNewModifyGroup dialog(this, group, copy.Root());
    if (dialog.DoModal() != QDialog::Accepted)
        return;

    // Members name the group by its id, which a rename keeps.
    QString const newName = QString::fromStdWString(group->Value(L"name", L""));
    m_model->Clear();
    *groups = *copy.Root();
    m_modified = true;
    UpdateList();
    SelectGroup(newName);
}

void ZoEDlgEventGroupsCfg::OnDelete()
{
    std::vector<int> const rows = SelectedGroupRows();
    if (rows.empty() || !ZoAskYesNo(this, 32788))
        return;
    std::vector<XmlNode*> doomed;
    doomed.reserve(rows.size());
    for (int row : rows)
        doomed.push_back(m_model->GroupAt(row));
    int const firstRow = rows.front();

    m_model->Clear();
    DeleteGroups(Events(), doomed);
    m_modified = true;
    UpdateList();
    if (m_model->rowCount() > 0)
        SelectRow(std::min(firstRow, m_model->rowCount() - 1));
}

void ZoEDlgEventGroupsCfg::OnAddEvent()
{
    std::vector<int> const rows = SelectedGroupRows();
    if (rows.empty())
        return;
    GroupRecord* record = m_model->RecordAt(rows.front());
    std::wstring const id = record->group->Value(L"id", L"");
    XmlNode* events = Events();
    std::vector<std::wstring> names = NonMemberNames(events, id);
    ZoDlgSelect dialog(this, names, 0);
    if (dialog.DoModal() != QDialog::Accepted)
        return;

    std::vector<QString> const added = AddGroupMembers(events, id, names);
    record->members.insert(record->members.end(), added.begin(), added.end());
    m_modified = true;
    UpdateEventList();
}

void ZoEDlgEventGroupsCfg::OnDeleteEvent()
{
    std::vector<int> const rows = SelectedGroupRows();
    std::vector<int> const memberRows = SelectedMemberRows();
    if (rows.empty() || memberRows.empty())
        return;
    GroupRecord* record = m_model->RecordAt(rows.front());
    std::wstring const question =
        ZoFormatN(255, ZoLoadString(32786).c_str(), record->name.toStdWString().c_str());
    if (!ZoAskYesNoText(this, 32786, question))
        return;

    std::vector<QString> names;
    names.reserve(memberRows.size());
    for (int row : memberRows)
        names.push_back(m_members->NameAt(row));
    RemoveGroupMembers(Events(), record->group->Value(L"id", L""), names, record->members);
    m_modified = true;
    UpdateEventList();
}

void ZoEDlgEventGroupsCfg::OnOK()
{
    if (m_modified)
        accept();
    else
        reject();
}

void ZoEDlgEventGroupsCfg::OnColumnclickList()
{
    // The groups that were selected stay selected in the other order.
    std::vector<XmlNode*> selected;
    for (int row : SelectedGroupRows())
        selected.push_back(m_model->GroupAt(row));
    m_model->SetDescending(!m_model->Descending());
    UpdateList();
    if (selected.empty())
        return;
    QItemSelection selection;
    for (XmlNode* group : selected) {
        int const row = m_model->FindGroup(group);
        if (row >= 0)
            selection.select(m_model->index(row, 0), m_model->index(row, 0));
    }
    m_list->selectionModel()->select(selection, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
}

bool ZoEDlgEventGroupsCfg::OnKeydownList(QKeyEvent* key)
{
    if (key->modifiers() & ~Qt::KeypadModifier)
        return false;
    if (key->key() == Qt::Key_Insert) {
        OnAdd();
        return true;
    }
    if (key->key() == Qt::Key_Delete) {
        if (!SelectedGroupRows().empty())
            OnDelete();
        return true;
    }
    // Enter renames the selected group, as a double click does (without a selection it
    // falls through to the dialog's default button).
    if (IsEnter(key) && !SelectedGroupRows().empty()) {
        OnModify();
        return true;
    }
    return false;
}

bool ZoEDlgEventGroupsCfg::OnKeydownEventList(QKeyEvent* key)
{
    if (key->modifiers() & ~Qt::KeypadModifier)
        return false;
    // The keys do what the buttons do, and only when the button could be pressed.
    if (key->key() == Qt::Key_Insert) {
        if (m_addMemberButton->isEnabled())
            OnAddEvent();
        return true;
    }
    if (key->key() == Qt::Key_Delete) {
        if (m_removeMemberButton->isEnabled())
            OnDeleteEvent();
        return true;
    }
    // A member has nothing to open: Enter on a selected member must not close the dialog.
    if (IsEnter(key) && !SelectedMemberRows().empty())
        return true;
    return false;
}

bool ZoEDlgEventGroupsCfg::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        if (watched == m_list)
            return OnKeydownList(static_cast<QKeyEvent*>(event));
        if (watched == m_memberList)
            return OnKeydownEventList(static_cast<QKeyEvent*>(event));
    }
    if (ZoListViewportEvent(m_list, watched, event, {}, [this] {
            if (!SelectedGroupRows().empty())
                OnModify();
        }))
        return true;
    return ZoDialog::eventFilter(watched, event);
}
