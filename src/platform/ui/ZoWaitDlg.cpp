#include "platform/ui/ZoWaitDlg.h"
#include "platform/tools/ZoTexts.h"

#include <QCloseEvent>
#include <QLabel>
#include <QMetaObject>
#include <QProgressBar>
#include <QVBoxLayout>

namespace {

std::atomic<int>& ShownBoxes()
{
    static std::atomic<int> count{0};
    return count;
}

} // namespace

ZoWaitDlg::ZoWaitDlg(QWidget* parent, unsigned textId)
    : ZoDialog(parent)
{
    setObjectName(QStringLiteral("waitBox"));
    setWindowFlag(Qt::WindowCloseButtonHint, false);
    setWindowTitle(ZoText(textId));
    m_text = new QLabel(ZoText(textId), this);
    m_text->setObjectName(QStringLiteral("waitText"));
    m_progress = new QProgressBar(this);
    m_progress->setObjectName(QStringLiteral("waitProgress"));
    m_progress->setRange(0, 0); // busy: the length of the work is not known
    m_progress->setTextVisible(false);
    auto* layout = new QVBoxLayout(this);
    layout->setContentsMargins(18, 16, 18, 16);
    layout->setSpacing(10);
    layout->addWidget(m_text);
    layout->addWidget(m_progress);
    setMinimumWidth(300);
    layout->setSizeConstraint(QLayout::SetFixedSize);
}

ZoWaitDlg::~ZoWaitDlg()
{
    if (m_shown)
        ShownBoxes().fetch_sub(1);
}

int ZoWaitDlg::DoModal()
{
    int const result = ZoDialog::DoModal();
    m_ready.store(true, std::memory_order_release);
    return result;
}

void ZoWaitDlg::Close()
{
    QMetaObject::invokeMethod(this, [this] { Finish(); }, Qt::QueuedConnection);
}

void ZoWaitDlg::Finish()
{
    m_closing = true;
    done(QDialog::Accepted);
}

bool ZoWaitDlg::AnyShown()
{
    return ShownBoxes().load() > 0;
}

void ZoWaitDlg::reject()
{
    if (m_closing)
        ZoDialog::reject();
}

void ZoWaitDlg::showEvent(QShowEvent* event)
{
    ZoDialog::showEvent(event);
    if (!m_shown) {
        m_shown = true;
        ShownBoxes().fetch_add(1);
    }
    m_ready.store(true, std::memory_order_release);
}

void ZoWaitDlg::hideEvent(QHideEvent* event)
{
    if (m_shown) {
        m_shown = false;
        ShownBoxes().fetch_sub(1);
    }
    ZoDialog::hideEvent(event);
}

void ZoWaitDlg::closeEvent(QCloseEvent* event)
{
    if (!m_closing)
        event->ignore();
    else
        ZoDialog::closeEvent(event);
}
