#include "templatedialogs/ZoDlgEventTemplates.h"

#include "editor/ZoEDlgEventCfg.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoGuid.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"
#include "platform/ui/ZoListView.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/ui/ZoOkCancelBox.h"
#include "templates/TemplateDevices.h"
#include "templatedialogs/TemplateRowsModel.h"
#include "templates/TemplateStore.h"

#include <QDialogButtonBox>
#include <QHBoxLayout>
#include <QKeyEvent>
#include <QLabel>
#include <QPushButton>
#include <QTreeView>
#include <QVBoxLayout>

#include <unordered_map>

using namespace zo::templates;
using XmlNode = XmlDocument::XmlNode;

namespace {

// While a template is edited, `{device}` resolves to the placeholder's device. The
// project's catalog is set aside meanwhile, not rebuilt: a check running in idle time, or
// kept for the Problems window, still points at it.
class PlaceholderCatalogScope {
public:
    PlaceholderCatalogScope(XmlNode const* deviceTree, XmlNode const* eventsRoot)
        : m_project(ZoDeviceCatalog::Exchange(PlaceholderDeviceCatalog(deviceTree, eventsRoot)))
    {
    }
    ~PlaceholderCatalogScope() { ZoDeviceCatalog::Exchange(std::move(m_project)); }
    PlaceholderCatalogScope(PlaceholderCatalogScope const&) = delete;
    PlaceholderCatalogScope& operator=(PlaceholderCatalogScope const&) = delete;

private:
    std::unique_ptr<ZoDeviceCatalog> m_project;
};

} // namespace

ZoDlgEventTemplates::ZoDlgEventTemplates(QWidget* parent, XmlDocument* events, XmlNode const* deviceTree,
                                         XmlNode const* timeTablesRoot, XmlDocument* users)
    : ZoDialog(parent), m_events(events), m_deviceTree(deviceTree), m_timeTables(timeTablesRoot), m_users(users)
{
    m_label = new QLabel(this);
    m_model = new TemplateRowsModel({ZoText(64845), ZoText(64839), ZoText(64814)}, false, this);
    m_list = ZoNewListView(this, "templatesList", m_model, QAbstractItemView::SingleSelection);
    m_label->setBuddy(m_list);
    m_list->installEventFilter(this);
    m_new = new QPushButton(this);
    m_new->setObjectName(QStringLiteral("newButton"));
    m_modify = new QPushButton(this);
    m_modify->setObjectName(QStringLiteral("modifyButton"));
    m_delete = new QPushButton(this);
    m_delete->setObjectName(QStringLiteral("deleteButton"));
    QDialogButtonBox* buttons = ZoNewOkCancelBox(this, m_ok, m_cancel);

    auto* side = new QVBoxLayout;
    side->addWidget(m_new);
    side->addWidget(m_modify);
    side->addWidget(m_delete);
    side->addStretch(1);
    auto* row = new QHBoxLayout;
    row->addWidget(m_list, 1);
    row->addLayout(side);
    auto* main = new QVBoxLayout(this);
    main->addWidget(m_label);
    main->addLayout(row, 1);
    main->addWidget(buttons);
    setSizeGripEnabled(true);

    connect(m_new, &QPushButton::clicked, this, &ZoDlgEventTemplates::OnNew);
    connect(m_modify, &QPushButton::clicked, this, &ZoDlgEventTemplates::OnModify);
    connect(m_delete, &QPushButton::clicked, this, &ZoDlgEventTemplates::OnDelete);
    connect(m_list, &QTreeView::doubleClicked, this, &ZoDlgEventTemplates::OnModify);
    connect(m_ok, &QPushButton::clicked, this, &QDialog::accept);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
}

ZoDlgEventTemplates::~ZoDlgEventTemplates() = default;

void ZoDlgEventTemplates::OnInitDialog()
{
    setWindowTitle(ZoText(64833));
    ZoMnemonics keys;
    keys.Set(m_label, ZoText(64833));
    keys.Set(m_new, ZoText(64834));
    keys.Set(m_modify, ZoText(64835));
    keys.Set(m_delete, ZoText(64836));
    m_ok->setText(ZoText(311));
    m_cancel->setText(ZoText(312));
    connect(m_list->selectionModel(), &QItemSelectionModel::selectionChanged, this, &ZoDlgEventTemplates::UpdateButtons);
    Fill(0);
    resize(QSize(680, 380));
    m_list->setFocus();
}

// Enter on the list modifies the selected template, Delete deletes it, Insert adds one.
bool ZoDlgEventTemplates::eventFilter(QObject* watched, QEvent* event)
{
    if (watched == m_list && event->type() == QEvent::KeyPress) {
        bool const selected = !ZoSelectedRows(m_list).empty();
        if (ZoListKey(static_cast<QKeyEvent*>(event), selected,
                      {.add = [this] { OnNew(); }, .remove = [this] { OnDelete(); }, .open = [this] { OnModify(); }}))
            return true;
    }
    return ZoDialog::eventFilter(watched, event);
}

void ZoDlgEventTemplates::Fill(int current)
{
    XmlNode* root = m_events->Root();
    std::unordered_map<std::string_view, int> stamped;
    for (StampLink const& link : StampLinks(root))
        ++stamped[link.templateId];
    std::vector<QStringList> rows;
    for (XmlNode* templateEvent : Templates(root)) {
        auto const count = stamped.find(templateEvent->ValueUtf8(L"id"));
        rows.push_back({QString::fromStdWString(templateEvent->Value(L"name", L"")),
                        QString::number(count == stamped.end() ? 0 : count->second),
                        QString::fromStdWString(templateEvent->Value(L"condition", L""))});
    }
    m_model->SetRows(std::move(rows));
    FitTemplateColumns(m_list);
    if (m_model->rowCount() > 0)
        m_list->setCurrentIndex(m_model->index(std::clamp(current, 0, m_model->rowCount() - 1), 0));
    UpdateButtons();
}

void ZoDlgEventTemplates::UpdateButtons()
{
    bool const selected = !ZoSelectedRows(m_list).empty();
    m_modify->setEnabled(selected);
    m_delete->setEnabled(selected);
}

bool ZoDlgEventTemplates::Edit(int index, bool isNew)
{
    XmlNode* root = m_events->Root();
    XmlNode* live = TemplatesElement(root, false);
    auto copy = live ? std::make_unique<XmlDocument>(*live) : std::make_unique<XmlDocument>();
    if (!live)
        copy->Create(kTemplatesTag);
    XmlNode* templateEvent = nullptr;
    if (isNew) {
        templateEvent = copy->Root()->NewChild(L"event");
        templateEvent->SetValue(L"id", ZoNewGuidText());
    } else {
        int at = 0;
        for (XmlNode* child = copy->Root()->FirstChild(); child; child = child->NextSibling()) {
            if (!child->HasTag(L"event"))
                continue;
            if (at++ == index) {
                templateEvent = child;
                break;
            }
        }
    }
    if (!templateEvent)
        return false;
    int result = QDialog::Rejected;
    {
        PlaceholderCatalogScope const placeholder(m_deviceTree, root);
        ZoEDlgEventCfg editor(this, templateEvent, copy->Root(), root->Child(L"eventsGroups"), m_timeTables, m_users);
        result = editor.DoModal();
    }
    if (result != QDialog::Accepted)
        return false;
    *TemplatesElement(root, true) = *copy->Root();
    return true;
}

void ZoDlgEventTemplates::OnNew()
{
    if (Edit(-1, true))
        Fill(m_model->rowCount());
}

void ZoDlgEventTemplates::OnModify()
{
    std::vector<int> const rows = ZoSelectedRows(m_list);
    if (rows.empty())
        return;
    if (Edit(rows.front(), false))
        Fill(rows.front());
}

void ZoDlgEventTemplates::OnDelete()
{
    std::vector<int> const rows = ZoSelectedRows(m_list);
    XmlNode* root = m_events->Root();
    std::vector<XmlNode*> const templates = Templates(root);
    if (rows.empty() || rows.front() >= int(templates.size()) || !ZoAskYesNo(this, 64838))
        return;
    XmlNode* doomed = templates[std::size_t(rows.front())];
    std::string const id(doomed->ValueUtf8(L"id"));
    // Its stamped events stand alone from now on.
    if (XmlNode* stamps = root->Child(kStampsTag)) {
        for (StampLink const& link : StampLinks(root)) {
            if (!id.empty() && link.templateId == id)
                stamps->RemoveChild(link.stamp);
        }
    }
    TemplatesElement(root, false)->RemoveChild(doomed);
    Fill(rows.front());
}
