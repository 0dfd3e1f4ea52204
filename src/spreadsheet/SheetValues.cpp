#include "spreadsheet/SheetValues.h"

#include "editor/ZoEventFields.h"
#include "platform/tools/ZoFormat.h"
#include "platform/tools/ZoIds.h"
#include "platform/tools/ZoTexts.h"
#include "platform/tools/ZoUtf.h"

#include <algorithm>

namespace {

// The event editor's name field takes 50 characters.
constexpr std::size_t kNameMaxChars = 50;

std::size_t Characters(std::string_view utf8)
{
    return static_cast<std::size_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

std::wstring TooLong(std::size_t limit)
{
    return ZoFormat(ZoLoadString(64615).c_str(), static_cast<int>(limit));
}

void ReadBool(std::string_view cell, ZoSheetValue& value)
{
    std::string_view const text = ZoTrimBlanks(cell);
    for (std::string_view yes : {"T", "TRUE", "1", "YES", "Y"})
        if (ZoEqualsNoCase(text, yes)) {
            value.text = "T";
            return;
        }
    for (std::string_view no : {"F", "FALSE", "0", "NO", "N"})
        if (ZoEqualsNoCase(text, no)) {
            value.text = "F";
            return;
        }
    value.fault = ZoFormat(ZoLoadString(64617).c_str(), ZoFromUtf8(cell).c_str());
}

std::vector<std::string_view> SplitItems(std::string_view cell)
{
    std::vector<std::string_view> items;
    while (!cell.empty()) {
        std::size_t const bar = cell.find('|');
        std::string_view const item = ZoTrimBlanks(cell.substr(0, bar));
        if (!item.empty())
            items.push_back(item);
        if (bar == std::string_view::npos)
            break;
        cell.remove_prefix(bar + 1);
    }
    return items;
}

void Join(std::string& out, std::string_view item)
{
    if (!out.empty())
        out.append(kZoSheetListSeparator);
    out.append(item);
}

void ReadGroups(std::string_view cell, ZoSheetValue& value)
{
    for (std::string_view name : SplitItems(cell)) {
        if (std::find(value.items.begin(), value.items.end(), name) != value.items.end())
            continue; // a group named twice is one membership
        value.items.emplace_back(name);
        Join(value.text, name);
    }
}

void ReadArguments(std::string_view cell, ZoSheetValue& value)
{
    int number = 0;
    for (std::string_view item : SplitItems(cell)) {
        ++number;
        std::size_t const equals = item.find('=');
        std::string const expected = "a" + std::to_string(number);
        if (equals == std::string_view::npos || ZoTrimBlanks(item.substr(0, equals)) != expected) {
            value.fault = ZoFormat(ZoLoadString(64620).c_str(), ZoFromUtf8(item).c_str(),
                                   ZoFromUtf8(expected).c_str());
            return;
        }
        std::string_view rest = item.substr(equals + 1);
        std::size_t const colon = rest.rfind(':');
        std::string_view const formula = ZoTrimBlanks(rest.substr(0, colon));
        std::string_view const format = colon == std::string_view::npos ? std::string_view() : ZoTrimBlanks(rest.substr(colon + 1));
        if (formula.empty()) {
            value.fault = ZoFormat(ZoLoadString(64621).c_str(), number);
            return;
        }
        if (Characters(formula) > kZoEventFieldMaxChars || Characters(format) > kZoEventFieldMaxChars) {
            value.fault = TooLong(kZoEventFieldMaxChars);
            return;
        }
        value.items.emplace_back(formula);
        value.items.emplace_back(format);
        Join(value.text, expected + "=" + std::string(formula) + ":" + std::string(format));
    }
}

} // namespace

std::string_view ZoTrimBlanks(std::string_view text)
{
    while (!text.empty() && (text.front() == ' ' || text.front() == '\t'))
        text.remove_prefix(1);
    while (!text.empty() && (text.back() == ' ' || text.back() == '\t'))
        text.remove_suffix(1);
    return text;
}

bool ZoEqualsNoCase(std::string_view a, std::string_view b)
{
    return a.size() == b.size() && std::equal(a.begin(), a.end(), b.begin(), [](char x, char y) {
               auto const lower = [](char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; };
               return lower(x) == lower(y);
           });
}

ZoSheetValue ZoReadSheetValue(ZoSheetColumn column, std::string_view cell, ZoSheetNames const& names)
{
    ZoSheetValue value;
    switch (column) {
    case ZoSheetColumn::Enabled:
    case ZoSheetColumn::Notify:
    case ZoSheetColumn::Record:
    case ZoSheetColumn::RssActivate:
    case ZoSheetColumn::RssDeactivate:
    case ZoSheetColumn::RssAcknowledge:
        ReadBool(cell, value);
        return value;
    case ZoSheetColumn::TimeTable: {
        std::string_view const name = ZoTrimBlanks(cell);
        value.text = name;
        value.timeTableId = names.TimeTableId(name);
        if (!name.empty() && value.timeTableId.empty())
            value.fault = ZoFormat(ZoLoadString(64618).c_str(), ZoFromUtf8(name).c_str());
        return value;
    }
    case ZoSheetColumn::Groups:
        ReadGroups(cell, value);
        return value;
    case ZoSheetColumn::Arguments:
        ReadArguments(cell, value);
        return value;
    case ZoSheetColumn::Name:
        value.text = cell;
        if (cell.empty())
            value.fault = ZoLoadString(64612);
        else if (Characters(cell) > kNameMaxChars || !IsValidId(ZoFromUtf8(cell).c_str(), true))
            value.fault = ZoFormat(ZoLoadString(64613).c_str(), static_cast<int>(kNameMaxChars));
        return value;
    case ZoSheetColumn::Condition:
        if (cell.empty())
            value.fault = ZoLoadString(64616);
        break;
    case ZoSheetColumn::DelayToActivate:
    case ZoSheetColumn::DelayToDeactivate:
        if (cell.empty())
            cell = "0"; // as the editor fills an empty delay
        break;
    default:
        break;
    }
    value.text = cell;
    if (value.fault.empty() && Characters(cell) > kZoEventFieldMaxChars)
        value.fault = TooLong(kZoEventFieldMaxChars);
    return value;
}
