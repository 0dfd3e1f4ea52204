#include "actions/ZoEDlgEventActionsWizzard.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoHyperlink.h"
#include "platform/ui/ZoIcons.h"
#include "platform/ui/ZoMnemonics.h"

#include <QBoxLayout>
#include <algorithm>
#include <QLabel>
#include <QPushButton>

ZoEDlgEventActionsWizzard::ZoEDlgEventActionsWizzard(QWidget* parent, unsigned kindMask)
    : ZoDialog(parent)
    , m_mask(kindMask)
{
    setObjectName(QStringLiteral("actionsWizard"));
    m_intro = new QLabel(this);
    m_intro->setObjectName(QStringLiteral("introText"));
    m_intro->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->setSpacing(4);
    layout->addWidget(m_intro);
    layout->addSpacing(6);
    for (int index = 0; index < kActionKindCount; ++index) {
        ZoActionKindInfo const& info = ZoActionKindAt(index);
        auto* link = new ZoHyperlink(this);
        link->setObjectName(QLatin1String(info.linkName));
        link->setIconSize(QSize(32, 32));
        unsigned const kind = info.kind;
        connect(link, &ZoHyperlink::clicked, this, [this, kind] { Choose(kind); });
        layout->addWidget(link);
        m_links[index] = link;
    }
    m_cancel = new QPushButton(this);
    m_cancel->setObjectName(QStringLiteral("cancelButton"));
    m_cancel->setIcon(ZoImageIcon(L"CANCEL-16.png"));
    m_cancel->setAutoDefault(false);
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(m_cancel);
    bottom->addStretch(1);
    layout->addSpacing(8);
    layout->addLayout(bottom);
    // The height follows the visible links.
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void ZoEDlgEventActionsWizzard::OnInitDialog()
{
    setWindowTitle(ZoText(32844));
    m_intro->setText(ZoText(32845));
    m_intro->setMinimumWidth(300);
    // The shortest captions choose their Alt keys first: they have the fewest letters to
    // choose from ("SMS").
    std::array<int, kActionKindCount> order{};
    for (int index = 0; index < kActionKindCount; ++index)
        order[index] = index;
    std::stable_sort(order.begin(), order.end(), [](int a, int b) {
        return ZoText(ZoActionKindAt(a).linkText).size() < ZoText(ZoActionKindAt(b).linkText).size();
    });
    ZoMnemonics mnemonics;
    for (int index : order) {
        ZoActionKindInfo const& info = ZoActionKindAt(index);
        bool const allowed = (m_mask & info.kind) != 0;
        m_links[index]->setText(allowed ? mnemonics.Apply(ZoText(info.linkText)) : ZoText(info.linkText));
    }
    mnemonics.Set(m_cancel, ZoText(312));
    ZoHyperlink* first = nullptr;
    for (int index = 0; index < kActionKindCount; ++index) {
        ZoActionKindInfo const& info = ZoActionKindAt(index);
        ZoHyperlink* link = m_links[index];
        bool const allowed = (m_mask & info.kind) != 0;
        link->setIcon(info.bitmap ? ZoBitmapIcon(info.bitmap) : ZoImageIcon(info.image));
        link->setEnabled(allowed);
        link->setVisible(allowed);
        if (allowed && !first)
            first = link;
    }
    if (first)
        first->setFocus();
    else
        m_cancel->setFocus();
}

void ZoEDlgEventActionsWizzard::Choose(unsigned kind)
{
    if (!(m_mask & kind) || !ZoActionKindInfoOf(kind))
        return;
    m_kind = kind;
    accept();
}
