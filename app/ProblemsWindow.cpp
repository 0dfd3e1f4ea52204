#include "ProblemsWindow.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoListView.h"

#include <QCheckBox>

#include <algorithm>
#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

namespace {

QString Text(unsigned id)
{
    return QString::fromStdWString(ZoLoadString(id));
}

} // namespace

ProblemsWindow::ProblemsWindow(QWidget* parent) : QDialog(parent)
{
    setObjectName("problemsWindow");
    setModal(false);
    m_filter.setSourceModel(&m_model);
    m_list = ZoNewListView(this, "problemsList", &m_filter, QAbstractItemView::SingleSelection);
    m_list->setSortingEnabled(true);
    m_list->sortByColumn(ProblemsModel::SeverityColumn, Qt::AscendingOrder);
    m_list->header()->setStretchLastSection(true);
    m_list->installEventFilter(this);
    m_list->viewport()->installEventFilter(this);

    auto* filters = new QHBoxLayout;
    static constexpr struct {
        ZoSeverity severity;
        char const* name;
        unsigned text;
    } kFilters[] = {{ZoSeverity::Error, "errorsCheck", 64566},
                    {ZoSeverity::Warning, "warningsCheck", 64567},
                    {ZoSeverity::Note, "notesCheck", 64568}};
    for (auto const& filter : kFilters) {
        auto* check = new QCheckBox(Text(filter.text), this);
        check->setObjectName(filter.name);
        check->setChecked(true);
        connect(check, &QCheckBox::toggled, this, [this, severity = filter.severity](bool shown) {
            m_filter.SetShown(severity, shown);
        });
        filters->addWidget(check);
    }
    filters->addStretch();

    auto* buttons = new QDialogButtonBox(this);
    QPushButton* again = buttons->addButton(Text(64569), QDialogButtonBox::ActionRole);
    again->setObjectName("checkAgainButton");
    QPushButton* close = buttons->addButton(Text(64570), QDialogButtonBox::RejectRole);
    close->setObjectName("closeButton");
    again->setAutoDefault(false);
    close->setAutoDefault(false);
    connect(again, &QPushButton::clicked, this, &ProblemsWindow::checkAgainRequested);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(filters);
    layout->addWidget(m_list);
    layout->addWidget(buttons);
    resize(900, 420);
    UpdateTitle();
}

void ProblemsWindow::SetFindings(std::vector<ZoFinding> findings)
{
    // Checked again: the row the user was on stays current (by its number).
    int const row = std::max(m_list->currentIndex().row(), 0);
    m_model.SetFindings(std::move(findings));
    m_list->resizeColumnToContents(ProblemsModel::SeverityColumn);
    m_list->resizeColumnToContents(ProblemsModel::SubjectColumn);
    m_list->resizeColumnToContents(ProblemsModel::FieldColumn);
    if (m_filter.rowCount() > 0)
        m_list->setCurrentIndex(m_filter.index(std::min(row, m_filter.rowCount() - 1), 0));
    m_list->setFocus(Qt::OtherFocusReason);
    UpdateTitle();
}

void ProblemsWindow::ReplaceEventFindings(std::uint32_t position, std::vector<ZoFinding> findings)
{
    int const row = m_list->currentIndex().row();
    m_model.ReplaceEventFindings(position, std::move(findings));
    if (m_filter.rowCount() > 0)
        m_list->setCurrentIndex(m_filter.index(std::clamp(row, 0, m_filter.rowCount() - 1), 0));
    UpdateTitle();
}

void ProblemsWindow::UpdateTitle()
{
    ZoCheckCounts const counts = m_model.Counts();
    setWindowTitle(QString::fromStdWString(
        ZoFormat(ZoLoadString(64571).c_str(), counts.errors, counts.warnings, counts.notes)));
}

void ProblemsWindow::OpenCurrent()
{
    QModelIndex const current = m_list->currentIndex();
    if (!current.isValid())
        return;
    // A copy: the host checks the event again, which replaces the rows.
    ZoFinding const finding = m_model.FindingAt(m_filter.mapToSource(current).row());
    emit openRequested(finding);
}

bool ProblemsWindow::eventFilter(QObject* watched, QEvent* event)
{
    if (ZoListOpenEvent(m_list, watched, event, [this] { OpenCurrent(); }))
        return true;
    return QDialog::eventFilter(watched, event);
}
