// Node paths: steps separated by "/", each a tag or tag?key=value? (the first child with
// that tag whose property key has exactly that value).
#include "XmlPath.h"

#include "XmlTree.h"
#include "platform/tools/ZoUtf.h"

namespace zo::xml {

namespace {

struct Step {
    std::wstring_view tag;
    std::wstring_view key;
    std::wstring_view value;
    bool keyed = false;
    bool matchesNothing = false; // "tag?key" without "=value"
};

// Splits the next step off path. A keyed step "tag?key=value?" ends its value at the "?"
// that is followed by "/" or by the end, so a value may itself hold "/" or "?".
bool NextStep(std::wstring_view& path, Step& step)
{
    while (!path.empty() && path.front() == L'/')
        path.remove_prefix(1);
    if (path.empty())
        return false;
    step = Step{};
    std::size_t const tagEnd = path.find_first_of(L"/?");
    step.tag = path.substr(0, tagEnd);
    if (tagEnd == std::wstring_view::npos || path[tagEnd] == L'/') {
        path.remove_prefix(tagEnd == std::wstring_view::npos ? path.size() : tagEnd);
        return true;
    }
    std::wstring_view rest = path.substr(tagEnd + 1);
    std::size_t const equal = rest.find(L'=');
    if (equal == std::wstring_view::npos) {
        step.matchesNothing = true;
        path = {};
        return true;
    }
    step.keyed = true;
    step.key = rest.substr(0, equal);
    std::wstring_view valueAndRest = rest.substr(equal + 1);
    std::size_t close = std::wstring_view::npos;
    for (std::size_t i = 0; i < valueAndRest.size(); ++i) {
        if (valueAndRest[i] == L'?' && (i + 1 == valueAndRest.size() || valueAndRest[i + 1] == L'/')) {
            close = i;
            break;
        }
    }
    if (close == std::wstring_view::npos) {
        step.value = valueAndRest;
        path = {};
    } else {
        step.value = valueAndRest.substr(0, close);
        path = valueAndRest.substr(close + 1);
    }
    return true;
}

// parent is not lazy (or is the element a lazy one reads).
XmlNode* FindChild(XmlNode const* parent, void const* tag)
{
    for (XmlNode* child = parent->FirstChild(); child; child = child->NextSibling())
        if (child->TagKey() == tag)
            return child;
    return nullptr;
}

// A tag looked up in the storage of each element it is compared in: a lazy copy's
// elements are read in the document they were copied from. Remembers the last storage.
class TagIn {
public:
    explicit TagIn(std::string_view utf8) : m_utf8(utf8) {}
    void const* Of(XmlNode const* node)
    {
        Storage* storage = Storage::Of(node);
        if (storage != m_storage) {
            m_storage = storage;
            m_tag = storage->FindTag(m_utf8);
        }
        return m_tag;
    }

private:
    std::string_view m_utf8;
    Storage* m_storage = nullptr;
    void const* m_tag = nullptr;
};

// The first child of node with property tag `key`, read where it is.
XmlNode const* PropertyOf(XmlNode const* node, TagIn& key)
{
    XmlNode const* owner = Tree::ChildrenOwner(node);
    void const* tag = key.Of(owner);
    return tag ? FindChild(owner, tag) : nullptr;
}

} // namespace

XmlNode const* PropertyNode(XmlNode const* node, std::string_view key)
{
    TagIn tag(key);
    return PropertyOf(node, tag);
}

XmlNode* FindPath(XmlNode const* start, wchar_t const* path)
{
    if (!start || !path)
        return nullptr;
    Storage* storage = Storage::Of(start);
    std::wstring_view rest(path);
    XmlNode* current = const_cast<XmlNode*>(start);
    Step step;
    std::string value;
    std::string key;
    while (NextStep(rest, step)) {
        if (step.matchesNothing)
            return nullptr;
        // The children first: a lazy element interns its children's tags as it grows.
        XmlNode* first = current->FirstChild();
        void const* tag = storage->FindTagWide(step.tag);
        if (!tag || !first)
            return nullptr;
        if (!step.keyed) {
            current = FindChild(current, tag);
        } else {
            Utf16ToUtf8(key, step.key);
            Utf16ToUtf8(value, step.value);
            // The candidates' properties are read where they are: a lazy copy's elements
            // answer from the element they were copied from, without growing.
            TagIn keyTag(key);
            XmlNode* match = nullptr;
            for (XmlNode* child = first; child && !match; child = child->NextSibling()) {
                if (child->TagKey() != tag)
                    continue;
                XmlNode const* property = PropertyOf(child, keyTag);
                if (property && property->TextUtf8() == value)
                    match = child;
            }
            current = match;
        }
        if (!current)
            return nullptr;
    }
    return current;
}

bool IsPlainKey(wchar_t const* key)
{
    for (wchar_t const* p = key; *p; ++p)
        if (*p == L'/' || *p == L'?')
            return false;
    return true;
}

} // namespace zo::xml
