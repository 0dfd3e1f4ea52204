#include "platform/calendar/ZoCalendar.h"
#include "platform/calendar/ZoColourWord.h"
#include "platform/tools/ZoTexts.h"
#include <QDate>
#include <QHBoxLayout>
#include <QHelpEvent>
#include <QKeyEvent>
#include <QLabel>
#include <QLocale>
#include <QMouseEvent>
#include <QPainter>
#include <QToolButton>
#include <QToolTip>
#include <algorithm>

namespace {

constexpr int kHeaderHeight = 34;
constexpr int kMargin = 8;
constexpr int kGapX = 14;
constexpr int kGapY = 10;
constexpr int kMinCellWidth = 20;
constexpr int kMinCellHeight = 16;

// Column of a weekday in a week that starts on Monday (DayOfWeek: 1 Sunday ... 7 Saturday).
int MondayColumn(int dayOfWeek)
{
    return (dayOfWeek + 5) % 7;
}

QColor WeekendText()
{
    return QColor(0xA0, 0x28, 0x28);
}

} // namespace

ZoCalendar::ZoCalendar(QWidget* parent)
    : QWidget(parent)
    , m_year(QDate::currentDate().year())
{
    setFocusPolicy(Qt::StrongFocus);
    setMouseTracking(false);
    setAttribute(Qt::WA_OpaquePaintEvent);
    setSizePolicy(QSizePolicy::Expanding, QSizePolicy::Expanding);

    // The names of the language chosen (QLocale's default follows it); a dialog may set
    // its own.
    QLocale const locale;
    for (int month = 0; month < 12; ++month)
        m_monthNames[month] = locale.standaloneMonthName(month + 1);
    for (int day = 0; day < 7; ++day)
        m_weekdayNames[day] = locale.standaloneDayName(day + 1, QLocale::ShortFormat);

    QDate const today = QDate::currentDate();
    m_focus = ZoDateTime(today.year(), today.month(), today.day());

    m_prev = new QToolButton(this);
    m_prev->setObjectName(QStringLiteral("prevYearButton"));
    m_prev->setArrowType(Qt::LeftArrow);
    m_prev->setAutoRaise(true);
    m_prev->setToolTip(ZoText(61520));
    m_prev->setFocusPolicy(Qt::NoFocus);
    m_next = new QToolButton(this);
    m_next->setObjectName(QStringLiteral("nextYearButton"));
    m_next->setArrowType(Qt::RightArrow);
    m_next->setAutoRaise(true);
    m_next->setToolTip(ZoText(61521));
    m_next->setFocusPolicy(Qt::NoFocus);
    m_yearLabel = new QLabel(this);
    m_yearLabel->setObjectName(QStringLiteral("yearLabel"));
    m_yearLabel->setAlignment(Qt::AlignCenter);
    QFont big = m_yearLabel->font();
    big.setBold(true);
    big.setPointSizeF(big.pointSizeF() * 1.25);
    m_yearLabel->setFont(big);
    m_yearLabel->setMinimumWidth(QFontMetrics(big).horizontalAdvance(QStringLiteral("00000")));
    connect(m_prev, &QToolButton::clicked, this, [this] { SetYear(m_year - 1); });
    connect(m_next, &QToolButton::clicked, this, [this] { SetYear(m_year + 1); });
    UpdateYearLabel();
}

void ZoCalendar::SetMonthName(int index, QString const& text)
{
    if (index >= 0 && index < 12) {
        m_monthNames[index] = text;
        update();
    }
}

void ZoCalendar::SetWeekdayName(int index, QString const& text)
{
    if (index >= 0 && index < 7) {
        m_weekdayNames[index] = text;
        update();
    }
}

void ZoCalendar::SetSelType(unsigned colour, std::wstring const& id)
{
    m_selColour = colour & 0xFFFFFFu;
    m_selId = id;
}

void ZoCalendar::Select(ZoDateTime const& date)
{
    m_dates.Select(date, m_selColour, m_selId);
    if (date.Valid() && date.Year() == m_year)
        update(DateRect(date));
}

void ZoCalendar::SetDates(ZoCalendarDates dates)
{
    m_dates = std::move(dates);
    update();
}

std::wstring ZoCalendar::GetIdDay(ZoDateTime const& date) const
{
    return m_dates.IdOf(date);
}

void ZoCalendar::GetFirstSelectedDay(ZoDateTime& date) const
{
    date = m_dates.First();
}

void ZoCalendar::GetLastSelectedDay(ZoDateTime& date) const
{
    date = m_dates.Last();
}

void ZoCalendar::SetYear(int year)
{
    year = std::clamp(year, 1, 9999);
    if (year == m_year)
        return;
    m_year = year;
    if (!m_focus.Valid() || m_focus.Year() != year)
        m_focus = ZoDateTime(year, m_focus.Valid() ? m_focus.Month() : 1, m_focus.Valid() ? m_focus.Day() : 1);
    UpdateYearLabel();
    update();
    emit yearChanged(m_year);
}

void ZoCalendar::SetFocusDate(ZoDateTime const& date)
{
    if (!date.Valid())
        return;
    m_focus = date;
    if (date.Year() != m_year)
        SetYear(date.Year());
    update();
}

void ZoCalendar::UpdateYearLabel()
{
    m_yearLabel->setText(QString::number(m_year));
    m_prev->setEnabled(m_year > 1);
    m_next->setEnabled(m_year < 9999);
}

// ---- geometry ---------------------------------------------------------------------------

ZoCalendar::Metrics ZoCalendar::Layout() const
{
    Metrics m;
    m.gapX = kGapX;
    m.gapY = kGapY;
    int const usableWidth = width() - 2 * kMargin - 3 * kGapX;
    int const usableHeight = height() - kHeaderHeight - kMargin - 2 * kGapY;
    m.cellWidth = std::max(kMinCellWidth, usableWidth / 28);
    m.cellHeight = std::max(kMinCellHeight, usableHeight / 24);
    int const totalWidth = 4 * m.MonthWidth() + 3 * kGapX;
    m.left = std::max(kMargin, (width() - totalWidth) / 2);
    m.top = kHeaderHeight;
    return m;
}

QRect ZoCalendar::MonthRect(Metrics const& m, int month) const
{
    int const column = month % 4;
    int const row = month / 4;
    return QRect(m.left + column * (m.MonthWidth() + m.gapX), m.top + row * (m.MonthHeight() + m.gapY),
                 m.MonthWidth(), m.MonthHeight());
}

QRect ZoCalendar::DateRect(ZoDateTime const& date) const
{
    if (!date.Valid() || date.Year() != m_year)
        return {};
    Metrics const m = Layout();
    QRect const block = MonthRect(m, date.Month() - 1);
    int const index = MondayColumn(ZoDateTime(date.Year(), date.Month(), 1).DayOfWeek()) + date.Day() - 1;
    return QRect(block.left() + (index % 7) * m.cellWidth, block.top() + (2 + index / 7) * m.cellHeight,
                 m.cellWidth, m.cellHeight);
}

ZoDateTime ZoCalendar::DateAt(QPoint const& point) const
{
    Metrics const m = Layout();
    for (int month = 0; month < 12; ++month) {
        QRect const block = MonthRect(m, month);
        if (!block.contains(point))
            continue;
        int const row = (point.y() - block.top()) / m.cellHeight - 2;
        int const column = (point.x() - block.left()) / m.cellWidth;
        if (row < 0 || column < 0 || column > 6)
            return {};
        int const day = row * 7 + column - MondayColumn(ZoDateTime(m_year, month + 1, 1).DayOfWeek()) + 1;
        if (day < 1 || day > DaysOfMonth(m_year, month + 1))
            return {};
        return ZoDateTime(m_year, month + 1, day);
    }
    return {};
}

QSize ZoCalendar::sizeHint() const
{
    return QSize(2 * kMargin + 28 * 26 + 3 * kGapX, kHeaderHeight + kMargin + 2 * kGapY + 24 * 19);
}

QSize ZoCalendar::minimumSizeHint() const
{
    return QSize(2 * kMargin + 28 * kMinCellWidth + 3 * kGapX,
                 kHeaderHeight + kMargin + 2 * kGapY + 24 * kMinCellHeight);
}

void ZoCalendar::resizeEvent(QResizeEvent*)
{
    int const buttonSize = kHeaderHeight - 10;
    int const labelWidth = m_yearLabel->minimumWidth() + 16;
    int const middle = width() / 2;
    m_yearLabel->setGeometry(middle - labelWidth / 2, 4, labelWidth, buttonSize);
    m_prev->setGeometry(middle - labelWidth / 2 - buttonSize - 4, 4, buttonSize, buttonSize);
    m_next->setGeometry(middle + labelWidth / 2 + 4, 4, buttonSize, buttonSize);
}

// ---- drawing ----------------------------------------------------------------------------

void ZoCalendar::paintEvent(QPaintEvent*)
{
    QPainter painter(this);
    QPalette const& pal = palette();
    painter.fillRect(rect(), pal.color(QPalette::Window));
    Metrics const m = Layout();
    for (int month = 0; month < 12; ++month)
        PaintMonth(painter, m, month);
}

void ZoCalendar::PaintMonth(QPainter& painter, Metrics const& m, int month) const
{
    QPalette const& pal = palette();
    QRect const block = MonthRect(m, month);
    painter.fillRect(block, pal.color(QPalette::Base));
    painter.setPen(pal.color(QPalette::Mid));
    painter.drawRect(block.adjusted(0, 0, -1, -1));

    QRect const title(block.left(), block.top(), block.width(), m.cellHeight);
    painter.fillRect(title.adjusted(1, 1, -1, 0), pal.color(QPalette::AlternateBase).darker(104));
    QFont bold = font();
    bold.setBold(true);
    painter.setFont(bold);
    painter.setPen(pal.color(QPalette::Text));
    painter.drawText(title, Qt::AlignCenter, m_monthNames[month]);

    QFont small = font();
    small.setPointSizeF(font().pointSizeF() * 0.85);
    painter.setFont(small);
    for (int column = 0; column < 7; ++column) {
        QRect const cell(block.left() + column * m.cellWidth, block.top() + m.cellHeight, m.cellWidth, m.cellHeight);
        painter.setPen(column >= 5 ? WeekendText() : pal.color(QPalette::PlaceholderText));
        painter.drawText(cell, Qt::AlignCenter, m_weekdayNames[column]);
    }
    painter.setPen(pal.color(QPalette::Midlight));
    int const lineY = block.top() + 2 * m.cellHeight - 1;
    painter.drawLine(block.left() + 3, lineY, block.right() - 3, lineY);

    painter.setFont(font());
    int const days = DaysOfMonth(m_year, month + 1);
    for (int day = 1; day <= days; ++day) {
        ZoDateTime const date(m_year, month + 1, day);
        QRect const cell = DateRect(date);
        int const column = MondayColumn(date.DayOfWeek());
        QColor text = column >= 5 ? WeekendText() : pal.color(QPalette::Text);
        if (ZoCalendarDates::Paint const* paint = m_dates.At(date)) {
            QColor const fill = ZoColorFromWord(paint->colour);
            QRect const inner = cell.adjusted(1, 1, -1, -1);
            painter.fillRect(inner, fill);
            painter.setPen(fill.darker(fill.lightness() > 200 ? 135 : 115));
            painter.drawRect(inner.adjusted(0, 0, -1, -1));
            text = fill.lightness() < 110 ? QColor(Qt::white) : QColor(Qt::black);
        }
        painter.setPen(text);
        painter.drawText(cell, Qt::AlignCenter, QString::number(day));
        if (date == m_focus && hasFocus()) {
            QPen pen(pal.color(QPalette::Highlight));
            pen.setWidth(2);
            painter.setPen(pen);
            painter.drawRect(cell.adjusted(1, 1, -1, -1));
        }
    }
}

// ---- input ------------------------------------------------------------------------------

void ZoCalendar::PaintByUser(ZoDateTime const& date)
{
    if (!date.Valid())
        return;
    Select(date);
    emit datesPainted();
}

void ZoCalendar::mousePressEvent(QMouseEvent* event)
{
    if (event->button() != Qt::LeftButton) {
        QWidget::mousePressEvent(event);
        return;
    }
    ZoDateTime const date = DateAt(event->position().toPoint());
    if (!date.Valid())
        return;
    m_dragging = true;
    m_lastDragged = date;
    QRect const old = DateRect(m_focus);
    m_focus = date;
    update(old);
    PaintByUser(date);
}

void ZoCalendar::mouseMoveEvent(QMouseEvent* event)
{
    if (!m_dragging || !(event->buttons() & Qt::LeftButton))
        return;
    ZoDateTime const date = DateAt(event->position().toPoint());
    if (!date.Valid() || date == m_lastDragged)
        return;
    m_lastDragged = date;
    QRect const old = DateRect(m_focus);
    m_focus = date;
    update(old);
    PaintByUser(date);
}

void ZoCalendar::mouseReleaseEvent(QMouseEvent* event)
{
    if (event->button() == Qt::LeftButton)
        m_dragging = false;
}

void ZoCalendar::MoveFocus(ZoDateTime const& date, bool paint)
{
    if (!date.Valid())
        return;
    QRect const old = DateRect(m_focus);
    m_focus = date;
    if (date.Year() != m_year)
        SetYear(date.Year());
    update(old);
    update(DateRect(m_focus));
    if (paint)
        PaintByUser(date);
}

void ZoCalendar::keyPressEvent(QKeyEvent* event)
{
    if (!m_focus.Valid() || m_focus.Year() != m_year)
        m_focus = ZoDateTime(m_year, 1, 1);
    bool const shift = event->modifiers() & Qt::ShiftModifier;
    bool const ctrl = event->modifiers() & Qt::ControlModifier;
    switch (event->key()) {
    case Qt::Key_Left: MoveFocus(m_focus.AddDays(-1), shift); break;
    case Qt::Key_Right: MoveFocus(m_focus.AddDays(1), shift); break;
    case Qt::Key_Up: MoveFocus(m_focus.AddDays(-7), shift); break;
    case Qt::Key_Down: MoveFocus(m_focus.AddDays(7), shift); break;
    case Qt::Key_PageUp: MoveFocus(m_focus.AddMonths(ctrl ? -12 : -1), false); break;
    case Qt::Key_PageDown: MoveFocus(m_focus.AddMonths(ctrl ? 12 : 1), false); break;
    case Qt::Key_Home: MoveFocus(ZoDateTime(m_focus.Year(), m_focus.Month(), 1), shift); break;
    case Qt::Key_End: MoveFocus(ZoDateTime(m_focus.Year(), m_focus.Month(), DaysOfMonth(m_focus)), shift); break;
    case Qt::Key_Space: PaintByUser(m_focus); break;
    default: QWidget::keyPressEvent(event); return;
    }
    event->accept();
}

void ZoCalendar::focusInEvent(QFocusEvent* event)
{
    QWidget::focusInEvent(event);
    update(DateRect(m_focus));
}

void ZoCalendar::focusOutEvent(QFocusEvent* event)
{
    QWidget::focusOutEvent(event);
    m_dragging = false;
    update(DateRect(m_focus));
}

bool ZoCalendar::event(QEvent* event)
{
    if (event->type() == QEvent::ToolTip) {
        auto* help = static_cast<QHelpEvent*>(event);
        ZoDateTime const date = DateAt(help->pos());
        std::wstring const id = date.Valid() ? m_dates.IdOf(date) : std::wstring();
        if (id.empty())
            QToolTip::hideText();
        else
            QToolTip::showText(help->globalPos(), QString::fromStdWString(id), this, DateRect(date));
        return true;
    }
    return QWidget::event(event);
}
