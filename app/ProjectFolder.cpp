#include "ProjectFolder.h"

#include "ProjectSaver.h"
#include "XmlFileText.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

#include <QDir>
#include <QFile>
#include <QFileInfo>

using namespace zo::project;
using XmlNode = XmlDocument::XmlNode;

namespace {

int Index(ProjectDoc doc)
{
    return static_cast<int>(doc);
}

std::wstring Wide(QString const& text)
{
    return text.toStdWString();
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
    auto project = std::make_unique<ProjectFolder>();
    project->m_folder = info.absoluteFilePath();
    for (ProjectDoc doc : kAllDocs) {
        if (!project->Load(doc, error))
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
    if (!QFileInfo::exists(path)) {
        document.Create(RootTag(doc));
        EnsureSkeleton(doc);
        return true;
    }
    QFile file(path);
    QByteArray text;
    if (file.open(QIODevice::ReadOnly))
        text = file.readAll();
    if (!file.isOpen() || file.error() != QFileDevice::NoError) {
        error = ZoFormatN(1024, ZoLoadString(60041).c_str(), shownPath.c_str(),
                          Wide(file.errorString()).c_str());
        return false;
    }
    if (!document.Parse(text.constData(), static_cast<std::size_t>(text.size()))) {
        std::wstring const reason = ZoFromUtf8(document.ErrorText());
        error = ZoFormatN(1024, ZoLoadString(60042).c_str(), shownPath.c_str(), reason.c_str(),
                          static_cast<int>(document.ErrorOffset()));
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
    ProjectSaver saver;
    for (ProjectDoc doc : docs)
        saver.Add(FilePath(doc), [&document = Document(doc)](ProjectSaver::Writer const& write) {
            return WriteXmlFileText(document, write);
        });
    if (!saver.Commit()) {
        error = ZoFormatN(1024, ZoLoadString(60046).c_str(),
                          Wide(QDir::toNativeSeparators(saver.FailedPath())).c_str(),
                          Wide(saver.Reason()).c_str())
            + L"\n" + ZoLoadString(60047);
        return false;
    }
    for (ProjectDoc doc : docs)
        m_onDisk[Index(doc)] = true;
    return true;
}
