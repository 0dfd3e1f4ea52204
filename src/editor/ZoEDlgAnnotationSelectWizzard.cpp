#include "editor/ZoEDlgAnnotationSelectWizzard.h"

#include "editor/ZoNumberedListModel.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/ui/ZoOkCancelBox.h"

#include <QDialogButtonBox>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

ZoEDlgAnnotationSelectWizzard::ZoEDlgAnnotationSelectWizzard(QWidget* parent, std::vector<std::wstring> const& names,
                                                             int kind)
    : ZoDialog(parent)
    , m_kind(kind)
{
    setObjectName(QStringLiteral("annotationSelectWizard"));
    setSizeGripEnabled(true);
    m_model = new ZoNumberedListModel(ZoText(355), this);
    std::vector<ZoNumberedListModel::Row> rows;
    rows.reserve(names.size());
    for (std::size_t i = 0; i < names.size(); ++i)
        rows.push_back({int(i), nullptr, QString::fromStdWString(names[i])});
    m_model->SetRows(std::move(rows));

    m_prompt = new QLabel(this);
    m_prompt->setObjectName(QStringLiteral("selectPrompt"));
    m_list = ZoNewListView(this, "selectList", m_model, QAbstractItemView::SingleSelection);
    m_list->header()->setStretchLastSection(true);
    m_list->header()->setSectionsClickable(false);
    m_list->header()->resizeSection(ZoNumberedListModel::NumberColumn, 48);
    m_prompt->setBuddy(m_list);
    m_list->installEventFilter(this);
    connect(m_list, &QTreeView::doubleClicked, this, &ZoEDlgAnnotationSelectWizzard::OnDblclkList);

    QDialogButtonBox* buttons = ZoNewDialogButtons(this, m_ok, m_cancel);

    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_prompt);
    layout->addWidget(m_list, 1);
    layout->addWidget(buttons);
    resize(380, 300);
}

ZoEDlgAnnotationSelectWizzard::~ZoEDlgAnnotationSelectWizzard()
{
    m_list->removeEventFilter(this);
}

void ZoEDlgAnnotationSelectWizzard::OnInitDialog()
{
    bool const arguments = m_kind == kArguments;
    setWindowTitle(ZoText(arguments ? 32826 : 32785));
    ZoMnemonics keys;
    keys.Set(m_ok, ZoText(311));
    keys.Set(m_cancel, ZoText(312));
    keys.Set(m_prompt, ZoText(arguments ? 32807 : 382));
    if (m_model->rowCount() > 0)
        m_list->setCurrentIndex(m_model->index(0, 0));
    m_list->setFocus(Qt::OtherFocusReason);
}

// OK with no row selected chooses nothing: the caller sees a Cancel.
void ZoEDlgAnnotationSelectWizzard::accept()
{
    QModelIndexList const selected = m_list->selectionModel()->selectedRows();
    if (selected.isEmpty()) {
        reject();
        return;
    }
    m_position = m_model->RowAt(selected.first().row()).position + 1;
    ZoDialog::accept();
}

void ZoEDlgAnnotationSelectWizzard::OnDblclkList(QModelIndex const& index)
{
    if (index.isValid())
        accept();
}

bool ZoEDlgAnnotationSelectWizzard::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        int const key = static_cast<QKeyEvent*>(event)->key();
        if ((key == Qt::Key_Return || key == Qt::Key_Enter) && m_list->selectionModel()->hasSelection()) {
            accept();
            return true;
        }
    }
    return ZoDialog::eventFilter(watched, event);
}
