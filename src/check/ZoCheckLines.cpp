#include "check/ZoCheckLines.h"

#include "config/XmlScanner.h"

#include <algorithm>
#include <map>

namespace {

using Path = std::vector<std::uint32_t>;

class LineScanner : public zo::xml::ScanHandler {
public:
    LineScanner(char const* data, std::map<Path, int>& wanted, std::function<void(std::size_t)> const& consumed)
        : m_data(data), m_wanted(wanted), m_consumed(consumed)
    {
        for (auto const& [path, line] : wanted)
            m_depths[std::min<std::size_t>(path.size(), kDepths - 1)] = true;
    }

    void StartElement(std::string_view name) override
    {
        if (m_consumed && static_cast<std::size_t>(name.data() - m_data) >= m_told + kTellEvery) {
            m_told = static_cast<std::size_t>(name.data() - m_data);
            m_consumed(m_told);
        }
        if (!m_counters.empty()) {
            m_path.push_back(m_counters.back()++);
            if (m_path.size() < kDepths && m_depths[m_path.size()]) {
                auto const found = m_wanted.find(m_path);
                if (found != m_wanted.end() && found->second == 0)
                    found->second = LineAt(name.data());
            }
        }
        m_counters.push_back(0);
    }
    void Attribute(std::string_view, std::string_view) override {}
    void Text(std::string_view) override {}
    void EndElement() override
    {
        // Every open element but the root has its place in the path.
        m_counters.pop_back();
        if (!m_path.empty())
            m_path.pop_back();
    }

private:
    static constexpr std::size_t kDepths = 64;
    static constexpr std::size_t kTellEvery = std::size_t(16) << 20;

    // Lines are counted from the last place asked, since elements come in text order.
    int LineAt(char const* place)
    {
        m_line += static_cast<int>(std::count(m_data + m_counted, place, '\n'));
        m_counted = static_cast<std::size_t>(place - m_data);
        return m_line;
    }

    char const* m_data;
    std::map<Path, int>& m_wanted;
    std::function<void(std::size_t)> const& m_consumed;
    std::size_t m_told = 0;
    bool m_depths[kDepths] = {};
    std::vector<std::uint32_t> m_counters; // children seen so far, per open element
    Path m_path;                           // of the open element, below the root
    std::size_t m_counted = 0;
    int m_line = 1;
};

} // namespace

void ZoFindLines(std::vector<ZoFinding>& findings, zo::project::ProjectDoc file, char const* data, std::size_t size,
                 std::function<void(std::size_t)> const& consumed)
{
    std::map<Path, int> wanted;
    for (ZoFinding const& finding : findings)
        if (finding.file == file && !finding.path.empty())
            wanted.emplace(finding.path, 0);
    if (wanted.empty())
        return;
    LineScanner scanner(data, wanted, consumed);
    zo::xml::ScanXml(data, size, scanner);
    for (ZoFinding& finding : findings)
        if (finding.file == file && !finding.path.empty())
            finding.line = wanted[finding.path];
}
