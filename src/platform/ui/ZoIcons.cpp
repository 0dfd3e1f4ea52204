#include "ZoIcons.h"

#include "platform/setup/ZoVelmoraSetup.h"

#include <QApplication>
#include <QFile>
#include <QImage>
#include <QRegularExpression>
#include <QStyle>

namespace {

QString BuiltInImage(QString const& name)
{
    return QStringLiteral(":/images/") + name;
}

// The file of the image folder, else the module's own copy; empty when neither exists.
QString ResolveImage(wchar_t const* fileName)
{
    if (!fileName || !*fileName)
        return {};
    QString const name = QString::fromWCharArray(fileName);
    QString const path = QString::fromStdWString(ZoVelmoraSetup::instance().getImageFilePath(fileName));
    if (QFile::exists(path))
        return path;
    QString const builtIn = BuiltInImage(name);
    return QFile::exists(builtIn) ? builtIn : QString();
}

// The size an image name announces ("MAIL-48.png", "SYSTEM-event_16.png"), else 16.
int AnnouncedSize(QString const& name)
{
    static QRegularExpression const pattern(QStringLiteral("[-_](\\d{2,3})(?:[-_.]|$)"));
    QRegularExpressionMatch const match = pattern.match(name);
    int const size = match.hasMatch() ? match.captured(1).toInt() : 16;
    return size >= 8 && size <= 256 ? size : 16;
}

QStyle::StandardPixmap FallbackFor(QString const& name)
{
    QString const upper = name.toUpper();
    if (upper.startsWith(u"OK"))
        return QStyle::SP_DialogOkButton;
    if (upper.startsWith(u"CANCEL"))
        return QStyle::SP_DialogCancelButton;
    if (upper.startsWith(u"REMOVE") || upper.startsWith(u"DELETE"))
        return QStyle::SP_TrashIcon;
    if (upper.startsWith(u"MODIFY"))
        return QStyle::SP_FileDialogDetailedView;
    if (upper.startsWith(u"NEW"))
        return QStyle::SP_FileIcon;
    if (upper.contains(u"WEB"))
        return QStyle::SP_DriveNetIcon;
    if (upper.startsWith(u"MAIL"))
        return QStyle::SP_MessageBoxInformation;
    if (upper.contains(u"EVENT"))
        return QStyle::SP_MessageBoxWarning;
    return QStyle::SP_FileIcon;
}

QIcon StandardIcon(QString const& name)
{
    // A style exists only under a widget application.
    if (!qobject_cast<QApplication*>(QCoreApplication::instance()))
        return {};
    return QApplication::style()->standardIcon(FallbackFor(name));
}

// Images drawn without an alpha channel use magenta for "no pixel".
QPixmap MagentaTransparent(QPixmap pixmap)
{
    if (pixmap.isNull() || pixmap.hasAlphaChannel())
        return pixmap;
    pixmap.setMask(pixmap.createMaskFromColor(QColor(0xFF, 0x00, 0xFF), Qt::MaskInColor));
    return pixmap;
}

QString BitmapPath(int resourceId)
{
    return BuiltInImage(QStringLiteral("bmp-%1.png").arg(resourceId));
}

} // namespace

QIcon ZoImageIcon(wchar_t const* fileName)
{
    QString const path = ResolveImage(fileName);
    if (!path.isEmpty()) {
        QIcon icon(path);
        if (!icon.isNull())
            return icon;
    }
    return StandardIcon(fileName ? QString::fromWCharArray(fileName) : QString());
}

QPixmap ZoImagePixmap(wchar_t const* fileName)
{
    QString const path = ResolveImage(fileName);
    if (!path.isEmpty()) {
        QPixmap pixmap(path);
        if (!pixmap.isNull())
            return pixmap;
    }
    QString const name = fileName ? QString::fromWCharArray(fileName) : QString();
    QIcon const fallback = StandardIcon(name);
    int const size = AnnouncedSize(name);
    return fallback.isNull() ? QPixmap() : fallback.pixmap(size, size);
}

QIcon ZoBitmapIcon(int resourceId)
{
    QPixmap const pixmap = ZoBitmapPixmap(resourceId);
    return pixmap.isNull() ? QIcon() : QIcon(pixmap);
}

QPixmap ZoBitmapPixmap(int resourceId)
{
    QString const path = BitmapPath(resourceId);
    if (!QFile::exists(path))
        return {};
    return MagentaTransparent(QPixmap(path));
}

QPixmap ZoGrayed(QPixmap const& pixmap)
{
    if (pixmap.isNull())
        return pixmap;
    // A washed-out grey that keeps the shape (and its transparency) readable.
    QImage image = pixmap.toImage().convertToFormat(QImage::Format_ARGB32);
    for (int y = 0; y < image.height(); ++y) {
        auto* line = reinterpret_cast<QRgb*>(image.scanLine(y));
        for (int x = 0; x < image.width(); ++x) {
            int const gray = 128 + qGray(line[x]) / 2;
            line[x] = qRgba(gray, gray, gray, qAlpha(line[x]));
        }
    }
    QPixmap result = QPixmap::fromImage(image);
    result.setDevicePixelRatio(pixmap.devicePixelRatio());
    return result;
}

QPixmap ZoStripPixmap(QPixmap const& strip, int index, int size)
{
    if (strip.isNull() || size <= 0 || index < 0 || (index + 1) * size > strip.width())
        return {};
    return strip.copy(index * size, 0, size, qMin(size, strip.height()));
}

QIcon ZoBitmapStripIcon(int resourceId, int index, int size)
{
    QPixmap const pixmap = ZoStripPixmap(ZoBitmapPixmap(resourceId), index, size);
    return pixmap.isNull() ? QIcon() : QIcon(pixmap);
}

QPixmap ZoTimeTableKindPixmap(int kind)
{
    QPixmap const strip(BuiltInImage(QStringLiteral("bmp-timetable-kinds.png")));
    return ZoStripPixmap(strip, kind, 16);
}
