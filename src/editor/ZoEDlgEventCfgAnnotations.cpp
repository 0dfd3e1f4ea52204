// The event editor's annotation area: the three annotation texts with their wizard, the
// argument list and its commands, and the layout of the area (the group list's commands are
// in ZoEDlgEventCfgGroups.cpp).
#include "editor/ZoEDlgEventCfg.h"

#include "editor/ZoAnnotationData.h"
#include "editor/ZoAnnotationPlaceholders.h"
#include "editor/ZoArgumentsListModel.h"
#include "editor/ZoEDlgAnnotationSelectWizzard.h"
#include "editor/ZoEDlgAnnotationWizzard.h"
#include "editor/ZoEDlgEventArgumentCfg.h"
#include "editor/ZoEventGroupsListModel.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoWizardButton.h"

#include <QApplication>
#include <QCheckBox>
#include <QEvent>
#include <QFormLayout>
#include <QGroupBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QToolButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <functional>

namespace {

// Hands the keys pressed in the watched lists to the editor (Enter modifies, Delete deletes).
class ListKeys : public QObject {
public:
    using Handler = std::function<bool(QTreeView*, int)>;
    ListKeys(QObject* parent, Handler handler)
        : QObject(parent)
        , m_handler(std::move(handler))
    {
    }

protected:
    bool eventFilter(QObject* watched, QEvent* event) override
    {
        if (event->type() == QEvent::KeyPress) {
            if (auto* list = qobject_cast<QTreeView*>(watched))
                return m_handler(list, static_cast<QKeyEvent*>(event)->key());
        }
        return QObject::eventFilter(watched, event);
    }

private:
    Handler m_handler;
};

QPushButton* NewListButton(QWidget* parent, char const* objectName, QIcon const& icon, QString const& text)
{
    auto* button = new QPushButton(icon, text, parent);
    button->setObjectName(QLatin1String(objectName));
    button->setAutoDefault(false);
    return button;
}

QTreeView* NewAnnotationList(QWidget* parent, char const* objectName, QAbstractItemModel* model,
                             QAbstractItemView::SelectionMode mode)
{
    QTreeView* list = ZoNewListView(parent, objectName, model, mode);
    list->setSortingEnabled(false); // a heading click sorts once, by the list's own rules
    list->header()->setSectionsClickable(true);
    list->header()->setStretchLastSection(true);
    list->header()->setSectionResizeMode(QHeaderView::Interactive);
    list->setMinimumHeight(90);
    return list;
}

// A list with its command buttons in a column at its right, under its label.
QVBoxLayout* ListWithButtons(QLabel* label, QTreeView* list, std::initializer_list<QPushButton*> buttons)
{
    auto* column = new QVBoxLayout;
    for (QPushButton* button : buttons)
        column->addWidget(button);
    column->addStretch(1);
    auto* row = new QHBoxLayout;
    row->addWidget(list, 1);
    row->addLayout(column);
    auto* box = new QVBoxLayout;
    box->addWidget(label);
    box->addLayout(row, 1);
    return box;
}

QLineEdit* NewAnnotationEdit(QWidget* parent, char const* objectName)
{
    auto* edit = new QLineEdit(parent);
    edit->setObjectName(QLatin1String(objectName));
    edit->setMaxLength(256);
    // "%%" in the text table is the percent sign itself.
    edit->setToolTip(QString::fromStdWString(ZoFormat(ZoLoadString(63100).c_str())));
    return edit;
}

QLabel* NewBuddyLabel(QWidget* parent, char const* objectName, QString const& text, QWidget* buddy)
{
    auto* label = new QLabel(text, parent);
    label->setObjectName(QLatin1String(objectName));
    label->setBuddy(buddy);
    return label;
}

// A position in a line edit's text (UTF-16 units) as a position in its wide text.
int WidePosition(QString const& text, int position)
{
    return int(text.left(position).toStdWString().size());
}

} // namespace

// ---- the area ---------------------------------------------------------------------------

QWidget* ZoEDlgEventCfg::BuildAnnotationArea(QWidget* page)
{
    auto* area = new QGroupBox(ZoText(36787), page);
    area->setObjectName(QStringLiteral("annotationGroup"));

    m_groups = new ZoEventGroupsListModel(this);
    m_arguments = new ZoArgumentsListModel(this);
    m_groupsList = NewAnnotationList(area, "groupsList", m_groups, QAbstractItemView::ExtendedSelection);
    m_addGroup = NewListButton(area, "addGroupButton", ZoBitmapIcon(2417), m_keys.Apply(ZoText(378)));
    m_deleteGroup = NewListButton(area, "deleteGroupButton", ZoBitmapIcon(2419), m_keys.Apply(ZoText(380)));
    m_argumentsList = NewAnnotationList(area, "argumentsList", m_arguments, QAbstractItemView::SingleSelection);
    m_addArgument = NewListButton(area, "addArgumentButton", ZoImageIcon(L"NEW-16.png"), m_keys.Apply(ZoText(378)));
    m_modifyArgument =
        NewListButton(area, "modifyArgumentButton", ZoImageIcon(L"MODIFY-16.png"), m_keys.Apply(ZoText(379)));
    m_deleteArgument =
        NewListButton(area, "deleteArgumentButton", ZoImageIcon(L"REMOVE-16.png"), m_keys.Apply(ZoText(380)));

    auto* lists = new QHBoxLayout;
    lists->setSpacing(18);
    lists->addLayout(ListWithButtons(NewBuddyLabel(area, "groupsLabel", m_keys.Apply(ZoText(382)), m_groupsList),
                                     m_groupsList, {m_addGroup, m_deleteGroup}),
                     1);
    lists->addLayout(
        ListWithButtons(NewBuddyLabel(area, "argumentsLabel", m_keys.Apply(ZoText(32807)), m_argumentsList),
                        m_argumentsList, {m_addArgument, m_modifyArgument, m_deleteArgument}),
        1);

    m_annotation = NewAnnotationEdit(area, "annotationEdit");
    m_deaAnnotation = NewAnnotationEdit(area, "deaAnnotationEdit");
    m_ackAnnotation = NewAnnotationEdit(area, "ackAnnotationEdit");
    m_annotationWizard = ZoNewWizardButton(area, "annotationWizardButton", m_annotation, ZoText(63101));
    m_deaAnnotationWizard = ZoNewWizardButton(area, "deaAnnotationWizardButton", m_deaAnnotation, ZoText(63101));
    m_ackAnnotationWizard = ZoNewWizardButton(area, "ackAnnotationWizardButton", m_ackAnnotation, ZoText(63101));
    auto* texts = new QFormLayout;
    texts->setFieldGrowthPolicy(QFormLayout::ExpandingFieldsGrow);
    texts->setLabelAlignment(Qt::AlignLeft | Qt::AlignVCenter);
    texts->addRow(NewBuddyLabel(area, "annotationLabel", m_keys.Apply(ZoText(36788)), m_annotation),
                  ZoFieldWithButton(m_annotation, m_annotationWizard));
    texts->addRow(NewBuddyLabel(area, "deaAnnotationLabel", m_keys.Apply(ZoText(36789)), m_deaAnnotation),
                  ZoFieldWithButton(m_deaAnnotation, m_deaAnnotationWizard));
    texts->addRow(NewBuddyLabel(area, "ackAnnotationLabel", m_keys.Apply(ZoText(36790)), m_ackAnnotation),
                  ZoFieldWithButton(m_ackAnnotation, m_ackAnnotationWizard));

    auto* layout = new QVBoxLayout(area);
    layout->addLayout(lists, 1);
    layout->addSpacing(6);
    layout->addLayout(texts);
    return area;
}

void ZoEDlgEventCfg::ConnectAnnotationHandlers()
{
    connect(m_annotationWizard, &QToolButton::clicked, this, &ZoEDlgEventCfg::OnAnnotationWizzard);
    connect(m_deaAnnotationWizard, &QToolButton::clicked, this, &ZoEDlgEventCfg::OnDeactivateWizzard);
    connect(m_ackAnnotationWizard, &QToolButton::clicked, this, &ZoEDlgEventCfg::OnAcknowledgeWizzard);

    connect(m_addArgument, &QPushButton::clicked, this, &ZoEDlgEventCfg::OnAddAnnotationArgument);
    connect(m_modifyArgument, &QPushButton::clicked, this, &ZoEDlgEventCfg::OnModifyAnnotationArgument);
    connect(m_deleteArgument, &QPushButton::clicked, this, &ZoEDlgEventCfg::OnDeleteAnnotationArgument);
    connect(m_argumentsList, &QTreeView::doubleClicked, this, &ZoEDlgEventCfg::OnDblclkAnnotationList);
    connect(m_argumentsList->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZoEDlgEventCfg::OnItemchangedAnnotationList);
    connect(m_argumentsList->header(), &QHeaderView::sectionClicked, this,
            &ZoEDlgEventCfg::OnColumnclickAnnotationList);

    connect(m_addGroup, &QPushButton::clicked, this, &ZoEDlgEventCfg::OnAddGroup);
    connect(m_deleteGroup, &QPushButton::clicked, this, &ZoEDlgEventCfg::OnDeleteGroup);
    connect(m_groupsList->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZoEDlgEventCfg::OnItemchangedGroupsList);
    connect(m_groupsList->header(), &QHeaderView::sectionClicked, this, &ZoEDlgEventCfg::OnColumnclickGroupsList);

    m_annotationKeys =
        new ListKeys(this, [this](QTreeView* list, int key) { return OnKeydownAnnotationLists(list, key); });
    m_argumentsList->installEventFilter(m_annotationKeys);
    m_groupsList->installEventFilter(m_annotationKeys);
}

bool ZoEDlgEventCfg::OnKeydownAnnotationLists(QTreeView* list, int key)
{
    bool const selected = list->selectionModel()->hasSelection();
    if (key == Qt::Key_Insert) {
        (list == m_argumentsList ? m_addArgument : m_addGroup)->click();
        return true;
    }
    if (!selected)
        return false;
    if (key == Qt::Key_Delete) {
        (list == m_argumentsList ? m_deleteArgument : m_deleteGroup)->click();
        return true;
    }
    if (key == Qt::Key_Return || key == Qt::Key_Enter) {
        // A membership has nothing to modify: Enter on a group is not the editor's OK.
        if (list == m_argumentsList)
            m_modifyArgument->click();
        return true;
    }
    return false;
}

// ---- the annotation wizard --------------------------------------------------------------

int ZoEDlgEventCfg::AnnotationWizzard(std::wstring& text, int selStart, int selEnd)
{
    ZoEDlgAnnotationWizzard wizard(this, m_stopEnabled->isChecked());
    if (wizard.DoModal() != QDialog::Accepted)
        return -1;
    int const choice = wizard.Choice();
    std::wstring placeholder;
    if (choice == ZoChoiceGroup) {
        if (!AddingAnnotationGroup(placeholder))
            return -1;
    } else if (choice == ZoChoiceArgument) {
        if (!AddingAnnotationArgument(placeholder))
            return -1;
    } else if (choice >= 0 && choice < ZoAnnotationChoiceCount) {
        placeholder = ZoPlaceholderText(choice);
    } else {
        return -1;
    }
    return ZoInsertPlaceholder(text, selStart, selEnd, placeholder);
}

bool ZoEDlgEventCfg::AddingAnnotationArgument(std::wstring& out)
{
    ZoEDlgAnnotationSelectWizzard select(this, ZoArgumentValues(*m_event), ZoEDlgAnnotationSelectWizzard::kArguments);
    if (select.DoModal() != QDialog::Accepted)
        return false;
    out = ZoNumberedPlaceholder(L'a', select.Position());
    return true;
}

// The groups offered are those the group list shows, numbered as it numbers them.
bool ZoEDlgEventCfg::AddingAnnotationGroup(std::wstring& out)
{
    ZoEDlgAnnotationSelectWizzard select(this, ZoMemberGroupNames(*m_event, m_groupsRoot),
                                         ZoEDlgAnnotationSelectWizzard::kGroups);
    if (select.DoModal() != QDialog::Accepted)
        return false;
    out = ZoNumberedPlaceholder(L'g', select.Position());
    return true;
}

void ZoEDlgEventCfg::RunAnnotationWizard(QLineEdit* field)
{
    QString const before = field->text();
    int start = field->cursorPosition();
    int end = start;
    if (field->hasSelectedText()) {
        start = field->selectionStart();
        end = field->selectionEnd();
    }
    std::wstring text = before.toStdWString();
    int const wideStart = WidePosition(before, start);
    int const inserted = AnnotationWizzard(text, wideStart, WidePosition(before, end));
    field->setFocus(Qt::OtherFocusReason);
    if (inserted < 0)
        return;
    QString const after = QString::fromStdWString(text);
    // The field would cut the end of the text: the user's words are not thrown away.
    if (after.size() > field->maxLength()) {
        QApplication::beep();
        return;
    }
    field->setText(after);
    field->setCursorPosition(int(QString::fromStdWString(text.substr(0, std::size_t(wideStart + inserted))).size()));
}

void ZoEDlgEventCfg::OnAnnotationWizzard()
{
    RunAnnotationWizard(m_annotation);
}

void ZoEDlgEventCfg::OnDeactivateWizzard()
{
    RunAnnotationWizard(m_deaAnnotation);
}

void ZoEDlgEventCfg::OnAcknowledgeWizzard()
{
    RunAnnotationWizard(m_ackAnnotation);
}

// ---- the argument list ------------------------------------------------------------------

void ZoEDlgEventCfg::UpdateAnnotationList()
{
    m_arguments->Fill(m_event);
    if (m_arguments->SortColumn() >= 0)
        m_argumentsList->header()->setSortIndicator(m_arguments->SortColumn(), m_arguments->Descending()
                                                                                   ? Qt::DescendingOrder
                                                                                   : Qt::AscendingOrder);
    m_argumentsList->header()->setSortIndicatorShown(m_arguments->SortColumn() >= 0);
    AdjustAnnotationListColumnsSize();
    UpdateAnnotationButtons();
}

void ZoEDlgEventCfg::ResetAnnotationList()
{
    m_arguments->SetRows({});
}

void ZoEDlgEventCfg::UpdateAnnotationButtons()
{
    bool const selected = m_argumentsList->selectionModel()->hasSelection();
    m_modifyArgument->setEnabled(selected);
    m_deleteArgument->setEnabled(selected);
}

void ZoEDlgEventCfg::AdjustAnnotationListColumnsSize()
{
    m_argumentsList->header()->resizeSection(ZoNumberedListModel::NumberColumn,
                                             m_argumentsList->fontMetrics().horizontalAdvance(QStringLiteral("0000")) + 12);
}

XmlNode* ZoEDlgEventCfg::SelectedArgument() const
{
    QModelIndexList const rows = m_argumentsList->selectionModel()->selectedRows();
    return rows.isEmpty() ? nullptr : m_arguments->RowAt(rows.first().row()).node;
}

void ZoEDlgEventCfg::OnItemchangedAnnotationList()
{
    UpdateAnnotationButtons();
}

void ZoEDlgEventCfg::OnColumnclickAnnotationList(int column)
{
    m_arguments->ClickColumn(column);
    m_argumentsList->header()->setSortIndicatorShown(true);
    m_argumentsList->header()->setSortIndicator(column, m_arguments->Descending() ? Qt::DescendingOrder
                                                                                  : Qt::AscendingOrder);
}

namespace {

// Selects the row that shows this element, if any.
void SelectNode(QTreeView* list, ZoNumberedListModel const* model, XmlNode const* node)
{
    for (int row = 0; row < model->rowCount(); ++row) {
        if (model->RowAt(row).node == node) {
            list->setCurrentIndex(model->index(row, 0));
            return;
        }
    }
}

} // namespace

// A new argument exists only once its dialog ended with OK.
void ZoEDlgEventCfg::OnAddAnnotationArgument()
{
    XmlNode* argument = ZoAppendArgument(*m_event);
    ZoEDlgEventArgumentCfg dialog(this, argument);
    if (dialog.DoModal() != QDialog::Accepted) {
        ZoRemoveArgument(*m_event, argument);
        return;
    }
    m_changed = true;
    UpdateAnnotationList();
    SelectNode(m_argumentsList, m_arguments, argument);
    m_argumentsList->setFocus(Qt::OtherFocusReason);
}

void ZoEDlgEventCfg::OnModifyAnnotationArgument()
{
    XmlNode* argument = SelectedArgument();
    if (!argument)
        return;
    ZoEDlgEventArgumentCfg dialog(this, argument);
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    m_changed = true;
    UpdateAnnotationList();
    SelectNode(m_argumentsList, m_arguments, argument);
}

void ZoEDlgEventCfg::OnDblclkAnnotationList()
{
    OnModifyAnnotationArgument();
}

// The "%a" numbers already in the texts stay as they are: the user decides what they
// should say now.
void ZoEDlgEventCfg::OnDeleteAnnotationArgument()
{
    XmlNode* argument = SelectedArgument();
    if (!argument)
        return;
    int const row = m_argumentsList->selectionModel()->selectedRows().first().row();
    ResetAnnotationList();
    ZoRemoveArgument(*m_event, argument);
    m_changed = true;
    UpdateAnnotationList();
    if (m_arguments->rowCount() > 0)
        m_argumentsList->setCurrentIndex(m_arguments->index(std::min(row, m_arguments->rowCount() - 1), 0));
}
