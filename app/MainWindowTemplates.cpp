// The host's Events menu for event templates: the templates themselves, stamping one over
// devices, and updating stamped events from their templates. Each runs its dialog on the
// live documents as one step of the undo history and saves what it kept.
#include "MainWindow.h"

#include "ChangeHistory.h"
#include "ProjectFolder.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMessage.h"
#include "templates/TemplateDrift.h"
#include "templates/TemplateStore.h"
#include "templatedialogs/ZoDlgEventTemplates.h"
#include "templatedialogs/ZoDlgStampTemplate.h"
#include "templatedialogs/ZoDlgUpdateFromTemplates.h"

#include <QAction>
#include <QMenu>

using zo::project::ProjectDoc;

namespace {

// The catalog installed for the project (the host installs one when it opens a folder).
ZoDeviceCatalog const& ProjectCatalog(ProjectFolder& project)
{
    if (!ZoDeviceCatalog::Installed())
        ZoInstallProjectCatalog(project.Devices().Root(), project.Events().Root());
    return *ZoDeviceCatalog::Installed();
}

} // namespace

void MainWindow::AddTemplateActions(QMenu* events)
{
    struct Entry {
        unsigned text;
        char const* name;
        void (MainWindow::*run)();
    };
    Entry const entries[] = {{64843, "templatesAction", &MainWindow::OnTemplates},
                             {64841, "stampTemplateAction", &MainWindow::OnStampTemplate},
                             {64842, "updateFromTemplatesAction", &MainWindow::OnUpdateFromTemplates}};
    events->addSeparator();
    for (Entry const& entry : entries) {
        auto* action = new QAction(ZoText(entry.text), this);
        action->setObjectName(QString::fromLatin1(entry.name));
        connect(action, &QAction::triggered, this, entry.run);
        events->addAction(action);
        m_templateActions.push_back(action);
    }
}

void MainWindow::OnTemplates()
{
    if (!m_project)
        return;
    RunJournaled(ProjectDoc::Events, 64844, 65112, [this] {
        ZoDlgEventTemplates dialog(this, &m_project->Events(), m_project->Devices().Root(),
                                   m_project->TimeTables().Root(), &m_project->Users());
        return dialog.DoModal();
    });
}

void MainWindow::OnStampTemplate()
{
    if (!m_project)
        return;
    XmlDocument& events = m_project->Events();
    if (zo::templates::Templates(events.Root()).empty()) {
        ZoShowMessage(this, 64820, ZoMsgIcon::Information);
        return;
    }
    m_history->Begin({ProjectDoc::Events, ProjectDoc::Devices});
    int result = QDialog::Rejected;
    QString templateName;
    {
        ZoDlgStampTemplate dialog(this, &events, m_project->DeviceGroups(), &ProjectCatalog(*m_project));
        result = dialog.DoModal();
        if (XmlDocument::XmlNode const* chosen = dialog.ChosenTemplate())
            templateName = QString::fromStdWString(chosen->Value(L"name", L""));
    }
    if (result != QDialog::Accepted) {
        m_history->Cancel();
        return;
    }
    // The new events and their registrations are one step, saved together.
    if (!m_history->Commit(QString::fromStdWString(ZoFormat(ZoLoadString(65113).c_str(), templateName.toStdWString().c_str()))))
        return;
    SaveDocuments({ProjectDoc::Events, ProjectDoc::Devices});
    ZoRefreshProjectEvents(events.Root());
    UpdatePanel();
    UpdateActions();
}

void MainWindow::OnUpdateFromTemplates()
{
    if (!m_project)
        return;
    XmlDocument& events = m_project->Events();
    ZoDeviceCatalog const& catalog = ProjectCatalog(*m_project);
    zo::templates::DriftReport report = zo::templates::FindDrift(events.Root(), catalog);
    if (report.drifted.empty()) {
        ZoShowMessage(this, 64831, ZoMsgIcon::Information);
        return;
    }
    m_history->Begin({ProjectDoc::Events});
    int result = QDialog::Rejected;
    {
        ZoDlgUpdateFromTemplates dialog(this, &events, &catalog, std::move(report));
        result = dialog.DoModal();
    }
    if (result != QDialog::Accepted) {
        m_history->Cancel();
        return;
    }
    if (!m_history->Commit(ZoText(65114)))
        return;
    SaveDocuments({ProjectDoc::Events});
    ZoRefreshProjectEvents(events.Root());
    UpdatePanel();
}
