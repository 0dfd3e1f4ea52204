// The host's where-used window and rename (Events > Where Used…, Events > Rename…).
#include "MainWindow.h"

#include "ProjectFolder.h"
#include "RenameDlg.h"
#include "UsesWindow.h"
#include "actions/ZoUsersDocument.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/ui/ZoModal.h"
#include "uses/ZoWhereUsed.h"

#include <QRegularExpression>

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

namespace {

// Looks the reference up in the project and shows its uses (or why it names nothing).
void ShowUses(UsesWindow& window, ProjectFolder& project, QString const& reference)
{
    if (reference.isEmpty())
        return;
    // Recipients are looked up by name in the users file.
    static QRegularExpression const recipient(QStringLiteral("^(user|maillist|phonelist):"),
                                              QRegularExpression::CaseInsensitiveOption);
    if (recipient.match(reference).hasMatch())
        ZoEnsureUsersLoaded(&window, &project.Users());
    ZoUseDocs const docs{project.Events().Root(), project.TimeTables().Root(), project.Devices().Root(),
                         project.Users().Root()};
    ZoUseTarget target;
    std::wstring error;
    if (!ZoReadUseTarget(reference.toStdWString(), docs, target, error)) {
        window.SetRefused(QString::fromStdWString(error));
        return;
    }
    window.SetUses(ZoFindUses(docs, target));
}

} // namespace

void MainWindow::OnFindUses(QString const& reference)
{
    if (m_project && m_uses)
        ShowUses(*m_uses, *m_project, reference);
}

// From the events list, whose changes are not applied yet: the uses are shown over its
// live documents in a modal window, and Enter picks the event to select in the list rather
// than opening an editor beside the list's own.
XmlDocument::XmlNode const* MainWindow::ChooseAmongUses(QWidget* parent, XmlDocument::XmlNode const* event)
{
    if (!m_project || !event)
        return nullptr;
    ProjectFolder& project = *m_project;
    UsesWindow window(parent);
    window.setModal(true);
    XmlDocument::XmlNode const* chosen = nullptr;
    connect(&window, &UsesWindow::findRequested, &window,
            [&window, &project](QString const& reference) { ShowUses(window, project, reference); });
    connect(&window, &UsesWindow::openRequested, &window, [&](ZoFinding const& use) {
        XmlDocument::XmlNode const* events = project.Events().Root()->Child(L"events");
        if (use.subject != ZoCheckSubject::Event || use.path.size() != 2 || !events)
            return;
        chosen = events->FirstChild();
        for (std::uint32_t i = 0; chosen && i < use.path[1]; ++i)
            chosen = chosen->NextSibling();
        window.accept();
    });
    window.Find(QStringLiteral("event:") + QString::fromUtf8(event->ValueUtf8(L"name")));
    ZoRunModal(window);
    return chosen;
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
