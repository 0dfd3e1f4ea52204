#include "actions/ZoEDlgEventActionsScreenReportCfg.h"

#include "actions/ZoActionEditorParts.h"
#include "actions/ZoScreenReportNames.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMnemonics.h"

#include <QBoxLayout>
#include <QDialogButtonBox>
#include <QEvent>
#include <QHeaderView>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QStringListModel>
#include <QTreeView>

ZoEDlgEventActionsScreenReportCfg::ZoEDlgEventActionsScreenReportCfg(QWidget* parent, XmlNode* action, XmlNode* moment)
    : ZoActionEditorDlg(parent, action, moment)
{
    setObjectName(QStringLiteral("screenReportChooser"));
    m_model = new QStringListModel(this);
    m_list = new QTreeView(this);
    m_list->setObjectName(QStringLiteral("namesList"));
    m_list->setModel(m_model);
    m_list->setHeaderHidden(true);
    m_list->setRootIsDecorated(false);
    m_list->setUniformRowHeights(true);
    m_list->setSelectionMode(QAbstractItemView::SingleSelection);
    m_list->setEditTriggers(QAbstractItemView::NoEditTriggers);
    m_list->installEventFilter(this);
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this,
            &ZoEDlgEventActionsScreenReportCfg::UpdateButtons);
    connect(m_list, &QTreeView::doubleClicked, this, [this](QModelIndex const& index) {
        if (index.isValid())
            accept();
    });
}

void ZoEDlgEventActionsScreenReportCfg::OnInitDialog()
{
    bool const reports = ZoProjectFileKindOf(*m_action) == ZoProjectFileKind::Report;
    setWindowTitle(ZoText(reports ? 63331 : 63330));
    setWindowIcon(ZoVelmoraSetup::instance().ProgramIcon());
    auto* label = new QLabel(this);
    label->setObjectName(QStringLiteral("namesLabel"));
    label->setBuddy(m_list);
    m_emptyHint = new QLabel(ZoText(reports ? 63335 : 63334), this);
    m_emptyHint->setObjectName(QStringLiteral("emptyHint"));
    m_emptyHint->setWordWrap(true);
    QDialogButtonBox* buttons = NewButtons();
    ZoMnemonics mnemonics;
    mnemonics.Set(label, ZoText(reports ? 63333 : 63332));
    SetButtonCaptions(mnemonics);

    FillList();

    auto* main = new QVBoxLayout(this);
    main->addWidget(label);
    main->addWidget(m_list, 1);
    main->addWidget(m_emptyHint);
    main->addWidget(buttons);
    resize(QSize(340, 320).expandedTo(sizeHint()));
    m_list->setFocus(Qt::OtherFocusReason);
}

void ZoEDlgEventActionsScreenReportCfg::FillList()
{
    std::vector<ZoBasicString<wchar_t>> const names = ZoFreeNames(
        ZoListProjectNames(ZoVelmoraSetup::instance().CfgPath(), ZoProjectFileKindOf(*m_action)), m_moment, *m_action);
    QStringList rows;
    rows.reserve(static_cast<qsizetype>(names.size()));
    for (ZoBasicString<wchar_t> const& name : names)
        rows << QString::fromStdWString(name);
    m_model->setStringList(rows);
    m_emptyHint->setVisible(rows.isEmpty());

    // The stored choice is selected and shown; without one the first row is current, so
    // that the arrow keys start there, but nothing is chosen yet.
    qsizetype const stored = rows.indexOf(QString::fromStdWString(m_action->Value(L"name", L"")));
    if (stored >= 0) {
        QModelIndex const index = m_model->index(static_cast<int>(stored), 0);
        m_list->selectionModel()->setCurrentIndex(index, QItemSelectionModel::ClearAndSelect);
        m_list->scrollTo(index);
    } else if (!rows.isEmpty()) {
        m_list->selectionModel()->setCurrentIndex(m_model->index(0, 0), QItemSelectionModel::NoUpdate);
    }
    UpdateButtons();
}

void ZoEDlgEventActionsScreenReportCfg::UpdateButtons()
{
    if (m_okButton)
        m_okButton->setEnabled(m_list->selectionModel()->selectedRows().size() == 1);
}

bool ZoEDlgEventActionsScreenReportCfg::eventFilter(QObject* watched, QEvent* event)
{
    // Enter on the list chooses the selected row, as OK does.
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        auto const key = static_cast<QKeyEvent*>(event)->key();
        if (key == Qt::Key_Return || key == Qt::Key_Enter) {
            accept();
            return true;
        }
    }
    return ZoDialog::eventFilter(watched, event);
}

ZoBasicString<wchar_t> ZoEDlgEventActionsScreenReportCfg::Chosen() const
{
    QModelIndexList const selected = m_list->selectionModel()->selectedRows();
    return selected.size() == 1 ? selected.constFirst().data().toString().toStdWString() : ZoBasicString<wchar_t>();
}

bool ZoEDlgEventActionsScreenReportCfg::IsValid()
{
    return m_keep || m_list->selectionModel()->selectedRows().size() == 1;
}

bool ZoEDlgEventActionsScreenReportCfg::HasChanged() const
{
    ZoBasicString<wchar_t> const chosen = Chosen();
    return !chosen.empty() && chosen != m_action->Value(L"name", L"");
}

void ZoEDlgEventActionsScreenReportCfg::UpdateCfg()
{
    m_action->SetValue(L"name", Chosen());
}
