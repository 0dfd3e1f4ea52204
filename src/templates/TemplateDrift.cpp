#include "templates/TemplateDrift.h"

#include "events/EventNames.h"
#include "platform/drivers/ZoDeviceCatalog.h"
#include "platform/tools/ZoUtf.h"
#include "templates/TemplatePlaceholders.h"
#include "templates/TemplateStamp.h"
#include "templates/TemplateStore.h"

#include <unordered_map>

namespace zo::templates {

namespace {

// Deeper lists than this are compared as one text (no template is nested that deep; a
// hand-made file might be, and nothing here recurses without bound).
constexpr int kMaxDepth = 32;

struct Tags {
    explicit Tags(XmlDocument const& document)
        : id(document.TagKey(L"id")), name(document.TagKey(L"name")),
          groups(document.TagKey(L"eventsGroups"))
    {
    }
    void const* id;
    void const* name;
    void const* groups;
};

// The name the stamp gave: the template's, or it followed by "_N".
bool IsStampedName(std::string_view actual, std::string_view expected)
{
    if (actual == expected)
        return true;
    if (actual.size() < expected.size() + 2 || !actual.starts_with(expected) || actual[expected.size()] != '_')
        return false;
    for (char c : actual.substr(expected.size() + 1)) {
        if (c < '0' || c > '9')
            return false;
    }
    return true;
}

bool IsEmptyElement(XmlNode const& element)
{
    return element.TextUtf8().empty() && !element.FirstChild();
}

// The kinds of a list's elements, as the difference shows them: "force, mail".
std::wstring KindsOf(std::vector<XmlNode const*> const& children)
{
    std::wstring text;
    for (XmlNode const* child : children) {
        if (!text.empty())
            text += L", ";
        text += child->Tag();
    }
    return text;
}

// The whole text of an element that has children, as the difference shows it.
std::wstring ShownText(XmlNode const& element, DeviceTexts const* device)
{
    if (!element.FirstChild())
        return ZoFromUtf8(device ? FilledIn(element.TextUtf8(), *device) : std::string(element.TextUtf8()));
    std::string xml;
    element.CreateXmlCode(xml);
    return ZoFromUtf8(device ? FilledIn(xml, *device) : xml);
}

// The walk that compares an event with its template, and (when fixing) makes the event
// what the template gives.
class Comparer {
public:
    Comparer(Tags const& tags, DeviceTexts const& device, std::vector<FieldDifference>* out, bool fix)
        : m_tags(tags), m_device(device), m_out(out), m_fix(fix)
    {
    }

    // The event's keys, matched by tag (the first of each tag).
    void CompareEvent(XmlNode const& expected, XmlNode* actual)
    {
        std::vector<XmlNode*> actualKeys;
        for (XmlNode* key = actual->FirstChild(); key; key = key->NextSibling())
            actualKeys.push_back(key);
        std::vector<bool> matched(actualKeys.size(), false);
        for (XmlNode const* key = expected.FirstChild(); key; key = key->NextSibling()) {
            void const* const tag = key->TagKey();
            if (tag == m_tags.id || tag == m_tags.groups)
                continue;
            XmlNode* mate = nullptr;
            for (std::size_t i = 0; i < actualKeys.size(); ++i) {
                if (!matched[i] && actualKeys[i]->TagKey() == tag) {
                    matched[i] = true;
                    mate = actualKeys[i];
                    break;
                }
            }
            std::wstring const field = key->Tag();
            if (tag == m_tags.name && mate) {
                CompareName(*key, *mate);
                continue;
            }
            if (!mate) {
                if (IsEmptyElement(*key))
                    continue;
                Report(field, ShownText(*key, &m_device), {});
                if (m_fix) {
                    XmlNode* copy = actual->NewChild(key->Tag().c_str());
                    *copy = *key;
                    MakeStampedEvent(*copy, m_device);
                }
                continue;
            }
            CompareElement(*key, mate, field, 1);
        }
        for (std::size_t i = 0; i < actualKeys.size(); ++i) {
            XmlNode* key = actualKeys[i];
            void const* const tag = key->TagKey();
            if (matched[i] || tag == m_tags.id || tag == m_tags.groups || IsEmptyElement(*key))
                continue;
            Report(key->Tag(), {}, ShownText(*key, nullptr));
            if (m_fix)
                actual->RemoveChild(key);
        }
    }

    // A name to set when fixing: the template's, which the caller makes unique.
    std::string const& NewName() const { return m_newName; }

private:
    void CompareName(XmlNode const& expected, XmlNode const& actual)
    {
        std::string const name = FilledIn(expected.TextUtf8(), m_device);
        if (IsStampedName(actual.TextUtf8(), name))
            return;
        Report(L"name", ZoFromUtf8(name), ZoFromUtf8(actual.TextUtf8()));
        m_newName = name;
    }

    void CompareElement(XmlNode const& expected, XmlNode* actual, std::wstring const& field, int depth)
    {
        std::string_view const text = expected.TextUtf8();
        bool const sameText = HasPlaceholder(text) ? FilledIn(text, m_device) == actual->TextUtf8()
                                                   : text == actual->TextUtf8();
        if (!expected.FirstChild() && !actual->FirstChild()) {
            if (!sameText) {
                Report(field, ZoFromUtf8(FilledIn(text, m_device)), ZoFromUtf8(actual->TextUtf8()));
                if (m_fix)
                    actual->SetValueUtf8(FilledIn(text, m_device));
            }
            return;
        }
        std::vector<XmlNode const*> expectedChildren = Children(expected);
        std::vector<XmlNode*> actualChildren = MutableChildren(*actual);
        bool sameKinds = expectedChildren.size() == actualChildren.size() && depth < kMaxDepth;
        for (std::size_t i = 0; sameKinds && i < expectedChildren.size(); ++i)
            sameKinds = expectedChildren[i]->TagKey() == actualChildren[i]->TagKey();
        if (depth >= kMaxDepth) {
            std::wstring const wanted = ShownText(expected, &m_device);
            std::wstring const has = ShownText(*actual, nullptr);
            if (wanted != has) {
                Report(field, wanted, has);
                if (m_fix)
                    Replace(expected, actual);
            }
            return;
        }
        if (!sameKinds) {
            std::vector<XmlNode const*> shown(actualChildren.begin(), actualChildren.end());
            Report(field, KindsOf(expectedChildren), KindsOf(shown));
            if (m_fix)
                Replace(expected, actual);
            return;
        }
        for (std::size_t i = 0; i < expectedChildren.size(); ++i) {
            XmlNode const& child = *expectedChildren[i];
            std::wstring place = field + L'/' + child.Tag();
            int const occurrence = Occurrence(expectedChildren, i);
            if (occurrence > 0)
                place += L' ' + std::to_wstring(occurrence);
            CompareElement(child, actualChildren[i], place, depth + 1);
        }
    }

    // A list whose elements differ in kind becomes the template's, filled in, with new ids.
    void Replace(XmlNode const& expected, XmlNode* actual)
    {
        XmlNode* parent = actual->Parent();
        XmlNode* copy = parent->NewChild(expected.Tag().c_str(), actual);
        *copy = expected;
        MakeStampedEvent(*copy, m_device);
        parent->RemoveChild(actual);
    }

    // The children but the ids, which are the event's own.
    std::vector<XmlNode const*> Children(XmlNode const& element) const
    {
        std::vector<XmlNode const*> children;
        for (XmlNode const* child = element.FirstChild(); child; child = child->NextSibling()) {
            if (child->TagKey() != m_tags.id)
                children.push_back(child);
        }
        return children;
    }
    std::vector<XmlNode*> MutableChildren(XmlNode& element) const
    {
        std::vector<XmlNode*> children;
        for (XmlNode* child = element.FirstChild(); child; child = child->NextSibling()) {
            if (child->TagKey() != m_tags.id)
                children.push_back(child);
        }
        return children;
    }

    // The child's number among its siblings of its tag, from 1; 0 when it is the only one.
    static int Occurrence(std::vector<XmlNode const*> const& children, std::size_t at)
    {
        int before = 0;
        int total = 0;
        for (std::size_t i = 0; i < children.size(); ++i) {
            if (children[i]->TagKey() != children[at]->TagKey())
                continue;
            ++total;
            if (i < at)
                ++before;
        }
        return total > 1 ? before + 1 : 0;
    }

    void Report(std::wstring const& field, std::wstring expected, std::wstring actual)
    {
        if (m_out)
            m_out->push_back({field, std::move(expected), std::move(actual)});
    }

    Tags const& m_tags;
    DeviceTexts const& m_device;
    std::vector<FieldDifference>* m_out;
    bool m_fix;
    std::string m_newName;
};

// The template of each id, as stored.
std::unordered_map<std::string_view, XmlNode*> TemplatesById(XmlNode* root)
{
    std::unordered_map<std::string_view, XmlNode*> byId;
    for (XmlNode* candidate : Templates(root)) {
        std::string_view const id = candidate->ValueUtf8(L"id");
        if (!id.empty())
            byId.emplace(id, candidate);
    }
    return byId;
}

} // namespace

std::vector<FieldDifference> CompareWithTemplate(XmlNode const& event, XmlNode const& templateEvent,
                                                 ZoDeviceCatalog const& catalog, std::wstring const& device)
{
    std::vector<FieldDifference> differences;
    DeviceTexts texts{ZoToUtf8(device), {}};
    if (ZoDriver const* driver = catalog.Find(device))
        texts.description = ZoToUtf8(driver->Description());
    Tags const tags(*event.Document());
    Comparer comparer(tags, texts, &differences, false);
    comparer.CompareEvent(templateEvent, const_cast<XmlNode*>(&event));
    return differences;
}

DriftReport FindDrift(XmlNode const* constRoot, ZoDeviceCatalog const& catalog)
{
    DriftReport report;
    // The comparison only reads; the pointers are handed out for UpdateFromTemplates.
    XmlNode* root = const_cast<XmlNode*>(constRoot);
    if (!root)
        return report;
    std::unordered_map<std::string_view, XmlNode*> const templates = TemplatesById(root);
    if (templates.empty())
        return report;
    std::unordered_map<std::string_view, XmlNode*> const events = EventsById(root);
    Tags const tags(*root->Document());
    // Devices repeat over many stamps: their texts are made once.
    std::unordered_map<std::string_view, DeviceTexts> devices;
    for (StampLink const& link : StampLinks(root)) {
        auto const event = events.find(link.eventId);
        auto const templateEvent = templates.find(link.templateId);
        if (event == events.end() || templateEvent == templates.end())
            continue;
        auto texts = devices.find(link.device);
        if (texts == devices.end()) {
            ZoDriver const* driver = catalog.Find(ZoFromUtf8(link.device));
            if (!driver || driver->IsEventsDevice()) {
                report.withoutDevice.push_back(event->second);
                continue;
            }
            texts = devices.emplace(link.device, TextsOf(*driver)).first;
        }
        ++report.stamped;
        std::vector<FieldDifference> differences;
        Comparer comparer(tags, texts->second, &differences, false);
        comparer.CompareEvent(*templateEvent->second, event->second);
        if (!differences.empty()) {
            report.drifted.push_back(
                {event->second, templateEvent->second, ZoFromUtf8(link.device), std::move(differences)});
        }
    }
    return report;
}

int UpdateFromTemplates(XmlNode* root, ZoDeviceCatalog const& catalog, std::vector<DriftedEvent> const& chosen)
{
    if (!root || chosen.empty())
        return 0;
    DropStaleLinks(root);
    Tags const tags(*root->Document());
    // Names are made unique against every event but the one renamed.
    std::vector<std::wstring> names;
    if (XmlNode* events = root->Child(L"events")) {
        for (XmlNode* event = events->FirstChild(); event; event = event->NextSibling())
            names.push_back(ZoFromUtf8(event->ValueUtf8(L"name")));
    }
    EventNameSet taken(names);
    int changed = 0;
    for (DriftedEvent const& drifted : chosen) {
        ZoDriver const* driver = catalog.Find(drifted.device);
        if (!drifted.event || !drifted.templateEvent || !driver)
            continue;
        DeviceTexts const texts = TextsOf(*driver);
        Comparer comparer(tags, texts, nullptr, true);
        comparer.CompareEvent(*drifted.templateEvent, drifted.event);
        if (!comparer.NewName().empty()) {
            std::wstring const name = ZoFromUtf8(comparer.NewName());
            std::wstring unique = name;
            for (int counter = 1; taken.Contains(unique); ++counter)
                unique = name + L'_' + std::to_wstring(counter);
            taken.Insert(unique);
            drifted.event->SetValue(L"name", unique);
        }
        ++changed;
    }
    return changed;
}

} // namespace zo::templates
