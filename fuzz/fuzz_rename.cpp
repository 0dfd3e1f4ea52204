// Any bytes as a formula and a reference, for where-used and rename. The text up to the
// first NUL byte is the formula (UTF-8); the rest is a reference as the user types it,
// read against a small project (it must never crash, whatever it names). The device of the
// formula's first reference is renamed to a name the formula does not hold and back.
// Aborts when:
//   - a rename rewrites another number of references than the walk finds for that device;
//   - the renamed formula does not cut into as many tokens of the same kinds;
//   - renaming there and back does not give the formula back exactly;
//   - a variable's code renamed there and back does not either.
#include "config/XmlDocument.h"
#include "platform/formula/ZoFormulaLexer.h"
#include "platform/tools/ZoUtf.h"
#include "uses/ZoFormulaReferences.h"
#include "uses/ZoUseTarget.h"
#include "uses/ZoWhereUsed.h"

#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <string>
#include <string_view>
#include <vector>

namespace {

[[noreturn]] void Fail(char const* what, std::wstring const& formula)
{
    std::fprintf(stderr, "fuzz_rename: %s in %ls\n", what, formula.c_str());
    std::abort();
}

std::vector<ZoTok> Kinds(std::wstring_view formula)
{
    std::vector<ZoTok> kinds;
    ZoFormulaLexer lexer(formula);
    for (ZoToken token = lexer.Next(); token.kind != ZoTok::End; token = lexer.Next())
        kinds.push_back(token.kind);
    return kinds;
}

int Uses(std::wstring_view formula, std::wstring_view device, std::wstring_view code)
{
    int uses = 0;
    ZoForEachReference(formula, [&](ZoFormulaReference const& reference) {
        uses += reference.device == device && (code.empty() || reference.code == code);
    });
    return uses;
}

// There and back; `fresh` is a name the formula does not hold anywhere.
void RoundTrip(std::wstring const& formula, std::wstring const& device, std::wstring const& code,
               ZoReferencePart part, std::wstring const& old, std::wstring const& fresh)
{
    int count = 0;
    std::wstring const there = ZoRewriteReferences(formula, device, code, part, fresh, count);
    if (count != Uses(formula, device, code))
        Fail("the rename's count differs from the uses", formula);
    if (Kinds(there) != Kinds(formula))
        Fail("the renamed formula cuts into other tokens", formula);
    std::wstring const newDevice = part == ZoReferencePart::Device ? fresh : device;
    std::wstring const newCode = part == ZoReferencePart::Code ? fresh : code;
    int back = 0;
    if (ZoRewriteReferences(there, newDevice, newCode, part, old, back) != formula || back != count)
        Fail("renaming there and back changed the formula", formula);
}

XmlDocument& Project(char const* text)
{
    auto* document = new XmlDocument; // kept for the whole run
    document->Parse(text);
    return *document;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view const bytes(reinterpret_cast<char const*>(data), size);
    std::size_t const nul = bytes.find('\0');
    std::wstring const formula = ZoFromUtf8(bytes.substr(0, nul));
    std::wstring const reference = nul == std::string_view::npos ? std::wstring() : ZoFromUtf8(bytes.substr(nul + 1));

    static XmlDocument& events = Project(
        "<eventsConfiguration><events><event><id>{E1}</id><name>Tank high</name><condition>[PLC1.LEVEL] &gt; 9"
        "</condition></event></events><eventsGroups><eventsGroup><id>{G1}</id><name>Pumps</name></eventsGroup>"
        "</eventsGroups></eventsConfiguration>");
    static XmlDocument& devices = Project("<deviceTree><catalog><driver><name>PLC1</name><variable><code>LEVEL</code>"
                                          "</variable></driver><driver><name>Line 2.A</name></driver></catalog>"
                                          "</deviceTree>");
    static XmlDocument& timeTables =
        Project("<timeTables><days><day><id>{D1}</id><name>Work</name></day></days></timeTables>");
    ZoUseDocs const docs{events.Root(), timeTables.Root(), devices.Root(), nullptr};
    ZoUseTarget target;
    std::wstring error;
    if (ZoReadUseTarget(reference, docs, target, error))
        ZoFindUses(docs, target);

    std::wstring device;
    std::wstring code;
    ZoForEachReference(formula, [&](ZoFormulaReference const& found) {
        if (device.empty()) {
            device = found.device;
            code = found.code;
        }
    });
    if (device.empty())
        return 0;
    // A name the formula cannot hold: a control character that no text of it contains.
    std::wstring fresh = L"Z\x1F";
    while (formula.find(fresh) != std::wstring::npos)
        fresh += L'\x1E';
    RoundTrip(formula, device, {}, ZoReferencePart::Device, device, fresh);
    RoundTrip(formula, device, code, ZoReferencePart::Code, code, fresh);
    return 0;
}
