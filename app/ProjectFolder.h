#pragma once
#include "project/ProjectFiles.h"
#include "config/XmlDocument.h"

#include <QString>

#include <vector>
#include <memory>
#include <string>

// The documents of one open project folder, owned by the host and handed to the dialogs.
//
// Opening first brings the folder back to a whole state if a save was stopped in it (see
// ProjectSaver), then reads every document of the folder but the users file: Users() is
// left unloaded (no root) and the event editor's action lists load it the first time a
// mail or SMS editor needs it (ZoEnsureUsersLoaded); nothing ever writes it. A document that cannot be read
// (also: not a regular file, too large, memory running out), does not parse or has a root
// of another tag refuses the whole folder, with a message that names the file and the
// reason; the file is left as it is. A missing document starts empty in memory (with its
// containers) and is written only when it is saved.
class ProjectFolder {
public:
    ProjectFolder();
    ~ProjectFolder();
    ProjectFolder(ProjectFolder const&) = delete;
    ProjectFolder& operator=(ProjectFolder const&) = delete;

    // Loads the folder into a new ProjectFolder; null with error set (a text for the user)
    // when the folder cannot be opened.
    static std::unique_ptr<ProjectFolder> Open(QString const& folder, std::wstring& error);

    QString const& Folder() const { return m_folder; }
    QString FilePath(zo::project::ProjectDoc doc) const;
    // Whether the document's file was in the folder when it was opened (or has been saved).
    bool HasFile(zo::project::ProjectDoc doc) const;
    // Whether none of the editable documents (events, time tables, devices) is on disk.
    bool IsNew() const;

    // The project's display name: Project.zocfg's `name`, else the folder's name.
    QString DisplayName() const;
    // Project.zocfg's `eventFeed`; true when the file or the key is missing.
    bool FeedAvailable() const;

    XmlDocument& Document(zo::project::ProjectDoc doc);
    XmlDocument const& Document(zo::project::ProjectDoc doc) const;
    XmlDocument& Events() { return Document(zo::project::ProjectDoc::Events); }
    XmlDocument& TimeTables() { return Document(zo::project::ProjectDoc::TimeTables); }
    XmlDocument& Devices() { return Document(zo::project::ProjectDoc::Devices); }
    XmlDocument& Users() { return Document(zo::project::ProjectDoc::Users); }
    // The device groups element of the device tree, under which events are registered.
    XmlDocument::XmlNode* DeviceGroups();

    // Saves the documents atomically (see ProjectSaver); false with error set (a text for
    // the user naming the file and the reason) when a file could not be written, in which
    // case the files that were not yet replaced keep their old content.
    bool Save(std::vector<zo::project::ProjectDoc> const& docs, std::wstring& error);

    // Whether opening finished a save that had been stopped in the folder (see ProjectSaver).
    bool CompletedStoppedSave() const { return m_completedSave; }

    // The users that the users file held when the folder opened, counted without loading
    // the document (nothing here writes the file, so the count holds while it is open).
    int UsersInFile() const { return m_usersInFile; }

    // The message for a document that is not well-formed, with the byte offset written out
    // in full (files may be larger than an int counts).
    static std::wstring ParseFailureMessage(std::wstring const& shownPath, std::wstring const& reason,
                                            std::size_t offset);

private:
    bool Load(zo::project::ProjectDoc doc, std::wstring& error);
    void EnsureSkeleton(zo::project::ProjectDoc doc);

    QString m_folder;
    XmlDocument m_docs[5];
    bool m_onDisk[5] = {};
    bool m_completedSave = false;
    int m_usersInFile = 0;
};
