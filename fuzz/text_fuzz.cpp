// fuzz/text_fuzz.cpp - the tokenizers and String search and replacement over arbitrary input.
//
// The input gives delimiters, enclosure markers, a replacement text, a start position and
// the text. Plain reference loops written here, byte by byte from the documented rules,
// must give the same tokens (and remembered delimiters and positions), the same search
// results and the same replaced text as Tokenizer, TTokenizer, EnclosureTokenizer and
// String::Find, Replace and ReplaceAll.
#include <lstd/enclosuretokenizer.h>
#include <lstd/string.h>
#include <lstd/tokenizer.h>

#include <fuzzer/FuzzedDataProvider.h>

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <string>
#include <vector>

namespace {
using lstd::String;
using Strings = std::vector<std::string>;

std::size_t const npos = std::string::npos;

std::string Std(String const& s) { return std::string(s.GetStdChar(), s.GetLength()); }
String Lstd(std::string const& s) { return String(s.data(), s.size()); }

[[noreturn]] void Fail(char const* what) {
    std::fprintf(stderr, "text_fuzz: %s\n", what);
    std::abort();
}

void Expect(bool ok, char const* what) {
    if (!ok)
        Fail(what);
}

bool MatchAt(std::string const& text, std::size_t p, std::string const& needle) {
    return p + needle.size() <= text.size() && text.compare(p, needle.size(), needle) == 0;
}

// First p >= start where needle occurs; not found when it is longer than the text or start
// is past the last place it could begin. An empty needle is found at start.
std::size_t FindOne(std::string const& text, std::string const& needle, std::size_t start) {
    if (needle.size() > text.size() || start >= text.size() + 1 - needle.size())
        return npos;
    for (std::size_t p = start; p + needle.size() <= text.size(); ++p)
        if (MatchAt(text, p, needle))
            return p;
    return npos;
}

// First p in [start, length) where one of needles fits and matches, the earlier needle
// winning at one position.
std::size_t FindAny(std::string const& text, Strings const& needles, std::size_t start,
                    long* which) {
    for (std::size_t p = start; p < text.size(); ++p)
        for (std::size_t k = 0; k < needles.size(); ++k)
            if (MatchAt(text, p, needles[k])) {
                *which = static_cast<long>(k);
                return p;
            }
    return npos;
}

// The tokenizer rules: runs of delimiters before a piece are skipped, the delimiter ending a
// piece goes with it, only delimiters left give one empty piece; the one-delimiter form
// ends once the delimiter no longer fits.
struct ReferenceTokenizer {
    explicit ReferenceTokenizer(std::string const& text) : mText(text) {}

    std::string mText;
    std::size_t mPos = 0;
    std::string mLeft;
    std::string mRight;

    bool Next(Strings const& delimiters, bool single, std::string& token) {
        std::size_t const length = mText.size();
        if (single ? mPos + delimiters[0].size() > length : mPos >= length)
            return false;
        mLeft.clear();
        mRight.clear();
        for (;;) {
            long which = 0;
            std::size_t const p = single ? FindOne(mText, delimiters[0], mPos)
                                         : FindAny(mText, delimiters, mPos, &which);
            if (p == npos) {
                token = mText.substr(mPos);
                mPos = length;
                return true;
            }
            std::string const& delimiter = delimiters[static_cast<std::size_t>(which)];
            if (p > mPos) {
                mRight = delimiter;
                token = mText.substr(mPos, p - mPos);
                mPos = p + delimiter.size();
                return true;
            }
            mLeft = delimiter;
            mPos += delimiter.size();
            if (mPos >= length) {
                token.clear();
                mPos = length;
                return true;
            }
        }
    }
};

bool AnyEmpty(Strings const& strings) {
    return std::any_of(strings.begin(), strings.end(),
                       [](std::string const& s) { return s.empty(); });
}

// Runs Tokenizer and TTokenizer with the same delimiters against the reference.
void CheckTokenizers(std::string const& text, Strings const& delimiters, bool single) {
    std::vector<String> lDelimiters;
    for (std::string const& d : delimiters)
        lDelimiters.push_back(Lstd(d));
    long const count = static_cast<long>(lDelimiters.size());
    lstd::Tokenizer plain(Lstd(text));
    lstd::TTokenizer remembering(Lstd(text));
    String token;
    String tToken;
    if (AnyEmpty(delimiters)) {
        for (lstd::Tokenizer* t :
             {static_cast<lstd::Tokenizer*>(&plain), static_cast<lstd::Tokenizer*>(&remembering)}) {
            try {
                single ? t->Next(lDelimiters[0], token) : t->Next(lDelimiters.data(), count, token);
                Fail("an empty delimiter was accepted");
            } catch (lstd::InvalidOperationException const& e) {
                Expect(std::strcmp(e.what(), "Tokenizer::Next() needs a non-empty delimiter.") == 0,
                       "wrong message for an empty delimiter");
            }
        }
        return;
    }
    ReferenceTokenizer reference(text);
    for (std::size_t step = 0;; ++step) {
        Expect(step <= text.size() + 1, "the tokenizer does not end");
        std::string expected;
        bool const more = reference.Next(delimiters, single, expected);
        bool const got = single ? plain.Next(lDelimiters[0], token)
                                : plain.Next(lDelimiters.data(), count, token);
        bool const tGot = single ? remembering.Next(lDelimiters[0], tToken)
                                 : remembering.Next(lDelimiters.data(), count, tToken);
        Expect(got == more && tGot == more, "the tokenizers end at another call");
        Expect(plain.GetPosition() == reference.mPos && remembering.GetPosition() == reference.mPos,
               "the tokenizer position differs");
        if (!more)
            return;
        Expect(Std(token) == expected && Std(tToken) == expected, "a token differs");
        Expect(remembering.IsLeftMatchedSeperator(Lstd(reference.mLeft)),
               "the left delimiter differs");
        Expect(remembering.IsRightMatchedSeperator(Lstd(reference.mRight)),
               "the right delimiter differs");
    }
}

// The enclosure rules, one byte at a time.
struct ReferenceEnclosure {
    ReferenceEnclosure(std::string const& text, bool nested) : mText(text), mNested(nested) {}

    std::string mText;
    bool mNested;
    std::size_t mStart = 0;
    std::size_t mEnd = 0;

    bool IsSeparator(std::size_t pos, std::string const& marker) const {
        if (pos >= mText.size() || !MatchAt(mText, pos, marker))
            return false;
        if (pos == mText.size() - 1)
            return true;
        return !MatchAt(mText, pos + marker.size(), marker);
    }
    // False at the end; a thrown message goes to error.
    bool Next(std::string const& open, std::string const& close, std::string& token,
              std::string& error) {
        std::size_t const length = mText.size();
        if (mEnd >= length)
            return false;
        std::size_t p = mEnd;
        while (p < length && !IsSeparator(p, open))
            ++p;
        if (p >= length)
            return false;
        mStart = mEnd = p;
        long depth = 0;
        for (;;) {
            if (IsSeparator(mEnd, open)) {
                if (depth > 0 && !mNested) {
                    error = close + " token is expected, but met " + open;
                    return false;
                }
                ++depth;
            } else if (IsSeparator(mEnd, close)) {
                --depth;
            }
            if (depth == 0) {
                std::size_t const begin = mStart + open.size();
                token = begin < mEnd ? mText.substr(begin, mEnd - begin) : std::string();
                mEnd += close.size();
                return true;
            }
            ++mEnd;
            if (depth < 1 || mEnd >= length)
                return false;
        }
    }
};

void CheckEnclosure(std::string const& text, std::string const& open, std::string const& close,
                    bool nested) {
    lstd::EnclosureTokenizer tokenizer;
    tokenizer.Init(Lstd(text), nested ? 1 : 0);
    String token;
    if (open.empty() || close.empty()) {
        try {
            tokenizer.Next(Lstd(open), Lstd(close), token);
            Fail("an empty marker was accepted");
        } catch (lstd::InvalidOperationException const&) {
        }
        return;
    }
    ReferenceEnclosure reference(text, nested);
    for (std::size_t p = 0; p <= text.size() && p < 64; ++p)
        Expect(tokenizer.IsSeparatorChar(p, Lstd(open)) == reference.IsSeparator(p, open),
               "IsSeparatorChar differs");
    for (std::size_t step = 0;; ++step) {
        Expect(step <= text.size() + 1, "the enclosure tokenizer does not end");
        std::string expected;
        std::string error;
        bool const more = reference.Next(open, close, expected, error);
        bool got = false;
        bool threw = false;
        std::string thrown;
        try {
            got = tokenizer.Next(Lstd(open), Lstd(close), token);
        } catch (lstd::InvalidEnclosureToken const& e) {
            threw = true;
            thrown = e.what();
        }
        // An exception's message is a C string: it ends at a NUL byte of the markers.
        Expect(threw == !error.empty() && thrown == error.c_str(),
               "the enclosure exception differs");
        Expect(tokenizer.GetStartPosition() == reference.mStart &&
                   tokenizer.GetEndPosition() == reference.mEnd,
               "the enclosure positions differ");
        Expect(got == more, "the enclosure tokenizer ends at another call");
        if (!more || threw)
            return;
        Expect(Std(token) == expected, "an enclosure token differs");
    }
}

// ReplaceAtPositions: the positions of the unchanged text, applied in order with a running
// shift; false where the library refuses because a byte it would read or write lies outside
// the text (a match that the shift moved below 0 with nothing behind it touches nothing).
bool ApplyPositions(std::string& s, std::string const& find, std::string const& with,
                    std::vector<std::size_t> const& positions) {
    long long const fl = static_cast<long long>(find.size());
    long long const wl = static_cast<long long>(with.size());
    long long const d = fl - wl;
    long long const c = static_cast<long long>(positions.size());
    long long const before = static_cast<long long>(s.size());
    if (d < 0)
        s.resize(static_cast<std::size_t>(std::max(0LL, before - d * c)), ' ');
    long long const size = static_cast<long long>(s.size());
    auto const inside = [size](long long from, long long n) {
        return n <= 0 || (from >= 0 && from + n <= size);
    };
    long long shift = 0;
    long long logical = before;
    for (std::size_t q : positions) {
        long long const p = static_cast<long long>(q) + shift;
        if (d != 0) {
            long long const tail = logical - p - fl;
            if (tail > 0) {
                if (!inside(p + fl, tail) || !inside(p + wl, tail))
                    return false;
                std::memmove(&s[static_cast<std::size_t>(p + wl)],
                             &s[static_cast<std::size_t>(p + fl)], static_cast<std::size_t>(tail));
            }
            logical -= d;
            shift -= d;
        }
        if (!inside(p, wl))
            return false;
        if (wl > 0)
            std::memcpy(&s[static_cast<std::size_t>(p)], with.data(), with.size());
    }
    if (d > 0)
        s.resize(static_cast<std::size_t>(std::max(0LL, size - d * c)));
    return true;
}

void CheckReplace(std::string const& text, std::string const& find, std::string const& with,
                  std::size_t start, bool all) {
    std::string expected = text;
    bool refused = false;
    if (start < text.size() && start + find.size() <= text.size()) {
        std::vector<std::size_t> positions;
        for (std::size_t p = FindOne(text, find, start); p != npos && p < text.size();
             p = FindOne(text, find, p + 1)) {
            positions.push_back(p);
            if (!all)
                break;
        }
        if (!positions.empty())
            refused = !ApplyPositions(expected, find, with, positions);
    }
    String s = Lstd(text);
    try {
        if (all)
            s.ReplaceAll(Lstd(find), Lstd(with), start);
        else
            s.Replace(Lstd(find), Lstd(with), start);
        Expect(!refused, "a replacement the reference refuses succeeded");
        Expect(Std(s) == expected, "the replaced text differs");
    } catch (lstd::UnknownException const& e) {
        Expect(refused && std::strcmp(e.what(), "String::ReplaceAtPositions()") == 0,
               "an unexpected replacement failure");
    }
}

void CheckFind(std::string const& text, Strings const& needles, std::size_t start) {
    String const s = Lstd(text);
    std::vector<String> lNeedles;
    for (std::string const& n : needles) {
        lNeedles.push_back(Lstd(n));
        std::size_t const expected = FindOne(text, n, start);
        Expect(s.Find(Lstd(n), start) ==
                   (expected == npos ? static_cast<unsigned long>(-1) : expected),
               "Find differs");
    }
    long which = -1;
    long expectedWhich = -1;
    std::size_t const expected =
        start >= text.size() ? npos : FindAny(text, needles, start, &expectedWhich);
    unsigned long const got =
        s.Find(lNeedles.data(), static_cast<long>(lNeedles.size()), &which, start);
    Expect(got == (expected == npos ? static_cast<unsigned long>(-1) : expected),
           "the several-needle Find differs");
    Expect(expected == npos || which == expectedWhich,
           "the several-needle Find names another needle");
}
}  // namespace

extern "C" int LLVMFuzzerTestOneInput(uint8_t const* bytes, std::size_t size) {
    FuzzedDataProvider input(bytes, size);
    Strings delimiters(input.ConsumeIntegralInRange<std::size_t>(0, 4));
    for (std::string& d : delimiters)
        d = input.ConsumeRandomLengthString(4);
    std::string const open = input.ConsumeRandomLengthString(3);
    std::string const close = input.ConsumeRandomLengthString(3);
    std::string const with = input.ConsumeRandomLengthString(8);
    bool const nested = input.ConsumeBool();
    std::size_t const start = input.ConsumeIntegralInRange<std::size_t>(0, 16);
    std::string const text = input.ConsumeRemainingBytesAsString();

    CheckTokenizers(text, {" ", "\r", "\n", "\t"}, false);
    {
        lstd::Tokenizer white(Lstd(text));
        ReferenceTokenizer reference(text);
        String token;
        std::string expected;
        while (reference.Next({" ", "\r", "\n", "\t"}, false, expected)) {
            Expect(white.Next(token) && Std(token) == expected, "a white-space token differs");
        }
        Expect(!white.Next(token), "the white-space tokenizer does not end");
    }
    if (!delimiters.empty()) {
        CheckTokenizers(text, delimiters, false);
        CheckTokenizers(text, {delimiters[0]}, true);
        CheckFind(text, delimiters, start);
        CheckReplace(text, delimiters[0], with, start, true);
        CheckReplace(text, delimiters[0], with, start, false);
    } else {
        CheckTokenizers(text, delimiters, false);  // no delimiter: the rest is one piece
    }
    CheckEnclosure(text, open, close, nested);
    return 0;
}
