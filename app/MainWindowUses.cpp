// The host's where-used window and rename (Events > Where Used…, Events > Rename…).
#include "MainWindow.h"

#include "ProjectFolder.h"
#include "RenameDlg.h"
#include "UsesWindow.h"
#include "actions/ZoUsersDocument.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "uses/ZoWhereUsed.h"

#include <QStatusBar>

using zo::project::ProjectDoc;

void MainWindow::OnWhereUsed(QString const& reference)
{
    if (!m_project)
        return;
    if (!m_uses) {
        m_uses = new UsesWindow(this);
        connect(m_uses, &UsesWindow::findRequested, this, &MainWindow::OnFindUses);
        connect(m_uses, &UsesWindow::openRequested, this, &MainWindow::OnOpenUse);
    }
    m_uses->show();
    m_uses->raise();
    m_uses->activateWindow();
    if (!reference.isEmpty())
        m_uses->Find(reference);
}

void MainWindow::OnFindUses(QString const& reference)
{
    if (!m_project || !m_uses || reference.isEmpty())
        return;
    ProjectFolder& project = *m_project;
    // Recipients are looked up by name in the users file.
    if (reference.contains(QLatin1Char(':')) && !reference.startsWith(QLatin1Char('[')))
        ZoEnsureUsersLoaded(this, &project.Users());
    ZoUseDocs const docs{project.Events().Root(), project.TimeTables().Root(), project.Devices().Root(),
                         project.Users().Root()};
    ZoUseTarget target;
    std::wstring error;
    if (!ZoReadUseTarget(reference.toStdWString(), docs, target, error)) {
        m_uses->SetRefused(QString::fromStdWString(error));
        return;
    }
    m_uses->SetUses(ZoFindUses(docs, target));
}

void MainWindow::OnOpenUse(ZoFinding const& use)
{
    // The edit may have changed or removed the use: the rows are looked up again.
    if (OpenAtFinding(use) && m_uses && m_uses->isVisible())
        OnFindUses(m_uses->Reference());
}

void MainWindow::OnRename()
{
    if (!m_project)
        return;
    ProjectFolder& project = *m_project;
    RenameDlg dialog(this, project.Events(), project.Devices());
    if (dialog.DoModal() != QDialog::Accepted)
        return;
    ZoRenamePlan const& plan = dialog.Plan();
    XmlDocument& events = project.Events();
    XmlDocument& devices = project.Devices();
    // One change through the journals, then one save of every file it touched.
    events.BeginJournal();
    devices.BeginJournal();
    ZoApplyRename(plan.changes);
    events.EndJournal();
    devices.EndJournal();
    // Formulas resolve in the catalog: devices renamed there, events by their pseudo-devices.
    if (plan.touchesDevices)
        ZoInstallProjectCatalog(devices.Root(), events.Root());
    else
        ZoRefreshProjectEvents(events.Root());
    if (plan.touchesDevices)
        SaveDocuments({ProjectDoc::Events, ProjectDoc::Devices});
    else
        SaveDocuments({ProjectDoc::Events});
    UpdatePanel();
    if (m_uses && m_uses->isVisible())
        OnFindUses(m_uses->Reference());
}
