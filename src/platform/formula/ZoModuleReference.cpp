#include "ZoEvaluator.h"
#include "ZoFormulaLexer.h"

bool isThereAModuleInExpression(std::wstring_view text)
{
    if (text.find(L'@') == std::wstring_view::npos)
        return false;
    ZoFormulaLexer lexer(text);
    for (ZoToken token = lexer.Next(); token.kind != ZoTok::End; token = lexer.Next())
        if (token.kind == ZoTok::Module)
            return true;
    return false;
}

bool isThereAModuleInExpression(wchar_t const* text)
{
    return text && isThereAModuleInExpression(std::wstring_view(text));
}
