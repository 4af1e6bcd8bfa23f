// lstd/enclosuretokenizer.cpp - the enclosure scan and its exception.
#include <lstd/enclosuretokenizer.h>

#include <cstring>

namespace lstd {

InvalidEnclosureToken::InvalidEnclosureToken(char const* message, char const* file,
                                             unsigned long long const& line)
    : Exception(message, file, line) {}
InvalidEnclosureToken::~InvalidEnclosureToken() {}

EnclosureTokenizer::EnclosureTokenizer()
    : mText(), mStartPosition(0), mEndPosition(0), mAllowNested(0) {}
EnclosureTokenizer::~EnclosureTokenizer() {}

void EnclosureTokenizer::Init(String const& text, unsigned char const& allowNested) {
    mText = text;
    mStartPosition = 0;
    mEndPosition = 0;
    mAllowNested = allowNested;
}

bool EnclosureTokenizer::IsSeparatorChar(unsigned long const& pos, String const& marker) {
    unsigned long const length = mText.GetLength();
    unsigned long const size = marker.GetLength();
    if (size == 0 || pos >= length || size > length - pos)
        return false;
    char const* text = mText.GetStdChar();
    if (std::memcmp(text + pos, marker.GetStdChar(), size) != 0)
        return false;
    if (pos == length - 1)
        return true;
    // Deliberate: the first copy of a doubled marker is text, not a marker; the second copy
    // is judged by what follows it. Callers write a literal marker by doubling it.
    unsigned long const after = pos + size;
    return size > length - after || std::memcmp(text + after, marker.GetStdChar(), size) != 0;
}

bool EnclosureTokenizer::Next(String const& open, String const& close, String& token) {
    // An empty marker matches everywhere without advancing the scan.
    if (open.IsNull() || close.IsNull())
        LSTD_THROW(InvalidOperationException,
                   "EnclosureTokenizer::Next() needs non-empty markers.");
    unsigned long const length = mText.GetLength();
    if (mEndPosition >= length)
        return false;
    // token may be the very String passed as a marker: what the scan needs of the markers
    // after token is written is read now.
    unsigned long const openLength = open.GetLength();
    unsigned long const closeLength = close.GetLength();
    // Every opening marker is a match of open, so only the matches need the doubling test.
    unsigned long start = mText.Find(open, mEndPosition);
    while (start != static_cast<unsigned long>(-1) && !IsSeparatorChar(start, open))
        start = mText.Find(open, start + 1);
    if (start == static_cast<unsigned long>(-1))
        return false;
    mStartPosition = start;
    mEndPosition = start;
    unsigned long nextOpen = start;
    unsigned long nextClose = mText.Find(close, start);
    long depth = 0;
    for (;;) {
        if (IsSeparatorChar(mEndPosition, open)) {
            if (depth > 0 && mAllowNested != 1)
                LSTD_THROW(InvalidEnclosureToken,
                           (close + " token is expected, but met " + open).GetStdChar());
            ++depth;
        } else if (IsSeparatorChar(mEndPosition, close)) {
            --depth;
        }
        if (depth == 0) {
            // A closing marker may overlap the tail of the opening one; the piece is then empty.
            unsigned long const begin = mStartPosition + openLength;
            if (begin < mEndPosition)
                token = mText.GetSubString(begin, static_cast<long long>(mEndPosition - begin));
            else
                token.Clear();
            mEndPosition += closeLength;
            return true;
        }
        // Only a match of one of the markers can change the depth: step to the nearer one,
        // as a byte-by-byte walk would, and stop at the end of the text when none is left.
        if (nextOpen <= mEndPosition)
            nextOpen = mText.Find(open, mEndPosition + 1);
        if (nextClose <= mEndPosition)
            nextClose = mText.Find(close, mEndPosition + 1);
        mEndPosition = nextOpen < nextClose ? nextOpen : nextClose;
        if (mEndPosition >= length) {
            mEndPosition = length;
            return false;
        }
    }
}
}  // namespace lstd
