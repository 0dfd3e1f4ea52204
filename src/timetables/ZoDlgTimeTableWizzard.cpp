#include "timetables/ZoDlgTimeTableWizzard.h"
#include "platform/ui/ZoMnemonics.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoIcons.h"
#include "timetables/TimeTableKinds.h"
#include <QBoxLayout>
#include <QCommandLinkButton>
#include <QLabel>
#include <QPushButton>

namespace {

constexpr char const* kLinkNames[kTimeTableKinds] = {"dayLink", "weekLink", "calendarLink"};
constexpr int kLinkImages[kTimeTableKinds] = {2439, 2440, 2441};

} // namespace

ZoDlgTimeTableWizzard::ZoDlgTimeTableWizzard(QWidget* parent)
    : ZoDialog(parent)
{
    setObjectName(QStringLiteral("timeTableWizard"));
    m_explanation = new QLabel(this);
    m_explanation->setWordWrap(true);
    auto* layout = new QVBoxLayout(this);
    layout->addWidget(m_explanation);
    for (int kind = 0; kind < kTimeTableKinds; ++kind) {
        auto* link = new QCommandLinkButton(this);
        link->setObjectName(QLatin1String(kLinkNames[kind]));
        link->setIconSize(QSize(48, 48));
        link->setAutoDefault(false);
        connect(link, &QCommandLinkButton::clicked, this, [this, kind] { Choose(kind); });
        layout->addWidget(link);
        m_links[kind] = link;
    }
    m_cancel = new QPushButton(this);
    m_cancel->setObjectName(QStringLiteral("cancelButton"));
    m_cancel->setIcon(ZoImageIcon(L"CANCEL-16.png"));
    connect(m_cancel, &QPushButton::clicked, this, &QDialog::reject);
    auto* bottom = new QHBoxLayout;
    bottom->addStretch(1);
    bottom->addWidget(m_cancel);
    layout->addSpacing(6);
    layout->addLayout(bottom);
    // The height follows the controls; only the width may grow.
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

void ZoDlgTimeTableWizzard::OnInitDialog()
{
    setWindowTitle(ZoText(32775));
    m_explanation->setText(ZoText(32776));
    ZoMnemonics mnemonics;
    mnemonics.Set(m_cancel, ZoText(312));
    for (int kind = 0; kind < kTimeTableKinds; ++kind) {
        mnemonics.Set(m_links[kind], ZoText(KindInfo(kind).word));
        m_links[kind]->setIcon(ZoBitmapIcon(kLinkImages[kind]));
        m_links[kind]->setMinimumWidth(320);
    }
    m_links[0]->setFocus();
}

void ZoDlgTimeTableWizzard::Choose(int kind)
{
    if (kind < 0 || kind >= kTimeTableKinds)
        return;
    m_kind = kind;
    accept();
}
