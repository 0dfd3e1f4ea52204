// The XML text of an element: compact, or indented in a form that reads back as the same
// tree.
#include "XmlScanner.h"
#include "XmlTree.h"

#include <algorithm>
#include <cstdio>

using zo::xml::IsWhitespaceOnly;
using zo::xml::TagRecord;
using XmlNode = XmlDocument::XmlNode;

namespace {

void AppendEscaped(std::string& out, std::string_view text)
{
    std::size_t plainStart = 0;
    for (std::size_t i = 0; i < text.size(); ++i) {
        char const c = text[i];
        char const* entity = nullptr;
        char numeric[8];
        switch (c) {
        case '&': entity = "&amp;"; break;
        case '<': entity = "&lt;"; break;
        case '>': entity = "&gt;"; break;
        case '\t':
        case '\n':
            continue;
        default:
            if (static_cast<unsigned char>(c) >= 0x20)
                continue;
            // Other control characters (and \r, which a parser would fold) as references.
            std::snprintf(numeric, sizeof numeric, "&#%d;", static_cast<int>(c));
            entity = numeric;
            break;
        }
        out.append(text.data() + plainStart, i - plainStart);
        out.append(entity);
        plainStart = i + 1;
    }
    out.append(text.data() + plainStart, text.size() - plainStart);
}

void AppendOwnText(std::string& out, XmlNode const* node, bool hasChildren)
{
    std::string_view const text = node->TextUtf8();
    if (text.empty())
        return;
    // Blanks alone before child elements would read back as indentation: write them as
    // character references, which a parser keeps as they are (a CDATA section would lose \r).
    if (hasChildren && IsWhitespaceOnly(text)) {
        for (char c : text)
            out.append(c == ' ' ? "&#32;" : c == '\t' ? "&#9;" : c == '\n' ? "&#10;" : "&#13;");
        return;
    }
    AppendEscaped(out, text);
}

std::string const& TagText(XmlNode const* node) { return static_cast<TagRecord const*>(node->TagKey())->utf8; }

} // namespace

namespace {

constexpr std::size_t kWriteBlock = 1 << 20;
// Indentation stops growing below this depth, so that the text of a deeply nested tree
// stays linear in its size; a reader drops the blanks between elements whatever their
// number, so the text still reads back as the same tree.
constexpr int kMaxIndentLevels = 32;

} // namespace

void XmlNode::AppendXmlCode(ZoBasicString<char>& out, int indent) const
{
    Write(out, indent, nullptr);
}

bool XmlNode::WriteXmlCode(std::function<bool(std::string_view)> const& write, int indent) const
{
    std::string block;
    block.reserve(kWriteBlock + 4096);
    return Write(block, indent, &write) && (block.empty() || write(block));
}

bool XmlNode::Write(std::string& out, int indent, std::function<bool(std::string_view)> const* write) const
{
    // Iterative walk: on the way down write the opening tag and the text, on the way up the
    // closing tag; a node without text and children is written as an empty element.
    // Indented, every element without text of its own puts its children on lines of their
    // own; a parser drops those line breaks again, as blanks between elements. An element
    // with text keeps its whole subtree on one line, since a break after its text would
    // become part of the text. A lazy copy's elements are read through FirstChild().
    XmlNode const* node = this;
    int depth = 0;
    XmlNode const* oneLine = indent > 0 ? nullptr : this;
    auto breakLine = [&] {
        if (!oneLine) {
            out.push_back('\n');
            out.append(static_cast<std::size_t>(std::min(depth, kMaxIndentLevels) * indent), ' ');
        }
    };
    while (true) {
        if (write && out.size() >= kWriteBlock) {
            if (!(*write)(out))
                return false;
            out.clear();
        }
        XmlNode const* first = node->FirstChild();
        out.push_back('<');
        out.append(TagText(node));
        if (!first && node->m_textLength == 0) {
            out.append("/>");
        } else {
            out.push_back('>');
            AppendOwnText(out, node, first != nullptr);
            if (first) {
                if (!oneLine && node->m_textLength != 0)
                    oneLine = node;
                node = first;
                ++depth;
                breakLine();
                continue;
            }
            out.append("</");
            out.append(TagText(node));
            out.push_back('>');
        }
        // Climb until a next sibling exists, closing each parent on the way.
        while (node != this && !node->m_next) {
            node = node->m_parent;
            --depth;
            breakLine();
            out.append("</");
            out.append(TagText(node));
            out.push_back('>');
            if (oneLine == node)
                oneLine = nullptr;
        }
        if (node == this)
            return true;
        node = node->m_next;
        breakLine();
    }
}

void XmlNode::CreateXmlCode(ZoBasicString<char>& out) const
{
    out.clear();
    AppendXmlCode(out);
}
