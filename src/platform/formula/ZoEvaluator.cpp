#include "ZoEvaluator.h"

#include "ZoFormulaMessages.h"
#include "ZoFormulaParser.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoUtf.h"

ZoEvaluator::ZoEvaluator() = default;

ZoEvaluator::ZoEvaluator(wchar_t const* expression)
{
    Set(expression);
}

ZoEvaluator::ZoEvaluator(std::wstring_view expression)
{
    Set(expression);
}

ZoEvaluator::~ZoEvaluator() = default;

void ZoEvaluator::Invalidate()
{
    m_analysed = false;
    m_kind = -1;
    m_program.Clear();
    m_syntax = ZoFormulaFinding();
    m_deferred = ZoFormulaFinding();
    m_last = ZoFormulaFinding();
}

void ZoEvaluator::SetFlags(unsigned flags, unsigned mask)
{
    unsigned const next = (m_flags & ~mask) | (flags & mask);
    if (next != m_flags)
        Invalidate();
    m_flags = next;
}

void ZoEvaluator::EnableDiscriminators(bool enable)
{
    if (enable != m_discriminators)
        Invalidate();
    m_discriminators = enable;
}

void ZoEvaluator::SetCatalog(ZoDeviceCatalog const* catalog)
{
    m_catalog = catalog;
    Invalidate();
}

void ZoEvaluator::Set(wchar_t const* expression)
{
    Set(expression ? std::wstring_view(expression) : std::wstring_view());
}

void ZoEvaluator::Set(std::wstring_view expression)
{
    m_text.assign(expression);
    Invalidate();
}

void ZoEvaluator::SetUtf8(std::string_view expression)
{
    m_text.clear();
    ZoAppendUtf8AsWide(m_text, expression);
    Invalidate();
}

void ZoEvaluator::Clear()
{
    m_text.clear();
    Invalidate();
}

int ZoEvaluator::Analyse()
{
    m_analysed = true;
    ZoFormulaParser::Options options;
    options.catalog = m_catalog ? m_catalog : ZoDeviceCatalog::Installed();
    options.periods = m_discriminators;
    ZoFormulaParser parser(m_text, options, m_program, m_syntax, m_deferred);
    m_kind = -1;
    m_last = ZoFormulaFinding();
    if (!parser.Parse()) {
        m_last = m_syntax;
        return m_kind;
    }
    ZoFormulaNode const& root = m_program.nodes.back();
    if (m_flags & kWriteTarget) {
        if (m_program.nodes.size() != 1 || root.op != ZoOp::Variable) {
            m_syntax.code = kZoFormulaNotOneVariable;
            m_syntax.text = kZoTextNotOneVariable;
            m_last = m_syntax;
            return m_kind;
        }
        return m_kind = 0;
    }
    if (root.type == ZoFormulaType::Unknown) {
        m_last = m_deferred;
        return m_kind;
    }
    return m_kind = static_cast<int>(root.type);
}

int ZoEvaluator::AnalizeExpression()
{
    return m_analysed ? m_kind : Analyse();
}

int ZoEvaluator::Evaluate(double& value, int& resultType)
{
    value = 0;
    resultType = 0;
    if (!m_analysed)
        Analyse();
    if (m_syntax) {
        m_last = m_syntax;
        return m_last.code;
    }
    ZoFormulaType const type = m_program.nodes.back().type;
    resultType = type == ZoFormulaType::Unknown ? 0 : static_cast<int>(type);
    if (m_deferred) {
        m_last = m_deferred;
        return m_last.code;
    }
    m_last = ZoFormulaFinding();
    if (m_flags & kWriteTarget) {
        ZoFormulaReference const& target = m_program.references.front();
        m_last.pos = target.pos;
        m_last.len = target.len;
        if (target.hasFilter) {
            m_last.code = kZoFormulaNotOneVariable;
            m_last.text = kZoTextNotOneVariable;
        } else if (!target.variable->writable) {
            m_last.code = kZoFormulaReadOnly;
            m_last.text = kZoTextReadOnly;
        } else {
            value = ZoSampleValue(*target.variable);
        }
        return m_last.code;
    }
    if (m_program.hasModule) {
        m_last.code = kZoFormulaModule;
        m_last.text = kZoTextModule;
        m_last.pos = m_program.modulePos;
        m_last.len = m_program.moduleLen;
        return m_last.code;
    }
    ZoFormulaRunner::Result const result = m_runner.Run(m_program, (m_flags & kEditorCheck) != 0);
    if (result.fault) {
        m_last = result.fault;
        return m_last.code;
    }
    value = result.value;
    m_last = result.mark;
    return m_last.code;
}

void ZoEvaluator::ErrorMsg(int code, ZoBasicString<wchar_t>& text) const
{
    for (ZoFormulaFinding const* fault : {&m_last, &m_syntax, &m_deferred}) {
        if (fault->code == code && code != kZoFormulaOk) {
            text = ZoFormulaMessage(*fault, m_text);
            return;
        }
    }
    text = ZoFormulaCodeMessage(code);
}

ZoBasicString<wchar_t> ZoEvaluator::ErrorMsg(int code) const
{
    ZoBasicString<wchar_t> text;
    ErrorMsg(code, text);
    return text;
}

int ZoEvaluator::ErrorPosition() const
{
    return m_last.code == kZoFormulaOk || m_last.text == kZoTextEmpty || m_last.text == kZoTextTooLong ||
                   m_last.text == kZoTextNotOneVariable
               ? 0
               : static_cast<int>(m_last.pos) + 1;
}

template <class List>
void ZoEvaluator::AppendVariables(List& variables) const
{
    if (!m_analysed || m_syntax)
        return;
    std::vector<ZoFormulaReference> const& references = m_program.references;
    for (std::size_t i = 0; i < references.size(); ++i) {
        ZoFormulaReference const& r = references[i];
        std::wstring_view const device(m_text.data() + r.devicePos, r.deviceLen);
        std::wstring_view const code(m_text.data() + r.codePos, r.codeLen);
        bool seen = false;
        for (std::size_t k = 0; k < i && !seen; ++k)
            seen = std::wstring_view(m_text.data() + references[k].devicePos, references[k].deviceLen) == device &&
                   std::wstring_view(m_text.data() + references[k].codePos, references[k].codeLen) == code;
        if (seen)
            continue;
        ZoBasicString<wchar_t> name;
        name.reserve(device.size() + 1 + code.size());
        name.append(device).append(1, L'.').append(code);
        variables.push_back(std::move(name));
    }
}

void ZoEvaluator::GetDeviceVariables(std::list<ZoBasicString<wchar_t>>& variables) const
{
    AppendVariables(variables);
}

void ZoEvaluator::GetDeviceVariables(std::vector<ZoBasicString<wchar_t>>& variables) const
{
    AppendVariables(variables);
}

bool ZoEvaluator::IsOnlyOneDeviceVariable() const
{
    return m_analysed && !m_syntax && m_program.nodes.size() == 1 && m_program.nodes.front().op == ZoOp::Variable;
}
