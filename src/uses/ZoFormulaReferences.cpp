#include "uses/ZoFormulaReferences.h"

#include "platform/formula/ZoFormulaLexer.h"
#include "platform/formula/ZoVariableName.h"

void ZoForEachReference(std::wstring_view formula, std::function<void(ZoFormulaReference const&)> const& visit)
{
    ZoFormulaLexer lexer(formula);
    for (ZoToken token = lexer.Next(); token.kind != ZoTok::End; token = lexer.Next()) {
        if (token.kind != ZoTok::Variable || token.len < 2)
            continue;
        std::wstring_view const inner = formula.substr(token.pos + 1, token.len - 2);
        ZoVariableNameParts parts;
        if (!ZoSplitVariableName(inner, parts))
            continue;
        ZoFormulaReference reference;
        reference.pos = token.pos;
        reference.len = token.len;
        reference.device = parts.device;
        reference.code = parts.code;
        reference.filter = parts.filter;
        reference.devicePos = static_cast<std::uint32_t>(parts.device.data() - formula.data());
        reference.codePos = static_cast<std::uint32_t>(parts.code.data() - formula.data());
        visit(reference);
    }
}

std::wstring ZoRewriteReferences(std::wstring_view formula, std::wstring_view device, std::wstring_view code,
                                 ZoReferencePart part, std::wstring_view replacement, int& count)
{
    count = 0;
    std::wstring out;
    std::size_t copied = 0;
    ZoForEachReference(formula, [&](ZoFormulaReference const& reference) {
        if (reference.device != device || (!code.empty() && reference.code != code))
            return;
        std::size_t const from = part == ZoReferencePart::Device ? reference.devicePos : reference.codePos;
        std::size_t const length = part == ZoReferencePart::Device ? reference.device.size() : reference.code.size();
        out.append(formula.substr(copied, from - copied));
        out.append(replacement);
        copied = from + length;
        ++count;
    });
    if (count == 0)
        return std::wstring(formula);
    out.append(formula.substr(copied));
    return out;
}
