#include "check/ZoCheckLines.h"

#include "config/XmlScanner.h"

#include <algorithm>
#include <map>

namespace {

using Path = std::vector<std::uint32_t>;

// Counts lines from the last place asked, since elements come in text order, and tells now
// and then how far the text has been read.
class LineCounter {
public:
    LineCounter(char const* data, std::function<void(std::size_t)> const& consumed) : m_data(data), m_consumed(consumed) {}

    // An element starts at place.
    void Reached(char const* place)
    {
        std::size_t const offset = static_cast<std::size_t>(place - m_data);
        if (m_consumed && offset >= m_told + kTellEvery) {
            m_told = offset;
            m_consumed(m_told);
        }
    }

    int LineAt(char const* place)
    {
        m_line += static_cast<int>(std::count(m_data + m_counted, place, '\n'));
        m_counted = static_cast<std::size_t>(place - m_data);
        return m_line;
    }

private:
    static constexpr std::size_t kTellEvery = std::size_t(16) << 20;
    char const* m_data;
    std::function<void(std::size_t)> const& m_consumed;
    std::size_t m_told = 0;
    std::size_t m_counted = 0;
    int m_line = 1;
};

class LineScanner : public zo::xml::ScanHandler {
public:
    LineScanner(char const* data, std::map<Path, int>& wanted, std::function<void(std::size_t)> const& consumed)
        : m_counter(data, consumed), m_wanted(wanted)
    {
        for (auto const& [path, line] : wanted)
            m_depths[std::min<std::size_t>(path.size(), kDepths - 1)] = true;
    }

    void StartElement(std::string_view name) override
    {
        m_counter.Reached(name.data());
        if (!m_counters.empty()) {
            m_path.push_back(m_counters.back()++);
            if (m_path.size() < kDepths && m_depths[m_path.size()]) {
                auto const found = m_wanted.find(m_path);
                if (found != m_wanted.end() && found->second == 0)
                    found->second = m_counter.LineAt(name.data());
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

    LineCounter m_counter;
    std::map<Path, int>& m_wanted;
    bool m_depths[kDepths] = {};
    std::vector<std::uint32_t> m_counters; // children seen so far, per open element
    Path m_path;                           // of the open element, below the root
};

class ChildLineScanner : public zo::xml::ScanHandler {
public:
    ChildLineScanner(char const* data, std::function<void(std::size_t)> const& consumed) : m_counter(data, consumed) {}

    void StartElement(std::string_view name) override
    {
        m_counter.Reached(name.data());
        if (m_depth == 1) {
            m_lines.children.push_back(m_counter.LineAt(name.data()));
            m_lines.grandchildren.emplace_back();
        } else if (m_depth == 2) {
            m_lines.grandchildren.back().push_back(m_counter.LineAt(name.data()));
        }
        ++m_depth;
    }
    void Attribute(std::string_view, std::string_view) override {}
    void Text(std::string_view) override {}
    void EndElement() override { --m_depth; }

    ZoChildLines Take() { return std::move(m_lines); }

private:
    LineCounter m_counter;
    int m_depth = 0;
    ZoChildLines m_lines;
};

} // namespace

ZoChildLines ZoFindChildLines(char const* data, std::size_t size, std::function<void(std::size_t)> const& consumed)
{
    ChildLineScanner scanner(data, consumed);
    zo::xml::ScanXml(data, size, scanner);
    return scanner.Take();
}

void ZoApplyChildLines(std::vector<ZoFinding>& findings, zo::project::ProjectDoc file, ZoChildLines const& lines)
{
    for (ZoFinding& finding : findings) {
        std::vector<std::uint32_t> const& path = finding.path;
        if (finding.file != file || path.empty() || path.size() > 2 || path[0] >= lines.children.size())
            continue;
        if (path.size() == 1)
            finding.line = lines.children[path[0]];
        else if (path[1] < lines.grandchildren[path[0]].size())
            finding.line = lines.grandchildren[path[0]][path[1]];
    }
}

void ZoFindLines(std::vector<ZoFinding>& findings, zo::project::ProjectDoc file, char const* data, std::size_t size,
                 std::function<void(std::size_t)> const& consumed)
{
    std::map<Path, int> wanted;
    for (ZoFinding const& finding : findings)
        if (finding.file == file && !finding.path.empty() && finding.line == 0)
            wanted.emplace(finding.path, 0);
    if (wanted.empty())
        return;
    LineScanner scanner(data, wanted, consumed);
    zo::xml::ScanXml(data, size, scanner);
    for (ZoFinding& finding : findings)
        if (finding.file == file && !finding.path.empty() && finding.line == 0)
            finding.line = wanted[finding.path];
}
