#include "ProblemsModel.h"

#include "platform/tools/ZoTexts.h"

#include <QApplication>
#include <QStyle>

#include <algorithm>

namespace {

QString Text(std::wstring const& text)
{
    return QString::fromStdWString(text);
}

bool IsOfEvent(ZoFinding const& finding, std::uint32_t position)
{
    return finding.subject == ZoCheckSubject::Event && finding.file == zo::project::ProjectDoc::Events
        && finding.path.size() == 2 && finding.path[1] == position;
}

} // namespace

ProblemsModel::ProblemsModel(QObject* parent) : QAbstractTableModel(parent) {}

void ProblemsModel::SetFindings(std::vector<ZoFinding> findings)
{
    beginResetModel();
    m_findings = std::move(findings);
    endResetModel();
}

void ProblemsModel::ReplaceEventFindings(std::uint32_t position, std::vector<ZoFinding> findings)
{
    beginResetModel();
    std::erase_if(m_findings, [position](ZoFinding const& finding) {
        return finding.perEvent && IsOfEvent(finding, position);
    });
    // The event's findings stay together, where its first one was.
    auto const at = std::find_if(m_findings.begin(), m_findings.end(),
                                 [position](ZoFinding const& f) { return IsOfEvent(f, position); });
    m_findings.insert(at, std::make_move_iterator(findings.begin()), std::make_move_iterator(findings.end()));
    endResetModel();
}

int ProblemsModel::rowCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : static_cast<int>(m_findings.size());
}

int ProblemsModel::columnCount(QModelIndex const& parent) const
{
    return parent.isValid() ? 0 : ColumnCount;
}

QVariant ProblemsModel::data(QModelIndex const& index, int role) const
{
    if (!index.isValid() || index.row() >= rowCount())
        return {};
    ZoFinding const& finding = FindingAt(index.row());
    int const severity = static_cast<int>(finding.severity);
    if (role == kSeverityRole)
        return severity;
    if (role == Qt::DecorationRole && index.column() == SeverityColumn) {
        static constexpr QStyle::StandardPixmap kIcons[] = {QStyle::SP_MessageBoxCritical,
                                                            QStyle::SP_MessageBoxWarning,
                                                            QStyle::SP_MessageBoxInformation};
        return QApplication::style()->standardIcon(kIcons[severity]);
    }
    if (role == kSortRole && index.column() == SeverityColumn)
        return severity;
    if (role != Qt::DisplayRole && role != kSortRole && role != Qt::ToolTipRole)
        return {};
    switch (index.column()) {
    case SeverityColumn: return Text(ZoLoadString(64500 + severity));
    case SubjectColumn: return Text(ZoSubjectText(finding));
    case FieldColumn: return Text(ZoFieldText(finding));
    case MessageColumn:
        return role == Qt::ToolTipRole ? Text(finding.message) + " (" + QString::fromLatin1(finding.rule) + ")"
                                       : Text(finding.message);
    default: return {};
    }
}

QVariant ProblemsModel::headerData(int section, Qt::Orientation orientation, int role) const
{
    if (orientation != Qt::Horizontal || role != Qt::DisplayRole)
        return {};
    static constexpr unsigned kHeaders[] = {64562, 64563, 64564, 64565};
    return section >= 0 && section < ColumnCount ? Text(ZoLoadString(kHeaders[section])) : QVariant();
}

ProblemsFilter::ProblemsFilter(QObject* parent) : QSortFilterProxyModel(parent)
{
    setSortRole(ProblemsModel::kSortRole);
    setSortCaseSensitivity(Qt::CaseInsensitive);
}

void ProblemsFilter::SetShown(ZoSeverity severity, bool shown)
{
    m_shown[static_cast<int>(severity)] = shown;
    invalidateFilter();
}

bool ProblemsFilter::filterAcceptsRow(int row, QModelIndex const& parent) const
{
    QModelIndex const index = sourceModel()->index(row, 0, parent);
    return m_shown[sourceModel()->data(index, ProblemsModel::kSeverityRole).toInt()];
}
