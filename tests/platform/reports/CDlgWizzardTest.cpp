// The formula wizard as the event editor runs it (kinds 4, false, 13): the caller's text and
// selection, what inserting variables, operators and functions does to the expression, the
// live status line against the editor's own label, and the one-line result.
#include "platform/reports/CDlgWizzard.h"
#include "platform/reports/ChooserTestCatalog.h"
#include "platform/reports/ZoFormulaInsertion.h"

#include "editor/ZoFormulaStatus.h"
#include "platform/formula/ZoEvaluator.h"
#include "platform/tools/ZoTexts.h"
#include "platform/ui/ZoMnemonics.h"
#include "support/ModalScript.h"

#include <QLabel>
#include <QLineEdit>
#include <QPlainTextEdit>
#include <QPushButton>
#include <QRegularExpression>
#include <QSet>
#include <QTest>
#include <QToolButton>
#include <QTreeView>
#include <QTreeWidget>
#include <gtest/gtest.h>

#include <ostream>

// Failures show texts, not bytes.
static void PrintTo(QString const& text, std::ostream* out)
{
    *out << '"' << text.toStdString() << '"';
}

namespace {

// The expression with its selection marked: "abs(<x>)", or "a|b" for a caret.
QString Marked(QString text, int selStart, int selEnd)
{
    if (selStart == selEnd)
        return text.insert(selStart, QLatin1Char('|'));
    return text.insert(selEnd, QLatin1Char('>')).insert(selStart, QLatin1Char('<'));
}

QString Marked(QPlainTextEdit const* edit)
{
    QTextCursor const cursor = edit->textCursor();
    return Marked(edit->toPlainText(), cursor.selectionStart(), cursor.selectionEnd());
}

// Splits "a<b>c" or "a|bc" into the text and its selection.
QString Unmark(QString marked, int& selStart, int& selEnd)
{
    selStart = static_cast<int>(marked.indexOf(QRegularExpression(QStringLiteral("[|<]"))));
    if (marked[selStart] == QLatin1Char('|')) {
        selEnd = selStart;
        return marked.remove(selStart, 1);
    }
    marked.remove(selStart, 1);
    selEnd = static_cast<int>(marked.indexOf(QLatin1Char('>')));
    return marked.remove(selEnd, 1);
}

TEST(FormulaInsertion, OperatorsFunctionsAndVariablesGoWhereTheSelectionIs)
{
    auto op = [](char const* text) {
        for (ZoFormulaOperator const& o : ZoWizardOperators())
            if (o.text == QLatin1String(text))
                return o;
        ADD_FAILURE() << text;
        return ZoWizardOperators()[0];
    };
    auto function = [](char const* name) {
        for (ZoFormulaFunction const& f : ZoWizardFunctions())
            if (f.name == QLatin1String(name))
                return f;
        ADD_FAILURE() << name;
        return ZoWizardFunctions()[0];
    };
    struct Case {
        char const* before;
        std::function<ZoFormulaEdit(QString const&, int, int)> insert;
        char const* after;
    };
    using namespace std::placeholders;
    auto withOp = [&](char const* text) { return std::bind(ZoInsertOperator, _1, _2, _3, op(text)); };
    auto withFunction = [&](char const* name) { return std::bind(ZoInsertFunction, _1, _2, _3, function(name)); };
    auto withVariable = [](char const* reference) {
        return std::bind(ZoInsertVariable, _1, _2, _3, QString::fromLatin1(reference));
    };
    Case const cases[] = {
        {"|", withOp("AND"), "AND |"},
        {"[A.B] > 1|", withOp("AND"), "[A.B] > 1 AND |"},
        {"[A.B] > 1 |", withOp("OR"), "[A.B] > 1 OR |"},
        {"<[A.B]>", withOp(">="), "[A.B] >= |"},     // the selection stays the left operand
        {"x|  y", withOp("+"), "x + | y"},           // a blank already there is used
        {"(|", withOp("-"), "(- |"},
        {"<[A.B] = 1>", withOp("NOT"), "NOT <[A.B] = 1>"},
        {"TRUE AND|", withOp("NOT"), "TRUE AND NOT |"},
        {"<[A.B] + 1>", withOp("()"), "([A.B] + 1)|"},
        {"2 * |", withOp("()"), "2 * (|)"},
        {"[A.TXT] = |", withOp("\"\""), "[A.TXT] = \"|\""},
        {"[A.B] = <0>", withOp("TRUE"), "[A.B] = TRUE|"},
        {"1 AND|", withOp("FALSE"), "1 AND FALSE|"},
        {"|", withFunction("abs"), "abs(<x>)"},
        {"1 + |", withFunction("limit"), "1 + limit(<x, low, high>)"},
        {"<[A.B]> > 2", withFunction("abs"), "abs([A.B])| > 2"},
        {"<[A.B] / 60>", withFunction("round"), "round([A.B] / 60, <n>)"},
        {"<[A.B]>", withFunction("between"), "between([A.B], <low, high>)"},
        {"x|", withFunction("sqrt"), "x sqrt(<x>)"},
        {"|> 95", withVariable("PLC1.LEVEL"), "[PLC1.LEVEL]|> 95"},
        {"<[OLD.ONE]> > 95", withVariable("PLC1.LEVEL"), "[PLC1.LEVEL]| > 95"},
        {"1 AND|", withVariable("Line 2.A.FLOW"), "1 AND [Line 2.A.FLOW]|"},
    };
    for (Case const& c : cases) {
        int selStart = 0;
        int selEnd = 0;
        QString const before = Unmark(QString::fromUtf8(c.before), selStart, selEnd);
        ZoFormulaEdit const edit = c.insert(before, selStart, selEnd);
        EXPECT_EQ(Marked(edit.AppliedTo(before), edit.selStart, edit.selEnd), QString::fromUtf8(c.after)) << c.before;
    }
    // A selection given backwards or beyond the text is put in order and inside it.
    ZoFormulaEdit const edit = ZoInsertVariable(QStringLiteral("abc"), 99, 1, QStringLiteral("D.C"));
    EXPECT_EQ(Marked(edit.AppliedTo(QStringLiteral("abc")), edit.selStart, edit.selEnd), "a [D.C]|");
}

class Wizard : public ::testing::Test {
protected:
    // As the event editor opens it.
    std::unique_ptr<CDlgWizzard> Open(wchar_t const* text, int selStart, int selEnd, int context = 13)
    {
        auto wizard = std::make_unique<CDlgWizzard>(nullptr, std::bitset<34>(4), false, context);
        wizard->SetExpression(text, selStart, selEnd);
        wizard->m_bShowStatus = true;
        wizard->EnsureInitialized();
        return wizard;
    }
    static QPlainTextEdit* Expression(CDlgWizzard& wizard) { return wizard.findChild<QPlainTextEdit*>("expressionEdit"); }
    static QString Status(CDlgWizzard& wizard) { return wizard.findChild<QLabel*>("statusLabel")->text(); }
    static QString Detail(CDlgWizzard& wizard) { return wizard.findChild<QLabel*>("statusDetail")->text(); }
    static QTreeView* Tree(CDlgWizzard& wizard) { return wizard.findChild<QTreeView*>("devicesTree"); }

    ChooserCatalogGuard m_catalog;
};

TEST_F(Wizard, OpensOnTheCallersSelectionAndGivesBackOneLine)
{
    ModalScript modal(ModalScript::As<CDlgWizzard>([](CDlgWizzard& wizard) {
        QPlainTextEdit* edit = Expression(wizard);
        EXPECT_EQ(wizard.windowTitle(), ZoText(62200));
        EXPECT_EQ(Marked(edit), "<[PLC1.LEVEL]> > 95");
        EXPECT_EQ(wizard.focusWidget(), edit);
        EXPECT_FALSE(edit->toolTip().contains("%%")) << "the remainder operator shows as a single %";
        EXPECT_TRUE(edit->toolTip().contains("[MAINS.ENERGY/day]"));
        QTextCursor cursor = edit->textCursor();
        cursor.movePosition(QTextCursor::End);
        edit->setTextCursor(cursor);
        QTest::keyClick(edit, Qt::Key_Return);
        QTest::keyClicks(edit, "AND [PLC1.RUN]");
        EXPECT_EQ(edit->toPlainText(), "[PLC1.LEVEL] > 95\nAND [PLC1.RUN]");
        QTest::keyClick(edit, Qt::Key_Return, Qt::ControlModifier); // Ctrl+Enter is OK
        return wizard.result();
    }));
    CDlgWizzard wizard(nullptr, std::bitset<34>(4), false, 13);
    wizard.SetExpression(L"[PLC1.LEVEL] > 95", 0, 12);
    wizard.m_bShowStatus = true;
    ASSERT_EQ(wizard.DoModal(), QDialog::Accepted);
    EXPECT_EQ(wizard.Expression(), L"[PLC1.LEVEL] > 95 AND [PLC1.RUN]");

    // No selection (start below 0): the caret at the end; Cancel gives nothing back.
    auto cancelled = Open(L"1 +", -1, -1);
    EXPECT_EQ(Marked(Expression(*cancelled)), "1 +|");
    cancelled->findChild<QPushButton*>("cancelButton")->click();
    EXPECT_EQ(cancelled->result(), QDialog::Rejected);
    EXPECT_EQ(cancelled->Expression(), L"");
}

TEST_F(Wizard, InsertsFromTheTreeTheOperatorsAndTheFunctions)
{
    auto wizard = Open(L"[OLD.ONE] > 95", 0, 9);
    QPlainTextEdit* edit = Expression(*wizard);
    auto* filter = wizard->findChild<QLineEdit*>("filterEdit");
    auto* insertVariable = wizard->findChild<QPushButton*>("insertVariableButton");
    QTest::keyClicks(filter, "tank level");
    EXPECT_TRUE(insertVariable->isEnabled());
    QTest::keyClick(filter, Qt::Key_Return); // Enter inserts the current variable...
    EXPECT_EQ(Marked(edit), "[PLC1.LEVEL]| > 95");
    EXPECT_EQ(wizard->result(), QDialog::Rejected) << "...and does not close the wizard";

    wizard->findChild<QToolButton*>("operatorButton_AND")->click();
    EXPECT_EQ(Marked(edit), "[PLC1.LEVEL] AND |> 95");
    QTest::keyClick(edit, Qt::Key_End);
    wizard->findChild<QToolButton*>("operatorButton_OR")->click();
    EXPECT_EQ(Marked(edit), "[PLC1.LEVEL] AND > 95 OR |");

    auto* functions = wizard->findChild<QTreeWidget*>("functionsList");
    functions->setCurrentItem(functions->findItems("abs(x)", Qt::MatchExactly).value(0));
    QTest::keyClick(functions, Qt::Key_Return);
    EXPECT_EQ(Marked(edit), "[PLC1.LEVEL] AND > 95 OR abs(<x>)");
    QTest::keyClicks(edit, "[PUMP1.CURRENT] - 30");
    EXPECT_EQ(edit->toPlainText(), "[PLC1.LEVEL] AND > 95 OR abs([PUMP1.CURRENT] - 30)");
    EXPECT_EQ(wizard->result(), QDialog::Rejected);

    // A double click on a variable of an events pseudo-device inserts it too.
    filter->setText("tank high");
    QTreeView* tree = Tree(*wizard);
    QModelIndex const st = tree->currentIndex();
    ASSERT_EQ(st.data().toString(), "ST");
    QTest::keyClick(edit, Qt::Key_End);
    tree->doubleClicked(st);
    EXPECT_TRUE(edit->toPlainText().endsWith("- 30) [R$EVE_Tank high.ST]"));
    edit->undo();
    EXPECT_EQ(edit->toPlainText(), "[PLC1.LEVEL] AND > 95 OR abs([PUMP1.CURRENT] - 30)") << "one undo step";
}

// "Logical formula (Correct)", in the language of the run.
QString Labelled(unsigned label, unsigned status)
{
    return ZoText(label) + " (" + ZoText(status) + ")";
}

TEST_F(Wizard, StatusLineShowsWhatTheEditorsLabelShowsOnEveryEdit)
{
    std::wstring const logical = ZoLoadString(62207), numeric = ZoLoadString(62208);
    auto wizard = Open(L"", 0, 0);
    QPlainTextEdit* edit = Expression(*wizard);
    EXPECT_EQ(Status(*wizard), Labelled(62207, 32449)); // empty expression
    QTest::keyClicks(edit, "[PLC1.LEVEL] > 9");
    EXPECT_EQ(Status(*wizard), Labelled(62207, 36029)); // correct
    EXPECT_EQ(Detail(*wizard), "");
    QTest::keyClick(edit, Qt::Key_Backspace);
    QTest::keyClick(edit, Qt::Key_Backspace);
    EXPECT_EQ(Status(*wizard), Labelled(62207, 32446)); // invalid expression
    EXPECT_NE(Detail(*wizard), "") << "the evaluator says where";

    // The same outcome as the editor's condition and delay labels, with the evaluator's
    // sentence below.
    ZoEvaluator evaluator;
    for (wchar_t const* formula : {L"[PLC1.LEVEL] = 50", L"[PLC9.LEVEL] > 1", L"1 < 2", L"2 < 1", L"[PLC1.NAME] = \"x\"",
                                   L"@Pumps.Count = 0", L"[PLC1.LEVEL] AND [PLC1.RUN]", L"[PLC1.RUN]"}) {
        edit->setPlainText(QString::fromWCharArray(formula));
        ZoFormulaStatus const expected = ZoLogicalFormulaStatus(evaluator, formula);
        EXPECT_EQ(Status(*wizard).toStdWString(), ZoLabelWithStatus(logical, expected));
        EXPECT_EQ(Detail(*wizard).toStdWString(), expected.detail);
    }
    edit->setPlainText("[PLC1.LEVEL] = 50");
    EXPECT_EQ(Status(*wizard), Labelled(62207, 36029) + "*");
    EXPECT_NE(Detail(*wizard), "") << "the comparison that deserves a second look";
    edit->setPlainText("[PLC9.LEVEL] > 1");
    EXPECT_TRUE(Detail(*wizard).contains("PLC9"));
    for (wchar_t const* formula : {L"round([PLC1.LEVEL] / 60, 1)", L"@Stats.Mean(1) * 2", L"[PLC1.ENERGY] / 0"}) {
        edit->setPlainText(QString::fromWCharArray(formula));
        ZoFormulaStatus const expected = ZoNumericFormulaStatus(evaluator, formula);
        EXPECT_EQ(Status(*wizard).toStdWString(), ZoLabelWithStatus(numeric, expected));
    }
    edit->setPlainText("round([PLC1.LEVEL] / 60, 1)");
    EXPECT_EQ(Status(*wizard), ZoText(62208));

    // A caller that does not set the flag gets no status line.
    CDlgWizzard quiet(nullptr, std::bitset<34>(4), false, 0);
    quiet.EnsureInitialized();
    EXPECT_TRUE(quiet.findChild<QLabel*>("statusLabel")->isHidden());
}

TEST_F(Wizard, KindsChooseTheOfferedVariablesAndWriteTargetComposesOneVariable)
{
    auto wizard = Open(L"", 0, 0);
    auto* filter = wizard->findChild<QLineEdit*>("filterEdit");
    filter->setText("plc1");
    QAbstractItemModel const* model = Tree(*wizard)->model();
    QStringList offered;
    for (int row = 0; row < model->rowCount(model->index(0, 0)); ++row)
        offered << model->index(row, 0, model->index(0, 0)).data().toString();
    EXPECT_EQ(offered.join(" "), "LEVEL RUN MODE ENERGY SETPOINT") << "kinds 4: no text variable";
    EXPECT_EQ(CDlgWizzard::OfferedTypes(std::bitset<34>(8)), ZoTypeOf(kZoText));
    EXPECT_EQ(CDlgWizzard::OfferedTypes(std::bitset<34>(2)).to_ulong(), 0b100011u);

    CDlgWizzard target(nullptr, ZoAllTypes(), true, 0);
    target.SetExpression(L"[PLC1.LEVEL]", 0, 0);
    target.m_bShowStatus = true;
    target.EnsureInitialized();
    EXPECT_TRUE(Status(target).startsWith(ZoText(62209) + " (")) << Status(target).toStdString();
    EXPECT_NE(Status(target), Labelled(62209, 36029)) << "a read-only variable cannot be written";
    EXPECT_NE(Detail(target), "");
    EXPECT_FALSE(target.findChild<QToolButton*>("operatorButton_AND")->isEnabled());
    EXPECT_FALSE(target.findChild<QTreeWidget*>("functionsList")->isEnabled());
    target.InsertVariable("PLC1.SETPOINT");
    EXPECT_EQ(Expression(target)->toPlainText(), "[PLC1.SETPOINT]") << "the variable replaces the expression";
    EXPECT_EQ(Status(target), Labelled(62209, 36029));
}

TEST_F(Wizard, ComesBackPerContextWithTheLastVariableAndHasMnemonics)
{
    {
        auto wizard = Open(L"", 0, 0);
        wizard->findChild<QLineEdit*>("filterEdit")->setText("energy");
        wizard->findChild<QPushButton*>("insertVariableButton")->click();
        wizard->findChild<QPushButton*>("okButton")->click();
        EXPECT_EQ(wizard->Expression(), L"[PLC1.ENERGY]");
    }
    auto again = Open(L"", 0, 0);
    EXPECT_EQ(Tree(*again)->currentIndex().data().toString(), "ENERGY");
    auto elsewhere = Open(L"", 0, 0, 0);
    EXPECT_EQ(Tree(*elsewhere)->currentIndex().data().toString(), "Line 2.A");

    QStringList texts;
    for (auto* label : again->findChildren<QLabel*>())
        if (label->objectName().isEmpty() && label->buddy())
            texts << label->text();
    for (auto* button : again->findChildren<QPushButton*>())
        texts << button->text();
    // Each label and button has its own letter, in every language.
    ASSERT_EQ(texts.size(), 8) << texts.join(" ").toStdString();
    QSet<QChar> letters;
    for (QString const& text : texts) {
        QChar const letter = ZoMnemonics::ShownLetter(text).toLower();
        EXPECT_FALSE(letter.isNull()) << text.toStdString();
        EXPECT_FALSE(letters.contains(letter)) << text.toStdString();
        letters.insert(letter);
    }
}

} // namespace
