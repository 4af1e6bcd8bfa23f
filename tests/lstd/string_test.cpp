// Tests of lstd::String, the byte string of the library.
#include <expect_throw.h>
#include <lkit.h>

#include <cstdarg>
#include <cstdlib>
#include <string>
#include <tuple>
#include <type_traits>
#include <vector>

using lstd::String;
using namespace std::string_literals;

namespace {
unsigned long const kNone = static_cast<unsigned long>(-1);
template <class... T>
using Row = std::tuple<T...>;
using Strs = std::vector<std::string>;

String S(std::string const& b) { return String(b.data(), b.size()); }

// The bytes of s, embedded NULs included; checks the terminator on the way.
std::string B(String const& s) {
    EXPECT_EQ(s.GetStdChar()[s.GetLength()], '\0');
    return std::string(s.GetStdChar(), s.GetLength());
}

// B of a copy of s after the mutating member f.
std::string Mut(String s, void (String::*f)()) { return (s.*f)(), B(s); }

// Formats through both va_list forms: into target, and into the raw buffer and length.
void VSprintf(String& target, char*& buffer, unsigned long& length, char const* format, ...) {
    va_list args;
    va_start(args, format);
    String::Sprintf(target, format, args);
    String::Sprintf(buffer, length, format, args);
    va_end(args);
}
}  // namespace

TEST(String, ConstructCopyAndMove) {
    static_assert(!std::is_convertible<char, String>::value, "String(char const&) is explicit");
    EXPECT_TRUE(String("").IsNull());
    EXPECT_EQ((Strs{B(String()), B(String("ab\0c")), B(String('\0'))}), (Strs{"", "ab", "\0"s}));
    String a("a\0b", 3), b(a), c;
    c = a;
    b[0] = 'X';
    c[2] = 'Y';
    EXPECT_EQ((Strs{B(a), B(b), B(c)}), (Strs{"a\0b"s, "X\0b"s, "a\0Y"s}));  // deep copies
    String moved(std::move(b));
    EXPECT_EQ((Strs{B(moved), B(b)}), (Strs{"X\0b"s, ""}));  // the source stays valid and empty
    b += "more";
    c = std::move(b);
    b += String("x");
    EXPECT_EQ((Strs{B(c), B(b)}), (Strs{"more", "x"}));
    String const& cs = c;  // an index outside the string throws, const or not
    EXPECT_EQ(cs[3], 'e');
    for (long long i : {-1LL, 4LL}) {
        ExpectThrow<lstd::InvalidIndexException>([&] { c[i]; }, "String");
        ExpectThrow<lstd::InvalidIndexException>([&] { cs[i]; }, "String");
    }
}

TEST(String, ClearLeavesAUsableEmptyString) {
    String s(" text ");
    s.Clear();
    EXPECT_EQ(B(s), "");
    EXPECT_TRUE(s.Find(String(), 0) == 0 && s.GetMaxPrefix(String(), nullptr) == 0 &&
                String::Compare(s, String()) == 0);
    s.Trim();
    s.ToUpper();
    s.ReplaceAll(String("a"), String("b"), 0);
    EXPECT_EQ(B(s.GetSubString(0, -1) + "ab"), "ab");
    s.Resize(2);
    std::string const resized = B(s);
    s.Clear();
    s.Sprintf("%d", 12);
    std::string const printed = B(s);
    s.Clear();
    s += "x";
    EXPECT_EQ((Strs{resized, printed, B(s)}), (Strs{"  ", "12", "x"}));
    s.Clear();  // and destroyed while cleared
}

TEST(String, GetSubString) {
    Row<unsigned long, long long, char const*> const rows[] = {
        {2, -1, "cdef"}, {4, 10, "ef"}, {6, 1, ""}, {0, 0, ""}, {1, 3, "bcd"}, {5, -9, "f"},
        {9, -1, ""}};
    for (auto const& [pos, count, want] : rows) {
        SCOPED_TRACE(testing::Message() << pos << ", " << count);
        EXPECT_EQ(B(String("abcdef").GetSubString(pos, count)), want);
    }
    EXPECT_EQ(B(String("a\0b", 3).GetSubString(1, 2)), "\0b"s);
}

TEST(String, CompareIsLengthFirst) {
    Row<std::string, std::string, long> const rows[] = {
        {"b", "aa", -1}, {"ab", "aa", 1},     {"aa", "ab", -1},       {"abc", "abc", 0},
        {"", "a", -1},   {"\x80", "\x7F", 1}, {"a\0b"s, "a\0c"s, -1}, {"a\0"s, "a", 1}};
    for (auto const& [a, b, want] : rows) {
        SCOPED_TRACE(testing::PrintToString(a) + " vs " + testing::PrintToString(b));
        EXPECT_EQ(String::Compare(S(a), S(b)), want);
        EXPECT_EQ((std::vector<bool>{S(a) < S(b), S(a) > S(b), S(a) == S(b)}),
                  (std::vector<bool>{want == -1, want == 1, want == 0}));
    }
    // The char const* forms: length first too, and a C string stops at its NUL.
    EXPECT_TRUE("b" < String("aa") && "ab" > String("aa") && !(String("a\0b", 3) == "a"));
}

TEST(String, Find) {
    Row<char const*, unsigned long, unsigned long> const rows[] = {
        {"", 3, 3},       {"", 4, kNone}, {"abcd", 0, kNone}, {"bc", 0, 1},
        {"ab", 1, kNone}, {"c", 2, 2},    {"c", 3, kNone},    {"abc", 0, 0}};
    for (auto const& [needle, start, want] : rows) {
        SCOPED_TRACE(testing::Message() << '"' << needle << "\" from " << start);
        EXPECT_EQ(String("abc").Find(String(needle), start), want);
        EXPECT_EQ(String("abc").Find(needle, start), want);
    }
    EXPECT_EQ(S("a\0b\0c"s).Find(S("\0c"s), 0), 3UL);
}

TEST(String, FindFirstOfSeveralNeedles) {
    // At one position the earlier needle wins, even when a later one is longer.
    Row<std::vector<String>, unsigned long, unsigned long, long> const rows[] = {
        {{"a", "ab"}, 0, 1, 0}, {{"ab", "a"}, 0, 1, 0}, {{"zz", "b"}, 0, 2, 1},
        {{"b", "xa"}, 0, 0, 1}, {{"abc"}, 0, kNone, 9}, {{"x"}, 1, kNone, 9},
        {{"b"}, 3, kNone, 9}};
    for (auto const& [needles, start, want, wantWhich] : rows) {
        SCOPED_TRACE(testing::Message() << B(needles[0]) << " from " << start);
        long which = 9;
        long const n = static_cast<long>(needles.size());
        EXPECT_EQ(String("xab").Find(needles.data(), n, &which, start), want);
        EXPECT_EQ(which, wantWhich);
    }
}

TEST(String, GetMaxPrefix) {
    // clang-format off
    Row<char const*, char const*, unsigned long> const rows[] = {
        {"abcd", "abxy", 2}, {"", "", 0}, {"a", "", 0}, {"abc", "abcde", 3},
        {"abcdefgh", "abcdefgX", 7}, {"abcdefgh", "aXcdefgh", 1}};
    // clang-format on
    for (auto const& [a, b, want] : rows) {
        SCOPED_TRACE(testing::Message() << a << " / " << b);
        String prefix("stale");
        EXPECT_EQ(String(a).GetMaxPrefix(String(b), &prefix), want);
        EXPECT_EQ(B(prefix), std::string(a, want));
    }
}

TEST(String, ReplaceFirstAndAll) {
    // Deliberate: overlapping matches all count and are replaced one after another with the
    // running shift: 'aa' in 'aaaa' is at 0, 1 and 2, and each lands on byte 0 again.
    // clang-format off
    Row<char const*, char const*, char const*, unsigned long, char const*, char const*> const rows[] = {
        {"abab", "ab", "X", 0, "Xab", "XX"},    {"abab", "ab", "X", 1, "abX", "abX"},
        {"abab", "zz", "X", 0, "abab", "abab"}, {"abab", "ab", "X", 4, "abab", "abab"},
        {"aXa", "a", "bb", 0, "bbXa", "bbXbb"}, {"abcabc", "bc", "", 0, "aabc", "aa"},
        {"aaaa", "aa", "b", 0, "baa", "b"},     {"aaa", "aa", "bbb", 0, "bbba", "bbbbb"},
        {"aaa", "aa", "bc", 0, "bca", "bbc"}};
    // clang-format on
    for (auto const& [in, find, with, start, wantFirst, wantAll] : rows) {
        SCOPED_TRACE(testing::Message() << in << ": " << find << " -> " << with);
        String first(in), all(in);
        first.Replace(String(find), String(with), start);
        all.ReplaceAll(String(find), String(with), start);
        EXPECT_EQ((Strs{B(first), B(all)}), (Strs{wantFirst, wantAll}));
    }
    lstd::ValDLinkList<unsigned long> positions;
    for (unsigned long p : {1, 3})
        positions.Append(p);
    String s("a-b-c");
    s.ReplaceAtPositions(String("-"), String("=="), positions);
    EXPECT_EQ(B(s), "a==b==c");
}

// Matches that do not overlap are replaced in one pass; the result is the running shift's.
// An empty find matches before every byte from start on.
TEST(String, ReplaceAllOfSeparateMatches) {
    Row<char const*, char const*, char const*, unsigned long, char const*> const rows[] = {
        {"abc", "", "-", 1, "a-b-c"},       {"ab", "", "xy", 0, "xyaxyb"},
        {"a.b.c", ".", ",", 0, "a,b,c"},    {"x&amp;y&amp;", "&amp;", "&", 0, "x&y&"},
        {"&amp;&amp;", "&amp;", "", 0, ""}, {"a<b<", "<", "&lt;", 1, "a&lt;b&lt;"}};
    for (auto const& [in, find, with, start, want] : rows) {
        SCOPED_TRACE(testing::Message() << in << ": " << find << " -> " << with);
        String s(in);
        s.ReplaceAll(String(find), String(with), start);
        EXPECT_EQ(B(s), want);
    }
    String self("abab");
    self.ReplaceAll(self, String("x"));  // the text may be its own find or with
    std::string const once = B(self);
    self.Replace(String("x"), self);
    EXPECT_EQ((Strs{once, B(self)}), (Strs{"x", "x"}));
}

// The running position of an overlapping match may fall below 0 once earlier matches have
// shrunk the text; nothing is left to move there, so the text simply ends empty.
TEST(String, ReplaceAllOverlapsBelowTheStartEmptyTheText) {
    Row<char const*, char const*, unsigned long, char const*> const rows[] = {
        {"aaa", "aa", 0, ""}, {"aaaa", "aaa", 0, ""}, {"abaaaaa", "aaa", 1, ""}};
    for (auto const& [in, find, start, want] : rows) {
        SCOPED_TRACE(in);
        String s(in);
        s.ReplaceAll(String(find), String(), start);
        EXPECT_EQ(B(s), want);
    }
    // Where bytes would really move outside the text, it still fails: in 'aaaab' the second
    // match runs at -1 with two bytes behind it.
    String s("aaaab");
    ExpectThrow<lstd::UnknownException>([&] { s.ReplaceAll(String("aa"), String()); },
                                        "String::ReplaceAtPositions()");
    lstd::ValDLinkList<unsigned long> positions;
    positions.Append(4);
    String t("a-b");
    ExpectThrow<lstd::UnknownException>(
        [&] { t.ReplaceAtPositions(String("-"), String("="), positions); },
        "String::ReplaceAtPositions()");
}

// A length whose block size (length + 1) does not fit in 64 bits is an allocation failure;
// the String keeps its text.
TEST(String, LengthsThatOverflowTheBlockSizeFailCleanly) {
    unsigned long const huge = kNone;
    String s("abc"), empty;
    ExpectThrow<lstd::NotEnoughMemoryException>([&] { s.Resize(huge); }, "String");
    ExpectThrow<lstd::NotEnoughMemoryException>([&] { empty.Resize(huge); }, "String");
    ExpectThrow<lstd::NotEnoughMemoryException>([&] { String("xyz", huge); }, "String");
    EXPECT_EQ((Strs{B(s), B(empty)}), (Strs{"abc", ""}));
    s += "d";
    EXPECT_EQ(B(s), "abcd");
}

TEST(String, ResizeTrimAndCase) {
    String s("ab");
    s.Resize(5);
    EXPECT_EQ(B(s), "ab   ");  // Deliberate: spaces, not NULs.
    s.Resize(1);
    EXPECT_EQ(B(s), "a");
    // Vertical tab and form feed are not white space.
    Row<char const*, char const*, char const*, char const*> const rows[] = {
        {" \t\r\nab c\n\r\t ", "ab c\n\r\t ", " \t\r\nab c", "ab c"},
        {" \t\r\n", "", "", ""},
        {"abc", "abc", "abc", "abc"},
        {" \va\f ", "\va\f ", " \va\f", "\va\f"}};
    for (auto const& [in, head, trail, both] : rows) {
        SCOPED_TRACE(testing::PrintToString(in));
        String const k(in);
        EXPECT_EQ((Strs{B(k.TrimHead()), B(k.TrimTrail()), B(k.Trim())}),
                  (Strs{head, trail, both}));
        EXPECT_EQ(
            (Strs{Mut(k, &String::TrimHead), Mut(k, &String::TrimTrail), Mut(k, &String::Trim)}),
            (Strs{head, trail, both}));
    }
    String const t("aB1-z\0Q", 7);  // the const forms case a copy with the mutating ones
    EXPECT_EQ((Strs{B(t.ToUpper()), B(t.ToLower())}), (Strs{"AB1-Z\0Q"s, "ab1-z\0q"s}));
}

TEST(String, IsDigit) {
    Row<char const*, bool> const rows[] = {{"", true},    {"0123456789", true}, {"-1", false},
                                           {" 1", false}, {"1.5", false},       {"/", false},
                                           {"09:", false}};
    for (auto const& [text, want] : rows) {
        SCOPED_TRACE(text);
        EXPECT_EQ((std::vector<bool>{String::IsDigit(text), String::IsDigit(String(text)),
                                     String(text).IsDigit()}),
                  std::vector<bool>(3, want));
    }
    EXPECT_TRUE(String::IsDigit("x", -3));  // a count below 1 is an empty text
    EXPECT_TRUE(String::IsDigit("12x", 2) && !String::IsDigit(String("1\0", 2)));
}

TEST(String, SprintfReplacesTheWholeTarget) {
    String s("old contents"), t(s), u(s), v(s);
    s.Sprintf("%d-%s", 7, "x");
    t.Sprintf(String("%c%c"), 'p', 'q');
    String::Sprintf(u, "[%s]", "abc");
    String::Sprintf(v, String("%03d"), 5);
    EXPECT_EQ((Strs{B(s), B(t), B(u), B(v), B(String::SSprintf(String("%x/%s"), 255u, ""))}),
              (Strs{"7-x", "pq", "[abc]", "005", "ff/"}));
    s = v;
    s.Sprintf(String(""));  // Deliberate: an empty format leaves the target as it was.
    String::Sprintf(s, String(""));
    EXPECT_EQ(B(s), "005");
    // "%s" gets 20 bytes at first: results on both sides of that, and far beyond.
    for (unsigned long n : {18UL, 19UL, 20UL, 1000UL}) {
        String::Sprintf(s, "%s", std::string(n, 'y').c_str());
        EXPECT_EQ(B(s), std::string(n, 'y'));
    }
    // The C library rejects the incomplete "%l" (on purpose here, hence no format warning):
    // the text written before it is kept.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wformat"
    String::Sprintf(s, "%s=%l", "name");
#pragma GCC diagnostic pop
    EXPECT_EQ(B(s), "name=");
}

TEST(String, SprintfFromAVaList) {
    String s("old");
    char* buffer = nullptr;
    unsigned long length = 0;
    VSprintf(s, buffer, length, "%s=%ld", "k", -42L);
    EXPECT_EQ(B(s), "k=-42");
    ASSERT_NE(buffer, nullptr);
    EXPECT_EQ(std::string(buffer, length + 1), "k=-42\0"s);
    char* const kept = buffer;
    VSprintf(s, buffer, length, "");  // Deliberate: an empty format changes nothing.
    EXPECT_TRUE(B(s) == "k=-42" && buffer == kept && length == 5);
    VSprintf(s, buffer, length, "%s", "replaced");  // frees the old block
    EXPECT_EQ(std::string(buffer, length + 1), "replaced\0"s);
    std::free(buffer);
}
