#include "SheetImportDlg.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoListView.h"

#include <QCheckBox>
#include <QDialogButtonBox>
#include <QDir>
#include <QHeaderView>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

SheetImportDlg::SheetImportDlg(QWidget* parent, QString const& file, std::string sheet, ZoImportTarget target)
    : ZoDialog(parent), m_model(std::move(sheet), std::move(target))
{
    setObjectName("sheetImportDialog");
    setWindowTitle(ZoText(64670));
    auto* fileLabel = new QLabel(
        QString::fromStdWString(ZoFormat(ZoLoadString(64678).c_str(), QDir::toNativeSeparators(file).toStdWString().c_str())),
        this);
    fileLabel->setObjectName("fileLabel");
    fileLabel->setTextInteractionFlags(Qt::TextSelectableByMouse);
    m_counts = new QLabel(this);
    m_counts->setObjectName("countsLabel");
    m_status = new QLabel(this);
    m_status->setObjectName("statusLabel");
    m_status->setWordWrap(true);

    m_list = ZoNewListView(this, "previewList", &m_model, QAbstractItemView::SingleSelection);
    m_list->header()->setStretchLastSection(true);
    auto* listLabel = new QLabel(ZoText(64676), this);
    listLabel->setBuddy(m_list);

    m_deleteMissing = new QCheckBox(ZoText(64671), this);
    m_deleteMissing->setObjectName("deleteMissingCheck");
    m_createGroups = new QCheckBox(ZoText(64672), this);
    m_createGroups->setObjectName("createGroupsCheck");
    connect(m_deleteMissing, &QCheckBox::toggled, this, &SheetImportDlg::PlanAgain);
    connect(m_createGroups, &QCheckBox::toggled, this, &SheetImportDlg::PlanAgain);

    auto* buttons = new QDialogButtonBox(this);
    m_ok = buttons->addButton(ZoText(64673), QDialogButtonBox::AcceptRole);
    m_ok->setObjectName("okButton");
    QPushButton* cancel = buttons->addButton(ZoText(64677), QDialogButtonBox::RejectRole);
    cancel->setObjectName("cancelButton");
    connect(buttons, &QDialogButtonBox::accepted, this, &QDialog::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(fileLabel);
    layout->addWidget(m_counts);
    layout->addWidget(m_status);
    layout->addWidget(listLabel);
    layout->addWidget(m_list, 1);
    layout->addWidget(m_deleteMissing);
    layout->addWidget(m_createGroups);
    layout->addWidget(buttons);
    resize(860, 460);
    PlanAgain();
}

void SheetImportDlg::OnInitDialog()
{
    m_list->setFocus(Qt::OtherFocusReason);
    if (m_model.rowCount() > 0)
        m_list->setCurrentIndex(m_model.index(0, 0));
}

void SheetImportDlg::PlanAgain()
{
    ZoImportOptions options;
    options.deleteMissing = m_deleteMissing->isChecked();
    options.createGroups = m_createGroups->isChecked();
    m_model.Plan(options);
    for (int column = 0; column < SheetImportModel::DetailsColumn; ++column)
        m_list->resizeColumnToContents(column);
    UpdateStatus();
}

void SheetImportDlg::UpdateStatus()
{
    ZoImportPlan const& plan = m_model.CurrentPlan();
    m_counts->setText(QString::fromStdWString(ZoImportCounts(plan)));
    if (plan.Refused())
        m_status->setText(ZoText(64674));
    else if (!plan.ChangesAnything())
        m_status->setText(ZoText(64675));
    else
        m_status->clear();
    m_status->setVisible(!m_status->text().isEmpty());
    bool const usable = !plan.Refused() && plan.ChangesAnything();
    m_ok->setEnabled(usable);
    m_ok->setDefault(usable);
}
