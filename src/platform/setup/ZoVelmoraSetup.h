#pragma once
#include "platform/tools/ZoBasicString.h"
#include <QIcon>

// The product's setup as the module sees it: the configuration folder (the open project
// folder), the image folder and the program's icon. The host sets the folders.
class ZoVelmoraSetup {
public:
    static ZoVelmoraSetup& instance();

    ZoBasicString<wchar_t> const& CfgPath() const;
    void SetCfgPath(ZoBasicString<wchar_t> const& path);

    // Path of an image file of the image folder; the folder defaults to the images
    // compiled into the module (":/images").
    ZoBasicString<wchar_t> getImageFilePath(wchar_t const* fileName) const;
    void SetImageFolder(ZoBasicString<wchar_t> const& folder);

    // The program's icon (ProgramIDResource), for dialog window icons.
    int ProgramIDResource() const;
    QIcon ProgramIcon() const;

private:
    ZoBasicString<wchar_t> m_cfgPath;
    ZoBasicString<wchar_t> m_imageFolder;
};
