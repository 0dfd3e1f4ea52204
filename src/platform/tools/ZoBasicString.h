#pragma once
#include <string>

// The string type of every interface of the module. Wide text is std::wstring:
// UTF-16 where wchar_t is 2 bytes, UTF-32 where it is 4; code never assumes either.
template <class C>
using ZoBasicString = std::basic_string<C>;
