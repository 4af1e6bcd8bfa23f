// lstd/string.h - the library's byte string.
#ifndef LSTD_STRING_H
#define LSTD_STRING_H

#include <cstdarg>
#include <cstddef>
#include <cstring>
#include <iosfwd>
#include <string_view>

namespace lstd {
template <typename T>
class ValDLinkList;
class StringBuilder;

/// An owned, exactly sized, NUL-terminated byte string with a 64-bit length. There is no
/// capacity: every growth or shrink reallocates to the exact length + 1 (StringBuilder is
/// the class for building long texts). Bytes are uninterpreted; embedded NULs survive every
/// String-to-String operation and are lost only where a char const* is read. Copies are
/// deep; moves leave the source a valid empty string.
///
/// Storage: an empty String that owns no block points at one shared, read-only terminator,
/// so default construction, Clear() and moves never allocate. GetStdChar() is always a
/// valid C string. Where an allocation fails, NotEnoughMemoryException "String" is thrown
/// and the String keeps its previous contents.
///
/// Positions are unsigned; "not found" is the all-ones value, static_cast<unsigned long>(-1).
///
/// Standard-library interplay: View() is a std::string_view over every byte, NULs included;
/// begin() and end() iterate the bytes (random access). Against a std::string_view, == is byte
/// equality while < and > keep the length-first order of Compare. std::hash<String> is
/// String::Hash, and operator<< writes every byte.
class String {
public:
    String();
    /// Copy of s up to its first NUL (a null s gives the empty string).
    String(char const* s);
    /// Exactly n bytes of s, NULs included.
    String(char const* s, unsigned long const& n);
    /// One byte, even when c is NUL. Explicit so that integers do not turn into Strings.
    explicit String(char const& c);
    /// Every byte of s, NULs included. Explicit, as it allocates: lookups and comparisons take
    /// a std::string_view as it is.
    explicit String(std::string_view s);
    /// A copy of other's text in a block of its own.
    String(String const& other);
    /// Takes other's block; other is left empty.
    String(String&& other) noexcept;
    virtual ~String();

    /// The text of other, copied.
    String& operator=(String const& other);
    /// Takes other's block; other is left empty.
    String& operator=(String&& other) noexcept;
    /// The C string s, copied.
    String& operator=(char const* s);
    ///@{
    /// Appends; an empty argument leaves the block untouched.
    String& operator+=(String const& s);
    String& operator+=(char const* s);
    ///@}

    /// Replaces the text with exactly n bytes of s (NULs included; s may point into this
    /// String). Keeps the block when the length is unchanged.
    void Assign(char const* s, unsigned long const& n);
    /// Sets the length to n: growing pads with spaces (deliberately not NULs), shrinking cuts.
    void Resize(unsigned long const& n);
    /// Releases the text; the String is then a valid empty string.
    void Clear();

    /// The text, NUL-terminated.
    char const* GetStdChar() const { return mBuffer; }
    /// Number of bytes, the terminator not counted.
    unsigned long GetLength() const { return mLength; }
    /// All GetLength() bytes, NULs included; valid until the String changes.
    std::string_view View() const { return std::string_view(mBuffer, mLength); }
    ///@{
    /// The bytes, for range-for and `<algorithm>` (random access; the terminator is not in the
    /// range). Valid until the String changes its length.
    char* begin() { return mBuffer; }
    char* end() { return mBuffer + mLength; }
    char const* begin() const { return mBuffer; }
    char const* end() const { return mBuffer + mLength; }
    ///@}
    /// True exactly when the length is 0.
    bool IsNull() const { return mLength == 0; }
    ///@{
    /// Byte i; throws InvalidIndexException "String" when i < 0 or i >= length.
    char const& operator[](long long const& i) const;
    char& operator[](long long const& i);
    ///@}
    /// count bytes from pos; a negative count, or a range running past the end, takes the
    /// rest. count 0 or pos >= length gives the empty string.
    String GetSubString(unsigned long const& pos, long long const& count) const;

    /// Same length and same bytes, NULs included.
    ///@{
    bool operator==(String const& other) const {
        return mLength == other.mLength && std::memcmp(mBuffer, other.mBuffer, mLength) == 0;
    }
    bool operator==(char const* s) const;
    bool operator!=(String const& other) const { return !(*this == other); }
    bool operator!=(char const* s) const { return !(*this == s); }
    ///@}
    /// Length first, then bytes: 1 when a is longer, -1 when shorter, else the sign of memcmp.
    /// Deliberate: a shorter string is always smaller ("b" < "aa"); every ordering of
    /// Strings in the library follows it.
    static long Compare(String const& a, String const& b);
    ///@{
    /// Prefix and suffix tests; an empty p gives true, a longer p false.
    bool StartsWith(String const& p) const;
    bool EndsWith(String const& p) const;
    ///@}

    ///@{
    /// First position >= start where s occurs, or all ones. An empty s is found at start
    /// for every start <= length.
    unsigned long Find(String const& s, unsigned long const& start = 0) const;
    unsigned long Find(char const* s, unsigned long const& start = 0) const;
    ///@}
    /// First position >= start where one of count needles occurs; at one position the
    /// earlier needle in the array wins, even over a longer one. Stores its index in *which
    /// when given. All ones when nothing matches or start >= length.
    unsigned long Find(String const* needles, long const& count, long* which,
                       unsigned long const& start = 0) const;
    /// Length of the common prefix with other, copied into *prefix when given.
    unsigned long GetMaxPrefix(String const& other, String* prefix) const;

    /// Replaces the first occurrence of find at or after start; nothing when absent.
    void Replace(String const& find, String const& with, unsigned long const& start = 0);
    /// Replaces every occurrence at or after start. Deliberate: overlapping occurrences are
    /// all replaced, one after another with a running shift ("aa" occurs in "aaaa" at 0, 1
    /// and 2), as callers rely on.
    void ReplaceAll(String const& find, String const& with, unsigned long const& start = 0);
    /// Replaces find's length of bytes at each position (ascending, positions of the string
    /// before the call) by with, moving the rest of the text with a running shift. Throws
    /// UnknownException "String::ReplaceAtPositions()" when bytes to move or write would lie
    /// outside the text; a position whose running place fell below 0 with nothing left to
    /// move behind it touches nothing ("aaa" with "aa" replaced by "" at 0 and 1 gives "").
    void ReplaceAtPositions(String const& find, String const& with,
                            ValDLinkList<unsigned long> const& positions);

    ///@{
    /// White space is exactly space, tab, line feed and carriage return.
    void TrimHead();
    void TrimTrail();
    void Trim();
    String TrimHead() const;
    String TrimTrail() const;
    String Trim() const;
    ///@}
    ///@{
    /// Per-byte toupper/tolower of the C library, in the current locale.
    void ToUpper();
    void ToLower();
    String ToUpper() const;
    String ToLower() const;
    ///@}

    ///@{
    /// Whether all n bytes are '0'..'9'; deliberately true when n < 1 (empty text).
    static bool IsDigit(char const* s, long long const& n);
    static bool IsDigit(char const* s);
    static bool IsDigit(String const& s);
    bool IsDigit() const;
    ///@}

    /// 64-bit FNV-1 of the bytes (HashGenerator::DoFNV1Hash64): the key hash of every
    /// String-keyed hash collection.
    static unsigned long Hash(String const& s);
    /// 0 for null, else Hash(*s).
    static unsigned long Hash(String const* s);

    ///@{
    /// printf-style formatting through vsnprintf; every form replaces the whole target.
    /// Deliberate: an empty format leaves the target unchanged. A conversion that the C
    /// library rejects (vsnprintf returning -1) leaves the text written before it.
    void Sprintf(char const* format, ...) __attribute__((format(printf, 2, 3)));
    void Sprintf(String const& format, ...);
    static void Sprintf(String& target, char const* format, ...)
        __attribute__((format(printf, 2, 3)));
    static void Sprintf(String& target, String const& format, ...);
    ///@}
// GCC may wrongly warn that attributes of the va_list element type are ignored here.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wattributes"
    /// The va_list form of the above: formats args into target.
    static void Sprintf(String& target, char const* format, va_list const& args);
    /// The worker behind all forms: formats into a new malloc'ed block, frees the old
    /// buffer (when not null) and stores the block and its length. Throws
    /// NotEnoughMemoryException "String" when no block can be had.
    static void Sprintf(char*& buffer, unsigned long& length, char const* format,
                        va_list const& args);
#pragma GCC diagnostic pop
    /// A new String formatted printf-style from format and the arguments.
    static String SSprintf(String const& format, ...);

    /// A new String: the bytes of a followed by those of b.
    ///@{
    friend String operator+(String const& a, String const& b);
    friend String operator+(String const& a, char const* b);
    friend String operator+(char const* a, String const& b);
    ///@}
    friend class StringBuilder;

private:
    String(char const* a, unsigned long na, char const* b, unsigned long nb);
    bool OwnsBlock() const;
    void Reallocate(unsigned long n);
    void Append(char const* s, unsigned long n);
    void Adopt(char* block, unsigned long length);
    void ReplaceSeparate(String const& find, String const& with, unsigned long first,
                         unsigned long count);
    bool FormatShort(char const* format, va_list args);
    void FormatFrom(char const* format, va_list const& args);

    char* mBuffer;
    unsigned long mLength;
};

///@{
/// A new String: the bytes of a followed by those of b.
String operator+(String const& a, String const& b);
String operator+(String const& a, char const* b);
String operator+(char const* a, String const& b);
///@}
///@{
/// s == b (resp. s != b) with the operands swapped, so that a C string may stand on either
/// side.
bool operator==(char const* s, String const& b);
bool operator!=(char const* s, String const& b);
///@}
///@{
/// Compare(a, b) == -1, resp. == 1 (length first).
bool operator<(String const& a, String const& b);
bool operator<(char const* a, String const& b);
bool operator>(String const& a, String const& b);
bool operator>(char const* a, String const& b);
///@}

///@{
/// Byte equality with a view: same length and same bytes, NULs included.
inline bool operator==(String const& a, std::string_view b) { return a.View() == b; }
inline bool operator==(std::string_view a, String const& b) { return a == b.View(); }
inline bool operator!=(String const& a, std::string_view b) { return a.View() != b; }
inline bool operator!=(std::string_view a, String const& b) { return a != b.View(); }
///@}
namespace text {
/// Compare's order for views: length first, then bytes (-1, 0 or 1).
inline long Compare(std::string_view a, std::string_view b) {
    if (a.size() != b.size())
        return a.size() > b.size() ? 1 : -1;
    int const c = a.compare(b);
    return c > 0 ? 1 : (c < 0 ? -1 : 0);
}
/// The text of a C string; null is the empty text.
inline std::string_view Of(char const* s) {
    return s != nullptr ? std::string_view(s) : std::string_view();
}
}  // namespace text
///@{
/// The length-first order of Compare against a view or a C string (a null one is empty):
/// "b" < "aa".
inline bool operator<(String const& a, std::string_view b) {
    return text::Compare(a.View(), b) < 0;
}
inline bool operator<(std::string_view a, String const& b) {
    return text::Compare(a, b.View()) < 0;
}
inline bool operator<(String const& a, char const* b) {
    return text::Compare(a.View(), text::Of(b)) < 0;
}
inline bool operator>(String const& a, std::string_view b) {
    return text::Compare(a.View(), b) > 0;
}
inline bool operator>(std::string_view a, String const& b) {
    return text::Compare(a, b.View()) > 0;
}
inline bool operator>(String const& a, char const* b) {
    return text::Compare(a.View(), text::Of(b)) > 0;
}
///@}
/// Writes every byte of s, NULs included, with the stream's width and fill as for a view.
std::ostream& operator<<(std::ostream& out, String const& s);
}  // namespace lstd

namespace std {
/// The hash of String::Hash, so that the standard unordered containers and the library's
/// maps agree on a String.
template <>
struct hash<lstd::String> {
    /// String::Hash(s).
    std::size_t operator()(lstd::String const& s) const noexcept { return lstd::String::Hash(s); }
};
}  // namespace std
#endif  // LSTD_STRING_H
