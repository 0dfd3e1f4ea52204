// Draws the module's icons as flat vector shapes and writes them as PNG files.
//
//   make_images <output folder>
//
// Every icon is drawn on its own design grid (16 units for button and list images, 48 for
// the large link images), antialiased, on a transparent background. Run it again after a
// change and commit the PNGs of resources/images.
#include <QColor>
#include <QDir>
#include <QImage>
#include <QPainter>
#include <QPainterPath>
#include <QPolygonF>
#include <QString>
#include <QTextStream>
#include <QtMath>

#include <cstdio>
#include <functional>

namespace {

// Palette: flat colours with one darker shade each for outlines.
namespace C {
QColor const ink(0x37, 0x41, 0x4B);
QColor const inkSoft(0x6B, 0x77, 0x85);
QColor const paper(0xFF, 0xFF, 0xFF);
QColor const paperEdge(0x8A, 0x96, 0xA3);
QColor const paperLine(0xB8, 0xC2, 0xCC);
QColor const green(0x2E, 0x9E, 0x4F);
QColor const greenDark(0x1E, 0x75, 0x38);
QColor const red(0xD6, 0x45, 0x41);
QColor const redDark(0xA8, 0x2E, 0x2B);
QColor const blue(0x2F, 0x6F, 0xB3);
QColor const blueDark(0x1F, 0x4E, 0x82);
QColor const blueLight(0xD6, 0xE6, 0xF5);
QColor const amber(0xF2, 0xA9, 0x00);
QColor const amberDark(0xB9, 0x7A, 0x00);
QColor const amberLight(0xFF, 0xD8, 0x6B);
QColor const folder(0xF4, 0xC0, 0x4E);
QColor const folderDark(0xC4, 0x8E, 0x1E);
QColor const folderBack(0xE0, 0xA8, 0x37);
QColor const steel(0x7D, 0x8B, 0x99);
QColor const steelDark(0x4F, 0x5B, 0x67);
QColor const steelLight(0xC9, 0xD1, 0xD9);
QColor const screen(0x26, 0x32, 0x3F);
QColor const purple(0x7B, 0x5B, 0xB5);
QColor const purpleDark(0x56, 0x3D, 0x86);
} // namespace C

using Draw = std::function<void(QPainter&)>;

QString g_folder;
int g_written = 0;
bool g_failed = false;

// An image of size x size pixels whose painter works on a grid of `grid` units.
QImage Render(int width, int height, qreal grid, Draw const& draw)
{
    QImage image(width, height, QImage::Format_ARGB32_Premultiplied);
    image.fill(Qt::transparent);
    QPainter painter(&image);
    painter.setRenderHint(QPainter::Antialiasing, true);
    painter.scale(height / grid, height / grid);
    draw(painter);
    painter.end();
    return image;
}

void Save(QImage const& image, QString const& name)
{
    QString const path = QDir(g_folder).filePath(name);
    if (!image.convertToFormat(QImage::Format_ARGB32).save(path, "PNG", 0)) {
        std::fprintf(stderr, "cannot write %s\n", qPrintable(path));
        g_failed = true;
        return;
    }
    ++g_written;
}

void Icon(QString const& name, int size, qreal grid, Draw const& draw)
{
    Save(Render(size, size, grid, draw), name);
}

// A strip of square images side by side, each drawn on its own grid.
void Strip(QString const& name, int size, qreal grid, QList<Draw> const& parts)
{
    QImage strip(size * int(parts.size()), size, QImage::Format_ARGB32_Premultiplied);
    strip.fill(Qt::transparent);
    QPainter painter(&strip);
    for (int i = 0; i < parts.size(); ++i)
        painter.drawImage(i * size, 0, Render(size, size, grid, parts[i]));
    painter.end();
    Save(strip, name);
}

// Same washed-out grey as ZoGrayed of the module, for images shipped pre-greyed.
QImage Grayed(QImage const& source)
{
    QImage image = source.convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            int const gray = 128 + qGray(line[x]) / 2;
            line[x] = qRgba(gray, gray, gray, qAlpha(line[x]));
        }
    }
    return image;
}

QPen Pen(QColor const& color, qreal width, Qt::PenCapStyle cap = Qt::RoundCap)
{
    return QPen(color, width, Qt::SolidLine, cap, Qt::RoundJoin);
}

// ---------------------------------------------------------------------------------------
// Symbols on a 16-unit grid (scaled for the large images).

void CheckMark(QPainter& p, QColor const& color, qreal width)
{
    p.setPen(Pen(color, width));
    p.setBrush(Qt::NoBrush);
    QPainterPath path;
    path.moveTo(2.8, 8.6);
    path.lineTo(6.3, 12.0);
    path.lineTo(13.2, 4.2);
    p.drawPath(path);
}

void Cross(QPainter& p, QColor const& color, qreal width, QRectF const& box)
{
    p.setPen(Pen(color, width));
    p.drawLine(box.topLeft(), box.bottomRight());
    p.drawLine(box.topRight(), box.bottomLeft());
}

void Plus(QPainter& p, QColor const& color, qreal width, QPointF const& centre, qreal half)
{
    p.setPen(Pen(color, width, Qt::FlatCap));
    p.drawLine(QPointF(centre.x() - half, centre.y()), QPointF(centre.x() + half, centre.y()));
    p.drawLine(QPointF(centre.x(), centre.y() - half), QPointF(centre.x(), centre.y() + half));
}

// A pencil lying from bottom-left (its tip) to top-right, in a 16-unit box.
void Pencil(QPainter& p)
{
    p.save();
    p.translate(8, 8);
    p.rotate(-45);
    // Body along the x axis from -7 (tip) to +7 (eraser), 4.2 units thick.
    qreal const h = 2.1;
    QPainterPath tip;
    tip.moveTo(-7.4, 0);
    tip.lineTo(-3.6, -h);
    tip.lineTo(-3.6, h);
    tip.closeSubpath();
    p.setPen(Pen(C::ink, 0.8));
    p.setBrush(QColor(0xF3, 0xD9, 0xB1));
    p.drawPath(tip);
    p.setPen(Qt::NoPen);
    p.setBrush(C::ink);
    QPainterPath lead;
    lead.moveTo(-7.4, 0);
    lead.lineTo(-5.9, -0.85);
    lead.lineTo(-5.9, 0.85);
    lead.closeSubpath();
    p.drawPath(lead);
    p.setPen(Pen(C::amberDark, 0.8));
    p.setBrush(C::amber);
    p.drawRect(QRectF(-3.6, -h, 7.6, 2 * h));
    p.setPen(Pen(C::ink, 0.8));
    p.setBrush(C::steelLight);
    p.drawRect(QRectF(4.0, -h, 1.4, 2 * h));
    p.setBrush(QColor(0xE8, 0x8A, 0x9A));
    p.drawRoundedRect(QRectF(5.4, -h, 2.0, 2 * h), 0.8, 0.8);
    p.restore();
}

void TrashCan(QPainter& p)
{
    p.setPen(Pen(C::steelDark, 1.0));
    p.setBrush(C::steelLight);
    QPainterPath body;
    body.moveTo(3.8, 5.0);
    body.lineTo(12.2, 5.0);
    body.lineTo(11.3, 14.4);
    body.lineTo(4.7, 14.4);
    body.closeSubpath();
    p.drawPath(body);
    p.setPen(Pen(C::steel, 1.0));
    for (qreal x : {6.4, 8.0, 9.6})
        p.drawLine(QPointF(x, 7.0), QPointF(x, 12.6));
    p.setPen(Pen(C::redDark, 1.0));
    p.setBrush(C::red);
    p.drawRoundedRect(QRectF(2.5, 2.9, 11.0, 2.2), 0.8, 0.8);
    p.setBrush(Qt::NoBrush);
    p.drawLine(QPointF(6.3, 2.9), QPointF(6.6, 1.6));
    p.drawLine(QPointF(6.6, 1.6), QPointF(9.4, 1.6));
    p.drawLine(QPointF(9.4, 1.6), QPointF(9.7, 2.9));
}

// An alarm bell, the mark of an event.
void Bell(QPainter& p, QColor const& fill, QColor const& edge)
{
    QPainterPath bell;
    bell.moveTo(8.0, 1.9);
    bell.cubicTo(11.4, 1.9, 12.0, 5.0, 12.1, 7.6);
    bell.cubicTo(12.2, 10.0, 13.0, 11.0, 14.2, 12.1);
    bell.lineTo(1.8, 12.1);
    bell.cubicTo(3.0, 11.0, 3.8, 10.0, 3.9, 7.6);
    bell.cubicTo(4.0, 5.0, 4.6, 1.9, 8.0, 1.9);
    bell.closeSubpath();
    p.setPen(Pen(edge, 1.0));
    p.setBrush(fill);
    p.drawPath(bell);
    // Highlight on the shoulder.
    p.setPen(Pen(QColor(255, 255, 255, 150), 0.9));
    p.setBrush(Qt::NoBrush);
    QPainterPath shine;
    shine.moveTo(5.6, 8.8);
    shine.cubicTo(5.6, 6.0, 5.9, 4.3, 7.3, 3.6);
    p.drawPath(shine);
    // Clapper and the knob on top.
    p.setPen(Pen(edge, 1.0));
    p.setBrush(fill);
    p.drawEllipse(QPointF(8.0, 13.4), 1.5, 1.3);
    p.setBrush(edge);
    p.setPen(Qt::NoPen);
    p.drawEllipse(QPointF(8.0, 1.5), 0.9, 0.9);
}

void EventBell(QPainter& p)
{
    Bell(p, C::amber, C::amberDark);
}

// A closed folder, the mark of a group.
void Folder(QPainter& p)
{
    p.setPen(Pen(C::folderDark, 1.0));
    p.setBrush(C::folderBack);
    QPainterPath back;
    back.moveTo(1.5, 3.5);
    back.lineTo(6.0, 3.5);
    back.lineTo(7.5, 5.0);
    back.lineTo(14.5, 5.0);
    back.lineTo(14.5, 13.5);
    back.lineTo(1.5, 13.5);
    back.closeSubpath();
    p.drawPath(back);
    p.setBrush(C::folder);
    p.drawRoundedRect(QRectF(1.5, 6.5, 13.0, 7.0), 0.6, 0.6);
    p.setPen(Pen(QColor(255, 255, 255, 140), 0.8));
    p.drawLine(QPointF(2.6, 7.6), QPointF(13.4, 7.6));
}

// Badges sit in the bottom-right corner of a 16-unit image, over the main symbol.
QPointF const kBadge(11.7, 11.7);

void BadgeDisc(QPainter& p, QColor const& fill)
{
    p.setPen(Pen(C::paper, 1.1));
    p.setBrush(fill);
    p.drawEllipse(kBadge, 3.65, 3.65);
}

void BadgeAdd(QPainter& p)
{
    BadgeDisc(p, C::green);
    Plus(p, C::paper, 1.4, kBadge, 2.1);
}

void BadgeRemove(QPainter& p)
{
    BadgeDisc(p, C::red);
    p.setPen(Pen(C::paper, 1.4, Qt::FlatCap));
    p.drawLine(kBadge - QPointF(2.1, 0), kBadge + QPointF(2.1, 0));
}

void BadgeDelete(QPainter& p)
{
    BadgeDisc(p, C::red);
    Cross(p, C::paper, 1.3, QRectF(kBadge - QPointF(1.45, 1.45), QSizeF(2.9, 2.9)));
}

// A white pencil on a blue disc.
void BadgeModify(QPainter& p)
{
    BadgeDisc(p, C::blue);
    p.setPen(Pen(C::paper, 1.5, Qt::FlatCap));
    p.drawLine(kBadge + QPointF(-0.9, 0.9), kBadge + QPointF(1.9, -1.9));
    p.setPen(Qt::NoPen);
    p.setBrush(C::paper);
    QPolygonF tip;
    tip << kBadge + QPointF(-2.3, 2.3) << kBadge + QPointF(-1.6, 0.4) << kBadge + QPointF(-0.4, 1.6);
    p.drawPolygon(tip);
}

// A clock face: a day program.
void Clock(QPainter& p)
{
    p.setPen(Pen(C::blueDark, 1.0));
    p.setBrush(C::paper);
    p.drawEllipse(QPointF(8, 8), 6.4, 6.4);
    p.setPen(Pen(C::steel, 0.8));
    for (int i = 0; i < 12; i += 3) {
        qreal const a = i * M_PI / 6;
        p.drawLine(QPointF(8 + 5.0 * qSin(a), 8 - 5.0 * qCos(a)),
                   QPointF(8 + 5.8 * qSin(a), 8 - 5.8 * qCos(a)));
    }
    p.setPen(Pen(C::ink, 1.2));
    p.drawLine(QPointF(8, 8), QPointF(8, 4.0));
    p.setPen(Pen(C::blue, 1.2));
    p.drawLine(QPointF(8, 8), QPointF(10.8, 9.6));
    p.setPen(Qt::NoPen);
    p.setBrush(C::ink);
    p.drawEllipse(QPointF(8, 8), 0.9, 0.9);
}

// A calendar page with its binding; `body` draws inside the page (below the header).
void CalendarPage(QPainter& p, QColor const& header, std::function<void(QPainter&)> const& body)
{
    p.setPen(Pen(C::paperEdge, 1.0));
    p.setBrush(C::paper);
    p.drawRoundedRect(QRectF(1.5, 2.5, 13.0, 12.0), 1.2, 1.2);
    p.setPen(Qt::NoPen);
    p.setBrush(header);
    QPainterPath head;
    head.addRoundedRect(QRectF(1.5, 2.5, 13.0, 3.6), 1.2, 1.2);
    head.addRect(QRectF(1.5, 4.5, 13.0, 1.6));
    p.drawPath(head.simplified());
    p.setPen(Pen(C::ink, 1.1));
    p.drawLine(QPointF(4.8, 1.2), QPointF(4.8, 3.6));
    p.drawLine(QPointF(11.2, 1.2), QPointF(11.2, 3.6));
    body(p);
}

// A week program: one page with a row of seven day columns, the weekend set apart.
void WeekPage(QPainter& p)
{
    CalendarPage(p, C::blue, [](QPainter& q) {
        q.setPen(Qt::NoPen);
        for (int d = 0; d < 7; ++d) {
            q.setBrush(d < 5 ? C::blue : C::red);
            qreal const x = 2.7 + d * 1.6;
            q.drawRect(QRectF(x, 7.6, 1.1, 5.4));
        }
    });
}

// A yearly calendar: a page with a grid of dates, one of them marked.
void CalendarGrid(QPainter& p)
{
    CalendarPage(p, C::red, [](QPainter& q) {
        q.setPen(Qt::NoPen);
        for (int row = 0; row < 3; ++row) {
            for (int col = 0; col < 4; ++col) {
                bool const marked = row == 1 && col == 2;
                q.setBrush(marked ? C::red : C::steel);
                q.drawRect(QRectF(3.1 + col * 2.7, 7.3 + row * 2.3, 1.6, 1.4));
            }
        }
    });
}

// No time table: an empty dial crossed out.
void NoTimeTable(QPainter& p)
{
    p.setPen(Pen(C::steel, 1.0));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(QPointF(8, 8), 5.6, 5.6);
    p.setPen(Pen(C::steel, 1.2));
    p.drawLine(QPointF(4.2, 11.8), QPointF(11.8, 4.2));
}

// A lightning bolt, the program's mark (energy supervision).
QPainterPath BoltPath()
{
    QPainterPath bolt;
    bolt.moveTo(9.6, 0.8);
    bolt.lineTo(3.2, 9.0);
    bolt.lineTo(7.4, 9.0);
    bolt.lineTo(6.0, 15.2);
    bolt.lineTo(12.8, 6.4);
    bolt.lineTo(8.6, 6.4);
    bolt.closeSubpath();
    return bolt;
}

void ProgramIcon(QPainter& p)
{
    p.setPen(Qt::NoPen);
    p.setBrush(C::blueDark);
    p.drawRoundedRect(QRectF(0.5, 0.5, 15.0, 15.0), 3.2, 3.2);
    p.setBrush(C::blue);
    p.drawRoundedRect(QRectF(1.4, 1.4, 13.2, 13.2), 2.6, 2.6);
    p.save();
    p.translate(8, 8);
    p.scale(0.78, 0.78);
    p.translate(-8, -8);
    p.setPen(Pen(C::amberDark, 0.6));
    p.setBrush(C::amberLight);
    p.drawPath(BoltPath());
    p.restore();
}

void MagicWand(QPainter& p)
{
    p.setPen(Pen(C::ink, 2.2, Qt::FlatCap));
    p.drawLine(QPointF(2.2, 13.8), QPointF(9.6, 6.4));
    p.setPen(Pen(C::paper, 2.2, Qt::FlatCap));
    p.drawLine(QPointF(9.6, 6.4), QPointF(11.0, 5.0));
    p.setPen(Pen(C::ink, 0.6, Qt::FlatCap));
    p.setBrush(Qt::NoBrush);
    QPolygonF star;
    for (int i = 0; i < 8; ++i) {
        qreal const r = i % 2 == 0 ? 3.0 : 1.0;
        qreal const a = i * M_PI / 4;
        star << QPointF(12.0 + r * qSin(a), 4.0 - r * qCos(a));
    }
    p.setPen(Pen(C::amberDark, 0.5));
    p.setBrush(C::amber);
    p.drawPolygon(star);
    p.setPen(Qt::NoPen);
    p.setBrush(C::amber);
    p.drawEllipse(QPointF(6.0, 3.0), 0.8, 0.8);
    p.drawEllipse(QPointF(13.6, 10.0), 0.8, 0.8);
}

void Magnifier(QPainter& p)
{
    p.setPen(Pen(C::ink, 2.4));
    p.drawLine(QPointF(10.2, 10.2), QPointF(14.0, 14.0));
    p.setPen(Pen(C::blueDark, 1.3));
    p.setBrush(C::blueLight);
    p.drawEllipse(QPointF(6.6, 6.6), 4.6, 4.6);
    p.setPen(Pen(QColor(255, 255, 255, 200), 0.9));
    p.setBrush(Qt::NoBrush);
    p.drawArc(QRectF(3.6, 3.6, 6.0, 6.0), 100 * 16, 70 * 16);
}

// A sheet of paper with a folded corner, drawn with lines of the given width.
void FoldedSheet(QPainter& p, QRectF const& r, qreal fold, qreal width)
{
    QPainterPath sheet;
    sheet.moveTo(r.left(), r.top());
    sheet.lineTo(r.right() - fold, r.top());
    sheet.lineTo(r.right(), r.top() + fold);
    sheet.lineTo(r.right(), r.bottom());
    sheet.lineTo(r.left(), r.bottom());
    sheet.closeSubpath();
    p.setPen(Pen(C::paperEdge, width));
    p.setBrush(C::paper);
    p.drawPath(sheet);
    QPainterPath corner;
    corner.moveTo(r.right() - fold, r.top());
    corner.lineTo(r.right() - fold, r.top() + fold);
    corner.lineTo(r.right(), r.top() + fold);
    p.setBrush(C::steelLight);
    p.drawPath(corner);
}

void Sheet(QPainter& p, QRectF const& r)
{
    qreal const fold = 2.6;
    FoldedSheet(p, r, fold, 1.0);
    p.setPen(Pen(C::paperLine, 0.9, Qt::FlatCap));
    for (qreal y = r.top() + fold + 1.6; y < r.bottom() - 1.0; y += 2.0)
        p.drawLine(QPointF(r.left() + 1.6, y), QPointF(r.right() - 1.6, y));
}

void CopyImage(QPainter& p)
{
    Sheet(p, QRectF(1.5, 1.5, 8.5, 10.5));
    Sheet(p, QRectF(6.0, 4.0, 8.5, 10.5));
}

void PasteImage(QPainter& p)
{
    p.setPen(Pen(C::folderDark, 1.0));
    p.setBrush(C::folder);
    p.drawRoundedRect(QRectF(1.5, 2.5, 10.0, 12.0), 1.0, 1.0);
    p.setBrush(C::steelLight);
    p.setPen(Pen(C::steelDark, 0.9));
    p.drawRoundedRect(QRectF(4.0, 1.2, 5.0, 2.6), 0.8, 0.8);
    Sheet(p, QRectF(6.5, 6.0, 8.0, 8.5));
}

// ---------------------------------------------------------------------------------------
// Large link images on a 48-unit grid.

void Envelope(QPainter& p)
{
    QRectF const r(4.5, 11.5, 39.0, 26.0);
    p.setPen(Pen(C::blueDark, 2.0));
    p.setBrush(C::paper);
    p.drawRoundedRect(r, 2.5, 2.5);
    p.setBrush(C::blueLight);
    QPainterPath flap;
    flap.moveTo(r.left() + 1.0, r.top() + 1.0);
    flap.lineTo(24.0, 27.0);
    flap.lineTo(r.right() - 1.0, r.top() + 1.0);
    p.drawPath(flap);
    p.setPen(Pen(C::blueDark, 1.6));
    p.drawLine(QPointF(r.left() + 1.5, r.bottom() - 1.5), QPointF(19.0, 23.5));
    p.drawLine(QPointF(r.right() - 1.5, r.bottom() - 1.5), QPointF(29.0, 23.5));
}

void Globe(QPainter& p, QPointF const& c, qreal r)
{
    p.setPen(Pen(C::blueDark, 2.0));
    p.setBrush(C::blue);
    p.drawEllipse(c, r, r);
    p.setPen(Pen(QColor(255, 255, 255, 210), 1.5));
    p.setBrush(Qt::NoBrush);
    p.drawLine(QPointF(c.x() - r, c.y()), QPointF(c.x() + r, c.y()));
    p.drawLine(QPointF(c.x(), c.y() - r), QPointF(c.x(), c.y() + r));
    p.drawEllipse(c, r * 0.45, r);
    qreal const dy = r * 0.55;
    qreal const dx = qSqrt(r * r - dy * dy);
    p.drawLine(QPointF(c.x() - dx, c.y() - dy), QPointF(c.x() + dx, c.y() - dy));
    p.drawLine(QPointF(c.x() - dx, c.y() + dy), QPointF(c.x() + dx, c.y() + dy));
}

void LaunchArrow(QPainter& p)
{
    p.setPen(Pen(C::paper, 2.0));
    p.setBrush(C::green);
    p.drawEllipse(QPointF(36.0, 36.0), 10.0, 10.0);
    p.setPen(Pen(C::paper, 3.0));
    p.drawLine(QPointF(31.5, 40.5), QPointF(40.0, 32.0));
    p.setBrush(C::paper);
    p.setPen(Qt::NoPen);
    QPolygonF head;
    head << QPointF(41.6, 30.4) << QPointF(41.6, 37.2) << QPointF(34.8, 30.4);
    p.drawPolygon(head);
}

void LaunchWeb(QPainter& p)
{
    Globe(p, QPointF(21.0, 21.0), 17.0);
    LaunchArrow(p);
}

// Force: a value pushed into a variable's field.
void ForceImage(QPainter& p)
{
    p.setPen(Pen(C::blueDark, 2.0));
    p.setBrush(C::blueLight);
    p.drawRoundedRect(QRectF(19.5, 9.5, 25.0, 29.0), 3.0, 3.0);
    p.setPen(Pen(C::blueDark, 2.6, Qt::FlatCap));
    p.drawLine(QPointF(26.0, 20.0), QPointF(38.0, 20.0));
    p.drawLine(QPointF(26.0, 28.0), QPointF(38.0, 28.0));
    // The arrow that forces the value in.
    p.setPen(Pen(C::amberDark, 1.6));
    p.setBrush(C::amber);
    QPolygonF arrow;
    arrow << QPointF(3.0, 19.0) << QPointF(13.0, 19.0) << QPointF(13.0, 12.5)
          << QPointF(24.0, 24.0) << QPointF(13.0, 35.5) << QPointF(13.0, 29.0)
          << QPointF(3.0, 29.0);
    p.drawPolygon(arrow);
}

// Run a command: a console window with a prompt.
void ConsoleImage(QPainter& p)
{
    p.setPen(Pen(C::ink, 2.0));
    p.setBrush(C::screen);
    p.drawRoundedRect(QRectF(3.5, 7.5, 41.0, 33.0), 3.0, 3.0);
    p.setPen(Qt::NoPen);
    p.setBrush(C::steel);
    QPainterPath bar;
    bar.addRoundedRect(QRectF(4.5, 8.5, 39.0, 6.5), 2.2, 2.2);
    bar.addRect(QRectF(4.5, 12.0, 39.0, 3.0));
    p.drawPath(bar.simplified());
    p.setBrush(C::paper);
    for (int i = 0; i < 3; ++i)
        p.drawEllipse(QPointF(9.0 + i * 4.2, 11.7), 1.3, 1.3);
    p.setPen(Pen(QColor(0x7C, 0xE0, 0x8E), 3.2));
    p.setBrush(Qt::NoBrush);
    QPainterPath prompt;
    prompt.moveTo(10.5, 21.0);
    prompt.lineTo(17.0, 26.5);
    prompt.lineTo(10.5, 32.0);
    p.drawPath(prompt);
    p.setPen(Pen(C::paper, 3.2, Qt::FlatCap));
    p.drawLine(QPointF(21.0, 33.0), QPointF(31.0, 33.0));
}

// Show a screen: a monitor with a trend on it.
void ScreenImage(QPainter& p)
{
    p.setPen(Pen(C::ink, 2.0));
    p.setBrush(C::steelLight);
    p.drawRoundedRect(QRectF(3.5, 5.5, 41.0, 29.0), 3.0, 3.0);
    p.setPen(Qt::NoPen);
    p.setBrush(C::screen);
    p.drawRect(QRectF(7.0, 9.0, 34.0, 22.0));
    p.setPen(Pen(QColor(0x7C, 0xE0, 0x8E), 2.2));
    p.setBrush(Qt::NoBrush);
    QPainterPath trend;
    trend.moveTo(10.0, 26.0);
    trend.lineTo(17.0, 19.0);
    trend.lineTo(23.0, 23.0);
    trend.lineTo(30.0, 14.0);
    trend.lineTo(38.0, 17.0);
    p.drawPath(trend);
    p.setPen(Pen(C::ink, 2.0));
    p.setBrush(C::steel);
    QPolygonF stand;
    stand << QPointF(20.0, 34.5) << QPointF(28.0, 34.5) << QPointF(30.0, 41.0) << QPointF(18.0, 41.0);
    p.drawPolygon(stand);
    p.drawRoundedRect(QRectF(13.0, 41.0, 22.0, 3.0), 1.2, 1.2);
}

// Print a report: a page with a bar chart and text lines.
void ReportImage(QPainter& p)
{
    FoldedSheet(p, QRectF(8.5, 3.5, 31.0, 41.0), 8.0, 2.0);
    p.setPen(Pen(C::paperLine, 2.0, Qt::FlatCap));
    p.drawLine(QPointF(13.0, 10.0), QPointF(26.0, 10.0));
    p.drawLine(QPointF(13.0, 15.0), QPointF(33.0, 15.0));
    p.setPen(Qt::NoPen);
    QColor const bars[] = {C::blue, C::green, C::amber, C::red};
    qreal const heights[] = {9.0, 15.0, 12.0, 19.0};
    for (int i = 0; i < 4; ++i) {
        p.setBrush(bars[i]);
        p.drawRect(QRectF(14.0 + i * 5.5, 39.0 - heights[i], 4.0, heights[i]));
    }
    p.setPen(Pen(C::inkSoft, 1.2, Qt::FlatCap));
    p.drawLine(QPointF(12.5, 39.6), QPointF(35.5, 39.6));
}

// Act on a device: a cog wheel.
void DeviceImage(QPainter& p)
{
    QPointF const c(24.0, 24.0);
    int const teeth = 8;
    qreal const outer = 20.0;
    qreal const inner = 15.5;
    QPainterPath gear;
    for (int i = 0; i < teeth; ++i) {
        qreal const step = 2 * M_PI / teeth;
        qreal const a = i * step;
        qreal const spans[] = {-0.30, -0.18, 0.18, 0.30};
        QPointF const pts[] = {
            c + QPointF(inner * qSin(a + spans[0] * step * 1.7), -inner * qCos(a + spans[0] * step * 1.7)),
            c + QPointF(outer * qSin(a + spans[1] * step), -outer * qCos(a + spans[1] * step)),
            c + QPointF(outer * qSin(a + spans[2] * step), -outer * qCos(a + spans[2] * step)),
            c + QPointF(inner * qSin(a + spans[3] * step * 1.7), -inner * qCos(a + spans[3] * step * 1.7)),
        };
        if (i == 0)
            gear.moveTo(pts[0]);
        else
            gear.lineTo(pts[0]);
        gear.lineTo(pts[1]);
        gear.lineTo(pts[2]);
        gear.lineTo(pts[3]);
    }
    gear.closeSubpath();
    QPainterPath hole;
    hole.addEllipse(c, 6.5, 6.5);
    p.setPen(Pen(C::steelDark, 2.0));
    p.setBrush(C::steel);
    p.drawPath(gear.subtracted(hole));
    p.setPen(Pen(QColor(255, 255, 255, 120), 1.6));
    p.setBrush(Qt::NoBrush);
    p.drawEllipse(c, 11.0, 11.0);
}

// Beep: a loudspeaker with sound waves.
void BeepImage(QPainter& p)
{
    p.setPen(Pen(C::ink, 2.0));
    p.setBrush(C::steel);
    QPolygonF speaker;
    speaker << QPointF(4.0, 18.0) << QPointF(11.0, 18.0) << QPointF(21.0, 9.0)
            << QPointF(21.0, 39.0) << QPointF(11.0, 30.0) << QPointF(4.0, 30.0);
    p.drawPolygon(speaker);
    p.setBrush(Qt::NoBrush);
    p.setPen(Pen(C::blue, 3.0));
    for (qreal r : {7.0, 13.0, 19.0})
        p.drawArc(QRectF(24.0 - r, 24.0 - r, 2 * r, 2 * r), -45 * 16, 90 * 16);
}

// SMS: a mobile phone with a message bubble.
void SmsImage(QPainter& p)
{
    p.setPen(Pen(C::ink, 2.0));
    p.setBrush(C::steelDark);
    p.drawRoundedRect(QRectF(9.5, 3.5, 22.0, 41.0), 4.0, 4.0);
    p.setPen(Qt::NoPen);
    p.setBrush(C::blueLight);
    p.drawRect(QRectF(12.5, 9.0, 16.0, 27.0));
    p.setBrush(C::steelLight);
    p.drawEllipse(QPointF(20.5, 40.0), 2.0, 2.0);
    p.setPen(Pen(C::greenDark, 1.8));
    p.setBrush(C::green);
    QPainterPath bubble;
    bubble.addRoundedRect(QRectF(22.5, 14.5, 22.0, 14.0), 4.0, 4.0);
    QPainterPath tail;
    tail.moveTo(27.0, 27.0);
    tail.lineTo(25.0, 34.0);
    tail.lineTo(33.0, 27.5);
    tail.closeSubpath();
    p.drawPath(bubble.united(tail));
    p.setPen(Qt::NoPen);
    p.setBrush(C::paper);
    for (int i = 0; i < 3; ++i)
        p.drawEllipse(QPointF(28.5 + i * 5.0, 21.5), 1.8, 1.8);
}

// A 16-unit symbol drawn on the 48 grid.
Draw Large(void (*symbol)(QPainter&))
{
    return [symbol](QPainter& p) {
        p.save();
        p.scale(3.0, 3.0);
        symbol(p);
        p.restore();
    };
}

Draw With(Draw base, Draw badge)
{
    return [base, badge](QPainter& p) {
        base(p);
        badge(p);
    };
}

} // namespace

int main(int argc, char** argv)
{
    if (argc != 2) {
        std::fprintf(stderr, "usage: make_images <output folder>\n");
        return 2;
    }
    g_folder = QString::fromLocal8Bit(argv[1]);
    QDir().mkpath(g_folder);

    Draw const bell = EventBell;
    Draw const folder = Folder;

    // Named images of the image folder.
    Icon("OK-16.png", 16, 16, [](QPainter& p) { CheckMark(p, C::green, 2.2); });
    Icon("CANCEL-16.png", 16, 16, [](QPainter& p) { Cross(p, C::red, 2.2, QRectF(3.5, 3.5, 9, 9)); });
    Icon("NEW-16.png", 16, 16, [](QPainter& p) {
        p.setPen(Pen(C::greenDark, 1.0));
        p.setBrush(C::green);
        p.drawEllipse(QPointF(8, 8), 6.6, 6.6);
        Plus(p, C::paper, 2.0, QPointF(8, 8), 3.6);
    });
    Icon("MODIFY-16.png", 16, 16, Pencil);
    Icon("REMOVE-16.png", 16, 16, TrashCan);
    Icon("SYSTEM-event_16.png", 16, 16, bell);
    Save(Grayed(Render(16, 16, 16, bell)), "SYSTEM-event_16_grayed.png");
    Icon("MAIL-48.png", 48, 48, Envelope);
    Icon("LAUNCH-WEB-48.png", 48, 48, LaunchWeb);
    Icon("PROGRAM-16.png", 16, 16, ProgramIcon);
    Icon("PROGRAM-32.png", 32, 16, ProgramIcon);
    Icon("PROGRAM-48.png", 48, 16, ProgramIcon);
    // The program's icon in the desktop theme's sizes, installed beside the desktop entry
    // (resources/icons, next to the image folder; not compiled into the program).
    QDir(g_folder).mkpath(QStringLiteral("../icons"));
    for (int size : {16, 22, 24, 32, 48, 64, 128, 256})
        Icon(QStringLiteral("../icons/zoevents-editor-%1.png").arg(size), size, 16, ProgramIcon);
    Icon("WIZARD-16.png", 16, 16, MagicWand);
    Icon("SEARCH-16.png", 16, 16, Magnifier);
    Icon("COPY-16.png", 16, 16, CopyImage);
    Icon("PASTE-16.png", 16, 16, PasteImage);
    Icon("TIMETABLE-DAY-16.png", 16, 16, Clock);
    Icon("TIMETABLE-WEEK-16.png", 16, 16, WeekPage);
    Icon("TIMETABLE-CALENDAR-16.png", 16, 16, CalendarGrid);

    // Bitmap resources of the module, by number.
    Icon("bmp-2402.png", 16, 16, With(bell, BadgeAdd));
    Icon("bmp-2403.png", 16, 16, With(bell, BadgeModify));
    Icon("bmp-2404.png", 16, 16, With(bell, BadgeDelete));
    Icon("bmp-2405.png", 16, 16, With(folder, BadgeAdd));
    Icon("bmp-2406.png", 16, 16, With(folder, BadgeModify));
    Icon("bmp-2407.png", 16, 16, With(folder, BadgeDelete));
    Icon("bmp-2408.png", 16, 16, folder);
    Icon("bmp-2416.png", 16, 16, bell);
    Icon("bmp-2417.png", 16, 16, With(bell, BadgeAdd));
    Icon("bmp-2419.png", 16, 16, With(bell, BadgeRemove));
    Strip("bmp-2426.png", 16, 16, {Clock, WeekPage, CalendarGrid});
    Strip("bmp-timetable-kinds.png", 16, 16, {NoTimeTable, Clock, WeekPage, CalendarGrid});
    Icon("bmp-2439.png", 48, 48, Large(Clock));
    Icon("bmp-2440.png", 48, 48, Large(WeekPage));
    Icon("bmp-2441.png", 48, 48, Large(CalendarGrid));
    Icon("bmp-2442.png", 48, 48, ForceImage);
    Icon("bmp-2443.png", 48, 48, ConsoleImage);
    Icon("bmp-2445.png", 48, 48, ScreenImage);
    Icon("bmp-2446.png", 48, 48, ReportImage);
    Icon("bmp-2447.png", 48, 48, DeviceImage);
    Icon("bmp-2448.png", 48, 48, BeepImage);
    Icon("bmp-1409.png", 48, 48, SmsImage);

    std::printf("%d images written to %s\n", g_written, qPrintable(g_folder));
    return g_failed ? 1 : 0;
}
