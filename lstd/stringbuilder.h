// lstd/stringbuilder.h - collects text pieces and joins them once.
#ifndef LSTD_STRINGBUILDER_H
#define LSTD_STRINGBUILDER_H

#include <lstd/string.h>
#include <lstd/valdlinklist.h>

namespace lstd {

/// Keeps copies of the appended pieces and joins them in one allocation in ToString, which
/// leaves the builder unchanged. Appending allocates nothing per piece: appended pieces are
/// packed one after another into chunks of up to 64 KiB, with their lengths kept apart
/// (Insert counts pieces), and become list nodes only when an Insert lands among them.
class StringBuilder {
public:
    StringBuilder();
    /// A copy of other's pieces.
    StringBuilder(StringBuilder const& other);
    /// Replaces the pieces with a copy of other's.
    StringBuilder& operator=(StringBuilder const& other);
    ///@{
    /// Takes other's pieces without copying them; other is left an empty builder. The
    /// assignment drops this builder's pieces first.
    StringBuilder(StringBuilder&& other) noexcept;
    StringBuilder& operator=(StringBuilder&& other) noexcept;
    ///@}
    virtual ~StringBuilder();

    /// Appends a copy of s as a new piece (an empty s is an empty piece). Throws
    /// NotEnoughMemoryException "Out of memory".
    void Append(String const& s);
    /// Appends a copy of the C string s (null as an empty piece).
    void Append(char const* s);
    /// Appends the decimal text of n ("-5").
    void Append(long long const& n);
    /// Inserts a copy of s as a piece at piece index index (not a character index, on
    /// purpose). Throws InvalidIndexException when index > number of pieces.
    void Insert(String const& s, unsigned long const& index);
    /// The pieces joined in order. Throws NotEnoughMemoryException
    /// "StringBuilder::ToString() Out of memory".
    String ToString() const;
    /// The total length of all pieces.
    unsigned long GetLength() const { return mTotalLength; }
    /// Copies the joined pieces to destination, which must hold GetLength() bytes (no
    /// terminator is written); returns GetLength(). Never throws.
    unsigned long CopyTo(char* destination) const;

private:
    struct Chunk;  // a block of packed bytes
    class Reader;  // reads packed bytes in order
    /// Bytes packed one after another into a chain of chunks.
    struct Packed {
        Chunk* mFirst = nullptr;
        Chunk* mLast = nullptr;
    };

    static void FreeChain(Chunk* chunk);
    static void Put(Packed& packed, char const* s, unsigned long n);
    static Packed Copy(Packed const& source);
    void AppendBytes(char const* s, unsigned long n);
    /// Turns the packed pieces into list nodes, after the others.
    void Unpack();

    ValDLinkList<String> mPieces;  // the pieces before the packed ones
    unsigned long mTotalLength;
    Packed mPacked;   // the bytes of the pieces appended after mPieces
    Packed mLengths;  // their lengths: one byte each below 255, else 255 and eight bytes
};
}  // namespace lstd
#endif  // LSTD_STRINGBUILDER_H
