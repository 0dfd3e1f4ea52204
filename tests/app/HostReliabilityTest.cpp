#include "HostTestSupport.h"
#include "ProjectFileReader.h"
#include "XmlFileText.h"
#include "config/XmlStorage.h"
#include "editor/ZoEDlgEventCfg.h"
#include "support/ScriptedAnswerer.h"
#include "support/TableText.h"

#include <QLineEdit>
#include <QStatusBar>
#include <QTemporaryDir>
#include <QTest>

#include <linux/capability.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include <new>
#include <stdexcept>

using namespace host_test;
using HostReliability = HostTest;

namespace {

// Opens the folder through the host's own code and returns the refusal (empty when it
// opened).
std::wstring OpenRefusal(QString const& folder)
{
    std::wstring error;
    std::unique_ptr<ProjectFolder> project = ProjectFolder::Open(folder, error);
    EXPECT_EQ(project == nullptr, !error.empty());
    return error;
}

bool Contains(std::wstring const& text, QString const& part)
{
    return QString::fromStdWString(text).contains(part);
}

std::wstring W(QString const& text)
{
    return text.toStdWString();
}

// "The file <path> cannot be read: <reason>." as the table words it.
QString CannotRead(QString const& path, QString const& reason)
{
    return Said(60041, W(path).c_str(), W(reason).c_str());
}

// The end of a text after its last placeholder ("the largest project file ..." after "%s MB, ").
QString Tail(unsigned id)
{
    QString const text = ZoText(id);
    return text.mid(text.lastIndexOf(QLatin1String("%s")) + 2);
}

// While it lives, this thread cannot pass by file permissions even as root, so that a
// folder without the right to look into it refuses the test as it refuses a user.
class WithoutFilePermissionOverride {
public:
    WithoutFilePermissionOverride()
    {
        if (syscall(SYS_capget, &m_header, m_saved) != 0)
            return;
        __user_cap_data_struct reduced[2] = {m_saved[0], m_saved[1]};
        reduced[0].effective &= ~((1u << CAP_DAC_OVERRIDE) | (1u << CAP_DAC_READ_SEARCH));
        m_changed = syscall(SYS_capset, &m_header, reduced) == 0;
    }
    ~WithoutFilePermissionOverride()
    {
        if (m_changed)
            syscall(SYS_capset, &m_header, m_saved);
    }
    WithoutFilePermissionOverride(WithoutFilePermissionOverride const&) = delete;
    WithoutFilePermissionOverride& operator=(WithoutFilePermissionOverride const&) = delete;

private:
    __user_cap_header_struct m_header{_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct m_saved[2] = {};
    bool m_changed = false;
};

// While it lives, the XML trees fail to get memory after `blocks` more blocks.
class TreeMemoryLimit {
public:
    explicit TreeMemoryLimit(int blocks)
    {
        s_left = blocks;
        zo::xml::Storage::SetBlockAllocationHook([](std::size_t) {
            if (s_left-- <= 0)
                throw std::bad_alloc();
        });
    }
    ~TreeMemoryLimit() { zo::xml::Storage::SetBlockAllocationHook(nullptr); }
    TreeMemoryLimit(TreeMemoryLimit const&) = delete;
    TreeMemoryLimit& operator=(TreeMemoryLimit const&) = delete;

private:
    static inline int s_left = 0;
};

QStringList FolderEntries(QString const& folder)
{
    return QDir(folder).entryList(QDir::Files | QDir::Hidden | QDir::System, QDir::Name);
}

} // namespace

// What stands under a document's name must be a regular file of a sane size, or the whole
// folder is refused with the real reason; nothing waits or reads without end.
TEST_F(HostReliability, RefusesWhatIsNotAPlainReadableFile)
{
    struct Case {
        char const* what;
        std::function<void(QString const& path)> make;
        std::function<QString(QString const& path)> reason; // what the message says of that path
    };
    auto const notRegular = [](QString const&) { return ZoText(60058); };
    std::vector<Case> const cases = {
        {"a named pipe", [](QString const& path) { ASSERT_EQ(::mkfifo(QFile::encodeName(path), 0644), 0); },
         notRegular},
        {"a link to an endless device", [](QString const& path) { ASSERT_TRUE(QFile::link("/dev/zero", path)); },
         notRegular},
        {"a folder", [](QString const& path) { ASSERT_TRUE(QDir().mkdir(path)); }, notRegular},
        {"a dangling link",
         [](QString const& path) { ASSERT_TRUE(QFile::link(path + ".gone", path)); },
         [](QString const& path) { return CannotRead(path, Said(60065, W(path + ".gone").c_str())); }},
        {"a file over the size limit (sparse)",
         [](QString const& path) {
             QFile file(path);
             ASSERT_TRUE(file.open(QIODevice::WriteOnly));
             ASSERT_TRUE(file.resize(MaxProjectFileBytes() + 1));
         },
         [](QString const&) { return Tail(60059); }},
    };
    for (Case const& test : cases) {
        SCOPED_TRACE(test.what);
        QTemporaryDir folder;
        QString const path = FilePath(folder.path(), ProjectDoc::Events);
        test.make(path);
        std::wstring const error = OpenRefusal(folder.path());
        EXPECT_TRUE(Contains(error, CannotRead(path, "").chopped(1))) << "names the file: " << error;
        EXPECT_TRUE(Contains(error, test.reason(path))) << error;
    }

    // The main window shows the refusal, keeps the project it had open and does not offer
    // to start a new project there.
    DemoWindow demo;
    QTemporaryDir pipeFolder;
    ASSERT_EQ(::mkfifo(QFile::encodeName(FilePath(pipeFolder.path(), ProjectDoc::Devices)), 0644), 0);
    ScriptedAnswerer answers;
    EXPECT_FALSE(demo.window.OpenFolder(pipeFolder.path()));
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{60040});
    EXPECT_TRUE(Contains(answers.LastText(),
                         CannotRead(FilePath(pipeFolder.path(), ProjectDoc::Devices), ZoText(60058))));
    EXPECT_EQ(demo.window.Project()->Folder(), QFileInfo(demo.dir.path()).absoluteFilePath());
}

// A folder the user may not look into is not an empty folder: it is refused with the
// real reason, in the editor's language, instead of being offered as a new project.
TEST_F(HostReliability, UnlistableFolderIsRefusedNotOfferedAsNew)
{
    QTemporaryDir parent;
    QString const folder = QDir(parent.path()).filePath("locked");
    ASSERT_TRUE(QDir().mkdir(folder));
    WriteBytes(FilePath(folder, ProjectDoc::Events), ReadBytes(FilePath(kDemoFolder, ProjectDoc::Events)));
    ASSERT_EQ(::chmod(QFile::encodeName(folder), 0600), 0);
    DemoWindow demo;
    ScriptedAnswerer answers;
    {
        WithoutFilePermissionOverride asUser;
        EXPECT_FALSE(demo.window.OpenFolder(folder));
    }
    ::chmod(QFile::encodeName(folder), 0700);
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{60040});
    EXPECT_TRUE(Contains(answers.LastText(), Said(60070, W(folder).c_str(), ZoLoadString(60081).c_str())))
        << answers.LastText();
}

// Running out of memory while opening or saving is reported like any failure; the open
// project and the files on disk stay as they were.
TEST_F(HostReliability, RunningOutOfMemoryIsReportedNotFatal)
{
    DemoWindow demo;
    ScriptedAnswerer answers;
    QTemporaryDir other;
    for (ProjectDoc doc : {ProjectDoc::Events, ProjectDoc::Devices})
        ASSERT_TRUE(QFile::copy(FilePath(kDemoFolder, doc), FilePath(other.path(), doc)));
    {
        TreeMemoryLimit memory(3);
        EXPECT_FALSE(demo.window.OpenFolder(other.path()));
    }
    EXPECT_EQ(answers.Ids(), std::vector<unsigned>{60040});
    EXPECT_TRUE(Contains(answers.LastText(), CannotRead(FilePath(other.path(), ProjectDoc::Events), ZoText(60066))))
        << answers.LastText();
    EXPECT_EQ(demo.window.Project()->Folder(), QFileInfo(demo.dir.path()).absoluteFilePath());
    EXPECT_EQ(demo.Label("eventsCountLabel"), "24");

    QByteArray const events = ReadBytes(demo.File(ProjectDoc::Events));
    QStringList const entries = FolderEntries(demo.dir.path());
    {
        ProjectSaver::SetBlockWrittenHook([]() -> int { throw std::bad_alloc(); });
        ModalScript modal(DeleteEventThen("Heavy rain"));
        demo.window.OnEventsList();
        ProjectSaver::SetBlockWrittenHook({});
    }
    EXPECT_EQ(answers.Ids(), (std::vector<unsigned>{60040, 32792, 60046}));
    EXPECT_TRUE(Contains(answers.LastText(),
                         Said(60046, W(demo.File(ProjectDoc::Events)).c_str(), ZoLoadString(60066).c_str())))
        << answers.LastText();
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)), events);
    EXPECT_EQ(FolderEntries(demo.dir.path()), entries);
    EXPECT_TRUE(demo.window.HasUnsavedChanges());
    EXPECT_EQ(demo.Label("eventsCountLabel"), "23");
}

// A file cut short is refused with the reader's reason in the language of the texts, at the
// byte where it ends; byte offsets of files over 2 GiB are shown as they are, not wrapped to
// negative numbers.
TEST(ProjectFolderMessages, AParseFailureNamesTheReasonAndTheOffsetInFull)
{
    QTemporaryDir dir;
    for (QString const& name : QDir(kDemoFolder).entryList(QDir::Files))
        ASSERT_TRUE(QFile::copy(QDir(kDemoFolder).filePath(name), QDir(dir.path()).filePath(name)));
    QString const events = QDir(dir.path()).filePath("Events.zocfg");
    QByteArray const cut = "<?xml version=\"1.0\"?>\n<eventsConfiguration><events>";
    QFile file(events);
    ASSERT_TRUE(file.open(QIODevice::WriteOnly | QIODevice::Truncate));
    file.write(cut);
    file.close();
    std::wstring error;
    EXPECT_EQ(ProjectFolder::Open(dir.path(), error), nullptr);
    EXPECT_EQ(QString::fromStdWString(error), Said(60042, QDir::toNativeSeparators(events).toStdWString().c_str(),
                                                   ZoLoadString(60101).c_str(), std::to_wstring(cut.size()).c_str()));

    std::wstring const text = ProjectFolder::ParseFailureMessage(L"/p/Events.zocfg", L"Unexpected end", 3000000123ull);
    EXPECT_EQ(QString::fromStdWString(text), Said(60042, L"/p/Events.zocfg", L"Unexpected end", L"3000000123"));
}

// Saving a tree nested 100,000 levels deep writes a text linear in its size, which reads
// back as the same tree; the save goes through the host without aborting.
TEST_F(HostReliability, DeeplyNestedDocumentSavesLinearlyAndReadsBack)
{
    constexpr int kDepth = 100000;
    DemoWindow demo;
    XmlDocument& events = demo.window.Project()->Events();
    XmlNode* node = events.Root()->Child(L"eventsGroups");
    for (int level = 0; level < kDepth; ++level)
        node = node->NewChild(L"group", nullptr);
    node->SetValue(L"deepest");

    std::string const text = XmlFileText(events);
    // A line per level: "<group>" and "</group>" with at most 64 blanks each.
    EXPECT_LT(text.size(), std::size_t(kDepth) * 2 * (9 + 64) + 200000);
    XmlDocument back;
    ASSERT_TRUE(back.Parse(text.data(), text.size()));
    std::string expected, got;
    events.Root()->CreateXmlCode(expected);
    back.Root()->CreateXmlCode(got);
    EXPECT_TRUE(expected == got);

    std::wstring error;
    ASSERT_TRUE(demo.window.Project()->Save({ProjectDoc::Events}, error)) << error;
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)).size(), qsizetype(text.size()));
}

// While it lives, the largest project file is this many bytes instead of the computer's.
class FileLimit {
public:
    explicit FileLimit(long long bytes) { SetMaxProjectFileBytes(bytes); }
    ~FileLimit() { SetMaxProjectFileBytes(0); }
    FileLimit(FileLimit const&) = delete;
    FileLimit& operator=(FileLimit const&) = delete;
};

// The editor never writes a file that it would refuse to open: a file of exactly the
// limit is saved and opens again; one byte more is refused before anything changes, with
// a reason that names the limit.
TEST_F(HostReliability, SaveAndOpenAgreeOnTheLargestFile)
{
    EXPECT_GE(MaxProjectFileBytes(), 1024LL << 20);
    constexpr long long kLimit = 1 << 20;
    FileLimit limit(kLimit);
    DemoWindow demo;
    ProjectFolder& project = *demo.window.Project();
    XmlNode* event = project.Events().Root()->Child(L"events")->FirstChild();
    std::wstring const padding(static_cast<std::size_t>(kLimit) - XmlFileText(project.Events()).size(), L'x');
    event->SetValue(L"description", event->Value(L"description", L"") + padding);
    ASSERT_EQ(XmlFileText(project.Events()).size(), std::size_t(kLimit));

    std::wstring error;
    ASSERT_TRUE(project.Save({ProjectDoc::Events}, error)) << error;
    QByteArray const saved = ReadBytes(demo.File(ProjectDoc::Events));
    EXPECT_EQ(saved.size(), kLimit);
    EXPECT_EQ(OpenRefusal(demo.dir.path()), L"");

    event->SetValue(L"description", event->Value(L"description", L"") + L"x");
    EXPECT_FALSE(project.Save({ProjectDoc::Events}, error));
    EXPECT_TRUE(Contains(error, Said(60090, L"1"))) << error;
    EXPECT_TRUE(Contains(error, ZoText(60047))) << error;
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)), saved);
    EXPECT_EQ(FolderEntries(demo.dir.path()).filter(ProjectSaver::kTemporarySuffix), QStringList());

    // The same file, one byte longer on disk, is refused when the folder opens.
    WriteBytes(demo.File(ProjectDoc::Events), saved + ' ');
    EXPECT_TRUE(Contains(OpenRefusal(demo.dir.path()), Said(60059, L"1")));
}

// A save stopped between its renames (here by a fault thrown from the rename seam) is
// completed by the next open, which says so; the folder then holds only new files.
TEST_F(HostReliability, StoppedSaveIsCompletedWhenTheFolderOpens)
{
    DemoWindow demo;
    ProjectFolder& project = *demo.window.Project();
    project.Events().Root()->Child(L"events")->SetValue(L"marker", L"new");
    project.Devices().Root()->SetValue(L"marker", L"new");
    std::string const newEvents = XmlFileText(project.Events());
    std::string const newDevices = XmlFileText(project.Devices());
    struct Stop {};
    ProjectSaver::SetRenameHook([](int renamed) {
        if (renamed == 1)
            throw Stop{};
    });
    std::wstring error;
    EXPECT_THROW(project.Save({ProjectDoc::Events, ProjectDoc::Devices}, error), Stop);
    ProjectSaver::SetRenameHook({});
    EXPECT_TRUE(FolderEntries(demo.dir.path()).contains(".zoevents-save"));
    EXPECT_TRUE(FolderEntries(demo.dir.path()).contains("Devices.zocfg.zonew"));

    ScriptedAnswerer answers;
    MainWindow window{RecentFolders(demo.settings.filePath("recent2.ini"))};
    ASSERT_TRUE(window.OpenFolder(demo.dir.path()));
    EXPECT_TRUE(answers.Ids().empty());
    EXPECT_EQ(window.statusBar()->currentMessage(), Said(60067, W(demo.dir.path()).c_str()));
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)).toStdString(), newEvents);
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Devices)).toStdString(), newDevices);
    EXPECT_FALSE(FolderEntries(demo.dir.path()).contains(".zoevents-save"));
    EXPECT_FALSE(FolderEntries(demo.dir.path()).contains("Devices.zocfg.zonew"));

    // A record that is not whole refuses the folder rather than guessing.
    WriteBytes(QDir(demo.dir.path()).filePath(".zoevents-save"), "zoevents save\nEvents.zocfg\n");
    std::wstring const refusal = OpenRefusal(demo.dir.path());
    EXPECT_TRUE(Contains(refusal, ZoText(60069))) << refusal;

    // Temporaries of a save stopped before its record are dropped: the old files stand.
    QFile::remove(QDir(demo.dir.path()).filePath(".zoevents-save"));
    WriteBytes(demo.File(ProjectDoc::Events) + ".zonew", "<half");
    EXPECT_TRUE(OpenRefusal(demo.dir.path()).empty());
    EXPECT_EQ(ReadBytes(demo.File(ProjectDoc::Events)).toStdString(), newEvents);
    EXPECT_FALSE(FolderEntries(demo.dir.path()).contains("Events.zocfg.zonew"));
}

// An edit confirmed in the editor is not thrown away by the list's Cancel without a
// question; Enter on a selected row opens the editor as a double click does.
TEST_F(HostReliability, CancelledListAsksBeforeDroppingAnEdit)
{
    for (ZoAnswer const discard : {ZoAnswer::Yes, ZoAnswer::No}) {
        SCOPED_TRACE(discard == ZoAnswer::Yes ? "discarded" : "kept");
        DemoWindow demo;
        std::wstring const before = EventNamed(demo.window.Project()->Events(), L"Heavy rain")->Value(L"description", L"");
        ScriptedAnswerer answers{discard};
        ModalScript modal(ModalScript::As<ZoEDlgEventsCfg>([](ZoEDlgEventsCfg& list) {
            auto* view = list.findChild<QAbstractItemView*>("eventsList");
            QModelIndexList const found =
                view->model()->match(view->model()->index(0, 0), Qt::DisplayRole, "Heavy rain", 1, Qt::MatchExactly);
            view->setCurrentIndex(found.value(0));
            QTest::keyClick(view, Qt::Key_Return);
            EXPECT_TRUE(list.IsModified());
            list.findChild<QPushButton*>("cancelButton")->click();
            return list.result();
        }));
        modal.Then(ModalScript::As<ZoEDlgEventCfg>([](ZoEDlgEventCfg& editor) {
            EXPECT_EQ(editor.findChild<QLineEdit*>("nameEdit")->text(), "Heavy rain");
            editor.findChild<QLineEdit*>("descriptionEdit")->setText("Rain gauge over 20 mm/h.");
            return ModalScript::ClickOk(editor);
        }));
        demo.window.OnEventsList();
        EXPECT_EQ(modal.Classes(), (QStringList{"ZoEDlgEventsCfg", "ZoEDlgEventCfg"}));
        ASSERT_FALSE(answers.Ids().empty());
        EXPECT_EQ(answers.Ids().back(), 60057u);
        std::wstring const kept = discard == ZoAnswer::Yes ? before : L"Rain gauge over 20 mm/h.";
        EXPECT_EQ(EventNamed(demo.window.Project()->Events(), L"Heavy rain")->Value(L"description", L""), kept);
        XmlDocument saved;
        ParseFile(demo.File(ProjectDoc::Events), saved);
        EXPECT_EQ(EventNamed(saved, L"Heavy rain")->Value(L"description", L""), kept);
        EXPECT_FALSE(demo.window.HasUnsavedChanges());
    }
}
