// Tests of lstd::StringBuilder.
#include <lstd/exception.h>
#include <lstd/stringbuilder.h>

#include <expect_throw.h>
#include <failing_alloc.h>

#include <climits>
#include <string>

using lstd::String;
using lstd::StringBuilder;
using namespace std::string_literals;

namespace {
// The joined text; ToString leaves the builder unchanged, so it may be called at will.
std::string Text(StringBuilder const& b) {
    String const s = b.ToString();
    EXPECT_EQ(s.GetLength(), b.GetLength());
    return std::string(s.GetStdChar(), s.GetLength());
}
}  // namespace

TEST(StringBuilder, AppendAndInsertByPieceIndex) {
    char const* const message =
        "The position passed into PtrDLinkList<T>::InsertAt() method is invalid.";
    StringBuilder b;
    EXPECT_EQ(Text(b), "");
    ExpectThrow<lstd::InvalidIndexException>([&] { b.Insert(String("x"), 1); }, message);
    b.Append("ab");
    ExpectThrow<lstd::InvalidIndexException>([&] { b.Insert(String("x"), 2); }, message);
    EXPECT_EQ(Text(b), "ab");  // inserting past the pieces throws and changes nothing
    b.Insert(String("X"), 0);
    EXPECT_EQ(Text(b), "Xab");
    b.Append(String("c\0d", 3));
    b.Insert(String("YZ"), 2);  // Deliberate: between the pieces "ab" and "c\0d".
    b.Insert(String("!"), 4);
    EXPECT_EQ(Text(b), "XabYZc\0d!"s);
    EXPECT_EQ(Text(b), "XabYZc\0d!"s);
    b.Append(-5LL);
    b.Append(LLONG_MIN);
    EXPECT_EQ(Text(b), "XabYZc\0d!-5-9223372036854775808"s);
}

// Appended pieces stay packed until an Insert lands among them; when memory runs out while
// they become list pieces, at whichever allocation, the builder keeps every piece as it was.
TEST(StringBuilder, InsertAmongAppendedPiecesIsAllOrNothing) {
    StringBuilder b;
    b.Append("ab");
    b.Append(String("cd"));
    b.Append(7LL);
    for (long allowed = 0; FailingAllocations::Available(); ++allowed) {
        SCOPED_TRACE(allowed);
        String const x("X");
        bool failed = false;
        {
            FailingAllocations failing(allowed, 1);
            try {
                b.Insert(x, 2);
            } catch (lstd::NotEnoughMemoryException const&) {
                failed = true;
            }
        }
        if (!failed)
            break;
        EXPECT_EQ(Text(b), "abcd7");
    }
    if (!FailingAllocations::Available())
        b.Insert(String("X"), 2);
    b.Insert(String("Y"), 4);
    EXPECT_EQ(Text(b), "abcdX7Y");
    std::string const longPiece(70000, 'L');  // longer than a length byte and a chunk
    b.Append(String(longPiece.data(), longPiece.size()));
    b.Append("z");
    StringBuilder copy(b);
    copy.Insert(String("-"), 6);  // between the long piece and "z"
    EXPECT_EQ(Text(copy), "abcdX7Y" + longPiece + "-z");
    EXPECT_EQ(Text(b), "abcdX7Y" + longPiece + "z");
}
