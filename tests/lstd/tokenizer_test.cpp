// tests/lstd/tokenizer_test.cpp - Tokenizer, TTokenizer and EnclosureTokenizer.
#include <lstd/enclosuretokenizer.h>
#include <lstd/tokenizer.h>

#include <expect_throw.h>

#include <string>
#include <vector>

namespace {
using Strings = std::vector<std::string>;

// Calls next until it returns false (at most 20 times) and collects the tokens.
template <class F>
Strings Drain(F next) {
    Strings out;
    lstd::String token;
    for (int i = 0; i < 20 && next(token); ++i)
        out.emplace_back(token.GetStdChar(), token.GetLength());
    return out;
}
}  // namespace

TEST(Tokenizer, WhiteSpaceRunsSkippedAndTrailingRunGivesOneEmptyToken) {
    lstd::Tokenizer t("  a b  ");
    EXPECT_EQ((Strings{"a", "b", ""}), Drain([&](lstd::String& s) { return t.Next(s); }));
    EXPECT_EQ(7u, t.GetPosition());
    t.Init("x\r\n\ty");
    EXPECT_EQ(0u, t.GetPosition());
    EXPECT_EQ((Strings{"x", "y"}), Drain([&](lstd::String& s) { return t.Next(s); }));
    t.Init("");
    EXPECT_EQ(Strings{}, Drain([&](lstd::String& s) { return t.Next(s); }));
}

TEST(Tokenizer, SingleDelimiterStopsWhenTheDelimiterNoLongerFits) {
    struct Row {
        char const* delimiter;
        char const* text;
        Strings tokens;
    } const rows[] = {
        {",", "a,,b", {"a", "b"}},
        {",", "a,", {"a"}},
        {",", "a,,", {"a", ""}},
        {",", ",,,", {""}},
        {",", "", {}},
        {"::", "a::b", {"a"}},
        {"::", "a", {}},
        {"::", "a::::", {"a", ""}},
        {"::", "::ab::cd", {"ab", "cd"}},
    };
    for (Row const& row : rows) {
        SCOPED_TRACE(std::string(row.delimiter) + " on " + row.text);
        lstd::Tokenizer t(row.text);
        lstd::String const delimiter(row.delimiter);
        EXPECT_EQ(row.tokens, Drain([&](lstd::String& s) { return t.Next(delimiter, s); }));
    }
}

TEST(Tokenizer, ArrayFormReturnsTheShortLastTokenAndEarlierDelimiterWins) {
    lstd::String const colons[] = {lstd::String("::")};
    lstd::Tokenizer t("a::b");
    EXPECT_EQ((Strings{"a", "b"}), Drain([&](lstd::String& s) { return t.Next(colons, 1, s); }));
    lstd::String const longFirst[] = {lstd::String("ab"), lstd::String("a")};
    t.Init("xaby");
    EXPECT_EQ((Strings{"x", "y"}), Drain([&](lstd::String& s) { return t.Next(longFirst, 2, s); }));
    lstd::String const shortFirst[] = {lstd::String("a"), lstd::String("ab")};
    t.Init("xaby");
    EXPECT_EQ((Strings{"x", "by"}),
              Drain([&](lstd::String& s) { return t.Next(shortFirst, 2, s); }));
    t.Init("a b");  // no delimiter at all: the rest is one token
    EXPECT_EQ((Strings{"a b"}), Drain([&](lstd::String& s) { return t.Next(colons, 0, s); }));
}

TEST(Tokenizer, EmptyDelimiterIsRejected) {
    lstd::Tokenizer t("a,b");
    lstd::String token;
    char const* message = "Tokenizer::Next() needs a non-empty delimiter.";
    ExpectThrow<lstd::InvalidOperationException>([&] { t.Next(lstd::String(), token); }, message);
    lstd::String const withEmpty[] = {lstd::String(","), lstd::String()};
    ExpectThrow<lstd::InvalidOperationException>([&] { t.Next(withEmpty, 2, token); }, message);
    EXPECT_EQ(0u, t.GetPosition());
}

TEST(TTokenizer, RemembersTheDelimitersAroundTheLastToken) {
    lstd::String const delimiters[] = {lstd::String(" "), lstd::String(",")};
    lstd::TTokenizer t(" ,x y");
    lstd::Tokenizer& base = t;  // the Next forms are virtual
    lstd::String token;
    ASSERT_TRUE(base.Next(delimiters, 2, token));
    EXPECT_EQ("x", token);
    EXPECT_TRUE(t.IsLeftMatchedSeperator(",") && t.IsRightMatchedSeperator(" "));
    ASSERT_TRUE(base.Next(delimiters, 2, token));
    EXPECT_EQ("y", token);
    EXPECT_TRUE(t.IsLeftMatchedSeperator("") && t.IsRightMatchedSeperator(""));
    t.Init("\tp\nq");
    ASSERT_TRUE(t.Next(token));
    EXPECT_TRUE(t.IsMatchedSeperator("\t") && t.IsMatchedSeperator("\n"));
    ASSERT_TRUE(base.Next(lstd::String("-"), token));
    EXPECT_FALSE(t.IsMatchedSeperator("\t") || t.IsMatchedSeperator("\n"));
}

TEST(EnclosureTokenizer, NestingAllowedGivesTheWholeEnclosure) {
    lstd::EnclosureTokenizer t;
    lstd::String token("keep");
    EXPECT_FALSE(t.Next("(", ")", token));  // no text before Init
    t.Init("x (abc", 1);                    // left open to the end
    EXPECT_FALSE(t.Next("(", ")", token));
    EXPECT_EQ("keep", token);
    EXPECT_EQ(2u, t.GetStartPosition());
    EXPECT_EQ(6u, t.GetEndPosition());
    t.Init("f(a(b)c) d", 1);
    ASSERT_TRUE(t.Next("(", ")", token));
    EXPECT_EQ("a(b)c", token);
    EXPECT_EQ(1u, t.GetStartPosition());
    EXPECT_EQ(8u, t.GetEndPosition());
    EXPECT_FALSE(t.Next("(", ")", token));
    t.Init("<!--x--><!---->", 0);  // longer markers; a close may follow the open directly
    EXPECT_EQ((Strings{"x", ""}), Drain([&](lstd::String& s) { return t.Next("<!--", "-->", s); }));
}

TEST(EnclosureTokenizer, NestingNotAllowedThrowsWithBothMarkers) {
    lstd::EnclosureTokenizer t;
    lstd::String token;
    t.Init("f(a(b)c) d", 0);
    ExpectThrow<lstd::InvalidEnclosureToken>([&] { t.Next("(", ")", token); },
                                             ") token is expected, but met (");
    EXPECT_EQ(1u, t.GetStartPosition());
    EXPECT_EQ(3u, t.GetEndPosition());
    t.Init("\"a\" b", 0);  // the same marker both ways: the second one opens
    ExpectThrow<lstd::InvalidEnclosureToken>([&] { t.Next("\"", "\"", token); },
                                             "\" token is expected, but met \"");
    t.Init("\"a\" b", 1);
    EXPECT_FALSE(t.Next("\"", "\"", token));
    ExpectThrow<lstd::InvalidOperationException>(
        [&] { t.Next("", ")", token); }, "EnclosureTokenizer::Next() needs non-empty markers.");
}

TEST(EnclosureTokenizer, DoubledMarkerIsNotAMarkerAtItsFirstCopy) {
    lstd::EnclosureTokenizer t;
    t.Init("((a))", 0);
    lstd::String token;
    ASSERT_TRUE(t.Next("(", ")", token));
    EXPECT_EQ("a)", token);
    EXPECT_EQ(1u, t.GetStartPosition());
    EXPECT_EQ(5u, t.GetEndPosition());
    t.Init("ab::::c::", 0);
    bool const expected[] = {false, false, false, true, true, false, false, true, false, false};
    for (unsigned long pos = 0; pos < 10; ++pos) {
        SCOPED_TRACE(pos);
        EXPECT_EQ(expected[pos], t.IsSeparatorChar(pos, "::"));
    }
}
