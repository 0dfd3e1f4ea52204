#include "templatedialogs/ZoDlgUpdateFromTemplates.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/ui/ZoOkCancelBox.h"
#include "templatedialogs/TemplateRowsModel.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QItemSelectionModel>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

using namespace zo::templates;

ZoDlgUpdateFromTemplates::ZoDlgUpdateFromTemplates(QWidget* parent, XmlDocument* events,
                                                   ZoDeviceCatalog const* catalog, DriftReport report)
    : ZoDialog(parent), m_events(events), m_catalog(catalog), m_report(std::move(report))
{
    m_driftModel = new TemplateRowsModel({ZoText(64813), ZoText(64802), ZoText(64812), ZoText(64825)}, true, this);
    m_driftList = ZoNewListView(this, "driftList", m_driftModel, QAbstractItemView::SingleSelection);
    m_selectAll = new QPushButton(this);
    m_selectAll->setObjectName(QStringLiteral("selectAllButton"));
    m_differencesModel = new TemplateRowsModel({ZoText(64827), ZoText(64828), ZoText(64829)}, false, this);
    m_differencesList = ZoNewListView(this, "differencesList", m_differencesModel, QAbstractItemView::SingleSelection);
    m_driftLabel = new QLabel(this);
    m_driftLabel->setBuddy(m_driftList);
    m_differencesLabel = new QLabel(this);
    m_differencesLabel->setBuddy(m_differencesList);
    m_summary = new QLabel(this);
    m_summary->setObjectName(QStringLiteral("summaryLabel"));
    QDialogButtonBox* buttons = ZoNewOkCancelBox(this, m_ok, m_cancel);

    auto* selectRow = new QHBoxLayout;
    selectRow->addWidget(m_summary, 1);
    selectRow->addWidget(m_selectAll);
    auto* main = new QVBoxLayout(this);
    main->addWidget(m_driftLabel);
    main->addWidget(m_driftList, 3);
    main->addLayout(selectRow);
    main->addWidget(m_differencesLabel);
    main->addWidget(m_differencesList, 2);
    main->addWidget(buttons);
    setSizeGripEnabled(true);

    connect(m_driftModel, &TemplateRowsModel::CheckedChanged, this, &ZoDlgUpdateFromTemplates::UpdateSummary);
    connect(m_selectAll, &QPushButton::clicked, this, [this] { m_driftModel->SetAllChecked(true); });
    connect(m_ok, &QPushButton::clicked, this, &ZoDlgUpdateFromTemplates::OnOK);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
}

ZoDlgUpdateFromTemplates::~ZoDlgUpdateFromTemplates() = default;

void ZoDlgUpdateFromTemplates::OnInitDialog()
{
    setWindowTitle(ZoText(64822));
    ZoMnemonics keys;
    keys.Set(m_driftLabel, ZoText(64823));
    keys.Set(m_differencesLabel, ZoText(64826));
    keys.Set(m_selectAll, ZoText(64807));
    m_ok->setText(keys.Apply(ZoText(64830)));
    m_cancel->setText(ZoText(312));

    std::vector<QStringList> rows;
    rows.reserve(m_report.drifted.size());
    for (DriftedEvent const& drifted : m_report.drifted) {
        rows.push_back({QString::fromStdWString(drifted.event->Value(L"name", L"")),
                        QString::fromStdWString(drifted.templateEvent->Value(L"name", L"")),
                        QString::fromStdWString(drifted.device), QString::number(drifted.differences.size())});
    }
    m_driftModel->SetRows(std::move(rows));
    connect(m_driftList->selectionModel(), &QItemSelectionModel::currentRowChanged, this,
            &ZoDlgUpdateFromTemplates::ShowDifferences);
    if (m_driftModel->rowCount() > 0)
        m_driftList->setCurrentIndex(m_driftModel->index(0, 0));
    FitTemplateColumns(m_driftList);
    resize(QSize(760, 560));
    m_driftList->setFocus();
}

void ZoDlgUpdateFromTemplates::ShowDifferences()
{
    int const row = m_driftList->currentIndex().row();
    std::vector<QStringList> rows;
    if (row >= 0 && row < int(m_report.drifted.size())) {
        for (FieldDifference const& difference : m_report.drifted[std::size_t(row)].differences) {
            rows.push_back({QString::fromStdWString(difference.field), QString::fromStdWString(difference.expected),
                            QString::fromStdWString(difference.actual)});
        }
    }
    m_differencesModel->SetRows(std::move(rows));
    FitTemplateColumns(m_differencesList);
}

void ZoDlgUpdateFromTemplates::UpdateSummary()
{
    int const chosen = int(m_driftModel->CheckedRows().size());
    m_summary->setText(QString::fromStdWString(
        ZoFormat(ZoLoadString(64832).c_str(), int(m_report.drifted.size()), m_report.stamped, chosen)));
    m_ok->setEnabled(chosen > 0);
}

void ZoDlgUpdateFromTemplates::OnOK()
{
    std::vector<DriftedEvent> chosen;
    for (int row : m_driftModel->CheckedRows())
        chosen.push_back(m_report.drifted[std::size_t(row)]);
    if (chosen.empty())
        return;
    m_updated = UpdateFromTemplates(m_events->Root(), *m_catalog, chosen);
    accept();
}
