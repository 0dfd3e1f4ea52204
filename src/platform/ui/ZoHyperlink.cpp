#include "platform/ui/ZoHyperlink.h"

#include <QKeyEvent>
#include <QPainter>
#include <QStyle>
#include <QStyleOptionFocusRect>

ZoHyperlink::ZoHyperlink(QWidget* parent)
    : QAbstractButton(parent)
{
    setCursor(Qt::PointingHandCursor);
    setFocusPolicy(Qt::StrongFocus);
    setSizePolicy(QSizePolicy::Preferred, QSizePolicy::Fixed);
    setAttribute(Qt::WA_Hover);
}

QSize ZoHyperlink::sizeHint() const
{
    QFontMetrics const metrics(font());
    QString caption = text();
    caption.remove(QLatin1Char('&'));
    int const textWidth = metrics.horizontalAdvance(caption);
    QSize const icon = this->icon().isNull() ? QSize(0, 0) : iconSize();
    int const gap = icon.isEmpty() ? 0 : kPadding * 2;
    int const height = std::max(icon.height(), metrics.height()) + 2 * kPadding;
    return {icon.width() + gap + textWidth + 2 * kPadding, height};
}

QSize ZoHyperlink::minimumSizeHint() const
{
    return sizeHint();
}

void ZoHyperlink::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QRect area = rect().adjusted(kPadding, kPadding, -kPadding, -kPadding);
    QIcon::Mode const mode = isEnabled() ? QIcon::Normal : QIcon::Disabled;
    if (!icon().isNull()) {
        QSize const size = iconSize();
        QRect const iconRect(area.left(), area.top() + (area.height() - size.height()) / 2, size.width(),
                             size.height());
        icon().paint(&painter, iconRect, Qt::AlignCenter, mode);
        area.setLeft(iconRect.right() + 1 + kPadding * 2);
    }
    QFont linkFont = font();
    linkFont.setUnderline(isEnabled() && (m_hovered || hasFocus()));
    painter.setFont(linkFont);
    painter.setPen(palette().color(isEnabled() ? QPalette::Active : QPalette::Disabled,
                                   isEnabled() ? QPalette::Link : QPalette::Text));
    QRect textRect;
    painter.drawText(area, Qt::AlignLeft | Qt::AlignVCenter | Qt::TextShowMnemonic, text(), &textRect);
    if (hasFocus()) {
        QStyleOptionFocusRect option;
        option.initFrom(this);
        option.rect = textRect.adjusted(-2, -1, 2, 1);
        style()->drawPrimitive(QStyle::PE_FrameFocusRect, &option, &painter, this);
    }
}

void ZoHyperlink::keyPressEvent(QKeyEvent* event)
{
    if ((event->key() == Qt::Key_Return || event->key() == Qt::Key_Enter) && !(event->modifiers() & ~Qt::KeypadModifier)) {
        click();
        return;
    }
    QAbstractButton::keyPressEvent(event);
}

void ZoHyperlink::enterEvent(QEnterEvent* event)
{
    m_hovered = true;
    update();
    QAbstractButton::enterEvent(event);
}

void ZoHyperlink::leaveEvent(QEvent* event)
{
    m_hovered = false;
    update();
    QAbstractButton::leaveEvent(event);
}
