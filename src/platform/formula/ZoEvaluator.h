#pragma once
#include "ZoFormulaCodes.h"
#include "ZoFormulaProgram.h"
#include "ZoFormulaRunner.h"
#include "platform/tools/ZoBasicString.h"

#include <list>
#include <string_view>
#include <vector>

class ZoDeviceCatalog;

// The formula evaluator: analyses a formula of the formula language (docs/formulas.md),
// resolves its device variables in the device catalog and evaluates it.
//
// Typical use:
//     ZoEvaluator evaluator(text);
//     evaluator.SetFlags(ZoEvaluator::kEditorCheck, ~0u);
//     int const kind = evaluator.AnalizeExpression();   // 1 logical, 0 numeric, -1 fault
//     double value; int type;
//     int const code = evaluator.Evaluate(value, type); // 0, 1, 62 or a fault
//     if (code != 0) evaluator.ErrorMsg(code, message);
//
// Nothing is connected to a plant in the editor: every variable takes its sample value
// (ZoSampleValue), so that evaluating checks types and constant faults, and with
// kEditorCheck also what deserves a mark (code 62). An evaluator keeps its memory from one
// formula to the next: reuse one to check many.
class ZoEvaluator {
public:
    // Flags (SetFlags), a set of bits:
    // 1: the formula names a variable to write (a force action's variable). It must be one
    //    device variable alone; analysis then answers 0 whatever the variable's type, and
    //    evaluating checks that the variable exists, takes no period filter and is writable.
    static constexpr unsigned kWriteTarget = 1;
    // 2: checking in the editor: answers 62 for a formula that is valid but holds a
    //    comparison that deserves a second look (an exact comparison of an analog value, a
    //    comparison that the variable's declared range makes always true or always false).
    static constexpr unsigned kEditorCheck = 2;

    ZoEvaluator();
    explicit ZoEvaluator(wchar_t const* expression);
    explicit ZoEvaluator(std::wstring_view expression);
    ~ZoEvaluator();
    ZoEvaluator(ZoEvaluator const&) = delete;
    ZoEvaluator& operator=(ZoEvaluator const&) = delete;

    // Sets the bits of mask to those of flags.
    void SetFlags(unsigned flags, unsigned mask);
    unsigned Flags() const { return m_flags; }
    // Period filters ("[MAINS.ENERGY/day]") are allowed unless disabled here; a formula
    // that has one where they are disabled evaluates to code 47.
    void EnableDiscriminators(bool enable);
    // The catalog in which variables resolve; null (the default): the installed one
    // (ZoDeviceCatalog::Installed) at the time of the analysis.
    void SetCatalog(ZoDeviceCatalog const* catalog);
    // The catalog given with SetCatalog; null when formulas use the installed one.
    ZoDeviceCatalog const* Catalog() const { return m_catalog; }

    void Set(wchar_t const* expression);
    void Set(std::wstring_view expression);
    // The same from UTF-8 text (a document's text as stored), converted without allocating
    // once the evaluator has grown to the formula's size.
    void SetUtf8(std::string_view expression);
    // Forgets the expression and every result; flags, the discriminator switch and the
    // catalog stay as they are.
    void Clear();
    // The expression as set.
    ZoBasicString<wchar_t> const& Expr() const { return m_text; }

    // The kind of the expression: 1 logical, 0 numeric, 2 text; with kWriteTarget, 0 for
    // one device variable alone. -1 when it is not a formula (see ErrorCode), or when its
    // only value is an unknown variable or function (whose kind cannot be known).
    int AnalizeExpression();
    // Analyses the expression when needed and evaluates it: the value (logical values are
    // 1 and 0; a text gives 0) and the result type (0 number, 1 logical, 2 text). Returns
    // 0, 1 when the formula refers to a module (which only the running project can
    // evaluate), 62 for a valid formula with a mark (kEditorCheck), or a fault code (40 and
    // above, listed in ZoFormulaCodes.h and docs/formulas.md).
    int Evaluate(double& value, int& resultType);

    // The message for a code: a sentence that names the position (counted from 1) and the
    // token when the code is that of this evaluator's last fault or mark, else a general
    // sentence for the code.
    void ErrorMsg(int code, ZoBasicString<wchar_t>& text) const;
    ZoBasicString<wchar_t> ErrorMsg(int code) const;
    // The code of the last analysis or evaluation (0 when none failed), and the position
    // (from 1) of the token it names, 0 when none.
    int ErrorCode() const { return m_last.code; }
    int ErrorPosition() const;

    // The device variables the analysed expression names, "DEVICE.CODE" (without brackets
    // or filter), each once, in order of appearance. Appended to the list.
    void GetDeviceVariables(std::list<ZoBasicString<wchar_t>>& variables) const;
    void GetDeviceVariables(std::vector<ZoBasicString<wchar_t>>& variables) const;
    // True when the analysed expression is exactly one device variable (parentheses allowed).
    bool IsOnlyOneDeviceVariable() const;
    // True when the analysed expression refers to a module.
    bool HasModule() const { return m_analysed && m_program.hasModule; }

private:
    void Invalidate();
    int Analyse();
    template <class List>
    void AppendVariables(List& variables) const;

    ZoBasicString<wchar_t> m_text;
    unsigned m_flags = 0;
    bool m_discriminators = true;
    ZoDeviceCatalog const* m_catalog = nullptr;

    bool m_analysed = false;
    int m_kind = -1;
    ZoFormulaProgram m_program;
    ZoFormulaFinding m_syntax;   // the text is not a formula
    ZoFormulaFinding m_deferred; // the first fault found by the analysis past the syntax
    ZoFormulaFinding m_last;     // the fault or mark of the last analysis or evaluation
    ZoFormulaRunner m_runner;
};

// True when the text refers to a module: an "@" that starts a module name outside the
// text literals and the variable references. No catalog is needed.
bool isThereAModuleInExpression(wchar_t const* text);
bool isThereAModuleInExpression(std::wstring_view text);
