// Copies that borrow: a copy of an element starts as one lazy node and grows only where it
// is read or changed; XmlDesign.md tells the rules that keep it exact.
#include "XmlTree.h"

#include <algorithm>

XmlDocument::XmlNode* XmlDocument::XmlNode::Materialized() const
{
    auto* self = const_cast<XmlNode*>(this);
    zo::xml::Tree::Materialize(self);
    return self->m_first;
}

namespace zo::xml {

void Tree::Materialize(XmlNode* node)
{
    if (!IsLazy(node))
        return;
    XmlNode* source = node->m_first;
    Storage& storage = StorageOf(node);
    Links& links = EnsureLinks(DocumentOf(node));
    node->m_first = nullptr;
    node->m_childCount = 0;
    links.origins.emplace(node, source);
    TagTranslator tags(StorageOf(source), storage);
    XmlNode* previous = nullptr;
    for (XmlNode* child = source->m_first; child; child = child->m_next) {
        XmlNode* copy = NewNode(storage, tags.Translate(child->m_tag));
        SetText(storage, copy, child->TextUtf8());
        Link(node, copy, previous);
        // Every copy stays lazy, even a leaf: it keeps naming the element it came from,
        // so that assigning the copy back finds that element again.
        copy->m_first = child;
        copy->m_childCount = child->m_childCount | XmlNode::kLazyBit;
        previous = copy;
    }
}

void Tree::DropLazy(XmlNode* node)
{
    if (!IsLazy(node))
        return;
    node->m_first = nullptr;
    node->m_childCount = 0;
}

XmlNode* Tree::OriginOf(XmlNode const* node)
{
    if (IsLazy(node))
        return node->m_first;
    Links const* links = LinksOf(DocumentOf(node));
    if (!links || links->origins.empty())
        return nullptr;
    auto const found = links->origins.find(node);
    return found == links->origins.end() ? nullptr : found->second;
}

bool Tree::MakeLazyCopy(XmlDocument& doc, XmlNode const& from)
{
    XmlDocument& lender = DocumentOf(&from);
    Links* lenderLinks = LinksOf(lender);
    // A copy of a copy would chain borrowing: it is copied in full instead.
    if (lenderLinks && lenderLinks->lender)
        return false;
    Storage& storage = *doc.m_storage;
    XmlNode* root = NewNode(storage, storage.Intern(from.m_tag->utf8));
    SetText(storage, root, from.TextUtf8());
    root->m_first = const_cast<XmlNode*>(&from);
    root->m_childCount = from.m_childCount | XmlNode::kLazyBit;
    doc.m_root = root;
    EnsureLinks(doc).lender = &lender;
    EnsureLinks(lender).borrowers.push_back(&doc);
    return true;
}

void Tree::Detach(XmlDocument& borrower)
{
    Links* links = LinksOf(borrower);
    if (!links || !links->lender)
        return;
    // Every lazy element becomes a full copy of what it reads; nothing then points into
    // the lender any more.
    if (borrower.m_root) {
        Edit edit(borrower);
        std::vector<XmlNode*> pending{borrower.m_root};
        while (!pending.empty()) {
            XmlNode* node = pending.back();
            pending.pop_back();
            if (XmlNode const* source = LazySource(node)) {
                DropLazy(node);
                edit.CopyChildren(node, source, true);
                continue;
            }
            for (XmlNode* child = node->m_first; child; child = child->m_next)
                pending.push_back(child);
        }
    }
    StopBorrowing(borrower);
}

void Tree::DetachBorrowers(XmlDocument& doc, XmlDocument const* except)
{
    Links* links = LinksOf(doc);
    if (!links)
        return;
    std::vector<XmlDocument*> const borrowers = links->borrowers;
    for (XmlDocument* borrower : borrowers) {
        if (borrower != except)
            Detach(*borrower);
    }
}

void Tree::Unlink(XmlDocument& doc)
{
    Links* links = LinksOf(doc);
    if (!links)
        return;
    DetachBorrowers(doc, nullptr);
    StopBorrowing(doc);
}

void Tree::StopBorrowing(XmlDocument& doc)
{
    Links* links = LinksOf(doc);
    if (!links)
        return;
    if (links->lender) {
        auto& borrowers = LinksOf(*links->lender)->borrowers;
        borrowers.erase(std::remove(borrowers.begin(), borrowers.end(), &doc), borrowers.end());
        links->lender = nullptr;
    }
    links->origins.clear();
}

} // namespace zo::xml
