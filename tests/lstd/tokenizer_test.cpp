// tests/lstd/tokenizer_test.cpp - Tokenizer, TTokenizer and EnclosureTokenizer.
#include <lstd/enclosuretokenizer.h>
#include <lstd/tokenizer.h>

#include <expect_throw.h>

#include <string>
#include <vector>

namespace {
using Strings = std::vector<std::string>;

// Up to max tokens of t.Next(args..., token), stopping where it returns false.
template <class T, class... A>
Strings Tokens(unsigned max, T& t, A const&... args) {
    Strings out;
    for (lstd::String token; out.size() < max && t.Next(args..., token);)
        out.emplace_back(token.GetStdChar(), token.GetLength());
    return out;
}

// "start-end" of the last enclosure.
std::string Span(lstd::EnclosureTokenizer const& t) {
    return std::to_string(t.GetStartPosition()) + "-" + std::to_string(t.GetEndPosition());
}
}  // namespace

TEST(Tokenizer, CutsAtDelimitersAndRejectsAnEmptyOne) {
    lstd::Tokenizer t("  a b  ");  // white space: a trailing run gives one empty token
    EXPECT_EQ((Strings{"a", "b", ""}), Tokens(20, t));
    t.Init("x\r\n\ty");  // restarts at 0
    EXPECT_EQ((Strings{"x", "y"}), Tokens(20, t));
    // count < 0: the single-delimiter form, which stops once the delimiter no longer fits.
    // The array form returns the short last token; the earlier delimiter wins; with no
    // delimiter the rest is one token.
    struct Row {
        std::vector<lstd::String> delimiters;
        long count;
        char const* text;
        Strings tokens;
    } const rows[] = {{{"::"}, -1, "a::b", {"a"}},        {{"::"}, -1, "a::::", {"a", ""}},
                      {{"::"}, -1, "::ab::cd", {"ab", "cd"}}, {{"::"}, 1, "a::b", {"a", "b"}},
                      {{"ab", "a"}, 2, "xaby", {"x", "y"}},  {{"a", "ab"}, 2, "xaby", {"x", "by"}},
                      {{}, 0, "a b", {"a b"}}};
    for (Row const& row : rows) {
        SCOPED_TRACE(std::to_string(row.count) + " on " + row.text);
        t.Init(row.text);
        EXPECT_EQ(row.tokens, row.count < 0 ? Tokens(20, t, row.delimiters[0])
                                            : Tokens(20, t, row.delimiters.data(), row.count));
    }
    lstd::String token;
    lstd::String const withEmpty[] = {",", ""};
    char const* message = "Tokenizer::Next() needs a non-empty delimiter.";
    t.Init("a,b");
    ExpectThrow<lstd::InvalidOperationException>([&] { t.Next(withEmpty[1], token); }, message);
    ExpectThrow<lstd::InvalidOperationException>([&] { t.Next(withEmpty, 2, token); }, message);
    EXPECT_EQ(0u, t.GetPosition());
}

TEST(TTokenizer, RemembersTheDelimitersAroundTheLastToken) {
    lstd::String const delimiters[] = {" ", ","};
    lstd::TTokenizer t(" ,x y");
    lstd::Tokenizer& base = t;  // the Next forms are virtual
    EXPECT_EQ(Strings{"x"}, Tokens(1, base, delimiters, 2));
    EXPECT_TRUE(t.IsLeftMatchedSeperator(",") && t.IsRightMatchedSeperator(" "));
    EXPECT_EQ(Strings{"y"}, Tokens(1, base, delimiters, 2));
    EXPECT_TRUE(t.IsLeftMatchedSeperator("") && t.IsRightMatchedSeperator(""));
    t.Init("\tp\nq");
    EXPECT_EQ(Strings{"p"}, Tokens(1, t));
    EXPECT_TRUE(t.IsMatchedSeperator("\t") && t.IsMatchedSeperator("\n"));
    EXPECT_EQ(Strings{"q"}, Tokens(1, base, lstd::String("-")));
    EXPECT_FALSE(t.IsMatchedSeperator("\t") || t.IsMatchedSeperator("\n"));
    lstd::String both[] = {";", ","};  // the token may be one of the delimiters
    t.Init(",a;b");
    ASSERT_TRUE(t.Next(both, 2, both[0]));
    EXPECT_TRUE(both[0] == "a" && t.IsLeftMatchedSeperator(",") && t.IsRightMatchedSeperator(";"));
}

TEST(EnclosureTokenizer, NestingAllowedGivesTheWholeEnclosure) {
    lstd::EnclosureTokenizer t;
    EXPECT_EQ(Strings{}, Tokens(1, t, "(", ")"));  // no text before Init
    lstd::String token("keep");
    t.Init("x (abc", 1);  // left open to the end
    EXPECT_FALSE(t.Next("(", ")", token));
    EXPECT_TRUE(token == "keep" && Span(t) == "2-6");
    t.Init("f(a(b)c) d", 1);
    EXPECT_EQ(Strings{"a(b)c"}, Tokens(1, t, "(", ")"));
    EXPECT_EQ("1-8", Span(t));
    t.Init("<!--x--><!---->", 0);  // longer markers; a close may follow the open directly
    EXPECT_EQ((Strings{"x", ""}), Tokens(20, t, "<!--", "-->"));
}

TEST(EnclosureTokenizer, NestingNotAllowedThrowsAndADoubledMarkerIsText) {
    lstd::EnclosureTokenizer t;
    lstd::String token;
    t.Init("f(a(b)c) d", 0);
    ExpectThrow<lstd::InvalidEnclosureToken>([&] { t.Next("(", ")", token); },
                                             ") token is expected, but met (");
    EXPECT_EQ("1-3", Span(t));
    t.Init("\"a\" b", 0);  // the same marker both ways: the second one opens
    ExpectThrow<lstd::InvalidEnclosureToken>([&] { t.Next("\"", "\"", token); },
                                             "\" token is expected, but met \"");
    t.Init("\"a\" b", 1);
    EXPECT_EQ(Strings{}, Tokens(1, t, "\"", "\""));
    ExpectThrow<lstd::InvalidOperationException>(
        [&] { t.Next("", ")", token); }, "EnclosureTokenizer::Next() needs non-empty markers.");
    t.Init("((a))", 0);  // a marker followed by a copy of itself is not one
    EXPECT_EQ(Strings{"a)"}, Tokens(1, t, "(", ")"));
    t.Init("ab::::c::", 0);
    std::string marks;  // one digit per position, one past the end included
    for (unsigned long pos = 0; pos < 10; ++pos)
        marks += t.IsSeparatorChar(pos, "::") ? '1' : '0';
    EXPECT_EQ("0001100100", marks);
}

// The markers are read before the token is written, so one String may serve as the closing
// marker and as the token (the plain tokenizer allows the same for its delimiters).
TEST(EnclosureTokenizer, TokenMayBeTheClosingMarker) {
    lstd::EnclosureTokenizer t;
    t.Init("(ab)(c)", 0);
    lstd::String open("("), both(")");
    ASSERT_TRUE(t.Next(open, both, both));
    EXPECT_TRUE(both == "ab" && Span(t) == "0-4");
    both = ")";
    ASSERT_TRUE(t.Next(open, both, both));
    EXPECT_EQ("c", both);
    lstd::String token("(");
    t.Init("(ab)(c)", 0);
    ASSERT_TRUE(t.Next(token, ")", token));  // and as the opening marker
    EXPECT_EQ("0-4", Span(t));
}
