// The host's where-used window and rename (Events > Where Used…, Events > Rename…).
#include "MainWindow.h"

#include "ChangeHistory.h"
#include "ProjectFolder.h"
#include "RenameDlg.h"
#include "UsesWindow.h"
#include "actions/ZoUsersDocument.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoModal.h"
#include "uses/ZoWhereUsed.h"

#include <QRegularExpression>

using zo::project::ProjectDoc;

namespace {

// The history's name of a rename: "Rename PUMP1 → P-101" (a variable with its device).
QString RenameStepName(ZoRenameRequest const& request)
{
    std::wstring const prefix = request.kind == ZoRenameKind::Variable ? request.device + L"." : std::wstring();
    return QString::fromStdWString(ZoFormat(ZoLoadString(65111).c_str(), (prefix + request.oldName).c_str(),
                                            (prefix + request.newName).c_str()));
}

} // namespace

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

std::optional<ZoFinding> MainWindow::PickUse(QWidget* parent, QString const& reference)
{
    if (!m_project)
        return std::nullopt;
    ProjectFolder& project = *m_project;
    UsesWindow window(parent);
    window.setModal(true);
    std::optional<ZoFinding> picked;
    connect(&window, &UsesWindow::findRequested, &window,
            [&window, &project](QString const& text) { ShowUses(window, project, text); });
    connect(&window, &UsesWindow::openRequested, &window, [&](ZoFinding const& use) {
        picked = use;
        window.accept();
    });
    window.Find(reference);
    ZoRunModal(window);
    return picked;
}

XmlDocument::XmlNode const* MainWindow::ChooseAmongUses(QWidget* parent, XmlDocument::XmlNode const* event)
{
    if (!m_project || !event)
        return nullptr;
    std::optional<ZoFinding> const use =
        PickUse(parent, QStringLiteral("event:") + QString::fromUtf8(event->ValueUtf8(L"name")));
    XmlDocument::XmlNode const* events = m_project->Events().Root()->Child(L"events");
    if (!use || use->subject != ZoCheckSubject::Event || use->path.size() != 2 || !events)
        return nullptr;
    XmlDocument::XmlNode const* chosen = events->FirstChild();
    for (std::uint32_t i = 0; chosen && i < use->path[1]; ++i)
        chosen = chosen->NextSibling();
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
    // One change through the journals, one step of the history, then one save of every
    // file it touched.
    m_history->Begin({ProjectDoc::Events, ProjectDoc::Devices});
    ZoApplyRename(plan.changes);
    m_history->Commit(RenameStepName(dialog.Request()));
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
