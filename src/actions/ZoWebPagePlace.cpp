#include "actions/ZoWebPagePlace.h"

#include "platform/tools/ZoTexts.h"

ZoBasicString<wchar_t> ZoWebPlaceText(int place)
{
    if (place == kZoWebPlaceTab)
        return ZoLoadString(38456) + L" (" + ZoLoadString(38460) + L")";
    return ZoLoadString(38457);
}

int ZoInitialWebPlace(ZoBasicString<wchar_t> const& stored)
{
    if (stored == L"TAB")
        return kZoWebPlaceTab;
    if (stored == L"WINDOW")
        return kZoWebPlaceWindow;
    return -1;
}

ZoBasicString<wchar_t> ZoWebPlaceToWrite(int place, ZoBasicString<wchar_t> const& stored)
{
    switch (place) {
    case kZoWebPlaceTab: return L"TAB";
    case kZoWebPlaceWindow: return L"WINDOW";
    default: return stored;
    }
}
