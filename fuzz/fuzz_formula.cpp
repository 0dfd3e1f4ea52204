// Any bytes as a formula. The first byte chooses the evaluator's flags (its two low bits)
// and switches period filters off (bit 2); the rest is the formula as UTF-8 text, checked
// against a small catalog. Aborts when:
//   - the analysis gives a kind other than -1, 0, 1, 2, or the evaluation an unknown code;
//   - a formula whose analysis gave a kind fails evaluation with a syntax code (40, 41),
//     or one whose analysis failed evaluates without a fault, or the result type of a
//     successful evaluation is not the kind;
//   - the message of a code is empty or a missing text ("#id");
//   - the lexical module test and the analysed formula disagree on a module reference;
//   - IsOnlyOneDeviceVariable holds while the formula names another number of variables;
//   - a second evaluation, by the same evaluator or a new one, answers differently.
#include "config/XmlDocument.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/formula/ZoEvaluator.h"

#include <cmath>
#include <cstddef>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string_view>
#include <vector>

namespace {

[[noreturn]] void Fail(char const* what, std::wstring const& formula)
{
    std::fprintf(stderr, "fuzz_formula: %s in %ls\n", what, formula.c_str());
    std::abort();
}

char const kCatalog[] = R"(<deviceTree><catalog>
<driver><name>PLC1</name>
  <variable><code>LEVEL</code><type>analog</type><min>0</min><max>100</max></variable>
  <variable><code>RUN</code><type>digital</type></variable>
  <variable><code>MODE</code><type>integer</type><writable>T</writable>
    <states><state><value>1</value><text>Local</text></state><state><value>2</value><text>Remote</text></state></states></variable>
  <variable><code>NAME</code><type>text</type><writable>T</writable></variable>
  <variable><code>ENERGY</code><type>counter</type><min>0</min></variable>
  <variable><code>SP</code><type>analog</type><writable>T</writable><min>-10</min><max>10</max></variable>
</driver>
<driver><name>Line 2.A</name><variable><code>FLOW</code><type>analog</type></variable></driver>
</catalog></deviceTree>)";

char const kEvents[] = "<e><events><event><name>Pump fault</name></event></events></e>";

ZoDeviceCatalog const& Catalog()
{
    static ZoDeviceCatalog const* catalog = [] {
        XmlDocument devices;
        XmlDocument events;
        if (!devices.Parse(kCatalog) || !events.Parse(kEvents))
            std::abort();
        auto* built = new ZoDeviceCatalog;
        built->LoadDevices(devices.Root());
        built->LoadEvents(events.Root());
        return built;
    }();
    return *catalog;
}

bool KnownCode(int code)
{
    return code == 0 || code == 1 || code == 62 || (code >= 40 && code <= 53);
}

struct Outcome {
    int kind;
    int code;
    int type;
    double value;
    bool operator==(Outcome const& o) const
    {
        return kind == o.kind && code == o.code && type == o.type &&
               (value == o.value || (std::isnan(value) && std::isnan(o.value)));
    }
};

Outcome Run(ZoEvaluator& evaluator)
{
    Outcome outcome{evaluator.AnalizeExpression(), 0, 0, 0};
    outcome.code = evaluator.Evaluate(outcome.value, outcome.type);
    return outcome;
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    if (size == 0)
        return 0;
    unsigned const flags = data[0] & 3u;
    bool const periods = (data[0] & 4u) == 0;
    std::string_view const text(reinterpret_cast<char const*>(data + 1), size - 1);

    ZoEvaluator evaluator;
    evaluator.SetCatalog(&Catalog());
    evaluator.SetFlags(flags, ~0u);
    evaluator.EnableDiscriminators(periods);
    evaluator.SetUtf8(text);
    std::wstring const& formula = evaluator.Expr();
    Outcome const first = Run(evaluator);

    if (first.kind < -1 || first.kind > 2)
        Fail("analysis kind out of range", formula);
    if (!KnownCode(first.code))
        Fail("unknown evaluation code", formula);
    if (first.kind >= 0 && (first.code == 40 || first.code == 41))
        Fail("a syntax code after a successful analysis", formula);
    if (first.kind < 0 && first.code == 0)
        Fail("a failed analysis evaluates without fault", formula);
    if ((first.code == 0 || first.code == 62) && !(flags & ZoEvaluator::kWriteTarget) && first.type != first.kind)
        Fail("the result type is not the kind", formula);
    if (first.code != 0) {
        std::wstring const message = evaluator.ErrorMsg(first.code);
        if (message.empty() || message[0] == L'#')
            Fail("a code without a message", formula);
        if (evaluator.ErrorCode() != first.code)
            Fail("ErrorCode is not the code returned", formula);
    }
    bool const parsed = first.code != 40 && first.code != 41;
    if (parsed && evaluator.HasModule() != isThereAModuleInExpression(formula))
        Fail("the module test disagrees with the analysis", formula);
    std::vector<std::wstring> variables;
    evaluator.GetDeviceVariables(variables);
    if (evaluator.IsOnlyOneDeviceVariable() && variables.size() != 1)
        Fail("one variable alone, but not one listed", formula);

    Outcome const again = Run(evaluator);
    ZoEvaluator fresh(formula);
    fresh.SetCatalog(&Catalog());
    fresh.SetFlags(flags, ~0u);
    fresh.EnableDiscriminators(periods);
    if (!(again == first) || !(Run(fresh) == first))
        Fail("a second evaluation differs", formula);
    return 0;
}
