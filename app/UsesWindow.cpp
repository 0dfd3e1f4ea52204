#include "UsesWindow.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoListView.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

UsesWindow::UsesWindow(QWidget* parent) : QDialog(parent)
{
    setObjectName("usesWindow");
    setModal(false);
    setWindowTitle(ZoText(64743));

    auto* prompt = new QLabel(ZoText(64744), this);
    m_reference = new QLineEdit(this);
    m_reference->setObjectName("referenceEdit");
    m_reference->setToolTip(ZoText(64745));
    prompt->setBuddy(m_reference);
    auto* find = new QPushButton(ZoText(64746), this);
    find->setObjectName("findButton");
    find->setAutoDefault(false);
    auto* top = new QHBoxLayout;
    top->addWidget(prompt);
    top->addWidget(m_reference, 1);
    top->addWidget(find);

    m_list = ZoNewListView(this, "usesList", &m_model, QAbstractItemView::SingleSelection);
    m_list->header()->setStretchLastSection(true);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);

    m_count = new QLabel(this);
    m_count->setObjectName("countLabel");
    auto* buttons = new QDialogButtonBox(this);
    QPushButton* close = buttons->addButton(ZoText(64570), QDialogButtonBox::RejectRole);
    close->setObjectName("closeButton");
    close->setAutoDefault(false);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addWidget(m_count, 1);
    bottom->addWidget(buttons);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(top);
    layout->addWidget(m_list, 1);
    layout->addLayout(bottom);
    resize(900, 420);

    auto const request = [this] { emit findRequested(Reference()); };
    connect(find, &QPushButton::clicked, this, request);
    connect(m_reference, &QLineEdit::returnPressed, this, request);
    m_reference->setFocus(Qt::OtherFocusReason);
}

QString UsesWindow::Reference() const
{
    return m_reference->text().trimmed();
}

void UsesWindow::Find(QString const& reference)
{
    m_reference->setText(reference);
    emit findRequested(Reference());
}

void UsesWindow::SetUses(std::vector<ZoFinding> uses)
{
    int const row = std::max(m_list->currentIndex().row(), 0);
    m_model.SetUses(std::move(uses));
    m_list->resizeColumnToContents(UsesModel::ElementColumn);
    m_list->resizeColumnToContents(UsesModel::FieldColumn);
    int const count = m_model.rowCount();
    m_count->setText(QString::fromStdWString(ZoFormat(ZoLoadString(count == 1 ? 64747 : 64748).c_str(), count)));
    if (count > 0) {
        m_list->setCurrentIndex(m_model.index(std::min(row, count - 1), 0));
        m_list->setFocus(Qt::OtherFocusReason);
    }
}

void UsesWindow::SetRefused(QString const& message)
{
    m_model.SetUses({});
    m_count->setText(message);
    m_reference->setFocus(Qt::OtherFocusReason);
    m_reference->selectAll();
}

void UsesWindow::OpenCurrent()
{
    QModelIndex const current = m_list->currentIndex();
    if (!current.isValid())
        return;
    // A copy: the host looks the uses up again after the edit, which replaces the rows.
    ZoFinding const use = m_model.UseAt(current.row());
    emit openRequested(use);
}

bool UsesWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (ZoListOpenEvent(m_list, watched, event, [this] { OpenCurrent(); }))
        return true;
    return QDialog::eventFilter(watched, event);
}
