#include "ZoVelmoraSetup.h"

#include <QFile>
#include <QString>

namespace {

wchar_t const kBuiltInImages[] = L":/images";

// The resource number under which the host knows its program icon.
constexpr int kProgramIconResource = 128;

} // namespace

ZoVelmoraSetup& ZoVelmoraSetup::instance()
{
    static ZoVelmoraSetup setup;
    return setup;
}

ZoBasicString<wchar_t> const& ZoVelmoraSetup::CfgPath() const
{
    return m_cfgPath;
}

void ZoVelmoraSetup::SetCfgPath(ZoBasicString<wchar_t> const& path)
{
    m_cfgPath = path;
}

ZoBasicString<wchar_t> ZoVelmoraSetup::getImageFilePath(wchar_t const* fileName) const
{
    ZoBasicString<wchar_t> path = m_imageFolder.empty() ? ZoBasicString<wchar_t>(kBuiltInImages)
                                                       : m_imageFolder;
    if (!path.empty() && path.back() != L'/' && path.back() != L'\\')
        path += L'/';
    if (fileName)
        path += fileName;
    return path;
}

void ZoVelmoraSetup::SetImageFolder(ZoBasicString<wchar_t> const& folder)
{
    m_imageFolder = folder;
}

int ZoVelmoraSetup::ProgramIDResource() const
{
    return kProgramIconResource;
}

QIcon ZoVelmoraSetup::ProgramIcon() const
{
    // The image folder's own program icon where it has one, else the built-in one; each
    // size is loaded only when a window asks for it.
    QIcon icon;
    for (wchar_t const* name : {L"PROGRAM-16.png", L"PROGRAM-32.png", L"PROGRAM-48.png"}) {
        QString path = QString::fromStdWString(getImageFilePath(name));
        if (!QFile::exists(path))
            path = QStringLiteral(":/images/") + QString::fromWCharArray(name);
        if (QFile::exists(path))
            icon.addFile(path);
    }
    return icon;
}
