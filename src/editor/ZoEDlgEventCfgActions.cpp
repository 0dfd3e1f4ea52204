// The event editor's two action tabs: one action pane per side and moment.
#include "editor/ZoEDlgEventCfg.h"

#include "actions/ZoEDlgEventActionsCfg.h"
#include "editor/ZoEventFields.h"
#include "platform/tools/ZoTexts.h"

#include <QPushButton>
#include <QTabWidget>

namespace {

// The moment tabs' labels: activation, while active, deactivation, acknowledgement.
constexpr unsigned kMomentTexts[4] = {32831, 32832, 32833, 32834};

} // namespace

void ZoEDlgEventCfg::AddActionPanes(int side, QTabWidget* moments)
{
    QString const prefix = side == 0 ? QStringLiteral("actionsPane") : QStringLiteral("clientActionsPane");
    for (int moment = 0; moment < 4; ++moment) {
        auto* pane = new ZoEDlgEventActionsCfg(moments);
        pane->setObjectName(prefix + QString::number(moment));
        moments->addTab(pane, ZoText(kMomentTexts[moment]));
        m_actionPanes[side][moment] = pane;
    }
    connect(moments, &QTabWidget::currentChanged, this, [this, side] { ShowActionPane(side); });
}

// Each pane receives its moment element (the lists exist by now: see LoadFields), the users
// document and its side.
void ZoEDlgEventCfg::InitializeActionPanes()
{
    // A pane shares the screen with the tab captions and the dialog's buttons only: the
    // fields of the other tabs are hidden meanwhile, and so are their Alt keys.
    ZoMnemonics paneKeys;
    for (int tab = 0; tab < m_tabs->count(); ++tab)
        paneKeys.ReserveShown(m_tabs->tabText(tab));
    paneKeys.ReserveShown(m_ok->text());
    paneKeys.ReserveShown(m_cancel->text());
    for (int side = 0; side < 2; ++side) {
        XmlNode* list = m_event->Child(kZoActionSides[side]);
        for (int moment = 0; moment < 4; ++moment) {
            ZoEDlgEventActionsCfg* pane = m_actionPanes[side][moment];
            pane->Initialize(moment, list ? list->Child(kZoActionMoments[moment]) : nullptr, m_users, side == 1);
            pane->SetCaptions(paneKeys);
        }
    }
}

// The pane of the moment shown receives the open-at flags and index before it is brought up.
void ZoEDlgEventCfg::ShowActionPane(int side)
{
    int const moment = m_momentTabs[side]->currentIndex();
    if (moment < 0 || moment >= 4)
        return;
    ZoEDlgEventActionsCfg* pane = m_actionPanes[side][moment];
    pane->SetEditorFlags(m_presetIndex, m_skipCheck, m_keep);
    pane->raise();
}

bool ZoEDlgEventCfg::ActionPanelsModified() const
{
    for (auto const& side : m_actionPanes)
        for (ZoEDlgEventActionsCfg const* pane : side)
            if (pane && pane->IsModified())
                return true;
    return false;
}

ZoEDlgEventActionsCfg* ZoEDlgEventCfg::ActionPane(int side, int moment) const
{
    if (side < 0 || side > 1 || moment < 0 || moment > 3)
        return nullptr;
    return m_actionPanes[side][moment];
}
