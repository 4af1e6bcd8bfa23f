// lstd/tokenizer.cpp - delimiter scans of Tokenizer and TTokenizer.
#include <lstd/tokenizer.h>

#include <lstd/exception.h>

namespace lstd {

String const Tokenizer::mSpaceCharArr[4] = {String(' '), String('\r'), String('\n'), String('\t')};

Tokenizer::Tokenizer() : mText(), mPosition(0) {}
Tokenizer::Tokenizer(String const& text) : mText(text), mPosition(0) {}
Tokenizer::~Tokenizer() {}

void Tokenizer::Init(String const& text) {
    mText = text;
    mPosition = 0;
}

bool Tokenizer::Next(String& token) { return Next(mSpaceCharArr, 4, token); }

bool Tokenizer::Next(String const& delimiter, String& token) {
    return Cut(&delimiter, 1, 1, token, nullptr, nullptr);
}

bool Tokenizer::Next(String const* delimiters, long const& count, String& token) {
    return Cut(delimiters, count, 0, token, nullptr, nullptr);
}

bool Tokenizer::Cut(String const* delimiters, long const& count, unsigned char const& single,
                    String& token, String* left, String* right) {
    // An empty delimiter matches at the cursor without moving it: the scan would never end.
    for (long k = 0; k < count; ++k)
        if (delimiters[k].IsNull())
            LSTD_THROW(InvalidOperationException, "Tokenizer::Next() needs a non-empty delimiter.");
    unsigned long const length = mText.GetLength();
    // Deliberate: the one-delimiter form stops once the delimiter no longer fits, so "a::b"
    // cut at "::" gives "a" and then false; callers rely on the two end tests differing.
    if (single == 1 ? mPosition + delimiters[0].GetLength() > length : mPosition >= length)
        return false;
    if (left != nullptr)
        left->Clear();
    if (right != nullptr)
        right->Clear();
    for (;;) {
        long which = 0;
        unsigned long const found = single == 1 ? mText.Find(delimiters[0], mPosition)
                                                : mText.Find(delimiters, count, &which, mPosition);
        if (found == static_cast<unsigned long>(-1)) {
            token = mText.GetSubString(mPosition, -1);
            mPosition = length;
            return true;
        }
        // Read the delimiter before token is written: the caller may pass one String as both.
        String const& delimiter = delimiters[which];
        unsigned long const size = delimiter.GetLength();
        if (found > mPosition) {
            if (right != nullptr)
                *right = delimiter;
            token = mText.GetSubString(mPosition, static_cast<long long>(found - mPosition));
            mPosition = found + size;
            return true;
        }
        if (left != nullptr)
            *left = delimiter;
        mPosition += size;
        if (mPosition >= length) {
            // Deliberate: a call that finds only delimiters left returns one empty piece
            // and the next call returns false; callers count on that last empty piece.
            token.Clear();
            mPosition = length;
            return true;
        }
    }
}

TTokenizer::TTokenizer() : Tokenizer(), mLeftSeperator(), mRightSeperator() {}
TTokenizer::TTokenizer(String const& text) : Tokenizer(text), mLeftSeperator(), mRightSeperator() {}
TTokenizer::~TTokenizer() {}

void TTokenizer::Init(String const& text) {
    Tokenizer::Init(text);
    mLeftSeperator.Clear();
    mRightSeperator.Clear();
}

bool TTokenizer::Next(String const& delimiter, String& token) {
    return Cut(&delimiter, 1, 1, token, &mLeftSeperator, &mRightSeperator);
}

bool TTokenizer::Next(String const* delimiters, long const& count, String& token) {
    return Cut(delimiters, count, 0, token, &mLeftSeperator, &mRightSeperator);
}
}  // namespace lstd
