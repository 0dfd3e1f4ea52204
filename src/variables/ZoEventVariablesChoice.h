#pragma once
#include "platform/tools/ZoBasicString.h"

#include <bitset>
#include <list>
#include <string_view>
#include <vector>

class ZoDriver;

// The rules of choosing state variables of one device among the six event variables
// ("ST", "TACT", "CACT", "CDIS", "CACK", "CTIM"), apart from the dialog that shows them.
//
// A row is offered for each of the six codes that the device has and whose type shares a
// bit with the mask. Variables already chosen elsewhere (the incoming list, "DEVICE.CODE")
// are checked and locked: they cannot be unchosen and do not count toward the maximum of
// new choices (0: no maximum). New choices are appended to the list in row order.
class ZoEventVariablesChoice {
public:
    struct Row {
        ZoBasicString<wchar_t> code;
        ZoBasicString<wchar_t> description; // as the device describes the variable
        bool checked = false;
        bool locked = false; // chosen before: checked and not to be changed
    };

    ZoEventVariablesChoice(ZoDriver const* driver, std::bitset<34> const& mask, int maximum);

    std::vector<Row> const& Rows() const { return m_rows; }
    bool IsEmpty() const { return m_rows.empty(); }
    ZoBasicString<wchar_t> DriverName() const;
    int Maximum() const { return m_maximum; }
    int Selected() const { return m_selected; }

    // Checks and locks the rows of the variables of this device in the list.
    void CheckInitialVariables(std::list<ZoBasicString<wchar_t>> const& chosen);
    // Whether n more variables may be chosen; when so, they are counted.
    bool CanSelect(int n);
    void UnSelect(int n);
    // Checks or unchecks a row that is not locked; false (and nothing changed) when
    // checking it would pass the maximum.
    bool SetChecked(std::size_t row, bool checked);
    // Whether the rows checked and not locked stay within the maximum.
    bool IsValid() const;
    // Appends "DEVICE.CODE" of each row checked and not locked, in row order.
    void SelectVariables(std::list<ZoBasicString<wchar_t>>& result) const;

private:
    ZoDriver const* m_driver;
    int m_maximum;
    int m_selected = 0;
    std::vector<Row> m_rows;
};
