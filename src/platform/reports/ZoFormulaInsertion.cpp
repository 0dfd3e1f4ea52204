#include "ZoFormulaInsertion.h"

#include <algorithm>
#include <array>

namespace {

using Kind = ZoFormulaOperator::Kind;

std::array<ZoFormulaOperator, 19> const kOperators{{
    {QStringLiteral("+"), Kind::Binary, 62260},     {QStringLiteral("-"), Kind::Binary, 62261},
    {QStringLiteral("*"), Kind::Binary, 62262},     {QStringLiteral("/"), Kind::Binary, 62263},
    {QStringLiteral("%"), Kind::Binary, 62264},     {QStringLiteral("^"), Kind::Binary, 62265},
    {QStringLiteral("="), Kind::Binary, 62266},     {QStringLiteral("<>"), Kind::Binary, 62267},
    {QStringLiteral("<"), Kind::Binary, 62268},     {QStringLiteral("<="), Kind::Binary, 62269},
    {QStringLiteral(">"), Kind::Binary, 62270},     {QStringLiteral(">="), Kind::Binary, 62271},
    {QStringLiteral("AND"), Kind::Binary, 62272},   {QStringLiteral("OR"), Kind::Binary, 62273},
    {QStringLiteral("NOT"), Kind::Prefix, 62274},   {QStringLiteral("()"), Kind::Wrap, 62275},
    {QStringLiteral("\"\""), Kind::Wrap, 62276},    {QStringLiteral("TRUE"), Kind::Constant, 62277},
    {QStringLiteral("FALSE"), Kind::Constant, 62278},
}};

std::array<ZoFormulaFunction, 17> const kFunctions{{
    {QStringLiteral("abs"), QStringLiteral("x"), 62220},
    {QStringLiteral("sqrt"), QStringLiteral("x"), 62221},
    {QStringLiteral("round"), QStringLiteral("x, n"), 62222},
    {QStringLiteral("floor"), QStringLiteral("x"), 62223},
    {QStringLiteral("ceil"), QStringLiteral("x"), 62224},
    {QStringLiteral("min"), QStringLiteral("x, y"), 62225},
    {QStringLiteral("max"), QStringLiteral("x, y"), 62226},
    {QStringLiteral("avg"), QStringLiteral("x, y"), 62227},
    {QStringLiteral("limit"), QStringLiteral("x, low, high"), 62228},
    {QStringLiteral("if"), QStringLiteral("condition, a, b"), 62229},
    {QStringLiteral("bit"), QStringLiteral("x, n"), 62230},
    {QStringLiteral("bitand"), QStringLiteral("x, mask"), 62231},
    {QStringLiteral("between"), QStringLiteral("x, low, high"), 62232},
    {QStringLiteral("outside"), QStringLiteral("x, low, high"), 62233},
    {QStringLiteral("exp"), QStringLiteral("x"), 62234},
    {QStringLiteral("ln"), QStringLiteral("x"), 62235},
    {QStringLiteral("log10"), QStringLiteral("x"), 62236},
}};

// The selection put in order and inside the text.
void Normalise(QString const& expression, int& selStart, int& selEnd)
{
    int const size = static_cast<int>(expression.size());
    selStart = std::clamp(selStart, 0, size);
    selEnd = std::clamp(selEnd, 0, size);
    if (selEnd < selStart)
        std::swap(selStart, selEnd);
}

bool BlankAt(QString const& expression, int position)
{
    return position < 0 || position >= expression.size() || expression[position].isSpace();
}

// A value (number, name, reference, closing parenthesis or quote) ends just before position,
// so that a value inserted there needs a blank to stay apart from it.
bool ValueEndsAt(QString const& expression, int position)
{
    if (position <= 0 || position > expression.size())
        return false;
    QChar const c = expression[position - 1];
    return c.isLetterOrNumber() || c == QLatin1Char(']') || c == QLatin1Char(')') || c == QLatin1Char('"') ||
        c == QLatin1Char('_');
}

ZoFormulaEdit Insert(int at, QString text, int caretInText)
{
    ZoFormulaEdit edit;
    edit.from = edit.to = at;
    edit.text = std::move(text);
    edit.selStart = edit.selEnd = at + caretInText;
    return edit;
}

} // namespace

std::span<ZoFormulaOperator const> ZoWizardOperators()
{
    return kOperators;
}

std::span<ZoFormulaFunction const> ZoWizardFunctions()
{
    return kFunctions;
}

QString ZoFormulaEdit::AppliedTo(QString const& expression) const
{
    QString result = expression;
    result.replace(from, to - from, text);
    return result;
}

ZoFormulaEdit ZoInsertOperator(QString const& expression, int selStart, int selEnd, ZoFormulaOperator const& op)
{
    Normalise(expression, selStart, selEnd);
    switch (op.kind) {
    case Kind::Binary: {
        // After the selection, which stays the left operand; blanks where none are.
        QString text = op.text;
        bool const blankBefore = BlankAt(expression, selEnd - 1) || expression[selEnd - 1] == QLatin1Char('(');
        bool const blankAfter = selEnd < expression.size() && expression[selEnd].isSpace();
        if (!blankBefore)
            text.prepend(QLatin1Char(' '));
        if (!blankAfter)
            text.append(QLatin1Char(' '));
        int const caret = static_cast<int>(text.size()) + (blankAfter ? 1 : 0);
        return Insert(selEnd, text, caret);
    }
    case Kind::Prefix: {
        QString text = op.text + QLatin1Char(' ');
        if (ValueEndsAt(expression, selStart))
            text.prepend(QLatin1Char(' '));
        ZoFormulaEdit edit = Insert(selStart, text, static_cast<int>(text.size()));
        if (selEnd > selStart) { // keep the selection on what now follows the operator
            edit.selStart = selStart + static_cast<int>(text.size());
            edit.selEnd = selEnd + static_cast<int>(text.size());
        }
        return edit;
    }
    case Kind::Wrap: {
        ZoFormulaEdit edit;
        edit.from = selStart;
        edit.to = selEnd;
        QString const inner = expression.mid(selStart, selEnd - selStart);
        edit.text = op.text.left(1) + inner + op.text.mid(1);
        // Empty: the caret inside; around a selection: the caret after the closing character.
        edit.selStart = edit.selEnd = selStart + (inner.isEmpty() ? 1 : static_cast<int>(edit.text.size()));
        return edit;
    }
    case Kind::Constant:
        break;
    }
    ZoFormulaEdit edit;
    edit.from = selStart;
    edit.to = selEnd;
    edit.text = ValueEndsAt(expression, selStart) ? QLatin1Char(' ') + op.text : op.text;
    edit.selStart = edit.selEnd = selStart + static_cast<int>(edit.text.size());
    return edit;
}

ZoFormulaEdit ZoInsertFunction(QString const& expression, int selStart, int selEnd, ZoFormulaFunction const& function)
{
    Normalise(expression, selStart, selEnd);
    ZoFormulaEdit edit;
    edit.from = selStart;
    edit.to = selEnd;
    QString const head = (ValueEndsAt(expression, selStart) ? QStringLiteral(" ") : QString()) + function.name +
        QLatin1Char('(');
    if (selEnd == selStart) {
        edit.text = head + function.arguments + QLatin1Char(')');
        edit.selStart = selStart + static_cast<int>(head.size());
        edit.selEnd = edit.selStart + static_cast<int>(function.arguments.size());
        return edit;
    }
    // The selection becomes the first argument; the others stay selected to be typed over.
    QString const selected = expression.mid(selStart, selEnd - selStart);
    qsizetype const comma = function.arguments.indexOf(QLatin1Char(','));
    QString const rest = comma < 0 ? QString() : function.arguments.mid(comma + 2);
    edit.text = head + selected + (rest.isEmpty() ? QString() : QStringLiteral(", ") + rest) + QLatin1Char(')');
    if (rest.isEmpty()) {
        edit.selStart = edit.selEnd = selStart + static_cast<int>(edit.text.size());
    } else {
        edit.selStart = selStart + static_cast<int>(head.size() + selected.size() + 2);
        edit.selEnd = edit.selStart + static_cast<int>(rest.size());
    }
    return edit;
}

ZoFormulaEdit ZoInsertVariable(QString const& expression, int selStart, int selEnd, QString const& reference)
{
    Normalise(expression, selStart, selEnd);
    ZoFormulaEdit edit;
    edit.from = selStart;
    edit.to = selEnd;
    edit.text = QLatin1Char('[') + reference + QLatin1Char(']');
    if (ValueEndsAt(expression, selStart))
        edit.text.prepend(QLatin1Char(' '));
    edit.selStart = edit.selEnd = selStart + static_cast<int>(edit.text.size());
    return edit;
}
