// Tests of lstd::StringBuilder.
#include <lstd/exception.h>
#include <lstd/stringbuilder.h>

#include <expect_throw.h>

#include <climits>
#include <string>

using lstd::String;
using lstd::StringBuilder;
using namespace std::string_literals;

namespace {
// The joined text; ToString leaves the builder unchanged, so it may be called at will.
std::string Text(StringBuilder const &b) {
    String const s = b.ToString();
    EXPECT_EQ(s.GetLength(), b.GetLength());
    return std::string(s.GetStdChar(), s.GetLength());
}
} // namespace

TEST(StringBuilder, AppendAndInsertByPieceIndex) {
    StringBuilder b;
    EXPECT_EQ(Text(b), "");
    b.Append("ab");
    b.Insert(String("X"), 0);
    EXPECT_EQ(Text(b), "Xab");
    b.Append(String("c\0d", 3));
    b.Insert(String("YZ"), 2); // Deliberate: between the pieces "ab" and "c\0d".
    b.Insert(String("!"), 4);
    EXPECT_EQ(Text(b), "XabYZc\0d!"s);
    EXPECT_EQ(Text(b), "XabYZc\0d!"s);
    b.Append(-5LL);
    b.Append(LLONG_MIN);
    EXPECT_EQ(Text(b), "XabYZc\0d!-5-9223372036854775808"s);
}

TEST(StringBuilder, InsertPastThePiecesThrows) {
    char const *const message =
        "The position passed into PtrDLinkList<T>::InsertAt() method is invalid.";
    StringBuilder b;
    ExpectThrow<lstd::InvalidIndexException>([&] { b.Insert(String("x"), 1); }, message);
    b.Append("ab");
    ExpectThrow<lstd::InvalidIndexException>([&] { b.Insert(String("x"), 2); }, message);
    EXPECT_EQ(Text(b), "ab");
}
