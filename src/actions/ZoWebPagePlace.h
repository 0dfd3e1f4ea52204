#pragma once
#include "platform/tools/ZoBasicString.h"

// Where a web page action opens its page: the `window` key holds "TAB" (a tab of the
// browser) or "WINDOW" (a new browser window). The editor's place list numbers them.
inline constexpr int kZoWebPlaceTab = 0;
inline constexpr int kZoWebPlaceWindow = 1;

// The place's text, as the action list words it: "Browser (new tab)", "New browser window".
ZoBasicString<wchar_t> ZoWebPlaceText(int place);

// The place the editor shows first: the stored one when `window` is exactly "TAB" or
// "WINDOW"; anything else, a missing key included, shows no place (-1), so that OK keeps
// the stored text as it is (the list and the runtime read all of it as a window).
int ZoInitialWebPlace(ZoBasicString<wchar_t> const& stored);

// The `window` text that OK leaves: "TAB" for the tab, "WINDOW" for the window, and the
// stored text unchanged when no place is chosen (-1 or any other number).
ZoBasicString<wchar_t> ZoWebPlaceToWrite(int place, ZoBasicString<wchar_t> const& stored);
