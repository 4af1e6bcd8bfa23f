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
    // The remembered delimiters are written once, at the end, and before token: the caller
    // may pass one String as a delimiter and as the token.
    String const* skipped = nullptr;
    String const* ending = nullptr;
    unsigned long begin = mPosition;
    unsigned long end = length;
    for (;;) {
        long which = 0;
        unsigned long const found = single == 1 ? mText.Find(delimiters[0], mPosition)
                                                : mText.Find(delimiters, count, &which, mPosition);
        if (found == static_cast<unsigned long>(-1)) {
            begin = mPosition;
            mPosition = length;
            break;
        }
        String const& delimiter = delimiters[which];
        if (found > mPosition) {
            ending = &delimiter;
            begin = mPosition;
            end = found;
            mPosition = found + delimiter.GetLength();
            break;
        }
        skipped = &delimiter;
        mPosition += delimiter.GetLength();
        if (mPosition >= length) {
            // Deliberate: a call that finds only delimiters left returns one empty piece
            // and the next call returns false; callers count on that last empty piece.
            mPosition = length;
            begin = end = length;
            break;
        }
    }
    Remember(left, skipped);
    Remember(right, ending);
    token.Assign(mText.GetStdChar() + begin, end - begin);
    return true;
}

void Tokenizer::Remember(String* target, String const* delimiter) {
    if (target == nullptr)
        return;
    if (delimiter == nullptr)
        target->Clear();
    else
        target->Assign(delimiter->GetStdChar(), delimiter->GetLength());
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
