#include "spreadsheet/SheetFile.h"

#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoTexts.h"
#include "spreadsheet/CsvReader.h"

#include <QDir>
#include <QFile>
#include <QSaveFile>

#include <cstdio>
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
    // "-" is the standard input, as programs of the command line read it.
    bool const opened = path == QStringLiteral("-") ? file.open(stdin, QIODevice::ReadOnly) : file.open(QIODevice::ReadOnly);
    if (!opened)
        return Fail(path, file.errorString().toStdWString(), error);
    if (file.isSequential()) {
        // A pipe: read until its end, never beyond the largest sheet.
        std::size_t const limit = ZoCsvLimits().maxBytes;
        bytes.clear();
        char block[65536];
        for (;;) {
            qint64 const read = file.read(block, sizeof block);
            if (read < 0)
                return Fail(path, file.errorString().toStdWString(), error);
            if (read == 0)
                break; // the end of the pipe: a read waits for data until then
            bytes.append(block, static_cast<std::size_t>(read));
            if (bytes.size() > limit)
                return Fail(path, ZoCsvFaultText(ZoCsvFault::TooLarge), error);
        }
        return true;
    }
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
