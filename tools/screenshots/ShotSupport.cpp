#include "ShotSupport.h"
#include "config/XmlDocument.h"

#include <QDir>
#include <QFile>

bool LoadShotDocument(QString const& folder, char const* name, XmlDocument& document)
{
    QFile file(QDir(folder).filePath(QLatin1String(name)));
    if (!file.open(QIODevice::ReadOnly))
        return false;
    QByteArray const text = file.readAll();
    return document.Parse(text.constData(), static_cast<std::size_t>(text.size())) && document.Root();
}
