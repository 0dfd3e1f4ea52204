#pragma once
#include <span>
#include <string_view>

// One named value of a variable ("0" = "Stopped", "1" = "Running").
struct ZoNamedValue {
    double value = 0;
    std::wstring_view text;
};

// Flags of ZoValueInfo, which tell what can be checked of a value written to the variable.
inline constexpr unsigned kZoValueNoCheck = 1; // free text: nothing is checked
inline constexpr unsigned kZoValueRange = 2;   // min and max bound the value (either may be infinite)
inline constexpr unsigned kZoValueWhole = 4;   // whole numbers only
inline constexpr unsigned kZoValueNamed = 8;   // the variable has named values, listed in values

// What the catalog knows of a variable's values. The texts live in the catalog.
struct ZoValueInfo {
    unsigned flags = 0;
    double min = 0;
    double max = 0;
    std::span<ZoNamedValue const> values;

    // The named value equal to value, or null.
    ZoNamedValue const* Named(double value) const;
    // Whether value may be written: within the range, whole when required, and one of the
    // named values when the variable has exactly two (a two-state command accepts nothing
    // else; a longer list names the usual values of an integer, not all of them).
    bool Accepts(double value) const;
};
