#include "MainWindow.h"

#include "ChangeHistory.h"
#include "EventChoiceModel.h"
#include "EventChooserDlg.h"
#include "ProblemsWindow.h"
#include "ProjectCheckRunner.h"
#include "UsesWindow.h"
#include "ProjectFolder.h"
#include "ProjectPanel.h"
#include "ProjectSummary.h"
#include "SheetImportDlg.h"
#include "actions/ZoUsersDocument.h"
#include "check/ZoProjectChecker.h"
#include "editor/ZoEDlgEventCfg.h"
#include "events/EventsListModel.h"
#include "events/ZoEDlgEventsCfg.h"
#include "groups/ZoEDlgEventGroupsCfg.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/drivers/ZoSelectDriver.h"
#include "platform/drivers/ZoEventVariables.h"
#include "platform/ui/ZoClipboard.h"
#include "platform/tools/ZoUtf.h"
#include "spreadsheet/EventsExport.h"
#include "spreadsheet/SheetFile.h"
#include "timetables/DaySlotEditing.h"
#include "timetables/ZoDlgTimeTableSetup.h"
#include "timeline/ZoDlgTimeTableCoverage.h"
#include "variables/CDlgSelectVarEventsVariables.h"
#include "DaySlotChooserDlg.h"
#include "platform/setup/ZoEventSystem.h"
#include "platform/setup/ZoVelmoraSetup.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMessage.h"
#include "platform/ui/ZoModal.h"

#include <QAction>
#include <QApplication>
#include <QCloseEvent>
#include <QCoreApplication>
#include <QDir>
#include <QFileDialog>
#include <QFileInfo>
#include <QMenuBar>
#include <QStatusBar>

#include <algorithm>

using namespace zo::project;
using XmlNode = XmlDocument::XmlNode;

namespace {

unsigned Bit(ProjectDoc doc)
{
    return 1u << static_cast<unsigned>(doc);
}

// Chosen variables ("DEVICE.CODE") as formula references, separated by blanks.
std::wstring EventVariablesFormulaText(std::list<std::wstring> const& chosen)
{
    std::wstring text;
    for (std::wstring const& variable : chosen)
        text += (text.empty() ? L"[" : L" [") + variable + L"]";
    return text;
}

std::wstring NativePath(QString const& path)
{
    return QDir::toNativeSeparators(path).toStdWString();
}

QAction* NewAction(QObject* parent, unsigned textId, char const* objectName)
{
    auto* action = new QAction(ZoText(textId), parent);
    action->setObjectName(QString::fromLatin1(objectName));
    return action;
}

} // namespace

MainWindow::MainWindow(RecentFolders recent, QWidget* parent)
    : QMainWindow(parent)
    , m_recent(std::move(recent))
{
    setWindowIcon(ZoVelmoraSetup::instance().ProgramIcon());
    m_panel = new ProjectPanel(this);
    setCentralWidget(m_panel);
    connect(m_panel, &ProjectPanel::openFolderRequested, this, &MainWindow::OnOpenFolder);
    connect(m_panel, &ProjectPanel::eventsRequested, this, &MainWindow::OnEventsList);
    connect(m_panel, &ProjectPanel::editEventRequested, this, &MainWindow::OnEditEvent);
    m_checkRunner = new ProjectCheckRunner(this);
    connect(m_checkRunner, &ProjectCheckRunner::finished, this, &MainWindow::OnCheckFinished);
    CreateActions();
    CreateMenus();
    statusBar();
    resize(900, 560);
    UpdatePanel();
    UpdateActions();
    UpdateTitle();
    // The device and variable choosers show where their current row is used.
    ZoSelectDriver::SetWhereUsed([this](QWidget* parent, QString const& reference) { PickUse(parent, reference); });
}

MainWindow::~MainWindow()
{
    // The check under way reads the project's documents: it ends before they go.
    m_checkRunner->Stop();
    ZoSelectDriver::SetWhereUsed({});
}

void MainWindow::CreateActions()
{
    m_openFolder = NewAction(this, 60002, "openFolderAction");
    m_openFolder->setShortcut(QKeySequence::Open);
    connect(m_openFolder, &QAction::triggered, this, &MainWindow::OnOpenFolder);
    m_clearRecent = NewAction(this, 60013, "clearRecentAction");
    connect(m_clearRecent, &QAction::triggered, this, [this] {
        m_recent.Clear();
        UpdateRecentMenu();
    });
    m_save = NewAction(this, 60004, "saveAction");
    m_save->setShortcut(QKeySequence::Save);
    connect(m_save, &QAction::triggered, this, &MainWindow::OnSave);
    m_quit = NewAction(this, 60005, "quitAction");
    m_quit->setShortcut(QKeySequence::Quit);
    m_quit->setMenuRole(QAction::QuitRole);
    connect(m_quit, &QAction::triggered, this, &QWidget::close);
    m_undo = NewAction(this, 65100, "undoAction");
    m_undo->setShortcut(QKeySequence::Undo);
    connect(m_undo, &QAction::triggered, this, &MainWindow::OnUndo);
    m_redo = NewAction(this, 65102, "redoAction");
    m_redo->setShortcuts({QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_Z), QKeySequence(Qt::CTRL | Qt::Key_Y)});
    connect(m_redo, &QAction::triggered, this, &MainWindow::OnRedo);

    m_events = NewAction(this, 60007, "eventsAction");
    m_events->setShortcut(QKeySequence(Qt::CTRL | Qt::Key_E));
    connect(m_events, &QAction::triggered, this, &MainWindow::OnEventsList);
    m_editEvent = NewAction(this, 60008, "editEventAction");
    connect(m_editEvent, &QAction::triggered, this, &MainWindow::OnEditEvent);
    m_eventGroups = NewAction(this, 60009, "eventGroupsAction");
    connect(m_eventGroups, &QAction::triggered, this, &MainWindow::OnEventGroups);
    m_timeTables = NewAction(this, 60010, "timeTablesAction");
    m_timeSlot = NewAction(this, 60011, "timeSlotAction");
    m_eventVariables = NewAction(this, 60012, "eventVariablesAction");
    connect(m_eventVariables, &QAction::triggered, this, &MainWindow::OnEventVariables);
    connect(m_timeTables, &QAction::triggered, this, &MainWindow::OnTimeTables);
    connect(m_timeSlot, &QAction::triggered, this, &MainWindow::OnTimeSlot);

    m_coverage = NewAction(this, 64925, "timeTableCoverageAction");
    connect(m_coverage, &QAction::triggered, this, &MainWindow::OnTimeTableCoverage);

    m_checkProject = NewAction(this, 64572, "checkProjectAction");
    m_checkProject->setShortcut(QKeySequence(Qt::Key_F7));
    connect(m_checkProject, &QAction::triggered, this, &MainWindow::OnCheckProject);
    m_whereUsed = NewAction(this, 64767, "whereUsedAction");
    m_whereUsed->setShortcut(QKeySequence(Qt::CTRL | Qt::SHIFT | Qt::Key_U));
    connect(m_whereUsed, &QAction::triggered, this, [this] { OnWhereUsed(); });
    m_rename = NewAction(this, 64768, "renameAction");
    m_rename->setShortcut(QKeySequence(Qt::Key_F2));
    connect(m_rename, &QAction::triggered, this, &MainWindow::OnRename);
    m_exportSheet = NewAction(this, 64680, "exportSheetAction");
    connect(m_exportSheet, &QAction::triggered, this, &MainWindow::OnExportSheet);
    m_importSheet = NewAction(this, 64681, "importSheetAction");
    connect(m_importSheet, &QAction::triggered, this, &MainWindow::OnImportSheet);

    m_about = NewAction(this, 60015, "aboutAction");
    m_about->setMenuRole(QAction::AboutRole);
    connect(m_about, &QAction::triggered, this, &MainWindow::OnAbout);
}

void MainWindow::CreateMenus()
{
    QMenu* file = menuBar()->addMenu(ZoText(60001));
    file->addAction(m_openFolder);
    m_recentMenu = file->addMenu(ZoText(60003));
    m_recentMenu->setObjectName(QStringLiteral("recentMenu"));
    file->addAction(m_save);
    file->addSeparator();
    file->addAction(m_quit);

    QMenu* edit = menuBar()->addMenu(ZoText(65104));
    edit->setObjectName(QStringLiteral("editMenu"));
    edit->addAction(m_undo);
    edit->addAction(m_redo);

    QMenu* events = menuBar()->addMenu(ZoText(60006));
    events->setObjectName(QStringLiteral("eventsMenu"));
    events->addAction(m_events);
    events->addAction(m_editEvent);
    events->addSeparator();
    events->addAction(m_eventGroups);
    events->addAction(m_timeTables);
    events->addAction(m_timeSlot);
    events->addAction(m_eventVariables);
    AddTemplateActions(events);
    events->addAction(m_coverage);
    events->addSeparator();
    events->addAction(m_checkProject);
    events->addAction(m_whereUsed);
    events->addAction(m_rename);
    events->addSeparator();
    events->addAction(m_exportSheet);
    events->addAction(m_importSheet);

    QMenu* help = menuBar()->addMenu(ZoText(60014));
    help->addAction(m_about);
    UpdateRecentMenu();
}

void MainWindow::UpdateRecentMenu()
{
    m_recentMenu->clear();
    QStringList const folders = m_recent.Folders();
    for (QString const& folder : folders) {
        QAction* open = m_recentMenu->addAction(QDir::toNativeSeparators(folder));
        connect(open, &QAction::triggered, this, [this, folder] { OpenFolder(folder); });
    }
    if (folders.isEmpty()) {
        QAction* none = m_recentMenu->addAction(ZoText(60016));
        none->setEnabled(false);
    }
    m_recentMenu->addSeparator();
    m_recentMenu->addAction(m_clearRecent);
    m_clearRecent->setEnabled(!folders.isEmpty());
}

void MainWindow::UpdateActions()
{
    bool const open = m_project != nullptr;
    XmlNode const* events = open ? m_project->Events().Root()->Child(L"events") : nullptr;
    m_events->setEnabled(open);
    m_editEvent->setEnabled(events && events->Child(L"event"));
    m_eventVariables->setEnabled(events && events->Child(L"event"));
    m_eventGroups->setEnabled(open);
    m_timeTables->setEnabled(open);
    m_timeSlot->setEnabled(open);
    m_coverage->setEnabled(open);
    m_checkProject->setEnabled(open);
    m_whereUsed->setEnabled(open);
    m_rename->setEnabled(open);
    m_exportSheet->setEnabled(open);
    m_importSheet->setEnabled(open);
    for (QAction* action : m_templateActions)
        action->setEnabled(open);
    m_save->setEnabled(open && HasUnsavedChanges());
    // The menu names the step: "Undo Events list changes".
    auto name = [](QAction* action, unsigned plain, unsigned named, QString const& step) {
        action->setEnabled(!step.isEmpty());
        action->setText(step.isEmpty() ? ZoText(plain)
                                       : QString::fromStdWString(ZoFormat(ZoLoadString(named).c_str(),
                                                                          step.toStdWString().c_str())));
    };
    name(m_undo, 65100, 65101, m_history ? m_history->UndoName().replace(u'&', QStringLiteral("&&")) : QString());
    name(m_redo, 65102, 65103, m_history ? m_history->RedoName().replace(u'&', QStringLiteral("&&")) : QString());
}

void MainWindow::UpdateTitle()
{
    QString const application = ZoText(60000);
    if (!m_project) {
        setWindowTitle(application);
        setWindowModified(false);
        return;
    }
    setWindowTitle(m_project->DisplayName() + QStringLiteral("[*] \u2014 ") + application);
    setWindowModified(HasUnsavedChanges());
}

void MainWindow::UpdatePanel()
{
    if (!m_project) {
        m_panel->ShowEmpty();
        return;
    }
    m_panel->ShowProject(SummarizeProject(*m_project));
}

bool MainWindow::OpenFolder(QString const& folder)
{
    if (!MaySaveChanges())
        return false;
    std::wstring reason;
    std::unique_ptr<ProjectFolder> project = ProjectFolder::Open(folder, reason);
    if (!project) {
        std::wstring const text = ZoFormatN(1024, ZoLoadString(60040).c_str(), NativePath(folder).c_str())
            + L"\n\n" + reason + L"\n\n" + ZoLoadString(60044);
        ZoShowMessageText(this, 60040, text, ZoMsgIcon::Error);
        if (!QFileInfo(folder).isDir()) {
            m_recent.Remove(folder);
            UpdateRecentMenu();
        }
        return false;
    }
    if (project->IsNew()) {
        std::wstring const question = ZoFormatN(1024, ZoLoadString(60049).c_str(),
                                                NativePath(project->Folder()).c_str());
        if (!ZoAskYesNoText(this, 60049, question))
            return false;
    }
    // The rows the events list kept and the check under way belong to the project that closes.
    EventsListModel::DropKept();
    m_checkRunner->Stop();
    // The history ends with the folder it was made in.
    m_history.reset();
    m_project = std::move(project);
    m_history = std::make_unique<ChangeHistory>(*m_project);
    m_unsaved = 0;
    // The findings were those of the project that was open.
    m_checker.reset();
    if (m_problems)
        m_problems->close();
    if (m_uses)
        m_uses->close();
    ZoVelmoraSetup::instance().SetCfgPath(m_project->Folder().toStdWString());
    ZoEventSystem::instance()->SetFeedAvailable(m_project->FeedAvailable());
    // Formulas resolve their variables in the project's devices and events.
    ZoInstallProjectCatalog(m_project->Devices().Root(), m_project->Events().Root());
    // The events list's rows are read and sorted here, where opening a large project has
    // time to spare beside reading its files, so that even the list's first opening shows
    // them at once: a list keeps its rows for the next list of the same documents.
    EventsListModel(&m_project->Events(), &m_project->TimeTables()).UpdateList();
    // The event editor works on a copy of the events whose top level (an element for each
    // event) is built when it opens. Built once here, its memory is taken from the system
    // now and stays in the documents' pool, so that even the first editor opens at once.
    if (XmlNode* events = m_project->Events().Root() ? m_project->Events().Root()->Child(L"events") : nullptr) {
        XmlDocument copy(*events);
        copy.Root()->FirstChild();
    }
    m_recent.Add(m_project->Folder());
    UpdateRecentMenu();
    UpdatePanel();
    UpdateActions();
    UpdateTitle();
    unsigned const opened = m_project->CompletedStoppedSave() ? 60067 : 60053;
    statusBar()->showMessage(QString::fromStdWString(ZoFormat(ZoLoadString(opened).c_str(),
                                                              NativePath(m_project->Folder()).c_str())),
                             m_project->CompletedStoppedSave() ? 0 : 5000); // a completed save stays shown
    return true;
}

void MainWindow::OnOpenFolder()
{
    QFileDialog dialog(this, ZoText(60052));
    dialog.setObjectName(QStringLiteral("openFolderDialog"));
    dialog.setFileMode(QFileDialog::Directory);
    dialog.setOption(QFileDialog::ShowDirsOnly, true);
    if (m_project)
        dialog.setDirectory(QFileInfo(m_project->Folder()).absolutePath());
    if (ZoRunModal(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return;
    OpenFolder(dialog.selectedFiles().first());
}

void MainWindow::OnSave()
{
    SaveDocuments({});
}

void MainWindow::OnUndo()
{
    if (m_history)
        AfterHistory(m_history->Undo());
}

void MainWindow::OnRedo()
{
    if (m_history)
        AfterHistory(m_history->Redo());
}

void MainWindow::AfterHistory(std::vector<ProjectDoc> const& docs)
{
    if (docs.empty())
        return;
    ProjectFolder& project = *m_project;
    // Formulas resolve in the catalog: devices and events as they are now.
    if (std::find(docs.begin(), docs.end(), ProjectDoc::Devices) != docs.end())
        ZoInstallProjectCatalog(project.Devices().Root(), project.Events().Root());
    else if (std::find(docs.begin(), docs.end(), ProjectDoc::Events) != docs.end())
        ZoRefreshProjectEvents(project.Events().Root());
    SaveDocuments(docs);
    UpdatePanel();
    UpdateActions();
    if (m_uses && m_uses->isVisible())
        OnFindUses(m_uses->Reference());
}

bool MainWindow::SaveDocuments(std::vector<ProjectDoc> const& docs)
{
    if (!m_project)
        return false;
    for (ProjectDoc doc : docs)
        m_unsaved |= Bit(doc);
    // Only the documents that the dialogs edit are ever written: users and project
    // settings belong to other tools.
    std::vector<ProjectDoc> pending;
    for (ProjectDoc doc : {ProjectDoc::Events, ProjectDoc::Devices, ProjectDoc::TimeTables}) {
        if (m_unsaved & Bit(doc))
            pending.push_back(doc);
    }
    std::wstring error;
    bool const saved = m_project->Save(pending, error);
    // The documents changed: the check starts again, in idle time, and its counts follow
    // the message of the save.
    StartCheck();
    if (saved) {
        m_unsaved = 0;
        statusBar()->showMessage(ZoText(60054), 10000);
    } else {
        ZoShowMessageText(this, 60046, error, ZoMsgIcon::Error);
    }
    m_countsAfterSave = saved;
    UpdateActions();
    UpdateTitle();
    return saved;
}

void MainWindow::OnEventsList()
{
    if (!m_project)
        return;
    ProjectFolder& project = *m_project;
    // The list deletes and pastes in the live documents at once. Their journals record
    // each change, so that a cancelled list can be undone without copying the project.
    XmlDocument& events = project.Events();
    m_history->Begin({ProjectDoc::Events, ProjectDoc::Devices});
    int result = QDialog::Rejected;
    {
        ZoEDlgEventsCfg dialog(this, project.DeviceGroups(), &events, &project.TimeTables(), &project.Users());
        dialog.m_whereUsed = [this](QWidget* parent, XmlNode const* event) { return ChooseAmongUses(parent, event); };
        result = dialog.DoModal();
    }
    bool keep = result == QDialog::Accepted;
    bool const eventsChanged = events.JournalHasChanges();
    bool const changed = m_history->HasChanges();
    // Changes the user confirmed (an edit in the editor, a delete, a paste) are not thrown
    // away without a question.
    if (!keep && changed)
        keep = !ZoAskYesNo(this, 60057);
    if (keep) {
        m_history->Commit(ZoText(65105));
        SaveDocuments({ProjectDoc::Events, ProjectDoc::Devices});
    } else {
        m_history->Cancel();
    }
    // The formulas' events pseudo-devices follow the events kept; undone or unchanged
    // events leave the catalog as it is (rebuilding it costs tens of milliseconds).
    if (keep && eventsChanged)
        ZoRefreshProjectEvents(events.Root());
    // Undone or unchanged documents count as they did: the panel is counted again only
    // after a change was kept.
    if (keep && changed)
        UpdatePanel();
    UpdateActions();
}

void MainWindow::OnEditEvent()
{
    if (!m_project)
        return;
    ProjectFolder& project = *m_project;
    XmlNode* events = project.Events().Root()->Child(L"events");
    if (!events || !events->Child(L"event")) {
        ZoShowMessage(this, 60055, ZoMsgIcon::Information);
        return;
    }
    EventChooserDlg chooser(this, events);
    if (chooser.DoModal() != QDialog::Accepted)
        return;
    EditEvent([index = chooser.ChosenIndex()](XmlNode* root) { return NthEvent(root, index); });
}

bool MainWindow::EditEvent(EventFinder const& find, QString const& control, int moment)
{
    ProjectFolder& project = *m_project;
    XmlNode* events = project.Events().Root()->Child(L"events");
    // The editor works on a copy of all events (it checks the name against the others);
    // the copy replaces the live events only when the editor ends with OK.
    XmlDocument copy(*events);
    XmlNode* event = find(copy.Root());
    if (!event)
        return false;
    int result = QDialog::Rejected;
    {
        ZoEDlgEventCfg editor(this, event, copy.Root(), project.Events().Root()->Child(L"eventsGroups"),
                              project.TimeTables().Root(), &project.Users());
        editor.m_openAtControl = control;
        editor.m_openAtMoment = moment;
        result = editor.DoModal();
    }
    if (result != QDialog::Accepted)
        return false;
    // The editor changes only its own event: comparing that one tells whether to save.
    std::string before;
    std::string after;
    find(events)->CreateXmlCode(before);
    event->CreateXmlCode(after);
    if (before == after)
        return false;
    m_history->Begin({ProjectDoc::Events});
    *events = *copy.Root();
    m_history->Commit(QString::fromStdWString(ZoFormat(ZoLoadString(65106).c_str(), event->Value(L"name", L"").c_str())));
    ZoRefreshProjectEvents(events);
    SaveDocuments({ProjectDoc::Events});
    UpdatePanel();
    return true;
}

bool MainWindow::RunJournaled(ProjectDoc doc, unsigned discardQuestion, unsigned stepName,
                              std::function<int()> const& run)
{
    m_history->Begin({doc});
    int const result = run();
    bool const changed = m_history->HasChanges();
    bool const keep = result == QDialog::Accepted || (changed && !ZoAskYesNo(this, discardQuestion));
    if (!keep) {
        m_history->Cancel();
        return false;
    }
    if (!m_history->Commit(ZoText(stepName)))
        return false;
    SaveDocuments({doc});
    return true;
}

// Events > Event groups: deleting groups and changing members act on the live document at
// once, and a cancelled dialog does not undo them itself; the journal lets the editor undo
// them, after a question, as it does for the events list. Memberships are not part of the
// catalog's events, so the catalog stays as it is.
void MainWindow::OnEventGroups()
{
    if (!m_project)
        return;
    RunJournaled(ProjectDoc::Events, 63001, 65107, [this] {
        ZoEDlgEventGroupsCfg dialog(this, &m_project->Events());
        dialog.m_whereUsed = [this](QWidget* parent, QString const& reference) { PickUse(parent, reference); };
        return dialog.DoModal();
    });
    UpdatePanel();
}

// Events > Time tables: the setup dialog changes the document as the user works; a
// journal lets a cancelled dialog be undone, after a question, as the events list is.
void MainWindow::OnTimeTables()
{
    if (!m_project)
        return;
    RunJournaled(ProjectDoc::TimeTables, 60079, 65108, [this] {
        ZoDlgTimeTableSetup dialog(this, &m_project->TimeTables());
        dialog.m_whereUsed = [this](QWidget* parent, QString const& reference) { PickUse(parent, reference); };
        return dialog.DoModal();
    });
    UpdatePanel();
}

// Events > Time slot: a day program and one of its slots (or a new one), then the slot
// editor; the day's slots are written back merged, and saved.
void MainWindow::OnTimeSlot()
{
    if (!m_project)
        return;
    XmlNode* days = m_project->TimeTables().Root()->Child(L"days");
    if (!days || !days->Child(L"day")) {
        ZoShowMessage(this, 60078, ZoMsgIcon::Information);
        return;
    }
    DaySlotChooserDlg chooser(this, days);
    if (chooser.DoModal() != QDialog::Accepted || !chooser.ChosenDay())
        return;
    m_history->Begin({ProjectDoc::TimeTables});
    bool const written = EditDaySlot(this, chooser.ChosenDay(), chooser.ChosenSlot());
    if (written && m_history->Commit(ZoText(65109)))
        SaveDocuments({ProjectDoc::TimeTables});
    else
        m_history->Cancel();
    UpdatePanel();
}

// Events > Event variables: the user picks an event, then variables of its state; they go
// to the clipboard as formula text, ready to paste into a condition.
void MainWindow::OnEventVariables()
{
    if (!m_project)
        return;
    XmlNode* events = m_project->Events().Root()->Child(L"events");
    if (!events || !events->Child(L"event")) {
        ZoShowMessage(this, 60055, ZoMsgIcon::Information);
        return;
    }
    EventChooserDlg chooser(this, events, 60072, 60073);
    if (chooser.DoModal() != QDialog::Accepted)
        return;
    XmlNode const* event = NthEvent(events, chooser.ChosenIndex());
    ZoDeviceCatalog const* catalog = ZoDeviceCatalog::Installed();
    ZoDriver const* device =
        event && catalog ? catalog->Find(std::wstring(kZoEventsDevicePrefix) + event->Value(L"name", L"")) : nullptr;
    std::list<std::wstring> chosen;
    CDlgSelectVarEventsVariables dialog(this, device, &chosen, ZoAllTypes(), 0);
    if (dialog.DoModal() != QDialog::Accepted || chosen.empty())
        return;
    std::string const text = ZoToUtf8(EventVariablesFormulaText(chosen));
    PutToClipboard(text.data(), text.size(), 0);
    statusBar()->showMessage(
        QString::fromStdWString(ZoFormatN(1024, ZoLoadString(60071).c_str(), ZoFromUtf8(text).c_str())), 10000);
}

void MainWindow::OnAbout()
{
    std::wstring const text = ZoFormatN(1024, ZoLoadString(60056).c_str(),
                                        QCoreApplication::applicationVersion().toStdWString().c_str());
    ZoShowMessageText(this, 60056, text, ZoMsgIcon::Information);
}

bool MainWindow::MaySaveChanges()
{
    if (!HasUnsavedChanges())
        return true;
    if (!ZoAskYesNo(this, 60048)) {
        m_unsaved = 0;
        return true;
    }
    return SaveDocuments({});
}

void MainWindow::closeEvent(QCloseEvent* event)
{
    if (MaySaveChanges())
        event->accept();
    else
        event->ignore();
}

namespace {

// The event editor's control that holds a finding's field (its object name).
QString EditorControl(ZoFinding const& finding)
{
    switch (finding.field) {
    case ZoCheckField::Condition: return QStringLiteral("conditionEdit");
    case ZoCheckField::StopCondition: return QStringLiteral("stopConditionEdit");
    case ZoCheckField::DelayActivate: return QStringLiteral("delayActivateEdit");
    case ZoCheckField::DelayDeactivate: return QStringLiteral("delayDeactivateEdit");
    case ZoCheckField::TimeTable: return QStringLiteral("timeTableCombo");
    case ZoCheckField::Groups: return QStringLiteral("groupsList");
    case ZoCheckField::Annotation: return QStringLiteral("annotationEdit");
    case ZoCheckField::DeaAnnotation: return QStringLiteral("deaAnnotationEdit");
    case ZoCheckField::AckAnnotation: return QStringLiteral("ackAnnotationEdit");
    case ZoCheckField::Argument: return QStringLiteral("argumentsList");
    case ZoCheckField::Action:
        return finding.list == 1 ? QStringLiteral("clientActionsMomentTabs") : QStringLiteral("actionsMomentTabs");
    case ZoCheckField::Name:
    case ZoCheckField::Identity:
    case ZoCheckField::None: return QStringLiteral("nameEdit");
    }
    return {};
}

// The documents the check reads: the users file only once a dialog loaded it.
ZoProjectDocs CheckedDocs(ProjectFolder& project)
{
    return {project.Events().Root(), project.TimeTables().Root(), project.Devices().Root(), project.Users().Root(),
            project.Folder().toStdWString()};
}

// Formulas resolve in the catalog the editor keeps up to date.
ZoCheckOptions CheckOptions()
{
    ZoCheckOptions options;
    options.catalog = ZoDeviceCatalog::Installed();
    return options;
}

XmlNode* ChildAt(XmlNode* parent, std::uint32_t position)
{
    XmlNode* child = parent ? parent->FirstChild() : nullptr;
    for (std::uint32_t i = 0; child && i < position; ++i)
        child = child->NextSibling();
    return child && child->HasTag(L"event") ? child : nullptr;
}

} // namespace

void MainWindow::OnCheckProject()
{
    if (!m_project)
        return;
    ProjectFolder& project = *m_project;
    // Mail and SMS recipients are checked against the users file.
    ZoEnsureUsersLoaded(this, &project.Users());
    QApplication::setOverrideCursor(Qt::WaitCursor);
    m_checker = std::make_unique<ZoProjectChecker>(CheckedDocs(project), CheckOptions());
    if (!m_problems) {
        m_problems = new ProblemsWindow(this);
        connect(m_problems, &ProblemsWindow::openRequested, this, &MainWindow::OnOpenProblem);
        connect(m_problems, &ProblemsWindow::checkAgainRequested, this, &MainWindow::OnCheckProject);
    }
    m_problems->SetFindings(m_checker->CheckProject());
    QApplication::restoreOverrideCursor();
    m_problems->show();
    m_problems->raise();
    m_problems->activateWindow();
}

bool MainWindow::OpenAtFinding(ZoFinding const& finding)
{
    if (!m_project || finding.subject != ZoCheckSubject::Event || finding.path.size() != 2)
        return false;
    std::uint32_t const position = finding.path[1];
    return EditEvent([position](XmlNode* root) { return ChildAt(root, position); }, EditorControl(finding),
                     finding.field == ZoCheckField::Action ? finding.moment : -1);
}

void MainWindow::OnOpenProblem(ZoFinding const& finding)
{
    if (!m_checker)
        return;
    bool const changed = OpenAtFinding(finding);
    // The event is checked again at once; the whole project follows in idle time.
    if (changed && m_problems)
        m_problems->ReplaceEventFindings(finding.path[1], m_checker->CheckEvent(finding.path[1]));
}

// Events > Time Table Coverage: a week's hours by the notifying events allowed; an event
// opened from its list is edited as from the Problems window.
void MainWindow::OnTimeTableCoverage()
{
    if (!m_project)
        return;
    ZoDlgTimeTableCoverage dialog(this, m_project->Events().Root()->Child(L"events"), m_project->TimeTables().Root());
    connect(&dialog, &ZoDlgTimeTableCoverage::openRequested, this, [this](std::uint32_t position) {
        EditEvent([position](XmlNode* root) { return ChildAt(root, position); });
    });
    dialog.DoModal();
}

void MainWindow::StartCheck()
{
    if (!m_project)
        return;
    // An open Problems window follows every change, whichever dialog made it.
    bool const findings = m_problems && m_problems->isVisible();
    m_checkRunner->Start(CheckedDocs(*m_project), CheckOptions(), findings);
}

void MainWindow::OnCheckFinished()
{
    ZoCheckCounts const counts = m_checkRunner->Counts();
    if (m_problems && m_problems->isVisible() && m_checkRunner->KeepsFindings()) {
        std::vector<ZoFinding> findings = m_checkRunner->TakeFindings();
        if (std::unique_ptr<ZoProjectChecker> checker = m_checkRunner->TakeChecker()) {
            m_checker = std::move(checker);
            m_problems->SetFindings(std::move(findings));
        }
    }
    if (m_countsAfterSave) {
        m_countsAfterSave = false;
        QString const text = QString::fromStdWString(ZoFormat(ZoLoadString(64573).c_str(), counts.errors, counts.warnings));
        statusBar()->showMessage(ZoText(60054) + " " + text, 10000);
    }
}

namespace {

// A file chosen in a file dialog run through the modal runner; empty when cancelled.
QString ChooseSheetFile(QWidget* parent, unsigned title, char const* objectName, bool save, QString const& folder)
{
    QFileDialog dialog(parent, ZoText(title));
    dialog.setObjectName(QString::fromLatin1(objectName));
    dialog.setNameFilters(ZoText(64684).split(QStringLiteral(";;")));
    dialog.setDirectory(folder);
    if (save) {
        dialog.setAcceptMode(QFileDialog::AcceptSave);
        dialog.setFileMode(QFileDialog::AnyFile);
        dialog.setDefaultSuffix(QStringLiteral("csv"));
    } else {
        dialog.setFileMode(QFileDialog::ExistingFile);
    }
    if (ZoRunModal(dialog) != QDialog::Accepted || dialog.selectedFiles().isEmpty())
        return {};
    return dialog.selectedFiles().first();
}

} // namespace

void MainWindow::OnExportSheet()
{
    if (!m_project)
        return;
    QString const path = ChooseSheetFile(this, 64682, "exportSheetDialog", true, m_project->Folder());
    if (path.isEmpty())
        return;
    std::string sheet;
    std::size_t const count = ZoExportEvents(m_project->Events().Root(), m_project->TimeTables().Root(), sheet);
    std::wstring error;
    if (!ZoWriteSheetFile(path, sheet, error)) {
        ZoShowMessageText(this, 64686, ZoFormat(ZoLoadString(64686).c_str(), error.c_str()), ZoMsgIcon::Error);
        return;
    }
    statusBar()->showMessage(QString::fromStdWString(ZoFormat(ZoLoadString(64685).c_str(), static_cast<int>(count),
                                                              NativePath(path).c_str())),
                             10000);
}

void MainWindow::OnImportSheet()
{
    if (!m_project)
        return;
    ProjectFolder& project = *m_project;
    QString const path = ChooseSheetFile(this, 64683, "importSheetDialog", false, project.Folder());
    if (path.isEmpty())
        return;
    std::string sheet;
    std::wstring error;
    if (!ZoReadSheetFile(path, sheet, error)) {
        ZoShowMessageText(this, 64687, ZoFormat(ZoLoadString(64687).c_str(), error.c_str()), ZoMsgIcon::Error);
        return;
    }
    // Mail and SMS recipients of the imported events are checked against the users file.
    ZoEnsureUsersLoaded(this, &project.Users());
    ZoImportTarget target;
    target.events = &project.Events();
    target.timeTables = &project.TimeTables();
    target.devices = &project.Devices();
    target.users = project.Users().Root();
    target.folder = project.Folder().toStdWString();
    target.catalog = ZoDeviceCatalog::Installed();
    SheetImportDlg dialog(this, path, std::move(sheet), target);
    if (dialog.DoModal() != QDialog::Accepted || dialog.Plan().Refused() || !dialog.Plan().ChangesAnything())
        return;
    // One change of both documents, saved together as after the events list.
    XmlDocument& events = project.Events();
    m_history->Begin({ProjectDoc::Events, ProjectDoc::Devices});
    ZoApplyImport(dialog.Plan(), target);
    m_history->Commit(QString::fromStdWString(ZoFormat(ZoLoadString(65110).c_str(),
                                                       QFileInfo(path).fileName().toStdWString().c_str())));
    QString const counts = QString::fromStdWString(ZoImportCounts(dialog.Plan()));
    SaveDocuments({ProjectDoc::Events, ProjectDoc::Devices});
    ZoRefreshProjectEvents(events.Root());
    UpdatePanel();
    UpdateActions();
    if (!HasUnsavedChanges())
        statusBar()->showMessage(QString::fromStdWString(ZoFormat(ZoLoadString(64688).c_str(),
                                                                  counts.toStdWString().c_str())),
                                 10000);
}
