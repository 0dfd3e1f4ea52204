#pragma once
#include <optional>
#include <string>
#include <string_view>

// The shape of a condition, for the rules that compare formulas with each other rather
// than evaluate them: when two conditions are the same, and what a threshold comparison
// compares.

// The formula without blanks outside its texts, its keywords and names outside texts and
// variable references in upper case, "&&", "||", "!" and "==" spelt "AND", "OR", "NOT"
// and "=", and outer parentheses around the whole dropped: two formulas that differ only
// in that layout give the same text.
std::wstring ZoNormalisedFormula(std::wstring_view formula);
// The same on UTF-8 text (letters outside texts and references are ASCII in a formula).
std::string ZoNormalisedFormula(std::string_view formula);

// A comparison of one value with a number, "[PLC1.LEVEL] > 95" or "95 < [PLC1.LEVEL]"
// (read the same way), with the set of values it holds for as an interval.
struct ZoThreshold {
    std::wstring value; // the normalised left-hand side
    double low = 0;     // the values for which the comparison holds: from low to high
    double high = 0;
    bool lowOpen = true; // the bound itself excluded
    bool highOpen = true;
    bool negated = false; // "<>": every value but `low`
};

// The comparison, or nothing when the formula is not one value compared with a number
// (a NOT in front is read into the interval).
std::optional<ZoThreshold> ZoReadThreshold(std::wstring_view formula);

// Whether every value that satisfies inner satisfies outer (both on the same value).
bool ZoThresholdWithin(ZoThreshold const& inner, ZoThreshold const& outer);
// Whether the two hold for exactly the opposite values (one is the negation of the other).
bool ZoThresholdsComplement(ZoThreshold const& a, ZoThreshold const& b);
