#include "ChangeHistory.h"

#include "ProjectFolder.h"

void ChangeHistory::Begin(std::vector<ProjectDoc> docs)
{
    m_recording = std::move(docs);
    for (ProjectDoc doc : m_recording)
        m_project.Document(doc).BeginJournal();
}

bool ChangeHistory::HasChanges() const
{
    for (ProjectDoc doc : m_recording)
        if (m_project.Document(doc).JournalHasChanges())
            return true;
    return false;
}

bool ChangeHistory::Commit(QString const& name)
{
    Step step{name, {}};
    for (ProjectDoc doc : m_recording)
        if (std::unique_ptr<XmlChange> change = XmlChange::TakeJournal(m_project.Document(doc)))
            step.changes.push_back({doc, std::move(change)});
    m_recording.clear();
    if (step.changes.empty())
        return false;
    m_redo.clear();
    m_undo.push_back(std::move(step));
    if (m_undo.size() > kMaxSteps)
        m_undo.pop_front();
    return true;
}

void ChangeHistory::Cancel()
{
    for (ProjectDoc doc : m_recording)
        m_project.Document(doc).UndoJournal();
    m_recording.clear();
}

std::vector<ChangeHistory::ProjectDoc> ChangeHistory::Move(std::deque<Step>& from, std::deque<Step>& to)
{
    if (from.empty())
        return {};
    // Documents are independent: the order of their reversals does not matter.
    std::vector<ProjectDoc> docs;
    for (DocChange& change : from.back().changes) {
        change.change->Revert();
        docs.push_back(change.doc);
    }
    to.push_back(std::move(from.back()));
    from.pop_back();
    return docs;
}

std::vector<ChangeHistory::ProjectDoc> ChangeHistory::Undo()
{
    return Move(m_undo, m_redo);
}

std::vector<ChangeHistory::ProjectDoc> ChangeHistory::Redo()
{
    return Move(m_redo, m_undo);
}

void ChangeHistory::Clear()
{
    Cancel();
    m_redo.clear();
    m_undo.clear();
}
