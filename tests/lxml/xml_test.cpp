// XML helpers: escaping, property text, tag text and the analysis of tag text.
#include <expect_throw.h>
#include <lkit.h>

#include <algorithm>
#include <cstdint>
#include <random>
#include <string>
#include <vector>

namespace {
using lstd::String;
using lxml::XML;
using lxml::XMLProperty;
using lxml::XMLPropValue;
using Map = lstd::ValHashMap<String, String>;

std::string S(String const& s) { return std::string(s.GetStdChar(), s.GetLength()); }

// "k=v" for every entry of map, sorted.
std::vector<std::string> Entries(Map const& map) {
    std::vector<std::string> entries;
    lstd::ValHashMapIterator<String, String> it(map);
    while (++it)
        entries.push_back(S(it.GetKey()) + "=" + S(it.GetValue()));
    std::sort(entries.begin(), entries.end());
    return entries;
}

// The replacements one table position after the other, as the tables define them.
String ReplaceInTableOrder(String text, String const* from, String const* to) {
    for (int i = 0; i < 5; ++i)
        text.ReplaceAll(from[i], to[i], 0);
    return text;
}

TEST(XMLEscaping, EscapeAndUnescape) {
    EXPECT_EQ("&amp;", S(XML::mEscapseCharArr[0]));
    EXPECT_EQ(">", S(XML::mUnescapseCharArr[4]));
    EXPECT_EQ("a &lt; b &amp;&amp; &apos;c&apos;", S(XML::EscapeText("a < b && 'c'")));
    EXPECT_EQ("a < b && 'c'", S(XML::UnescapeText(XML::EscapeText("a < b && 'c'"))));
    // Deliberate: what "&amp;" leaves is read again, so the ampersand entity before "lt;"
    // gives "<"; only one level of "&amp;" is undone.
    EXPECT_EQ("<", S(XML::UnescapeText("&amp;lt;")));
    EXPECT_EQ("&amp;", S(XML::UnescapeText("&amp;amp;")));
    EXPECT_EQ("&#60; &unknown; & &", S(XML::UnescapeText("&#60; &unknown; &amp; &")));
}

TEST(XMLEscaping, AgreeWithTheTablesReplacedInOrder) {
    char const* const pieces[] = {"&", "amp;", "lt;", "gt;", "quot;", "apos;", "a", ";",
                                  "<", ">",    "'",   "\"",  "&amp;", "&lt",   "l", "t"};
    std::mt19937 random(7);
    for (int round = 0; round < 3000; ++round) {
        std::string text;
        for (int n = random() % 12; n > 0; --n)
            text += pieces[random() % 16];
        SCOPED_TRACE(text);
        String const s(text.c_str());
        EXPECT_EQ(S(ReplaceInTableOrder(s, XML::mEscapseCharArr, XML::mUnescapseCharArr)),
                  S(XML::UnescapeText(s)));
        EXPECT_EQ(S(ReplaceInTableOrder(s, XML::mUnescapseCharArr, XML::mEscapseCharArr)),
                  S(XML::EscapeText(s)));
    }
}

TEST(XMLPropertyText, EveryKindOfValue) {
    XMLProperty p("v", "");
    struct Row {
        void (*set)(XMLPropValue&);
        char const* text;
    } const rows[] = {
        {[](XMLPropValue& v) { v.SetInt32Value(-5); }, "v=-5"},
        // "%d" and "%u" print the low 32 bits: the formats are kept as files have them.
        {[](XMLPropValue& v) { v.SetInt32Value(0x100000005L); }, "v=5"},
        {[](XMLPropValue& v) { v.SetUInt32Value(0x1FFFFFFFFUL); }, "v=4294967295"},
        {[](XMLPropValue& v) { v.SetUInt64Value(0xFFFFFFFF00000007ULL); }, "v=7"},
        // "%s=%l" is incomplete: the C library prints what comes before the conversion.
        {[](XMLPropValue& v) { v.SetInt64Value(42); }, "v="},
        {[](XMLPropValue& v) { v.SetFloat32Value(1.5f); }, "v=1.500000"},
        {[](XMLPropValue& v) { v.SetFloat64Value(-2.0 / 3); }, "v=-0.666667"},
        {[](XMLPropValue& v) { v.SetStringValue("say \"hi\" <&>"); },
         "v=\"say &quot;hi&quot; &lt;&amp;&gt;\""},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.text);
        row.set(p.mValue);
        EXPECT_EQ(row.text, S(XML::PropertyToString(p)));
        EXPECT_EQ(row.text, S(p.ToString()));
    }
    XMLProperty cut(String("ab\0c", 4), String("x\0y", 3));
    EXPECT_EQ("ab=\"x\"", S(cut.ToString()));  // "%s" ends at the first NUL
    // Deliberate: an unset value's "%d" receives the name's text, so the number printed is
    // its address as an int.
    p.mValue = XMLPropValue();
    int const number = static_cast<int>(reinterpret_cast<std::uintptr_t>(p.GetStdChar()));
    EXPECT_EQ(std::to_string(number) + "=\"\"", S(p.ToString()));
}

TEST(XMLTagText, BlankAfterTheNamePropertiesBackToBack) {
    EXPECT_EQ("<a >", S(XML::CreateOpenTagString("a", nullptr)));
    EXPECT_EQ("<a />", S(XML::CreateSingleTagString("a", nullptr)));
    EXPECT_EQ("</a>", S(XML::CreateCloseTagString("a")));
    lstd::PtrHashSet<XMLProperty> set(&XMLProperty::Hash);
    XMLProperty* x = new XMLProperty("x", "1");
    XMLProperty* y = new XMLProperty("y", "2");
    set.Append(x);
    set.Append(y);
    y->mValue.SetInt32Value(2);
    bool const xFirst = String::Hash(String("x")) % 32767 < String::Hash(String("y")) % 32767;
    std::string const props = xFirst ? "x=\"1\"y=2" : "y=2x=\"1\"";
    EXPECT_EQ("<a " + props + ">", S(XML::CreateOpenTagString("a", &set)));
    EXPECT_EQ("<a " + props + "/>", S(XML::CreateSingleTagString("a", &set)));
    set.Clear(1);
}

TEST(XMLTagAnalysis, CloseSingleAndName) {
    String part("untouched"), rest;
    EXPECT_FALSE(XML::IsCloseTagName("", &part));
    EXPECT_FALSE(XML::IsCloseTagName("a/", &part));
    EXPECT_FALSE(XML::IsSingleTagName("/a", &part));
    EXPECT_EQ("untouched", S(part));
    EXPECT_TRUE(XML::IsCloseTagName("/a b/", &part));
    EXPECT_EQ("a b/", S(part));
    EXPECT_TRUE(XML::IsSingleTagName("a x='1' /", &part));
    EXPECT_EQ("a x='1' ", S(part));
    EXPECT_FALSE(XML::TokenTagName(" \t\r\n", part, rest));
    EXPECT_TRUE(XML::TokenTagName("  a\tb=1 c", part, rest));
    EXPECT_EQ("a", S(part));
    EXPECT_EQ("b=1 c", S(rest));
}

TEST(XMLTagAnalysis, Properties) {
    struct Row {
        char const* text;
        std::vector<std::string> entries;
    } const rows[] = {
        {"x=\"1\" y='2'", {"x=1", "y=2"}},
        {"a=\"it's\" b='say \"hi\"'", {"a=it's", "b=say \"hi\""}},
        {" a = \" spaced out \" ", {"a=spaced out"}},
        {"a=bare b=two", {"a=bare", "b=two"}},
        {"flag other=1", {"flag=", "other=1"}},
        {"a=\"unclosed value", {"a=unclosed value"}},
        {"a=\"1\" a=\"2\"", {"a=2"}},
        {"=\"orphan\" b=1", {"b=1"}},
        {"a=\"&amp;lt;&quot;\"", {"a=<\""}},
        {"a=\"x\"b=\"y\"", {"a=x", "b=y"}},
        {"", {}},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(row.text);
        Map map(&String::Hash);
        XML::TokenProperty(row.text, map);
        EXPECT_EQ(row.entries, Entries(map));
    }
}

TEST(XMLTagAnalysis, PropertyByPropertyAndSplit) {
    String const text(" a='1' b c=\"&lt;\"  ");
    unsigned long position = 0;
    String name, value;
    std::string seen;
    while (XML::TokenPropTextForSeparator(text, position, name, value))
        seen += S(name) + "=" + S(value) + "@" + std::to_string(position) + " ";
    EXPECT_EQ("a=1@6 b=@9 c=<@17 ", seen);
    EXPECT_EQ(text.GetLength(), position);
    Map map(&String::Hash);
    map.Append("kept", "1");
    EXPECT_FALSE(XML::SplitTagNameAndProperty("   ", name, map));  // no name: untouched
    EXPECT_EQ((std::vector<std::string>{"kept=1"}), Entries(map));
    EXPECT_TRUE(XML::SplitTagNameAndProperty("item id='7' kept=2", name, map));
    EXPECT_EQ("item", S(name));
    EXPECT_EQ((std::vector<std::string>{"id=7", "kept=2"}), Entries(map));
}
}  // namespace
