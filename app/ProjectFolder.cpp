#include "ProjectFolder.h"

#include "ProjectFileReader.h"
#include "ProjectSaver.h"
#include "ProjectSummary.h"
#include "XmlFileText.h"
#include "config/XmlParseProgress.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

#include <cerrno>
#include <dirent.h>
#include <sys/stat.h>

using namespace zo::project;
using XmlNode = XmlDocument::XmlNode;

namespace {

// The XML reader's reason for refusing a file, in the language of the texts; a reason the
// table does not know is shown as the reader wrote it.
std::wstring XmlReasonText(std::string_view reason)
{
    static constexpr std::pair<std::string_view, unsigned> kReasons[] = {
        {"Unexpected end of data", 60100},
        {"Unexpected end of data: an element is not closed", 60101},
        {"Bad CDATA section", 60102},
        {"Unterminated CDATA section", 60103},
        {"Bad DOCTYPE", 60104},
        {"DOCTYPE inside an element", 60105},
        {"Bad attribute: '=' expected", 60106},
        {"Bad attribute: blank expected", 60107},
        {"Bad attribute: quote expected", 60108},
        {"Bad attribute: unterminated value", 60109},
        {"Bad comment", 60110},
        {"Unterminated comment", 60111},
        {"Bad processing instruction", 60112},
        {"Bad start tag", 60113},
        {"Bad end tag", 60114},
        {"Unrecognized tag", 60115},
        {"Start-end tags mismatch", 60116},
        {"More than one document element", 60117},
        {"No document element", 60118},
        {"Text outside the document element", 60119},
        {"Text too long", 60120},
    };
    for (auto const& [english, id] : kReasons)
        if (reason == english)
            return ZoLoadString(id);
    return ZoFromUtf8(reason);
}

int Index(ProjectDoc doc)
{
    return static_cast<int>(doc);
}

std::wstring Wide(QString const& text)
{
    return text.toStdWString();
}

// The names of every document file, which a stopped save may have left temporaries of.
QStringList DocumentFileNames()
{
    QStringList names;
    for (ProjectDoc doc : kAllDocs)
        names.push_back(QString::fromWCharArray(FileName(doc)));
    return names;
}

// Whether the folder's entries may be listed and looked up: a folder the user may not look
// into must not pass for one that holds no project.
bool MayLookInto(QString const& folder, std::wstring& reason)
{
    QByteArray const path = QFile::encodeName(folder);
    DIR* listing = ::opendir(path.constData());
    if (!listing) {
        reason = SystemReason(errno);
        return false;
    }
    ::closedir(listing);
    struct stat info {};
    if (::stat((path + "/.").constData(), &info) != 0) {
        reason = SystemReason(errno);
        return false;
    }
    return true;
}

XmlNode* EnsureChild(XmlNode* parent, wchar_t const* tag)
{
    XmlNode* child = parent->Child(tag);
    return child ? child : parent->NewChild(tag, nullptr);
}

} // namespace

ProjectFolder::ProjectFolder() = default;
ProjectFolder::~ProjectFolder() = default;

std::unique_ptr<ProjectFolder> ProjectFolder::Open(QString const& folder, std::wstring& error)
{
    QFileInfo const info(folder);
    if (!info.isDir()) {
        error = ZoFormatN(1024, ZoLoadString(60045).c_str(), Wide(QDir::toNativeSeparators(folder)).c_str());
        return nullptr;
    }
    std::wstring reason;
    if (!MayLookInto(info.absoluteFilePath(), reason)) {
        error = ZoFormatN(1024, ZoLoadString(60070).c_str(), Wide(QDir::toNativeSeparators(folder)).c_str(),
                          reason.c_str());
        return nullptr;
    }
    auto project = std::make_unique<ProjectFolder>();
    project->m_folder = info.absoluteFilePath();
    if (!ProjectSaver::Recover(project->m_folder, DocumentFileNames(), project->m_completedSave, reason)) {
        error = ZoFormatN(1024, ZoLoadString(60068).c_str(), Wide(QDir::toNativeSeparators(folder)).c_str(),
                          reason.c_str());
        return nullptr;
    }
    try {
        for (ProjectDoc doc : kAllDocs) {
            // The users file is read only when a mail or SMS editor first needs it: the
            // action lists load it into the document, which opening leaves unloaded.
            if (doc == ProjectDoc::Users) {
                project->m_onDisk[Index(doc)] = QFileInfo(project->FilePath(doc)).isFile();
                if (project->m_onDisk[Index(doc)])
                    project->m_usersInFile = CountUsersInFile(project->FilePath(doc));
                continue;
            }
            if (!project->Load(doc, error))
                return nullptr;
        }
    } catch (std::bad_alloc const&) {
        // Only the skeletons are made outside Load's own guard; name the folder.
        error = ZoFormatN(1024, ZoLoadString(60041).c_str(), Wide(QDir::toNativeSeparators(folder)).c_str(),
                          ZoLoadString(60066).c_str());
        return nullptr;
    }
    return project;
}

QString ProjectFolder::FilePath(ProjectDoc doc) const
{
    return QDir(m_folder).filePath(QString::fromWCharArray(FileName(doc)));
}

bool ProjectFolder::HasFile(ProjectDoc doc) const
{
    return m_onDisk[Index(doc)];
}

bool ProjectFolder::IsNew() const
{
    return !HasFile(ProjectDoc::Events) && !HasFile(ProjectDoc::TimeTables)
        && !HasFile(ProjectDoc::Devices);
}

XmlDocument& ProjectFolder::Document(ProjectDoc doc)
{
    return m_docs[Index(doc)];
}

XmlDocument const& ProjectFolder::Document(ProjectDoc doc) const
{
    return m_docs[Index(doc)];
}

XmlNode* ProjectFolder::DeviceGroups()
{
    return Devices().Root()->Child(kDeviceGroupsTag);
}

QString ProjectFolder::DisplayName() const
{
    XmlNode const* root = Document(ProjectDoc::Project).Root();
    QString const name = QString::fromStdWString(root->Value(L"name", L"")).trimmed();
    return name.isEmpty() ? QFileInfo(m_folder).fileName() : name;
}

bool ProjectFolder::FeedAvailable() const
{
    return Document(ProjectDoc::Project).Root()->Value(L"eventFeed", L"T") == L"T";
}

bool ProjectFolder::Load(ProjectDoc doc, std::wstring& error)
{
    XmlDocument& document = Document(doc);
    QString const path = FilePath(doc);
    std::wstring const shownPath = Wide(QDir::toNativeSeparators(path));
    ProjectFileBytes bytes;
    std::wstring reason;
    switch (ReadProjectFile(path, bytes, reason)) {
    case ProjectFileRead::Missing:
        document.Create(RootTag(doc));
        EnsureSkeleton(doc);
        return true;
    case ProjectFileRead::Refused:
        error = ZoFormatN(1024, ZoLoadString(60041).c_str(), shownPath.c_str(), reason.c_str());
        return false;
    case ProjectFileRead::Read:
        break;
    }
    bool parsed = false;
    try {
        // The pages the parser has read go back as it goes: a large file is never held
        // whole beside its whole tree.
        XmlParseProgress const progress([&bytes](std::size_t consumed) { bytes.ReleaseBefore(consumed); });
        parsed = document.Parse(bytes.Data(), bytes.Size());
    } catch (std::bad_alloc const&) {
        error = ZoFormatN(1024, ZoLoadString(60041).c_str(), shownPath.c_str(), ZoLoadString(60066).c_str());
        return false;
    }
    bytes = {};
    if (!parsed) {
        error = ParseFailureMessage(shownPath, XmlReasonText(document.ErrorText()), document.ErrorOffset());
        return false;
    }
    if (document.Root()->Tag() != RootTag(doc)) {
        error = ZoFormatN(1024, ZoLoadString(60043).c_str(), shownPath.c_str(),
                          document.Root()->Tag().c_str(), RootTag(doc));
        return false;
    }
    m_onDisk[Index(doc)] = true;
    EnsureSkeleton(doc);
    return true;
}

std::wstring ProjectFolder::ParseFailureMessage(std::wstring const& shownPath, std::wstring const& reason,
                                                std::size_t offset)
{
    // The offset is written out in full: files may be larger than an int counts.
    return ZoFormatN(1024, ZoLoadString(60042).c_str(), shownPath.c_str(), reason.c_str(),
                     std::to_wstring(offset).c_str());
}

// The containers the dialogs expect are made here once, so that no dialog meets a
// document without them (adding an event needs `events`, registering one `devices`).
void ProjectFolder::EnsureSkeleton(ProjectDoc doc)
{
    XmlNode* root = Document(doc).Root();
    switch (doc) {
    case ProjectDoc::Events:
        EnsureChild(root, L"events");
        EnsureChild(root, L"eventsGroups");
        break;
    case ProjectDoc::TimeTables:
        EnsureChild(root, L"days");
        EnsureChild(root, L"weeks");
        EnsureChild(root, L"calendars");
        break;
    case ProjectDoc::Devices: {
        XmlNode* groups = EnsureChild(root, kDeviceGroupsTag);
        EnsureChild(groups, L"devices");
        EnsureChild(groups, L"groups");
        EnsureChild(root, kCatalogTag);
        break;
    }
    case ProjectDoc::Users:
        if (root->Value(L"version", L"").empty())
            root->SetValue(L"version", kUsersVersion);
        EnsureChild(root, L"users");
        break;
    case ProjectDoc::Project:
        break;
    }
}

bool ProjectFolder::Save(std::vector<ProjectDoc> const& docs, std::wstring& error)
{
    std::wstring const shownFolder = Wide(QDir::toNativeSeparators(m_folder));
    // A save that was stopped since the folder was opened is finished (or cleared) first,
    // so that its record never names temporaries of this save.
    bool completed = false;
    std::wstring reason;
    if (!ProjectSaver::Recover(m_folder, DocumentFileNames(), completed, reason)) {
        error = ZoFormatN(1024, ZoLoadString(60046).c_str(), shownFolder.c_str(), reason.c_str())
            + L"\n" + ZoLoadString(60047);
        return false;
    }
    ProjectSaver saver(m_folder);
    for (ProjectDoc doc : docs)
        saver.Add(QString::fromWCharArray(FileName(doc)), [&document = Document(doc)](ProjectSaver::Writer const& write) {
            return WriteXmlFileText(document, write);
        });
    if (!saver.Commit()) {
        error = ZoFormatN(1024, ZoLoadString(60046).c_str(),
                          Wide(QDir::toNativeSeparators(saver.FailedPath())).c_str(), saver.Reason().c_str())
            + L"\n" + ZoLoadString(60047);
        return false;
    }
    for (ProjectDoc doc : docs)
        m_onDisk[Index(doc)] = true;
    return true;
}
