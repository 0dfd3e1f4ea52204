// The findings of `zoevents check` and `zoevents uses` as JSON, with texts from the input
// (names, ids and messages come from project files): the bytes up to the first NUL as the
// folder, then the name, the id and the message, each up to the next NUL. Aborts when the
// JSON does not parse, or a text read back differs from the one written.
#include "check/ZoCheckReport.h"
#include "platform/tools/ZoUtf.h"

#include <QJsonArray>
#include <QJsonDocument>
#include <QJsonObject>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <string_view>

namespace {

std::wstring NextText(std::string_view& rest)
{
    std::size_t const end = rest.find('\0');
    std::string_view const text = rest.substr(0, end);
    rest = end == std::string_view::npos ? std::string_view() : rest.substr(end + 1);
    return ZoFromUtf8(text);
}

} // namespace

extern "C" int LLVMFuzzerTestOneInput(std::uint8_t const* data, std::size_t size)
{
    std::string_view rest(reinterpret_cast<char const*>(data), size);
    std::wstring const folder = NextText(rest);
    ZoFinding finding;
    finding.name = NextText(rest);
    finding.id = NextText(rest);
    finding.message = NextText(rest);
    finding.field = size % 2 ? ZoCheckField::Action : ZoCheckField::Condition;
    finding.column = static_cast<int>(size % 7);
    std::string const json = ZoFindingsJson(folder, {finding, finding});
    QJsonParseError error;
    QJsonObject const object = QJsonDocument::fromJson(QByteArray::fromStdString(json), &error).object();
    if (error.error != QJsonParseError::NoError)
        std::abort();
    QJsonArray const findings = object["findings"].toArray();
    if (object["folder"].toString() != QString::fromStdWString(folder) || findings.size() != 2)
        std::abort();
    for (QJsonValue const& read : findings)
        if (read["name"].toString() != QString::fromStdWString(finding.name)
            || read["id"].toString() != QString::fromStdWString(finding.id)
            || read["message"].toString() != QString::fromStdWString(finding.message)
            || read["column"].toInt() != finding.column)
            std::abort();
    (void)ZoFindingLine(finding);
    return 0;
}
