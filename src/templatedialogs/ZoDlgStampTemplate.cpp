#include "templatedialogs/ZoDlgStampTemplate.h"

#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/ui/ZoOkCancelBox.h"
#include "templates/TemplateDevices.h"
#include "templatedialogs/TemplateRowsModel.h"
#include "templates/TemplateStamp.h"
#include "templates/TemplateStore.h"

#include <QCheckBox>
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

using namespace zo::templates;

namespace {

QString Q(std::wstring_view text)
{
    return QString::fromWCharArray(text.data(), qsizetype(text.size()));
}

// "Lacks FAULT, START_CMD", "Already stamped from this template", or nothing.
QString NoteOf(StampRow const& row)
{
    if (row.skip == StampSkip::AlreadyStamped)
        return ZoText(64817);
    if (row.skip != StampSkip::MissingVariables)
        return {};
    QStringList codes;
    for (std::wstring const& code : row.missing)
        codes.push_back(Q(code));
    return Q(ZoFormat(ZoLoadString(64816).c_str(), codes.join(QStringLiteral(", ")).toStdWString().c_str()));
}

} // namespace

ZoDlgStampTemplate::ZoDlgStampTemplate(QWidget* parent, XmlDocument* events, XmlDocument::XmlNode* deviceGroups,
                                       ZoDeviceCatalog const* catalog)
    : ZoDialog(parent), m_events(events), m_deviceGroups(deviceGroups), m_catalog(catalog)
{
    m_template = new QComboBox(this);
    m_template->setObjectName(QStringLiteral("templateCombo"));
    m_pattern = new QLineEdit(this);
    m_pattern->setObjectName(QStringLiteral("patternEdit"));
    m_type = new QComboBox(this);
    m_type->setObjectName(QStringLiteral("typeCombo"));
    m_capable = new QCheckBox(this);
    m_capable->setObjectName(QStringLiteral("capableCheck"));
    m_devicesModel = new TemplateRowsModel({ZoText(64812), ZoText(64821), ZoText(64804)}, true, this);
    m_devicesList = ZoNewListView(this, "devicesList", m_devicesModel, QAbstractItemView::SingleSelection);
    m_selectAll = new QPushButton(this);
    m_selectAll->setObjectName(QStringLiteral("selectAllButton"));
    m_group = new QComboBox(this);
    m_group->setObjectName(QStringLiteral("groupCombo"));
    m_previewModel = new TemplateRowsModel({ZoText(64812), ZoText(64813), ZoText(64814), ZoText(64815)}, false, this);
    m_previewList = ZoNewListView(this, "previewList", m_previewModel, QAbstractItemView::SingleSelection);
    m_summary = new QLabel(this);
    m_summary->setObjectName(QStringLiteral("summaryLabel"));
    QDialogButtonBox* buttons = ZoNewOkCancelBox(this, m_ok, m_cancel);

    auto* form = new QFormLayout;
    auto addRow = [&](QWidget* field) {
        auto* label = new QLabel(this);
        label->setBuddy(field);
        m_labels.push_back(label);
        form->addRow(label, field);
    };
    addRow(m_template);
    addRow(m_pattern);
    addRow(m_type);
    form->addRow(QString(), m_capable);
    auto* selectRow = new QHBoxLayout;
    selectRow->addStretch(1);
    selectRow->addWidget(m_selectAll);
    auto* previewLabel = new QLabel(this);
    previewLabel->setBuddy(m_previewList);
    m_labels.push_back(previewLabel);
    auto* groupForm = new QFormLayout;
    auto* groupLabel = new QLabel(this);
    groupLabel->setBuddy(m_group);
    m_labels.push_back(groupLabel);
    groupForm->addRow(groupLabel, m_group);

    auto* main = new QVBoxLayout(this);
    main->addLayout(form);
    main->addWidget(m_devicesList, 2);
    main->addLayout(selectRow);
    main->addLayout(groupForm);
    main->addWidget(previewLabel);
    main->addWidget(m_previewList, 3);
    main->addWidget(m_summary);
    main->addWidget(buttons);
    setSizeGripEnabled(true);

    connect(m_template, &QComboBox::currentIndexChanged, this, &ZoDlgStampTemplate::FillDevices);
    connect(m_pattern, &QLineEdit::textChanged, this, &ZoDlgStampTemplate::FillDevices);
    connect(m_type, &QComboBox::currentIndexChanged, this, &ZoDlgStampTemplate::FillDevices);
    connect(m_capable, &QCheckBox::toggled, this, &ZoDlgStampTemplate::FillDevices);
    connect(m_devicesModel, &TemplateRowsModel::CheckedChanged, this, &ZoDlgStampTemplate::UpdatePreview);
    connect(m_selectAll, &QPushButton::clicked, this, [this] { m_devicesModel->SetAllChecked(true); });
    connect(m_ok, &QPushButton::clicked, this, &ZoDlgStampTemplate::OnOK);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
}

ZoDlgStampTemplate::~ZoDlgStampTemplate() = default;

void ZoDlgStampTemplate::OnInitDialog()
{
    setWindowTitle(ZoText(64801));
    ZoMnemonics keys;
    keys.Set(m_labels[0], ZoText(64802));
    keys.Set(m_labels[1], ZoText(64803));
    keys.Set(m_labels[2], ZoText(64804));
    keys.Set(m_capable, ZoText(64806));
    keys.Set(m_selectAll, ZoText(64807));
    keys.Set(m_labels[4], ZoText(64808));
    keys.Set(m_labels[3], ZoText(64810));
    m_ok->setText(ZoText(311));
    m_cancel->setText(ZoText(312));
    m_pattern->setToolTip(ZoText(64840));
    m_pattern->setPlaceholderText(QStringLiteral("*"));

    XmlDocument::XmlNode* root = m_events->Root();
    m_templates = Templates(root);
    {
        QSignalBlocker block(m_template);
        for (XmlDocument::XmlNode* templateEvent : m_templates)
            m_template->addItem(QString::fromStdWString(templateEvent->Value(L"name", L"")));
    }
    {
        QSignalBlocker block(m_type);
        m_type->addItem(ZoText(64805));
        for (std::wstring const& type : DeviceTypes(*m_catalog))
            m_type->addItem(QString::fromStdWString(type));
    }
    m_group->addItem(ZoText(64809));
    m_groupIds.emplace_back();
    if (XmlDocument::XmlNode* groups = root ? root->Child(L"eventsGroups") : nullptr) {
        for (XmlDocument::XmlNode* group = groups->FirstChild(); group; group = group->NextSibling()) {
            std::wstring const id = group->Value(L"id", L"");
            if (id.empty())
                continue;
            m_group->addItem(QString::fromStdWString(group->Value(L"name", L"")));
            m_groupIds.push_back(id);
        }
    }
    FillDevices();
    resize(QSize(760, 620));
    m_template->setFocus();
}

XmlDocument::XmlNode* ZoDlgStampTemplate::ChosenTemplate() const
{
    int const index = m_template->currentIndex();
    return index >= 0 && index < int(m_templates.size()) ? m_templates[std::size_t(index)] : nullptr;
}

// The devices offered: the catalog's, filtered; the devices checked before stay checked.
void ZoDlgStampTemplate::FillDevices()
{
    std::vector<ZoDriver const*> checked;
    for (int row : m_devicesModel->CheckedRows())
        checked.push_back(m_devices[std::size_t(row)]);
    DeviceFilter filter;
    filter.pattern = m_pattern->text();
    if (m_type->currentIndex() > 0)
        filter.type = m_type->currentText().toStdWString();
    filter.onlyCapable = m_capable->isChecked();
    XmlDocument::XmlNode* templateEvent = ChosenTemplate();
    std::vector<std::wstring> const required = templateEvent ? UsedVariables(*templateEvent) : std::vector<std::wstring>();
    m_devices = FilterDevices(*m_catalog, filter, required);
    std::vector<QStringList> rows;
    std::vector<bool> flags;
    rows.reserve(m_devices.size());
    for (ZoDriver const* device : m_devices) {
        rows.push_back({Q(device->Name()), Q(device->Description()), Q(device->Type())});
        flags.push_back(std::find(checked.begin(), checked.end(), device) != checked.end());
    }
    m_devicesModel->SetRows(std::move(rows), std::move(flags));
    FitTemplateColumns(m_devicesList);
}

void ZoDlgStampTemplate::UpdatePreview()
{
    std::vector<ZoDriver const*> chosen;
    for (int row : m_devicesModel->CheckedRows())
        chosen.push_back(m_devices[std::size_t(row)]);
    m_stamper = std::make_unique<TemplateStamper>(m_events->Root());
    if (XmlDocument::XmlNode* templateEvent = ChosenTemplate())
        m_stamper->Preview(templateEvent, chosen);
    std::vector<QStringList> rows;
    for (StampRow const& row : m_stamper->Rows()) {
        bool const made = row.skip == StampSkip::None;
        rows.push_back({Q(row.device->Name()), made ? Q(row.name) : QString(), made ? Q(row.condition) : QString(),
                        NoteOf(row)});
    }
    m_previewModel->SetRows(std::move(rows));
    FitTemplateColumns(m_previewList);
    int const count = m_stamper->EventCount();
    int const skipped = int(m_stamper->Rows().size()) - count;
    m_summary->setText(Q(ZoFormat(ZoLoadString(64811).c_str(), count, skipped)));
    m_ok->setEnabled(count > 0);
}

void ZoDlgStampTemplate::OnOK()
{
    if (!m_stamper || m_stamper->EventCount() == 0)
        return;
    int const group = m_group->currentIndex();
    std::wstring const groupId = group > 0 && group < int(m_groupIds.size()) ? m_groupIds[std::size_t(group)] : L"";
    m_made = int(m_stamper->Apply(m_deviceGroups, groupId).size());
    m_stamper.reset();
    accept();
}
