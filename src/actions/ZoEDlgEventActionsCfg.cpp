#include "actions/ZoEDlgEventActionsCfg.h"
#include "actions/ZoActionEditors.h"
#include "actions/ZoActionKinds.h"
#include "actions/ZoActionsClipboard.h"
#include "actions/ZoActionsListModel.h"
#include "actions/ZoEDlgEventActionsWizzard.h"
#include "actions/ZoUsersDocument.h"
#include "platform/drivers/ZoSelectDriver.h"
#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoClipboard.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoMnemonics.h"

#include <QDialog>
#include <QHeaderView>
#include <QKeyEvent>
#include <QMenu>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>
#include <algorithm>

using XmlNode = XmlDocument::XmlNode;

namespace {

constexpr int kClipboardSelector = 1;

QPushButton* NewPaneButton(QWidget* parent, char const* objectName, wchar_t const* image, unsigned textId)
{
    auto* button = new QPushButton(ZoImageIcon(image), ZoText(textId), parent);
    button->setObjectName(QLatin1String(objectName));
    // Enter on a pane button goes to the event editor's default button.
    button->setAutoDefault(false);
    button->setDefault(false);
    return button;
}

} // namespace

ZoEDlgEventActionsCfg::ZoEDlgEventActionsCfg(QWidget* parent)
    : QWidget(parent)
{
    setObjectName(QStringLiteral("actionsPane"));
    m_model = new ZoActionsListModel(this);
    m_list = ZoNewListView(this, "actionsList", m_model);
    m_list->setIconSize(QSize(16, 16));
    m_list->setContextMenuPolicy(Qt::CustomContextMenu);
    m_list->header()->setSectionsClickable(true);
    m_list->header()->setSortIndicatorShown(true);
    m_list->header()->setStretchLastSection(true);
    m_list->header()->setSectionResizeMode(QHeaderView::Interactive);

    m_newButton = NewPaneButton(this, "newActionButton", L"NEW-16.png", 378);
    m_modifyButton = NewPaneButton(this, "modifyActionButton", L"MODIFY-16.png", 379);
    m_removeButton = NewPaneButton(this, "removeActionButton", L"REMOVE-16.png", 380);

    auto* buttons = new QVBoxLayout;
    buttons->addWidget(m_newButton);
    buttons->addWidget(m_modifyButton);
    buttons->addWidget(m_removeButton);
    buttons->addStretch(1);
    auto* layout = new QHBoxLayout(this);
    layout->addWidget(m_list, 1);
    layout->addLayout(buttons);

    connect(m_newButton, &QPushButton::clicked, this, &ZoEDlgEventActionsCfg::OnNew);
    connect(m_modifyButton, &QPushButton::clicked, this, &ZoEDlgEventActionsCfg::OnModify);
    connect(m_removeButton, &QPushButton::clicked, this, &ZoEDlgEventActionsCfg::OnRemove);
    connect(m_list->header(), &QHeaderView::sectionClicked, this, &ZoEDlgEventActionsCfg::OnColumnclickList);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZoEDlgEventActionsCfg::UpdateButtons);
    connect(m_list, &QTreeView::doubleClicked, this, [this] {
        if (!SelectedRows().empty())
            OnModify();
    });
    connect(m_list, &QWidget::customContextMenuRequested, this, [this](QPoint const& position) {
        if (std::unique_ptr<QMenu> menu = CreateContextMenu())
            menu->exec(m_list->viewport()->mapToGlobal(position));
    });
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);
    UpdateButtons();
}

ZoEDlgEventActionsCfg::~ZoEDlgEventActionsCfg()
{
    m_list->removeEventFilter(this);
    m_list->viewport()->removeEventFilter(this);
}

void ZoEDlgEventActionsCfg::Initialize(int momentIndex, XmlNode* moment, XmlDocument* users, bool client)
{
    m_momentIndex = momentIndex;
    m_moment = moment;
    m_users = users;
    m_client = client;
    UpdateList();
}

void ZoEDlgEventActionsCfg::SetCaptions(ZoMnemonics keys)
{
    keys.Set(m_newButton, ZoText(378));
    keys.Set(m_modifyButton, ZoText(379));
    keys.Set(m_removeButton, ZoText(380));
}

void ZoEDlgEventActionsCfg::SetEditorFlags(int presetIndex, bool skipCheck, bool keep)
{
    bool const wasPreset = m_presetIndex >= 0;
    m_presetIndex = presetIndex;
    m_skipCheck = skipCheck;
    m_keep = keep;
    // The preset index counts rows in document order: the rows follow it.
    if (wasPreset != (presetIndex >= 0))
        UpdateList();
}

unsigned ZoEDlgEventActionsCfg::AllowedKinds() const
{
    return ZoAllowedActionKinds(m_moment, m_momentIndex, m_client);
}

// ---- list -------------------------------------------------------------------------------

void ZoEDlgEventActionsCfg::UpdateList()
{
    m_model->Fill(m_moment, m_presetIndex < 0);
    UpdateSortIndicator();
    AdjustColumnsSize();
    UpdateButtons();
}

void ZoEDlgEventActionsCfg::UpdateSortIndicator()
{
    ZoShowSortIndicator(m_list, m_model->SortColumn(), m_model->Descending());
}

void ZoEDlgEventActionsCfg::AdjustColumnsSize()
{
    int const width = m_list->viewport()->width();
    m_list->header()->resizeSection(ZoActionsListModel::KindColumn, std::max(110, width * 3 / 10));
}

void ZoEDlgEventActionsCfg::UpdateButtons()
{
    std::vector<int> const rows = SelectedRows();
    ZoActionsListModel::Row const* row = rows.size() == 1 ? m_model->RowAt(rows.front()) : nullptr;
    m_newButton->setEnabled(m_moment != nullptr);
    m_modifyButton->setEnabled(row && row->kind != kActionBeep);
    m_removeButton->setEnabled(!rows.empty());
}

std::vector<int> ZoEDlgEventActionsCfg::SelectedRows() const
{
    return ZoSelectedRows(m_list);
}

void ZoEDlgEventActionsCfg::SelectElement(XmlNode const* element)
{
    int const row = element ? m_model->RowOf(element) : -1;
    if (row < 0)
        return;
    QModelIndex const index = m_model->index(row, 0);
    m_list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    m_list->scrollTo(index);
}

void ZoEDlgEventActionsCfg::Changed(XmlNode const* select)
{
    m_changed = true;
    UpdateList();
    SelectElement(select);
}

void ZoEDlgEventActionsCfg::OnColumnclickList(int column)
{
    m_model->ClickColumn(column);
    UpdateList();
}

// ---- add and modify ---------------------------------------------------------------------

void ZoEDlgEventActionsCfg::OnNew()
{
    if (!m_moment)
        return;
    ZoEDlgEventActionsWizzard wizard(this, AllowedKinds());
    if (wizard.DoModal() != QDialog::Accepted || !wizard.Kind())
        return;
    if (XmlNode* added = AddAction(wizard.Kind()))
        Changed(added);
}

XmlNode* ZoEDlgEventActionsCfg::AddAction(unsigned kind)
{
    ZoActionKindInfo const* info = ZoActionKindInfoOf(kind);
    if (!info)
        return nullptr;
    std::wstring const id = ZoNewGuidText();
    if (kind == kActionDevice) {
        std::wstring device;
        if (!ZoSelectDriver::Select(this, device))
            return nullptr;
        XmlNode* action = m_moment->NewChild(info->tag);
        action->SetValue(L"id", id);
        action->SetValue(L"name", device);
        return action;
    }
    // New actions always go to the end of the moment.
    XmlNode* action = m_moment->NewChild(info->tag);
    action->SetValue(L"id", id);
    if (kind == kActionBeep)
        return action;
    if (kind == kActionMail || kind == kActionSms)
        ZoEnsureUsersLoaded(this, m_users);
    if (ZoRunActionEditor(this, kind, action, m_moment, m_users, ZoActionEditorFlags{}))
        return action;
    // A cancelled editor leaves nothing behind.
    m_moment->RemoveChild(action);
    return nullptr;
}

void ZoEDlgEventActionsCfg::OnModify()
{
    ZoActionsListModel::Row const* row = nullptr;
    if (m_presetIndex >= 0) {
        row = m_model->RowAt(m_presetIndex);
    } else {
        std::vector<int> const rows = SelectedRows();
        row = rows.empty() ? nullptr : m_model->RowAt(rows.front());
    }
    if (!row)
        return;
    XmlNode* const element = row->element;
    if (!ModifyAction(element))
        return;
    if (m_presetIndex >= 0) {
        // Opened to edit one given action: confirming it ends the event editor too (which,
        // opened at a place, neither checks nor writes its own fields).
        OnOK();
        return;
    }
    Changed(element);
}

bool ZoEDlgEventActionsCfg::ModifyAction(XmlNode* element)
{
    unsigned const kind = ZoActionKindOf(*element);
    ZoActionEditorFlags const flags{m_skipCheck, m_keep, m_presetIndex};
    switch (kind) {
    case kActionBeep:
        return false;
    case kActionDevice: {
        std::wstring device = element->Value(L"name", L"");
        if (!ZoSelectDriver::Select(this, device))
            return false;
        element->SetValue(L"name", device);
        return true;
    }
    case kActionMail:
    case kActionSms: {
        // The editor works on a copy: a cancelled edit leaves the element as it was,
        // whatever the editor did meanwhile.
        XmlDocument copy(*element);
        ZoEnsureUsersLoaded(this, m_users);
        if (!ZoRunActionEditor(this, kind, copy.Root(), m_moment, m_users, flags))
            return false;
        *element = *copy.Root();
        return true;
    }
    default:
        return ZoRunActionEditor(this, kind, element, m_moment, m_users, flags);
    }
}

// ---- remove, copy, paste ----------------------------------------------------------------

void ZoEDlgEventActionsCfg::OnRemove()
{
    std::vector<int> const rows = SelectedRows();
    if (rows.empty() || !ZoAskYesNo(this, 32835))
        return;
    std::vector<XmlNode*> doomed;
    doomed.reserve(rows.size());
    for (int row : rows)
        if (ZoActionsListModel::Row const* entry = m_model->RowAt(row))
            doomed.push_back(entry->element);
    int const firstRow = rows.front();
    m_model->Clear();
    for (XmlNode* element : doomed)
        m_moment->RemoveChild(element);
    m_changed = true;
    UpdateList();
    ZoSelectRowAfterRemoval(m_list, firstRow);
}

void ZoEDlgEventActionsCfg::CopyToClipboard()
{
    std::vector<int> const rows = SelectedRows();
    if (rows.empty())
        return;
    std::vector<XmlNode const*> actions;
    actions.reserve(rows.size());
    for (int row : rows)
        actions.push_back(m_model->RowAt(row)->element);
    std::string const text = ZoBuildActionsClipboardText(actions);
    PutToClipboard(text.c_str(), text.size() + 1, kClipboardSelector);
}

void ZoEDlgEventActionsCfg::PasteFromClipboard()
{
    std::string buffer;
    int const length = GetFromClipboard(buffer, kClipboardSelector);
    if (length < 1 || !m_moment)
        return;
    std::vector<XmlNode*> pasted;
    ZoActionsPaste const result = ZoPasteActionsText(std::string_view(buffer).substr(0, std::size_t(length)),
                                                     *m_moment, AllowedKinds(), &pasted);
    // Only a clipboard whose last wrapper gave an action marks the list changed and shows
    // the new rows; see ZoPasteActionsText.
    if (result.lastYielded)
        Changed(pasted.back());
}

std::unique_ptr<QMenu> ZoEDlgEventActionsCfg::CreateContextMenu()
{
    bool const selected = !SelectedRows().empty();
    std::string buffer;
    bool const canPaste = m_moment && GetFromClipboard(buffer, kClipboardSelector) >= 1
        && ZoIsActionsClipboardText(buffer);
    return ZoNewCopyPasteMenu(this, selected, canPaste, [this] { CopyToClipboard(); },
                              [this] { PasteFromClipboard(); });
}

// ---- keys and the event editor ----------------------------------------------------------

void ZoEDlgEventActionsCfg::OnOK()
{
    if (auto* dialog = qobject_cast<QDialog*>(window()); dialog && dialog != static_cast<QWidget*>(this))
        QMetaObject::invokeMethod(dialog, [dialog] { dialog->accept(); }, Qt::QueuedConnection);
}

void ZoEDlgEventActionsCfg::OnCancel()
{
    if (auto* dialog = qobject_cast<QDialog*>(window()); dialog && dialog != static_cast<QWidget*>(this))
        QMetaObject::invokeMethod(dialog, [dialog] { dialog->reject(); }, Qt::QueuedConnection);
}

// Inside the event editor, Enter on no selection and Escape end it as its buttons would.
bool ZoEDlgEventActionsCfg::OnKeydownList(QKeyEvent* key)
{
    return ZoListKey(key, !SelectedRows().empty(),
                     {.copy = [this] { CopyToClipboard(); },
                      .paste = [this] { PasteFromClipboard(); },
                      .add = [this] { OnNew(); },
                      .remove = [this] { OnRemove(); },
                      .open = [this] { OnModify(); },
                      .enterOnNothing = [this] { OnOK(); },
                      .escape = [this] { OnCancel(); }});
}

bool ZoEDlgEventActionsCfg::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress)
        return OnKeydownList(static_cast<QKeyEvent*>(event));
    if (watched == m_list->viewport() && event->type() == QEvent::Resize)
        AdjustColumnsSize();
    return QWidget::eventFilter(watched, event);
}
