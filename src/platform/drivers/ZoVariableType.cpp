#include "ZoVariableType.h"

#include <array>
#include <utility>

namespace {

bool EqualsIgnoringAsciiCase(std::string_view a, std::string_view b)
{
    if (a.size() != b.size())
        return false;
    for (std::size_t i = 0; i < a.size(); ++i) {
        char x = a[i];
        char y = b[i];
        if (x >= 'A' && x <= 'Z')
            x = static_cast<char>(x - 'A' + 'a');
        if (y >= 'A' && y <= 'Z')
            y = static_cast<char>(y - 'A' + 'a');
        if (x != y)
            return false;
    }
    return true;
}

} // namespace

bool ZoParseVariableKind(std::string_view text, ZoVariableKind& kind)
{
    static constexpr std::array<std::pair<std::string_view, ZoVariableKind>, 6> kNames{{
        {"digital", kZoDigital}, {"integer", kZoInteger}, {"analog", kZoAnalog},
        {"text", kZoText}, {"counter", kZoCounter}, {"duration", kZoDuration},
    }};
    for (auto const& [name, value] : kNames) {
        if (EqualsIgnoringAsciiCase(text, name)) {
            kind = value;
            return true;
        }
    }
    return false;
}
