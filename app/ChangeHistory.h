#pragma once
#include "config/XmlChange.h"
#include "project/ProjectFiles.h"

#include <QString>

#include <deque>
#include <memory>
#include <vector>

class ProjectFolder;

// The changes applied to the open project since it was opened, for Edit > Undo and Redo.
// A change is recorded by the documents' journals between Begin and Commit and kept as one
// step, whichever documents it touched; a step holds only what it changed (the elements
// removed, the texts replaced), never a copy of a document. Undoing a step reverts each of
// its documents and keeps the reversal for redoing it. The history ends with its project:
// it must be destroyed (or cleared) before the project's documents are.
class ChangeHistory {
public:
    using ProjectDoc = zo::project::ProjectDoc;
    static constexpr std::size_t kMaxSteps = 100; // older steps are forgotten

    explicit ChangeHistory(ProjectFolder& project) : m_project(project) {}

    // Starts recording a change of these documents (their journals).
    void Begin(std::vector<ProjectDoc> docs);
    // Whether the documents changed since Begin.
    bool HasChanges() const;
    // Keeps what changed since Begin as one step, shown as name in the menu, and drops the
    // steps that were undone. False when nothing changed (no step then).
    bool Commit(QString const& name);
    // Puts the documents back as they were at Begin (a cancelled dialog).
    void Cancel();

    bool CanUndo() const { return !m_undo.empty(); }
    bool CanRedo() const { return !m_redo.empty(); }
    QString UndoName() const { return CanUndo() ? m_undo.back().name : QString(); }
    QString RedoName() const { return CanRedo() ? m_redo.back().name : QString(); }
    // Undoes the last step (or redoes the last undone one); the documents it changed, to be
    // saved (none when there was nothing to do).
    std::vector<ProjectDoc> Undo();
    std::vector<ProjectDoc> Redo();
    void Clear();

private:
    struct DocChange {
        ProjectDoc doc;
        std::unique_ptr<XmlChange> change;
    };
    struct Step {
        QString name;
        std::vector<DocChange> changes;
    };
    // Reverts the last step of from and moves it to to; the documents it changed.
    static std::vector<ProjectDoc> Move(std::deque<Step>& from, std::deque<Step>& to);

    ProjectFolder& m_project;
    std::vector<ProjectDoc> m_recording;
    std::deque<Step> m_undo;
    std::deque<Step> m_redo;
};
