#include "platform/calendar/ZoColourWord.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoIds.h"

unsigned ZoDayColourWord(XmlDocument::XmlNode const* day)
{
    if (!day)
        return 0xFFFFFF;
    std::wstring const text = day->Value(L"color", L"");
    if (text.empty())
        return 0xFFFFFF;
    return static_cast<unsigned>(HtoL(text.c_str(), 6)) & 0xFFFFFFu;
}

std::wstring ZoColourWordText(unsigned word)
{
    return ZoFormat(L"%06X", word & 0xFFFFFFu);
}
