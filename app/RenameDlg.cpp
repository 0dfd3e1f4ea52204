#include "RenameDlg.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoListView.h"

#include <QComboBox>
#include <QDialogButtonBox>
#include <QFormLayout>
#include <QHBoxLayout>
#include <QHeaderView>
#include <QLabel>
#include <QLineEdit>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

RenameDlg::RenameDlg(QWidget* parent, XmlDocument& events, XmlDocument& devices)
    : ZoDialog(parent)
    , m_events(events)
    , m_devices(devices)
{
}

void RenameDlg::Preset(ZoRenameKind kind, QString const& device, QString const& oldName)
{
    m_presetKind = kind;
    m_presetDevice = device;
    m_presetOld = oldName;
}

void RenameDlg::OnInitDialog()
{
    setWindowTitle(ZoText(64753));
    auto const edit = [this](char const* name, unsigned tip) {
        auto* field = new QLineEdit(this);
        field->setObjectName(name);
        field->setToolTip(ZoText(tip));
        return field;
    };
    m_kind = new QComboBox(this);
    m_kind->setObjectName("kindCombo");
    for (unsigned text : {64754u, 64755u, 64756u})
        m_kind->addItem(ZoText(text));
    m_kind->setCurrentIndex(static_cast<int>(m_presetKind));
    m_device = edit("deviceEdit", 64760);
    m_device->setText(m_presetDevice);
    m_oldName = edit("oldNameEdit", 64761);
    m_oldName->setText(m_presetOld);
    m_newName = edit("newNameEdit", 64762);
    m_newName->setText(m_presetOld);

    auto* form = new QFormLayout;
    form->addRow(ZoText(64757), m_kind);
    form->addRow(ZoText(64758), m_device);
    form->addRow(ZoText(64759), m_oldName);
    form->addRow(ZoText(64763), m_newName);

    auto* preview = new QPushButton(ZoText(64764), this);
    preview->setObjectName("previewButton");
    preview->setAutoDefault(false);
    m_message = new QLabel(this);
    m_message->setObjectName("messageLabel");
    m_message->setWordWrap(true);
    auto* previewRow = new QHBoxLayout;
    previewRow->addWidget(m_message, 1);
    previewRow->addWidget(preview);

    m_list = ZoNewListView(this, "previewList", &m_preview, QAbstractItemView::SingleSelection);
    // Before and after share the width left; their whole texts are in the tooltips.
    m_list->header()->setSectionResizeMode(RenamePreviewModel::BeforeColumn, QHeaderView::Stretch);
    m_list->header()->setSectionResizeMode(RenamePreviewModel::AfterColumn, QHeaderView::Stretch);

    auto* buttons = new QDialogButtonBox(this);
    m_ok = buttons->addButton(ZoText(311), QDialogButtonBox::AcceptRole);
    m_ok->setObjectName("okButton");
    m_ok->setIcon(ZoImageIcon(L"OK-16.png"));
    m_ok->setDefault(true);
    QPushButton* cancel = buttons->addButton(ZoText(312), QDialogButtonBox::RejectRole);
    cancel->setObjectName("cancelButton");
    cancel->setIcon(ZoImageIcon(L"CANCEL-16.png"));
    connect(buttons, &QDialogButtonBox::accepted, this, &RenameDlg::accept);
    connect(buttons, &QDialogButtonBox::rejected, this, &QDialog::reject);

    auto* layout = new QVBoxLayout(this);
    layout->addLayout(form);
    layout->addLayout(previewRow);
    layout->addWidget(m_list, 1);
    layout->addWidget(buttons);
    resize(900, 480);

    connect(preview, &QPushButton::clicked, this, &RenameDlg::OnPreview);
    connect(m_kind, &QComboBox::currentIndexChanged, this, &RenameDlg::OnFieldsChanged);
    for (QLineEdit* field : {m_device, m_oldName, m_newName})
        connect(field, &QLineEdit::textChanged, this, &RenameDlg::OnFieldsChanged);
    OnFieldsChanged();
    QLineEdit* first = m_presetOld.isEmpty() ? (m_presetKind == ZoRenameKind::Variable ? m_device : m_oldName)
                                             : m_newName;
    first->setFocus(Qt::OtherFocusReason);
    first->selectAll();
}

ZoRenameRequest RenameDlg::Request() const
{
    ZoRenameRequest request;
    request.kind = static_cast<ZoRenameKind>(std::max(m_kind->currentIndex(), 0));
    if (request.kind == ZoRenameKind::Variable)
        request.device = m_device->text().toStdWString();
    request.oldName = m_oldName->text().toStdWString();
    request.newName = m_newName->text().toStdWString();
    return request;
}

void RenameDlg::OnFieldsChanged()
{
    m_device->setEnabled(m_kind->currentIndex() == static_cast<int>(ZoRenameKind::Variable));
    m_preview.Clear();
    m_message->setText(ZoText(64765));
}

void RenameDlg::OnPreview()
{
    std::wstring error;
    if (!m_preview.Plan(m_events, m_devices, Request(), error)) {
        m_message->setText(QString::fromStdWString(error));
        m_newName->setFocus(Qt::OtherFocusReason);
        return;
    }
    ZoRenamePlan const& plan = m_preview.CurrentPlan();
    m_message->setText(QString::fromStdWString(
        ZoFormat(ZoLoadString(64766).c_str(), plan.references, static_cast<int>(plan.changes.size()))));
    for (int column : {RenamePreviewModel::ElementColumn, RenamePreviewModel::FieldColumn,
                       RenamePreviewModel::CountColumn})
        m_list->resizeColumnToContents(column);
    if (m_preview.rowCount() > 0)
        m_list->setCurrentIndex(m_preview.index(0, 0));
}

// OK applies only what the user has seen: fields not yet previewed are previewed first.
void RenameDlg::accept()
{
    if (!m_preview.IsPlanFor(Request())) {
        OnPreview();
        return;
    }
    ZoDialog::accept();
}
