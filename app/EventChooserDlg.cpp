#include "EventChooserDlg.h"

#include "EventChoiceModel.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoListView.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

EventChooserDlg::EventChooserDlg(QWidget* parent, XmlDocument::XmlNode const* events, unsigned titleId,
                                 unsigned promptId)
    : ZoDialog(parent)
    , m_events(events)
    , m_titleId(titleId)
    , m_promptId(promptId)
{
}

void EventChooserDlg::OnInitDialog()
{
    setWindowTitle(ZoText(m_titleId));
    m_model = new EventChoiceModel(this);
    m_model->Fill(m_events);

    auto* prompt = new QLabel(ZoMnemonics().Apply(ZoText(m_promptId)), this);
    m_filter = new QLineEdit(this);
    m_filter->setObjectName(QStringLiteral("filterEdit"));
    m_filter->setPlaceholderText(ZoText(60064));
    m_filter->setClearButtonEnabled(true);
    prompt->setBuddy(m_filter);

    m_list = ZoNewListView(this, "eventsList", m_model, QAbstractItemView::SingleSelection);
    m_list->setAlternatingRowColors(true);
    // The model is sorted by name already: the heading shows it, then takes clicks.
    m_list->sortByColumn(0, Qt::AscendingOrder);
    m_list->setSortingEnabled(true);
    m_list->header()->setStretchLastSection(true);
    m_list->header()->resizeSection(0, 230);

    auto* buttons = new QDialogButtonBox(this);
    m_ok = buttons->addButton(ZoText(311), QDialogButtonBox::AcceptRole);
    m_ok->setObjectName(QStringLiteral("okButton"));
    m_ok->setIcon(ZoImageIcon(L"OK-16.png"));
    m_ok->setDefault(true);
    QPushButton* cancel = buttons->addButton(ZoText(312), QDialogButtonBox::RejectRole);
    cancel->setObjectName(QStringLiteral("cancelButton"));
    cancel->setIcon(ZoImageIcon(L"CANCEL-16.png"));

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(prompt);
    layout->addWidget(m_filter);
    layout->addWidget(m_list, 1);
    layout->addWidget(buttons);
    resize(640, 440);

    connect(m_filter, &QLineEdit::textChanged, this, &EventChooserDlg::OnChangeFilter);
    connect(m_list, &QTreeView::doubleClicked, this, &EventChooserDlg::OnDblclkList);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &EventChooserDlg::UpdateButtons);
    connect(m_ok, &QPushButton::clicked, this, &EventChooserDlg::OnOK);
    connect(cancel, &QPushButton::clicked, this, &QDialog::reject);

    if (m_model->rowCount() > 0)
        m_list->setCurrentIndex(m_model->index(0, 0));
    m_filter->setFocus();
    UpdateButtons();
}

bool EventChooserDlg::SelectName(QString const& name)
{
    EnsureInitialized();
    for (int row = 0; row < m_model->rowCount(); ++row) {
        QModelIndex const index = m_model->index(row, 0);
        if (index.data().toString() == name) {
            m_list->setCurrentIndex(index);
            return true;
        }
    }
    return false;
}

// The selected event stays selected while the filter shows it; otherwise the first row is.
void EventChooserDlg::OnChangeFilter(QString const& text)
{
    int const selected = SelectedSourceRow();
    m_model->SetFilter(text);
    int row = m_model->RowOf(selected);
    if (row < 0 && m_model->rowCount() > 0)
        row = 0;
    if (row >= 0)
        m_list->setCurrentIndex(m_model->index(row, 0));
    UpdateButtons();
}

void EventChooserDlg::OnDblclkList()
{
    if (SelectedSourceRow() >= 0)
        OnOK();
}

void EventChooserDlg::OnOK()
{
    accept();
}

void EventChooserDlg::accept()
{
    m_chosen = SelectedSourceRow();
    if (m_chosen >= 0)
        QDialog::accept();
}

void EventChooserDlg::UpdateButtons()
{
    m_ok->setEnabled(SelectedSourceRow() >= 0);
}

int EventChooserDlg::SelectedSourceRow() const
{
    QModelIndexList const rows = m_list->selectionModel()->selectedRows();
    if (rows.isEmpty())
        return -1;
    return m_model->PositionAt(rows.first().row());
}
