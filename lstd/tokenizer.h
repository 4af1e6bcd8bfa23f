// lstd/tokenizer.h - cuts a String into the pieces between delimiters.
#ifndef LSTD_TOKENIZER_H
#define LSTD_TOKENIZER_H

#include <lstd/string.h>

namespace lstd {

/// Returns, one call at a time, the pieces of a copied text that lie between delimiters.
/// Runs of delimiters before a piece are skipped; the delimiter ending a piece is consumed
/// with it. The text is never changed.
class Tokenizer {
public:
    /// Empty text, position 0.
    Tokenizer();
    /// Copies text; position 0.
    Tokenizer(String const& text);
    virtual ~Tokenizer();

    /// Replaces the text with a copy of text and restarts at position 0.
    virtual void Init(String const& text);
    /// Next(mSpaceCharArr, 4, token) through the virtual call: cuts at white space.
    bool Next(String& token);
    /// Cuts at one delimiter, which may be longer than a byte. False (token untouched) once
    /// fewer bytes than the delimiter has remain, so a last piece shorter than it is never
    /// returned. Throws InvalidOperationException for an empty delimiter.
    virtual bool Next(String const& delimiter, String& token);
    /// Cuts at any of count delimiters; where several match at one position the earlier one
    /// wins. False (token untouched) at the end of the text; count < 1 makes the rest one
    /// piece. Throws InvalidOperationException when one of the delimiters is empty.
    virtual bool Next(String const* delimiters, long const& count, String& token);
    /// Index of the next byte to examine.
    unsigned long const& GetPosition() const { return mPosition; }

    /// The white-space delimiters of Next(token): space, carriage return, line feed, tab.
    static String const mSpaceCharArr[4];

protected:
    /// The scan behind every Next. single selects the end test of the one-delimiter form;
    /// left and right, when given, receive the delimiters skipped before and ending the piece.
    bool Cut(String const* delimiters, long const& count, unsigned char const& single,
             String& token, String* left, String* right);

private:
    /// Copies delimiter into target, or empties it for null; nothing for a null target.
    static void Remember(String* target, String const* delimiter);

    String mText;
    unsigned long mPosition;
};

/// A Tokenizer that also remembers which delimiter stood before and after the last piece.
class TTokenizer : public Tokenizer {
public:
    /// As the base, with both remembered delimiters empty.
    TTokenizer();
    /// Tokenizes text with the default delimiters.
    TTokenizer(String const& text);
    virtual ~TTokenizer();

    using Tokenizer::Next;
    /// Base Init, then both remembered delimiters empty.
    void Init(String const& text) override;
    /// As the base forms (same end tests and exceptions). Once the end test passes both
    /// remembered delimiters are emptied; then the left one receives each delimiter skipped
    /// before the piece (the last of a run), the right one the delimiter that ends it.
    bool Next(String const& delimiter, String& token) override;
    bool Next(String const* delimiters, long const& count, String& token) override;

    /// Whether s is the delimiter skipped just before the last piece ("" when none was).
    bool IsLeftMatchedSeperator(String const& s) const { return mLeftSeperator == s; }
    /// Whether s is the delimiter that ended the last piece ("" when it ran to the end).
    bool IsRightMatchedSeperator(String const& s) const { return mRightSeperator == s; }
    /// Either of the two above.
    bool IsMatchedSeperator(String const& s) const {
        return IsLeftMatchedSeperator(s) || IsRightMatchedSeperator(s);
    }

private:
    String mLeftSeperator;
    String mRightSeperator;
};
}  // namespace lstd
#endif  // LSTD_TOKENIZER_H
