#include "ZoClipboard.h"

#include <QByteArray>
#include <QClipboard>
#include <QGuiApplication>
#include <QMimeData>
#include <QString>

#include <limits>

namespace {

QString PrivateFormat(int selector)
{
    return QStringLiteral("application/x-zoevents-%1").arg(selector);
}

QClipboard* Clipboard()
{
    // No clipboard without a GUI application (a console tool, or after shutdown).
    return qobject_cast<QGuiApplication*>(QCoreApplication::instance()) ? QGuiApplication::clipboard()
                                                                        : nullptr;
}

} // namespace

bool PutToClipboard(char const* data, std::size_t length, int selector)
{
    QClipboard* clipboard = Clipboard();
    if (!clipboard || (!data && length > 0))
        return false;
    // The callers count the terminating NUL; it is not part of the clipboard's bytes.
    if (length > 0 && data[length - 1] == '\0')
        --length;
    if (length > static_cast<std::size_t>(std::numeric_limits<qsizetype>::max()))
        return false;
    QByteArray const bytes(data, static_cast<qsizetype>(length));
    auto* mime = new QMimeData;
    mime->setData(PrivateFormat(selector), bytes);
    mime->setText(QString::fromUtf8(bytes));
    clipboard->setMimeData(mime); // the clipboard takes ownership
    return true;
}

int GetFromClipboard(ZoBasicString<char>& buffer, int selector)
{
    buffer.clear();
    QClipboard* clipboard = Clipboard();
    if (!clipboard)
        return 0;
    QMimeData const* mime = clipboard->mimeData();
    if (!mime)
        return 0;
    QByteArray bytes;
    QString const format = PrivateFormat(selector);
    if (mime->hasFormat(format))
        bytes = mime->data(format);
    else if (mime->hasText())
        bytes = mime->text().toUtf8();
    // An empty payload is nothing usable; so is one too long to count in an int.
    if (bytes.isEmpty() || bytes.size() >= std::numeric_limits<int>::max())
        return 0;
    buffer.assign(bytes.constData(), static_cast<std::size_t>(bytes.size()));
    buffer.push_back('\0');
    return static_cast<int>(buffer.size());
}
