#include "config/XmlScanner.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cstring>
#include <memory>
#include <string>
#include <string_view>

namespace {

// The events as a compact line: <name for a start, @name=value for an attribute, "text"
// for a text segment, > for an end.
class Recorder : public zo::xml::ScanHandler {
public:
    void StartElement(std::string_view name) override { Add("<" + std::string(name)); }
    void Attribute(std::string_view name, std::string_view value) override
    {
        Add("@" + std::string(name) + "=" + std::string(value));
    }
    void Text(std::string_view text) override { Add("\"" + std::string(text) + "\""); }
    void EndElement() override { Add(">"); }
    std::string out;

private:
    void Add(std::string const& event) { out += (out.empty() ? "" : " ") + event; }
};

// Scans a copy of exactly these bytes in a block of their size (no terminator behind them).
zo::xml::ScanResult ScanCopy(std::string_view xml, Recorder& recorder)
{
    auto copy = std::make_unique<char[]>(xml.size() + 1);
    std::memcpy(copy.get(), xml.data(), xml.size());
    return zo::xml::ScanXml(copy.get(), xml.size(), recorder);
}

// The events of an accepted text, or "error: reason" for a refused one.
std::string Events(std::string_view xml)
{
    Recorder recorder;
    zo::xml::ScanResult const result = ScanCopy(xml, recorder);
    return result.ok ? recorder.out : "error: " + result.error;
}

bool Refused(std::string_view xml)
{
    Recorder recorder;
    zo::xml::ScanResult const result = ScanCopy(xml, recorder);
    return !result.ok && !result.error.empty() && result.offset <= xml.size();
}

} // namespace

TEST(XmlScannerReferences, PredefinedEntitiesAndCharacterReferences)
{
    EXPECT_EQ(Events("<a>&lt;&gt;&amp;&apos;&quot;</a>"), "<a \"<>&'\"\" >");
    EXPECT_EQ(Events("<a>&#65;&#x42;&#x6a;&#x6A;&#233;&#x20AC;&#x1F600;</a>"),
              "<a \"ABjj\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80\" >");
    // Surrogates and code points beyond Unicode are written in UTF-8 form all the same; the
    // caller replaces what is not valid UTF-8.
    EXPECT_EQ(Events("<a>&#xD800;&#x110000;</a>"), "<a \"\xED\xA0\x80\xF4\x90\x80\x80\" >");
    // The lead byte of an overlong value keeps only its low bits.
    EXPECT_EQ(Events("<a>&#xFFFFFFFF;</a>"), "<a \"\xFF\xBF\xBF\xBF\" >");
    // Attribute values are decoded alike.
    EXPECT_EQ(Events("<a v='&lt;&#x41;&amp;'/>"), "<a @v=<A& >");
}

TEST(XmlScannerReferences, UnknownOrMalformedReferencesStayAsWritten)
{
    EXPECT_EQ(Events("<a>&bogus; &amp &#; &#x; &#12a; &#X41; &#-1; & x &AMP;</a>"),
              "<a \"&bogus; &amp &#; &#x; &#12a; &#X41; &#-1; & x &AMP;\" >");
    // The character that ended a broken reference is read normally: here the "<" of the end
    // tag, the "&" of the next reference, a carriage return.
    EXPECT_EQ(Events("<a>&#12</a>"), "<a \"&#12\" >");
    EXPECT_EQ(Events("<a>&am&lt;</a>"), "<a \"&am<\" >");
    EXPECT_EQ(Events("<a>&#x4\r\n</a>"), "<a \"&#x4\n\" >");
    EXPECT_EQ(Events("<a v='&q\"'/>"), "<a @v=&q\" >");
    // Entities a DOCTYPE declares are never expanded.
    EXPECT_EQ(Events("<!DOCTYPE a [<!ENTITY e 'boom'>]><a>&e;</a>"), "<a \"&e;\" >");
}

TEST(XmlScannerReferences, CodeZeroEndsTheSegment)
{
    EXPECT_EQ(Events("<a>ab&#0;cd</a>"), "<a \"ab\" >");
    EXPECT_EQ(Events("<a>&#x100000000;cd</a>"), "<a \"\" >"); // wraps to 0
    EXPECT_EQ(Events("<a v='x&#0;y'/>"), "<a @v=x >");
    // Only the segment it is in: the CDATA after it is a segment of its own.
    EXPECT_EQ(Events("<a>x&#0;y<![CDATA[z]]></a>"), "<a \"x\" \"z\" >");
}

TEST(XmlScannerCdata, SectionsAreRawTextSegments)
{
    EXPECT_EQ(Events("<a>x<![CDATA[<b>&amp;]]]>y</a>"), "<a \"x\" \"<b>&amp;]\" \"y\" >");
    EXPECT_EQ(Events("<a><![CDATA[]]></a>"), "<a \"\" >");
    EXPECT_EQ(Events("<a><![CDATA[ ]]></a>"), "<a \" \" >");
    EXPECT_EQ(Events("<a><![CDATA[1\r\n2\r3]]></a>"), "<a \"1\n2\n3\" >");
    EXPECT_TRUE(Refused("<a><![CDATA[x]]</a>"));
    EXPECT_TRUE(Refused("<a><![CDAT[x]]></a>"));
    EXPECT_TRUE(Refused("<a><![cdata[x]]></a>"));
}

TEST(XmlScannerLineEnds, CarriageReturnsBecomeLineFeeds)
{
    EXPECT_EQ(Events("<a>1\r\n2\r3\n4\r\r\n5\n\r6</a>"), "<a \"1\n2\n3\n4\n\n5\n\n6\" >");
    // In attribute values too, where tabs and line feeds stay as they are.
    EXPECT_EQ(Events("<a v='1\r\n2\r3\t4\n5'/>"), "<a @v=1\n2\n3\t4\n5 >");
    // A whitespace-only text that is kept is normalised as well.
    EXPECT_EQ(Events("<a>\r\n\r</a>"), "<a \"\n\n\" >");
}

TEST(XmlScannerWhitespace, KeptOnlyAsTheOnlyChild)
{
    EXPECT_EQ(Events("<a> \t\n</a>"), "<a \" \t\n\" >");
    EXPECT_EQ(Events("<a>\n  <b/>\n  <c> </c>\n</a>"), "<a <b > <c \" \" > >");
    // Dropped after any child node, text included.
    EXPECT_EQ(Events("<a>x<b/> </a>"), "<a \"x\" <b > >");
    EXPECT_EQ(Events("<a><![CDATA[x]]> </a>"), "<a \"x\" >");
    // Comments and processing instructions are not nodes: the blanks after one are still
    // the only child; those before it are not followed by the end tag and are dropped.
    EXPECT_EQ(Events("<a> <!--c--><?p x?>  </a>"), "<a \"  \" >");
    // Text that is not whitespace only keeps its blanks.
    EXPECT_EQ(Events("<a>  x  <b/>  y  </a>"), "<a \"  x  \" <b > \"  y  \" >");
    // A character reference to a blank is not whitespace in the source.
    EXPECT_EQ(Events("<a><b/>&#32;</a>"), "<a <b > \" \" >");
}

TEST(XmlScannerAttributes, ValuesNamesAndSyntax)
{
    EXPECT_EQ(Events("<a x=\"1\" y='2' x='3'\n z = \"'<>\" ns:w-v.1='' />"),
              "<a @x=1 @y=2 @x=3 @z='<> @ns:w-v.1= >");
    EXPECT_EQ(Events("<a b='1'><c d=\"2\">t</c></a>"), "<a @b=1 <c @d=2 \"t\" > >");
    EXPECT_TRUE(Refused("<a x/>"));
    EXPECT_TRUE(Refused("<a x=1/>"));
    EXPECT_TRUE(Refused("<a x='1\"/>"));
    EXPECT_TRUE(Refused("<a x='1'y='2'/>"));
    EXPECT_TRUE(Refused("<a x='1'/ >"));
    EXPECT_TRUE(Refused("<a 1x='1'/>"));
    EXPECT_TRUE(Refused("<a x='1' =/>"));
}

TEST(XmlScannerDocument, SkippedConstructs)
{
    EXPECT_EQ(Events("\xEF\xBB\xBF<?xml version=\"1.0\"?>\n<!-- c -- c -->\n"
                     "<!DOCTYPE a SYSTEM \"http://x/y.dtd\" [\n"
                     "  <!ENTITY e \"<b/>\"> <!-- > --> <?p > ?> <![IGNORE[ <![ x ]]> > ]]>\n"
                     "  <!ELEMENT a (#PCDATA)> ]>\n"
                     "<a><?pi <b/>?><!--<b/>--></a><!-- after -->\n"),
              "<a >");
    // Character data outside the document element is dropped unread, as it always was;
    // only a CDATA section there is checked.
    EXPECT_EQ(Events("x &bogus <a/> y"), "<a >");
    EXPECT_TRUE(Refused("<a><!DOCTYPE a></a>"));
    EXPECT_TRUE(Refused("<!DOCTYPE a [<!ENTITY e 'x>]><a/>"));
    EXPECT_TRUE(Refused("<a><!-- x --</a>"));
    EXPECT_TRUE(Refused("<a><!- x --></a>"));
    EXPECT_TRUE(Refused("<a><? x?></a>"));
    EXPECT_TRUE(Refused("<a><?x x></a>"));
    EXPECT_TRUE(Refused("<a><!x></a>"));
}

TEST(XmlScannerDocument, TheThreeDocumentRules)
{
    EXPECT_EQ(Events("<![CDATA[text]]><a/>"), "error: Text outside the document element");
    EXPECT_EQ(Events("<a/><![CDATA[text]]>"), "error: Text outside the document element");
    EXPECT_EQ(Events("<![CDATA[ \r\n]]><a/><![CDATA[]]>"), "<a >");
    EXPECT_EQ(Events("<a/><b/>"), "error: More than one document element");
    EXPECT_EQ(Events("<a></a> <a/>"), "error: More than one document element");
    EXPECT_EQ(Events(""), "error: No document element");
    EXPECT_EQ(Events(" \n"), "error: No document element");
    EXPECT_EQ(Events("<?xml version='1.0'?><!-- only a comment -->"), "error: No document element");
    EXPECT_EQ(Events("just text"), "error: No document element");
}

TEST(XmlScannerTags, MismatchedAndMalformedTags)
{
    Recorder recorder;
    zo::xml::ScanResult const result = ScanCopy("<a><b></a></b>", recorder);
    EXPECT_FALSE(result.ok);
    EXPECT_EQ(result.error, "Start-end tags mismatch");
    EXPECT_EQ(result.offset, 8u);

    EXPECT_EQ(Events("<a  ><b/></a \n>"), "<a <b > >");
    for (char const* bad : {"<a></ab>", "<ab></a>", "<a></A>", "</a>", "<a><b></b>", "<a></a/>", "<a></a x>",
                            "<a>< b/></a>", "<a><1/></a>", "<a></ a>", "<a/ >", "<a>x</a", "<a>x<"})
        EXPECT_TRUE(Refused(bad)) << bad;
    // Names are raw bytes: any byte from 0x80 on is a name character.
    EXPECT_EQ(Events("<\xC3\xA9t\xE9><\xFF/></\xC3\xA9t\xE9>"), "<\xC3\xA9t\xE9 <\xFF > >");
}

TEST(XmlScannerBounds, EveryTruncationIsRefusedWithoutReadingPastTheEnd)
{
    std::string const xml = "\xEF\xBB\xBF<?xml version='1.0'?><!DOCTYPE r [<!ENTITY e 'x'>]>"
                            "<r a='1&amp;\r\n2'>t&#x41;&lt;<![CDATA[c]]><!--m--><?p q?><e/>\r\n</r>";
    ASSERT_EQ(Events(xml), "<r @a=1&\n2 \"tA<\" \"c\" <e > >");
    for (std::size_t length = 0; length < xml.size(); ++length)
        EXPECT_TRUE(Refused(std::string_view(xml).substr(0, length))) << length;
}

TEST(XmlScannerBounds, TheBufferEndsWhereLengthSays)
{
    // The bytes after `length` are never looked at.
    std::string const text = "<a>x</a><b/>";
    Recorder recorder;
    EXPECT_TRUE(zo::xml::ScanXml(text.data(), 8, recorder).ok);
    EXPECT_EQ(recorder.out, "<a \"x\" >");
    EXPECT_TRUE(zo::xml::ScanXml(nullptr, 0, recorder).error == "No document element");
    // A NUL byte ends the document as the end of the buffer would.
    using namespace std::string_view_literals;
    EXPECT_EQ(Events("<a>x</a>\0<b/>"sv), "<a \"x\" >");
    EXPECT_TRUE(Refused("<a>x\0</a>"sv));
    EXPECT_TRUE(Refused("<a x='\0'/>"sv));
}

TEST(XmlScannerBounds, HundredThousandLevelsOfNesting)
{
    constexpr int kDepth = 100000;
    std::string xml;
    for (int i = 0; i < kDepth; ++i)
        xml += "<e>";
    xml += "x";
    for (int i = 0; i < kDepth; ++i)
        xml += "</e>";

    struct Counter : zo::xml::ScanHandler {
        void StartElement(std::string_view) override { maxDepth = std::max(maxDepth, ++depth); }
        void Attribute(std::string_view, std::string_view) override {}
        void Text(std::string_view text) override { texts += std::string(text); }
        void EndElement() override { --depth; }
        int depth = 0;
        int maxDepth = 0;
        std::string texts;
    } counter;
    EXPECT_TRUE(zo::xml::ScanXml(xml.data(), xml.size(), counter).ok);
    EXPECT_EQ(counter.maxDepth, kDepth);
    EXPECT_EQ(counter.depth, 0);
    EXPECT_EQ(counter.texts, "x");

    xml.resize(xml.size() - 4); // the document element is not closed
    EXPECT_FALSE(zo::xml::ScanXml(xml.data(), xml.size(), counter).ok);
}
