// XML parser: events, results, errors, chunk borders and linear work on real files.
#include <expect_throw.h>
#include <lkit.h>
#include "xml_events.h"

#include <cstdio>
#include <string>
#include <vector>

namespace {
using lstd::String;
using lxml::XMLFile;
using lxml::XMLParser;
using xml_events::Log;
using xml_events::Reference;

class XMLParserTest : public testing::Test {
protected:
    void SetUp() override { Log().clear(); }

    std::string Write(std::string const& text) {
        std::string const path = mDir.file("doc.xml");
        std::FILE* file = std::fopen(path.c_str(), "wb");
        std::fwrite(text.data(), 1, text.size(), file);
        std::fclose(file);
        return path;
    }
    // The events of text read from a file, and " -> " with the result of Parse.
    std::string Parse(std::string const& text) {
        XMLFile file(0, 0);
        file.Open(Write(text).c_str(), liop::File::OPEN_READ);
        xml_events::Connect(file.GetParser());
        bool const result = file.GetParser().Parse();
        return Log() + (result ? " -> true" : " -> false");
    }

    TempDir mDir;
};

TEST_F(XMLParserTest, SampleDocument) {
    // Deliberate, kept for the consumers: the declaration and comments are open tags, text
    // is reported only before a close tag, and not after a self-closing tag.
    EXPECT_EQ("O(?xml version=1.0 ?= encoding=UTF-8)O(!-- catalog= --= a= small=)"
              "O(catalog owner=Ann & Bob)O(book lang=en id=b1)"
              "O(title)T(Fish & Chips <2nd ed.>)C(title)O(price currency=EUR)T(12.50)C(price)"
              "O(blank)C(blank)O(cover)C(cover)C(book)"
              "O(book id=b2)O(title)T(A \"quoted\" 'title')C(title)O(note kind=twice)T(<)"
              "C(note)C(book)C(catalog) -> false",
              Parse(ReadFile(LKIT_TEST_DATA "/xml/catalog.xml")));
}

TEST_F(XMLParserTest, TagsAndText) {
    struct Row {
        char const* text;
        char const* events;
    } const rows[] = {
        {"<a>  \n\t </a>", "O(a)C(a)"},
        {"<a>x<b>y</b>z</a>", "O(a)O(b)T(y)C(b)T(z)C(a)"},
        {"x</a>", "T(x)C(a)"},                      // text from the start of the document
        {"<a/>x<b>y</b>", "O(a)C(a)O(b)T(y)C(b)"},  // text after a self-closing tag: none
        {"<a/>x</b>", "O(a)C(a)C(b)"},
        {"< a / >< /a>", "O(a)C(a)C(a)"},  // trimmed tag text
        {"</>< / >", "C()C()"},
        {"<a x='1' y=\"2\" z=3 f/>", "O(a z=3 y=2 x=1 f=)C(a)"},  // map order
        {"<<a>>x</a>", "O(a>)T(x)C(a)"},                          // doubled markers are text
        {"x<<<</a>", "T(x<<<)C(a)"},
        {"<a>&amp;amp;&amp;lt;</a>", "O(a)T(&amp;<)C(a)"},
        {"<a>unclosed", "O(a)"},
        {"<a", ""},
        {"text only", ""},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.text);
        Log().clear();
        EXPECT_EQ(std::string(row.events) + " -> false", Parse(row.text));
        EXPECT_EQ(row.events, Reference(row.text));
    }
}

TEST_F(XMLParserTest, ErrorsStopTheParseOnce) {
    // The position is that of the "<" opening the faulty tag, in the whole document.
    EXPECT_EQ("O(a)E(4) -> false", Parse("<a>\n<  >\n<b>"));
    Log().clear();
    EXPECT_EQ("O(a)E(3) -> false", Parse("<a><b <c>"));
    Log().clear();
    EXPECT_EQ("E(0) -> false", Parse("<a<"));
    Log().clear();
    EXPECT_EQ("E(0)", Reference("<a<"));
}

// Slots that steer the parse.
XMLParser* steered;
void Steer(String const& name, XMLParser::PropertyMap const&) {
    if (name == "nest")
        Log() += steered->Parse() ? "[nested true]" : "[nested false]";
    if (name == "stop")
        steered->Terminate();
    if (name == "bad")
        throw lxml::InvalidXMLTag("rejected", __FILE__, __LINE__);
}

TEST_F(XMLParserTest, SlotsSteerTheParse) {
    struct Row {
        char const* text;
        char const* events;
    } const rows[] = {
        // Terminate ends the parse once the tag is handled: the close of <stop/> still comes.
        {"<a><stop/><c>text</c></a>\n<d/>\n", "O(a)O(stop)C(stop) -> true"},
        {"<nest>x</nest>", "O(nest)[nested false]T(x)C(nest) -> false"},
        // A slot raising InvalidXMLTag makes the error event, at that tag.
        {"<a>\n  <bad/>\n<c/>", "O(a)O(bad)E(6) -> false"},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.text);
        Log().clear();
        XMLFile file(0, 0);
        file.Open(Write(row.text).c_str(), liop::File::OPEN_READ);
        steered = &file.GetParser();
        xml_events::Connect(file.GetParser());
        file.GetParser().mOpenTagSignal.Connect(&Steer);
        bool const result = file.GetParser().Parse();
        EXPECT_EQ(row.events, Log() + (result ? " -> true" : " -> false"));
        // Terminated or failed, a parse reports nothing more until InitParse.
        std::string const before = Log();
        EXPECT_EQ(result, file.GetParser().Parse());
        EXPECT_EQ(before, Log());
    }
}

TEST_F(XMLParserTest, BufferErrors) {
    XMLParser parser;
    ExpectThrow<liop::IOException>([&] { parser.Parse(); }, "Invalid buffer");
    ExpectThrow<liop::IOException>([&] { parser.ReadFromBuffer(); }, "Invalid buffer");
    liop::File file;
    file.Open(mDir.file("out.xml").c_str(), liop::File::OPEN_WRITE, liop::File::FILE_TEXT);
    liop::StringReadBuffer buffer(file, 255);
    parser.InitParse(buffer);
    ExpectThrow<liop::IOException>([&] { parser.Parse(); },
                                   "File is not opened or open mode is invalid");
    XMLFile writeOnly(0, 0);
    writeOnly.Open(mDir.file("w.xml").c_str(), liop::File::OPEN_WRITE);
    ExpectThrow<liop::IOException>([&] { writeOnly.GetParser().Parse(); }, "Invalid buffer");
}

TEST_F(XMLParserTest, PendingTextAndTagSteps) {
    liop::File file;
    file.Open(Write("<a>hello<b x='1").c_str(), liop::File::OPEN_READ, liop::File::FILE_TEXT);
    liop::StringReadBuffer buffer(file, 255);
    XMLParser parser;
    xml_events::Connect(parser);
    parser.InitParse(buffer);
    ASSERT_TRUE(buffer.Load());
    EXPECT_TRUE(parser.ReadFromBuffer());
    EXPECT_EQ("hello<b x='1", xml_events::Text(parser.GetPendingText()));
    // A caller cutting the pending text itself: "hello" stands before the close tag.
    lstd::EnclosureTokenizer tokenizer;
    tokenizer.Init("hello</a>", 0);
    String tag;
    ASSERT_TRUE(tokenizer.Next("<", ">", tag));
    long long lastTagEnd = 0, tagStart = 0;
    parser.AnalyzeTag(tag, tokenizer, lastTagEnd, tagStart);
    EXPECT_EQ(5, tagStart);
    EXPECT_EQ(9, lastTagEnd);
    parser.AnalyzeTag("c/", tokenizer, lastTagEnd, tagStart);
    EXPECT_EQ(-1, lastTagEnd);
    ExpectThrow<lxml::InvalidXMLTag>(
        [&] { parser.AnalyzeTag(" ", tokenizer, lastTagEnd, tagStart); },
        "  is invalid XML tag definition");
    EXPECT_EQ("O(a)T(hello)C(a)O(c)C(c)", Log());
}

// A document whose long line mixes every construct; prefixed with n blanks, the borders of
// the 254-byte chunks fall at every offset of it.
std::string LongLineDocument(std::size_t n) {
    std::string line = std::string(n, ' ') + "<r a=\"1\" b='x&amp;y'>";
    for (int i = 0; i < 6; ++i)
        line += "<item id=\"" + std::to_string(i) + "\" note='&quot;q&quot; &lt;'>t&amp;lt; " +
                std::to_string(i) + "</item><e/>tail<<x a=b>>y</x ><p q=\"" + std::string(40, 'v') +
                "\"/>";
    return "<doc>\n" + line + "</r>\n</doc>\n";
}

TEST_F(XMLParserTest, ChunkBordersChangeNothing) {
    std::string const expected = Reference(LongLineDocument(0));
    ASSERT_GT(LongLineDocument(0).size(), 3 * 254U);
    for (std::size_t n = 0; n < 254; ++n) {
        SCOPED_TRACE(n);
        Log().clear();
        EXPECT_EQ(expected + " -> false", Parse(LongLineDocument(n)));
    }
}

TEST_F(XMLParserTest, PropertyMapsAreFreshForEveryTag) {
    // Reused maps must list the properties as a new map would: within one bucket in the
    // order of this tag, whatever came before.
    auto const same = xml_events::SameBucketNames();
    std::string const p = same.first, q = same.second;
    std::string text;
    for (int i = 0; i < 12; ++i) {
        text += "<t " + p + "='1' " + q + "='2'/><t " + q + "='3' " + p + "='4'/>";
        text += "<u k" + std::to_string(i) + "='x' " + p + "='5' " + p + "='6'/>";
    }
    EXPECT_EQ(Reference(text) + " -> false", Parse(text));
}

TEST_F(XMLParserTest, LongTagsAndTextsAcrossManyChunks) {
    std::string const value(100000, 'v');
    std::string const text(300000, 't');
    // A run of "<" opens one tag with its last copy, a run of ">" closes one with its last.
    std::string const document = "<a k='" + value + "'>" + text + "</a>" +
                                 std::string(100000, '<') + "b>" + "<c" + std::string(50000, '>');
    EXPECT_EQ("O(a k=" + value + ")T(" + text + ")C(a)O(b)O(c" + std::string(49999, '>') +
                  ") -> false",
              Parse(document));
}
}  // namespace
