// lstd/enclosuretokenizer.h - cuts out the text between an opening and a closing marker.
#ifndef LSTD_ENCLOSURETOKENIZER_H
#define LSTD_ENCLOSURETOKENIZER_H

#include <lstd/exception.h>
#include <lstd/string.h>

namespace lstd {

/// An opening marker was met inside an open enclosure while nesting is not allowed. The
/// message is the closing marker + " token is expected, but met " + the opening marker.
class InvalidEnclosureToken : public Exception {
public:
    /// A marker without its partner: message, file and line of the throw.
    InvalidEnclosureToken(char const* message, char const* file, unsigned long long const& line);
    virtual ~InvalidEnclosureToken();
};

/// Returns, one call at a time, the text between an opening and a closing marker of a copied
/// text, optionally with nested enclosures. A marker immediately followed by a copy of itself
/// is not a marker there (a doubled marker stands for the text, not for an enclosure).
class EnclosureTokenizer {
public:
    /// Empty text, both positions 0, nesting not allowed.
    EnclosureTokenizer();
    virtual ~EnclosureTokenizer();

    /// Copies text, sets both positions to 0 and allows nesting when allowNested is 1.
    void Init(String const& text, unsigned char const& allowNested);
    /// The text of the next enclosure from the end position on, markers excluded; the end
    /// position then lies just past its closing marker. False (token untouched) when no
    /// opening marker follows or the enclosure stays open to the end of the text. When open
    /// and close are the same text a second marker counts as an opening one. Throws
    /// InvalidEnclosureToken for an opening marker inside an open enclosure while nesting is
    /// not allowed, InvalidOperationException for an empty marker. token may be the same
    /// String as open or close.
    bool Next(String const& open, String const& close, String& token);
    /// Index of the opening marker of the last enclosure.
    unsigned long const& GetStartPosition() const { return mStartPosition; }
    /// The cursor: after a successful Next, the index just past its closing marker.
    unsigned long const& GetEndPosition() const { return mEndPosition; }
    /// Whether marker stands at pos and is not followed by another copy of itself (at the last
    /// byte of the text it always counts). False past the end and for an empty marker.
    bool IsSeparatorChar(unsigned long const& pos, String const& marker);

private:
    String mText;
    unsigned long mStartPosition;
    unsigned long mEndPosition;
    unsigned char mAllowNested;
};
}  // namespace lstd
#endif  // LSTD_ENCLOSURETOKENIZER_H
