// Search and replace in the events list: the modeless search dialog sends its requests here,
// and the walk over the events (EventSearch) finds the fields that hold the text.
#include "events/ZoEDlgEventsCfg.h"

#include "editor/ZoEDlgEventCfg.h"
#include "events/EventSearch.h"
#include "events/EventsListModel.h"
#include "platform/reports/CDlgSearchReplace.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"
#include "platform/ui/ZoMessage.h"

#include <QApplication>

namespace {

// Shows the wait cursor for as long as it lives.
class SearchWaitCursor {
public:
    SearchWaitCursor() { QApplication::setOverrideCursor(Qt::WaitCursor); }
    ~SearchWaitCursor() { QApplication::restoreOverrideCursor(); }
    SearchWaitCursor(SearchWaitCursor const&) = delete;
    SearchWaitCursor& operator=(SearchWaitCursor const&) = delete;
};

// The first `event` child of events whose name is exactly this one.
XmlNode* FindEventNamed(XmlNode* events, std::wstring const& name)
{
    std::string const utf8 = ZoToUtf8(name);
    for (XmlNode* child = events->FirstChild(); child; child = child->NextSibling())
        if (child->HasTag(L"event") && child->ValueUtf8(L"name") == utf8)
            return child;
    return nullptr;
}

std::string XmlOf(XmlNode const& node)
{
    std::string text;
    node.CreateXmlCode(text);
    return text;
}

} // namespace

XmlNode* ZoEDlgEventsCfg::LiveEvents() const
{
    XmlNode* root = m_eventsCfg ? m_eventsCfg->Root() : nullptr;
    return root ? root->Child(L"events") : nullptr;
}

void ZoEDlgEventsCfg::OnGroupsSearchReplace()
{
    if (!m_searchDialog) {
        m_searchDialog = new CDlgSearchReplace(this);
        connect(m_searchDialog, &CDlgSearchReplace::SearchReplaceNotify, this, &ZoEDlgEventsCfg::OnCtrlSearchReplace);
    }
    if (!m_search)
        m_search = std::make_unique<EventSearch>();
    m_searchDialog->SetReplace(false);

    // The walk starts at the event named as the row where the context menu found the first
    // selection, or at the first event.
    XmlNode* events = LiveEvents();
    XmlNode* first = nullptr;
    if (events && m_searchStart > 0 && m_searchStart <= m_model->rowCount())
        first = FindEventNamed(events, m_model->NameAt(m_searchStart - 1));
    m_search->Reset(events, first);

    m_searchDialog->Present();
}

bool ZoEDlgEventsCfg::IncIterators()
{
    return m_search && m_search->IncIterators();
}

void ZoEDlgEventsCfg::OnCtrlSearchReplace(int wParam, ZoSearchReplaceRequest const& request)
{
    if (wParam == 1)
        return; // the dialog is closing
    if (!m_search) {
        m_search = std::make_unique<EventSearch>();
        m_search->Reset(LiveEvents(), nullptr);
    }
    // The list may have deleted or pasted events since the last request.
    m_search->Resync(LiveEvents());
    if (request.command == ZoSearchReplaceRequest::kReplaceAll)
        ReplaceAllStep(request);
    else
        SearchStep(request);
}

// Search and Replace: from the current place on, the first field that holds the text is
// shown in the event editor, opened on a working copy at the tab (and moment) of the field.
// With a replacement text the editor's OK reads "Replace", and OK replaces the field. The
// walk then stands after that field, whatever the editor's result: Cancel skips the place.
void ZoEDlgEventsCfg::SearchStep(ZoSearchReplaceRequest const& request)
{
    QWidget* messageParent = m_searchDialog && m_searchDialog->isVisible() ? static_cast<QWidget*>(m_searchDialog)
                                                                           : static_cast<QWidget*>(this);
    m_replaceMode = !request.replace.empty();
    EventTextMatcher const matcher(request.find, request.matchCase);
    std::optional<EventSearchMatch> const match = m_search->FindNext(matcher);
    if (!match) {
        ZoShowMessage(messageParent, 34899, ZoMsgIcon::Information);
        // The next search starts over at the first event.
        m_search->Reset(LiveEvents(), nullptr);
        return;
    }

    XmlNode* events = LiveEvents();
    std::wstring const name = ZoFromUtf8(match->event->ValueUtf8(L"name"));
    SelectEvent(name);
    XmlDocument copy(*events);
    XmlNode* event = copy.Root()->NodeV(L"/event?name=%s?", name.c_str());
    if (!event)
        return;

    bool changed = false;
    {
        XmlNode const* groups = m_eventsCfg->Root()->Child(L"eventsGroups");
        XmlNode const* timeTablesRoot = m_timeTables ? m_timeTables->Root() : nullptr;
        ZoEDlgEventCfg editor(this, event, copy.Root(), groups, timeTablesRoot, m_users);
        editor.m_focusCode = match->field.focusCode;
        editor.m_skipCheck = m_replaceMode;
        // Opening readies the event's action lists in the copy; only what the user does
        // after that (in the action lists: with a focus code the editor writes no field)
        // counts as a change to keep.
        editor.EnsureInitialized();
        std::string const opened = XmlOf(*event);
        if (editor.DoModal() != QDialog::Accepted)
            return;
        changed = XmlOf(*event) != opened;
    }
    if (m_replaceMode)
        changed = ReplaceEventField(*event, match->field.ordinal, match->tag, matcher, request.replace) || changed;
    if (!changed)
        return;

    // Assigning the copy back keeps every element that it came from, so the walk's
    // current event stays valid.
    m_model->Clear();
    *events = *copy.Root();
    m_modified = true;
    UpdateList();
    SelectEvent(name);
}

// Replace all: every field from the current event to the last, written back at once.
void ZoEDlgEventsCfg::ReplaceAllStep(ZoSearchReplaceRequest const& request)
{
    EventTextMatcher const matcher(request.find, request.matchCase);
    EventReplaceAllResult result;
    {
        SearchWaitCursor wait;
        result = m_search->ReplaceAll(matcher, request.replace);
        if (result.fields > 0) {
            m_modified = true;
            // Only keys of the actions and the events' conditions, delays and annotations
            // change, none of which the rows show: the list stays as it is, selection and all.
            m_model->KeepRowsOverUnshownChanges();
        }
    }
    std::wstring const text = ZoLoadString(36366) + L"\n"
        + ZoFormatN(1024, ZoLoadString(63409).c_str(), result.occurrences, result.fields);
    ZoShowMessageText(m_searchDialog && m_searchDialog->isVisible() ? static_cast<QWidget*>(m_searchDialog)
                                                                    : static_cast<QWidget*>(this),
                      36366, text, ZoMsgIcon::Information);
    if (m_searchDialog)
        m_searchDialog->hide();
}
