#pragma once
#include <cstdint>
#include <functional>
#include <string>
#include <string_view>

// The variable references of a formula as the formula language reads them: each bracketed
// token of the lexer, split into device, code and period filter. Texts between quotes,
// numbers, names of functions and modules are never references, and a device name is
// taken whole up to its last point, so "[Line 2.A.FLOW]" names the device "Line 2.A".

struct ZoFormulaReference {
    std::uint32_t pos = 0; // of the "[" in the formula, from 0
    std::uint32_t len = 0; // up to and with the "]"
    std::wstring_view device;
    std::wstring_view code;
    std::wstring_view filter; // without its "/"
    std::uint32_t devicePos = 0; // in the formula
    std::uint32_t codePos = 0;
};

// Calls visit for every well-formed reference of formula, in order.
void ZoForEachReference(std::wstring_view formula, std::function<void(ZoFormulaReference const&)> const& visit);

// What a rename puts in place of one part of a reference: the device's name or the code.
enum class ZoReferencePart { Device, Code };

// The formula with every reference to device `device` (and, when code is not empty, to
// its variable `code`) given `replacement` for that part; the filter and everything
// around stays as written. count receives the number of references rewritten.
std::wstring ZoRewriteReferences(std::wstring_view formula, std::wstring_view device, std::wstring_view code,
                                 ZoReferencePart part, std::wstring_view replacement, int& count);
