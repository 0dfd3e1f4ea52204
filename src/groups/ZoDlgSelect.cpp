#include "groups/ZoDlgSelect.h"
#include "groups/ChoiceRowsModel.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoOkCancelBox.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMnemonics.h"
#include <QBoxLayout>
#include <QHeaderView>
#include <QItemSelectionModel>
#include <QDialogButtonBox>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <algorithm>

ZoDlgSelect::ZoDlgSelect(QWidget* parent, std::vector<std::wstring>& names, int mode)
    : ZoDialog(parent)
    , m_names(names)
    , m_mode(mode)
{
    m_model = new ChoiceRowsModel(this);
    m_prompt = new QLabel(this);
    m_prompt->setObjectName(QStringLiteral("selectPrompt"));
    m_list = ZoNewListView(this, "selectList", m_model);
    m_list->setIconSize(QSize(16, 16));
    m_list->header()->setStretchLastSection(true);
    m_list->header()->setSectionsClickable(false);
    m_prompt->setBuddy(m_list);

    m_buttons = ZoNewOkCancelBox(this, m_okButton, m_cancelButton);

    connect(m_okButton, &QPushButton::clicked, this, &ZoDlgSelect::OnOK);
    connect(m_cancelButton, &QPushButton::clicked, this, &QDialog::reject);
    connect(m_list, &QTreeView::doubleClicked, this, &ZoDlgSelect::OnDblclkList);

    setSizeGripEnabled(true);
    Layout();
}

ZoDlgSelect::~ZoDlgSelect() = default;

void ZoDlgSelect::Layout()
{

    auto* main = new QVBoxLayout(this);
    main->addWidget(m_prompt);
    main->addWidget(m_list, 1);
    main->addWidget(m_buttons);
}

void ZoDlgSelect::OnInitDialog()
{
    bool const groups = m_mode == kGroupsMode;
    setWindowTitle(ZoText(groups ? 32785 : 32784));
    ZoMnemonics keys;
    keys.Set(m_prompt, ZoText(groups ? 382 : 32782));
    m_okButton->setText(ZoText(311));
    m_cancelButton->setText(ZoText(312));
    m_model->SetIcon(ZoBitmapIcon(groups ? 2408 : 2416));

    m_model->SetChoices(&m_names);

    resize(QSize(380, 440));
    m_list->setFocus();
}

void ZoDlgSelect::OnOK()
{
    std::vector<int> rows;
    for (QModelIndex const& index : m_list->selectionModel()->selectedRows())
        rows.push_back(index.row());
    std::sort(rows.begin(), rows.end());
    // The rows show the caller's list: they go before the list becomes the chosen names.
    m_model->SetChoices(nullptr);
    std::vector<std::wstring> chosen;
    chosen.reserve(rows.size());
    for (int row : rows)
        chosen.push_back(std::move(m_names[std::size_t(row)]));
    m_names = std::move(chosen);
    if (m_names.empty())
        reject();
    else
        accept();
}

void ZoDlgSelect::OnDblclkList(QModelIndex const& index)
{
    if (!index.isValid())
        return;
    m_list->selectionModel()->select(index, QItemSelectionModel::ClearAndSelect | QItemSelectionModel::Rows);
    OnOK();
}
