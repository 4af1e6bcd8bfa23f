// lstd/stringbuilder.h - collects text pieces and joins them once.
#ifndef LSTD_STRINGBUILDER_H
#define LSTD_STRINGBUILDER_H

#include <lstd/string.h>
#include <lstd/valdlinklist.h>

namespace lstd {

/// Keeps copies of the appended pieces and joins them in one allocation in ToString, which
/// leaves the builder unchanged.
class StringBuilder {
public:
    StringBuilder();
    virtual ~StringBuilder();

    void Append(String const& s);
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

private:
    ValDLinkList<String> mPieces;
    unsigned long mTotalLength;
};
}  // namespace lstd
#endif  // LSTD_STRINGBUILDER_H
