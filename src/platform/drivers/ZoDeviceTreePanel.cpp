#include "ZoDeviceTreePanel.h"

#include "platform/ui/ZoMnemonics.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoListView.h"

#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QLineEdit>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

// With this many devices or fewer left by a filter, all of them are opened.
constexpr int kOpenAllBelow = 20;

} // namespace

ZoDeviceTreePanel::ZoDeviceTreePanel(QWidget* parent, ZoDeviceTreeModel* model, ZoMnemonics& mnemonics,
                                     unsigned treeLabelId)
    : QWidget(parent)
    , m_model(model)
{
    m_model->setParent(this);
    auto* filterLabel = new QLabel(this);
    mnemonics.Set(filterLabel, ZoText(62102));
    m_filter = new QLineEdit(this);
    m_filter->setObjectName(QStringLiteral("filterEdit"));
    m_filter->setPlaceholderText(ZoText(62103));
    m_filter->setClearButtonEnabled(true);
    filterLabel->setBuddy(m_filter);

    auto* treeLabel = new QLabel(this);
    mnemonics.Set(treeLabel, ZoText(treeLabelId));
    m_tree = ZoNewListView(this, "devicesTree", m_model, QAbstractItemView::SingleSelection);
    m_tree->setRootIsDecorated(true);
    m_tree->setItemsExpandable(true);
    m_tree->setExpandsOnDoubleClick(true);
    m_tree->setAlternatingRowColors(true);
    m_tree->header()->setStretchLastSection(false);
    m_tree->header()->setSectionResizeMode(ZoDeviceTreeModel::DescriptionColumn, QHeaderView::Stretch);
    m_tree->header()->resizeSection(ZoDeviceTreeModel::NameColumn, 200);
    m_tree->header()->resizeSection(ZoDeviceTreeModel::KindColumn, 90);
    treeLabel->setBuddy(m_tree);

    m_details = new QLabel(this);
    m_details->setObjectName(QStringLiteral("detailsText"));
    m_details->setWordWrap(true);
    m_details->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_details->setTextFormat(Qt::PlainText);
    m_details->setFrameShape(QFrame::StyledPanel);
    m_details->setAlignment(Qt::AlignLeft | Qt::AlignTop);
    m_details->setMargin(4);
    m_details->setMinimumHeight(m_details->fontMetrics().lineSpacing() * 5 + 10);

    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(0, 0, 0, 0);
    layout->addWidget(filterLabel);
    layout->addWidget(m_filter);
    layout->addWidget(treeLabel);
    layout->addWidget(m_tree, 1);
    layout->addWidget(m_details);

    m_filter->installEventFilter(this);
    m_tree->installEventFilter(this);
    connect(m_filter, &QLineEdit::textChanged, this, &ZoDeviceTreePanel::OnChangeFilter);
    connect(m_tree->selectionModel(), &QItemSelectionModel::currentChanged, this,
            &ZoDeviceTreePanel::OnCurrentChanged);
    connect(m_tree, &QTreeView::doubleClicked, this, [this](QModelIndex const& index) {
        if (CanChoose(index))
            emit Chosen(index);
    });
    SelectFirstChoice();
}

QModelIndex ZoDeviceTreePanel::Current() const
{
    return m_tree->currentIndex().siblingAtColumn(0);
}

bool ZoDeviceTreePanel::CanChoose(QModelIndex const& index) const
{
    auto const kind = m_model->KindOf(index);
    return m_model->VariablesShown() ? kind == ZoDeviceTreeModel::RowKind::Variable
                                     : kind == ZoDeviceTreeModel::RowKind::Device;
}

QString ZoDeviceTreePanel::ChosenReference() const
{
    QModelIndex const current = Current();
    return CanChoose(current) ? m_model->ReferenceOf(current) : QString();
}

bool ZoDeviceTreePanel::Select(QString const& reference)
{
    QModelIndex const index = m_model->FindReference(reference);
    if (!index.isValid())
        return false;
    for (QModelIndex parent = index.parent(); parent.isValid(); parent = parent.parent())
        m_tree->expand(parent);
    m_tree->setCurrentIndex(index);
    m_tree->scrollTo(index);
    return true;
}

void ZoDeviceTreePanel::OnChangeFilter(QString const& text)
{
    m_model->SetFilter(text);
    if (!text.trimmed().isEmpty() && m_model->DeviceCount() + m_model->EventsDeviceCount() <= kOpenAllBelow)
        m_tree->expandAll();
    SelectFirstChoice();
}

// The first row that can be chosen becomes current: the first device's first variable, the
// first device in device mode.
void ZoDeviceTreePanel::SelectFirstChoice()
{
    QModelIndex first = m_model->index(0, 0);
    if (first.isValid() && m_model->KindOf(first) == ZoDeviceTreeModel::RowKind::EventsBranch)
        first = m_model->index(0, 0, first);
    if (m_model->VariablesShown() && first.isValid() && !m_filter->text().trimmed().isEmpty()) {
        m_tree->expand(first);
        first = m_model->index(0, 0, first);
    }
    if (first.isValid()) {
        m_tree->setCurrentIndex(first);
        m_tree->scrollTo(first);
    }
    OnCurrentChanged();
}

void ZoDeviceTreePanel::OnCurrentChanged()
{
    QModelIndex const current = Current();
    if (current.isValid())
        m_details->setText(m_model->DetailsOf(current));
    else if (m_model->rowCount() == 0 && !m_filter->text().trimmed().isEmpty())
        m_details->setText(QString::fromStdWString(ZoFormat(ZoLoadString(62107).c_str(), m_filter->text().toStdWString().c_str())));
    else
        m_details->clear();
    emit CurrentChanged();
}

bool ZoDeviceTreePanel::eventFilter(QObject* watched, QEvent* event)
{
    if (event->type() == QEvent::KeyPress) {
        auto* key = static_cast<QKeyEvent*>(event);
        if (key->modifiers() & ~(Qt::KeypadModifier))
            return QWidget::eventFilter(watched, event);
        if (watched == m_filter && OnKeyInFilter(key->key()))
            return true;
        if (watched == m_tree && OnKeyInTree(key->key()))
            return true;
    }
    return QWidget::eventFilter(watched, event);
}

// Down and Page Down move into the tree; Enter chooses the current row.
bool ZoDeviceTreePanel::OnKeyInFilter(int key)
{
    switch (key) {
    case Qt::Key_Down:
    case Qt::Key_PageDown:
        m_tree->setFocus(Qt::TabFocusReason);
        if (!m_tree->currentIndex().isValid())
            SelectFirstChoice();
        return true;
    case Qt::Key_Return:
    case Qt::Key_Enter:
        return OnKeyInTree(key);
    default:
        return false;
    }
}

// Enter chooses a row that can be chosen and opens or closes another; the key goes no
// further, so that it never closes the dialog on a device row.
bool ZoDeviceTreePanel::OnKeyInTree(int key)
{
    if (key != Qt::Key_Return && key != Qt::Key_Enter)
        return false;
    QModelIndex const current = Current();
    if (CanChoose(current))
        emit Chosen(current);
    else if (current.isValid() && m_model->hasChildren(current))
        m_tree->setExpanded(current, !m_tree->isExpanded(current));
    return true;
}
