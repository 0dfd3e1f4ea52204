#include "spreadsheet/SheetFile.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "spreadsheet/CsvReader.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <new>

namespace {

bool Fail(QString const& path, std::wstring const& reason, std::wstring& error)
{
    error = ZoFormat(ZoLoadString(64640).c_str(), QDir::toNativeSeparators(path).toStdWString().c_str(),
                     reason.c_str());
    return false;
}

} // namespace

bool ZoReadSheetFile(QString const& path, std::string& bytes, std::wstring& error)
{
    QFile file(path);
    if (!file.open(QIODevice::ReadOnly))
        return Fail(path, file.errorString().toStdWString(), error);
    qint64 const size = file.size();
    if (size < 0 || static_cast<quint64>(size) > ZoCsvLimits().maxBytes)
        return Fail(path, ZoCsvFaultText(ZoCsvFault::TooLarge), error);
    try {
        bytes.resize(static_cast<std::size_t>(size));
    } catch (std::bad_alloc const&) {
        return Fail(path, ZoCsvFaultText(ZoCsvFault::TooLarge), error);
    }
    qint64 done = 0;
    while (done < size) {
        qint64 const read = file.read(bytes.data() + done, size - done);
        if (read <= 0)
            return Fail(path, file.errorString().toStdWString(), error);
        done += read;
    }
    return true;
}

bool ZoWriteSheetFile(QString const& path, std::string const& bytes, std::wstring& error)
{
    QSaveFile file(path);
    if (!file.open(QIODevice::WriteOnly))
        return Fail(path, file.errorString().toStdWString(), error);
    if (file.write(bytes.data(), static_cast<qint64>(bytes.size())) != static_cast<qint64>(bytes.size())
        || !file.commit())
        return Fail(path, file.errorString().toStdWString(), error);
    return true;
}
