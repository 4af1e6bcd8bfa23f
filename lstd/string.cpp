// lstd/string.cpp - the library's byte string.
#include <lstd/string.h>

#include <lstd/character.h>
#include <lstd/exception.h>
#include <lstd/hashgenerator.h>
#include <lstd/memory.h>
#include <lstd/valdlinklist.h>

#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <ostream>

#include <emmintrin.h>
#include <malloc.h>

namespace lstd {
namespace {
// The terminator shared by every String that owns no block. Never written: each write of
// a terminator goes through a check that the String owns its block.
char const kNoBlock[1] = {'\0'};

char* NoBlock() { return const_cast<char*>(kNoBlock); }

// Whether s points into the n + 1 bytes of block (compared as addresses: s may be unrelated).
bool PointsInto(char const* s, char const* block, unsigned long n) {
    auto const a = reinterpret_cast<std::uintptr_t>(s);
    auto const b = reinterpret_cast<std::uintptr_t>(block);
    return a >= b && a - b <= n;
}

bool IsWhite(char c) { return c == ' ' || c == '\t' || c == '\n' || c == '\r'; }

unsigned long const kNotFound = static_cast<unsigned long>(-1);

// The C library's allocator hands out blocks in 16-byte steps and keeps a block that is too
// large by less than its smallest block (32 bytes) when realloc shrinks it.
unsigned long const kAllocatorSlack = 32;

[[noreturn]] void OutOfMemory(unsigned long long line) {
    throw NotEnoughMemoryException("String", __FILE__, line);
}

// a + b for sizes of texts and blocks; a sum that does not fit in 64 bits could never be
// allocated, so it is an allocation failure.
unsigned long AddSizes(unsigned long a, unsigned long b) {
    unsigned long sum;
    if (__builtin_add_overflow(a, b, &sum))
        OutOfMemory(__LINE__);
    return sum;
}
}  // namespace

// ---- storage -------------------------------------------------------------------------------

bool String::OwnsBlock() const { return mBuffer != kNoBlock; }

// Makes the block exactly n + 1 bytes, keeping the first min(n, length) bytes; the length
// and the terminator are the caller's. A length of 0 gives the shared terminator back.
void String::Reallocate(unsigned long n) {
    if (n == 0) {
        if (OwnsBlock())
            std::free(mBuffer);
        mBuffer = NoBlock();
        return;
    }
    unsigned long const size = AddSizes(n, 1);
    if (OwnsBlock()) {
        // Sizes round up to the allocator's granules: when the block already is the one
        // realloc would return (large enough, by less than a granule's slack), the call is
        // skipped. Tools that track exact sizes report exact ones, and still see the call.
        unsigned long const usable = malloc_usable_size(mBuffer);
        if (usable >= size && usable - size < kAllocatorSlack)
            return;
    }
    char* block = static_cast<char*>(OwnsBlock() ? std::realloc(mBuffer, size) : std::malloc(size));
    if (block == nullptr)
        OutOfMemory(__LINE__);
    mBuffer = block;
}

void String::Assign(char const* s, unsigned long const& n) {
    if (n != mLength) {
        if (PointsInto(s, mBuffer, mLength)) {  // s lies in this very string
            *this = String(s, n);
            return;
        }
        Reallocate(n);
        mLength = n;
    }
    if (n != 0) {
        std::memmove(mBuffer, s, n);
        mBuffer[n] = '\0';
    }
}

void String::Append(char const* s, unsigned long n) {
    if (n == 0)
        return;
    bool const inside = PointsInto(s, mBuffer, mLength);
    unsigned long const offset = inside ? static_cast<unsigned long>(s - mBuffer) : 0;
    Reallocate(AddSizes(mLength, n));
    if (inside)
        s = mBuffer + offset;  // the block may have moved
    std::memcpy(mBuffer + mLength, s, n);
    mLength += n;
    mBuffer[mLength] = '\0';
}

void String::Adopt(char* block, unsigned long length) {
    if (OwnsBlock())
        std::free(mBuffer);
    mBuffer = block;
    mLength = length;
}

String::String() : mBuffer(NoBlock()), mLength(0) {}

String::String(char const* s) : mBuffer(NoBlock()), mLength(0) {
    if (s != nullptr)
        Assign(s, std::strlen(s));
}

String::String(char const* s, unsigned long const& n) : mBuffer(NoBlock()), mLength(0) {
    Assign(s, n);
}

String::String(char const& c) : mBuffer(NoBlock()), mLength(0) { Assign(&c, 1); }

String::String(std::string_view s) : mBuffer(NoBlock()), mLength(0) { Assign(s.data(), s.size()); }

String::String(String const& other) : mBuffer(NoBlock()), mLength(0) {
    Assign(other.mBuffer, other.mLength);
}

String::String(String&& other) noexcept : mBuffer(other.mBuffer), mLength(other.mLength) {
    other.mBuffer = NoBlock();
    other.mLength = 0;
}

String::String(char const* a, unsigned long na, char const* b, unsigned long nb)
    : mBuffer(NoBlock()), mLength(0) {
    Reallocate(AddSizes(na, nb));
    mLength = na + nb;
    if (mLength != 0) {
        std::memcpy(mBuffer, a, na);
        std::memcpy(mBuffer + na, b, nb);
        mBuffer[mLength] = '\0';
    }
}

String::~String() {
    if (OwnsBlock())
        std::free(mBuffer);
}

String& String::operator=(String const& other) {
    if (this != &other)
        Assign(other.mBuffer, other.mLength);
    return *this;
}

String& String::operator=(String&& other) noexcept {
    if (this != &other) {
        Adopt(other.mBuffer, other.mLength);
        other.mBuffer = NoBlock();
        other.mLength = 0;
    }
    return *this;
}

String& String::operator=(char const* s) {
    Assign(s, s != nullptr ? std::strlen(s) : 0);
    return *this;
}

String& String::operator+=(String const& s) {
    Append(s.mBuffer, s.mLength);
    return *this;
}

String& String::operator+=(char const* s) {
    if (s != nullptr && s[0] != '\0')
        Append(s, std::strlen(s));
    return *this;
}

String operator+(String const& a, String const& b) {
    return String(a.mBuffer, a.mLength, b.mBuffer, b.mLength);
}

String operator+(String const& a, char const* b) {
    return String(a.mBuffer, a.mLength, b, b != nullptr ? std::strlen(b) : 0);
}

String operator+(char const* a, String const& b) {
    return String(a, a != nullptr ? std::strlen(a) : 0, b.mBuffer, b.mLength);
}

void String::Resize(unsigned long const& n) {
    unsigned long const old = mLength;
    Reallocate(n);
    mLength = n;
    if (n == 0)
        return;
    if (n > old)
        std::memset(mBuffer + old, ' ', n - old);  // Deliberate: spaces, not NULs.
    mBuffer[n] = '\0';
}

void String::Clear() { Adopt(NoBlock(), 0); }

// ---- access and comparison -----------------------------------------------------------------

char const& String::operator[](long long const& i) const {
    if (i < 0 || static_cast<unsigned long>(i) >= mLength)
        LSTD_THROW(InvalidIndexException, "String");
    return mBuffer[i];
}

char& String::operator[](long long const& i) {
    if (i < 0 || static_cast<unsigned long>(i) >= mLength)
        LSTD_THROW(InvalidIndexException, "String");
    return mBuffer[i];
}

String String::GetSubString(unsigned long const& pos, long long const& count) const {
    if (count == 0 || pos >= mLength)
        return String();
    unsigned long const rest = mLength - pos;
    unsigned long const n = (count > 0 && static_cast<unsigned long>(count) <= rest)
                                ? static_cast<unsigned long>(count)
                                : rest;
    return String(mBuffer + pos, n);
}

bool String::operator==(char const* s) const {
    if (s == nullptr)
        return mLength == 0;
    return std::strlen(s) == mLength && std::memcmp(mBuffer, s, mLength) == 0;
}

bool operator==(char const* s, String const& b) { return b == s; }
bool operator!=(char const* s, String const& b) { return !(b == s); }

long String::Compare(String const& a, String const& b) {
    if (a.mLength != b.mLength)
        return a.mLength > b.mLength ? 1 : -1;
    int const r = std::memcmp(a.mBuffer, b.mBuffer, a.mLength);
    return r < 0 ? -1 : (r > 0 ? 1 : 0);
}

bool operator<(String const& a, String const& b) { return String::Compare(a, b) == -1; }
bool operator<(char const* a, String const& b) { return String::Compare(String(a), b) == -1; }
bool operator>(String const& a, String const& b) { return String::Compare(a, b) == 1; }
bool operator>(char const* a, String const& b) { return String::Compare(String(a), b) == 1; }

bool String::StartsWith(String const& p) const {
    return p.mLength <= mLength && std::memcmp(mBuffer, p.mBuffer, p.mLength) == 0;
}

bool String::EndsWith(String const& p) const {
    return p.mLength <= mLength &&
           std::memcmp(mBuffer + mLength - p.mLength, p.mBuffer, p.mLength) == 0;
}

// ---- search --------------------------------------------------------------------------------

namespace {
unsigned long FindBytes(char const* hay, unsigned long hayLength, char const* needle,
                        unsigned long needleLength, unsigned long start) {
    if (needleLength > hayLength || start >= hayLength + 1 - needleLength)
        return kNotFound;
    if (needleLength == 0)
        return start;
    char const* const end = hay + hayLength;
    if (needleLength <= 16) {
        // Short needles: jump to each copy of the first byte and compare the rest. memmem's
        // setup per call costs more than the scan when matches are close together, as
        // they are for callers that replace or cut at every match; the cost of a bad case
        // is bounded by the needle length.
        char const first = needle[0];
        char const* const last = end - needleLength;  // the last place a match may start
        for (char const* at = hay + start; at <= last; ++at) {
            at = static_cast<char const*>(
                std::memchr(at, first, static_cast<unsigned long>(last - at) + 1));
            if (at == nullptr)
                return kNotFound;
            if (std::memcmp(at + 1, needle + 1, needleLength - 1) == 0)
                return static_cast<unsigned long>(at - hay);
        }
        return kNotFound;
    }
    void const* hit = memmem(hay + start, hayLength - start, needle, needleLength);
    return hit != nullptr ? static_cast<unsigned long>(static_cast<char const*>(hit) - hay)
                          : kNotFound;
}
}  // namespace

unsigned long String::Find(String const& s, unsigned long const& start) const {
    return FindBytes(mBuffer, mLength, s.mBuffer, s.mLength, start);
}

unsigned long String::Find(char const* s, unsigned long const& start) const {
    return FindBytes(mBuffer, mLength, s, s != nullptr ? std::strlen(s) : 0, start);
}

namespace {
// The bytes that start needles, for skipping positions where no needle can start: up to
// four bytes are compared 16 positions at a time, more go to a set of 256 bits.
class StartBytes {
public:
    void Add(unsigned char b) {
        if (mCount < 4)
            mBytes[mCount] = b;
        if (++mCount == 5)
            for (unsigned char const first : mBytes)
                Set(first);
        if (mCount > 4)
            Set(b);
    }
    /// The first position in [p, last] whose byte is in the set, or last + 1.
    unsigned long Next(unsigned char const* text, unsigned long p, unsigned long last) const {
        if (mCount > 4) {
            for (; p <= last; ++p)
                if (((mWords[text[p] >> 6] >> (text[p] & 63)) & 1) != 0)
                    return p;
            return last + 1;
        }
        // Unused lanes repeat the first byte.
        __m128i const b0 = _mm_set1_epi8(static_cast<char>(mBytes[0]));
        __m128i const b1 = _mm_set1_epi8(static_cast<char>(mBytes[mCount > 1 ? 1 : 0]));
        __m128i const b2 = _mm_set1_epi8(static_cast<char>(mBytes[mCount > 2 ? 2 : 0]));
        __m128i const b3 = _mm_set1_epi8(static_cast<char>(mBytes[mCount > 3 ? 3 : 0]));
        for (; p <= last && last - p >= 15; p += 16) {
            __m128i const v = _mm_loadu_si128(reinterpret_cast<__m128i const*>(text + p));
            __m128i const hit =
                _mm_or_si128(_mm_or_si128(_mm_cmpeq_epi8(v, b0), _mm_cmpeq_epi8(v, b1)),
                             _mm_or_si128(_mm_cmpeq_epi8(v, b2), _mm_cmpeq_epi8(v, b3)));
            unsigned const mask = static_cast<unsigned>(_mm_movemask_epi8(hit));
            if (mask != 0)
                return p + static_cast<unsigned long>(__builtin_ctz(mask));
        }
        for (; p <= last; ++p) {
            unsigned char const c = text[p];
            if (c == mBytes[0] || (mCount > 1 && c == mBytes[1]) ||
                (mCount > 2 && c == mBytes[2]) || (mCount > 3 && c == mBytes[3]))
                return p;
        }
        return last + 1;
    }

private:
    void Set(unsigned char b) { mWords[b >> 6] |= std::uint64_t{1} << (b & 63); }

    unsigned char mBytes[4] = {0, 0, 0, 0};  // the first four bytes added
    unsigned mCount = 0;                     // bytes added
    std::uint64_t mWords[4] = {0, 0, 0, 0};  // all of them, once there are more than four
};
}  // namespace

unsigned long String::Find(String const* needles, long const& count, long* which,
                           unsigned long const& start) const {
    if (start >= mLength || count <= 0)
        return kNotFound;
    // Positions whose byte starts no needle are skipped without trying the needles; an
    // empty needle fits everywhere, so then only start needs trying.
    StartBytes starts;
    bool anyEmpty = false;
    for (long k = 0; k < count; ++k) {
        if (needles[k].mLength == 0)
            anyEmpty = true;
        else
            starts.Add(static_cast<unsigned char>(needles[k].mBuffer[0]));
    }
    unsigned long const last = anyEmpty ? start : mLength - 1;
    unsigned char const* const text = reinterpret_cast<unsigned char const*>(mBuffer);
    for (unsigned long p = start; p <= last; ++p) {
        if (!anyEmpty) {
            p = starts.Next(text, p, last);
            if (p > last)
                return kNotFound;
        }
        for (long k = 0; k < count; ++k) {
            String const& n = needles[k];
            if (p + n.mLength <= mLength &&
                (n.mLength == 0 || (n.mBuffer[0] == mBuffer[p] &&
                                    (n.mLength == 1 || std::memcmp(mBuffer + p + 1, n.mBuffer + 1,
                                                                   n.mLength - 1) == 0)))) {
                if (which != nullptr)
                    *which = k;
                return p;
            }
        }
    }
    return kNotFound;
}

unsigned long String::GetMaxPrefix(String const& other, String* prefix) const {
    unsigned long result;
    if (mBuffer[0] != other.mBuffer[0]) {  // the terminator counts: "" differs from "a"
        result = 0;
    } else {
        unsigned long const m = mLength < other.mLength ? mLength : other.mLength;
        if (std::memcmp(mBuffer, other.mBuffer, m) == 0) {
            result = m;
        } else {
            unsigned long lo = 0;
            unsigned long hi = m;
            while (lo + 1 < hi) {
                unsigned long const mid = (lo + hi) / 2;
                if (std::memcmp(mBuffer, other.mBuffer, mid) == 0)
                    lo = mid;
                else
                    hi = mid;
            }
            result = lo;
        }
    }
    if (prefix != nullptr)
        *prefix = String(mBuffer, result);
    return result;
}

// ---- replacement ---------------------------------------------------------------------------

void String::Replace(String const& find, String const& with, unsigned long const& start) {
    if (start >= mLength || start + find.mLength > mLength)
        return;
    unsigned long const p = FindBytes(mBuffer, mLength, find.mBuffer, find.mLength, start);
    if (p != kNotFound)
        ReplaceSeparate(find, with, p, 1);
}

void String::ReplaceAll(String const& find, String const& with, unsigned long const& start) {
    if (start >= mLength || start + find.mLength > mLength)
        return;
    // Deliberate: the scan resumes one byte after a match, so overlapping matches count.
    auto const next = [&](unsigned long from) {
        return FindBytes(mBuffer, mLength, find.mBuffer, find.mLength, from);
    };
    unsigned long const first = next(start);
    unsigned long count = 0;
    bool overlapping = false;
    for (unsigned long p = first, last = 0; p != kNotFound && p < mLength;
         last = p, p = next(p + 1)) {
        if (count != 0 && p < last + find.mLength)
            overlapping = true;
        ++count;
    }
    if (count == 0)
        return;
    if (!overlapping) {
        ReplaceSeparate(find, with, first, count);
        return;
    }
    // Overlapping matches are replaced one after another with the running shift.
    ValDLinkList<unsigned long> positions;
    for (unsigned long p = first; p != kNotFound && p < mLength; p = next(p + 1))
        positions.Append(p);
    ReplaceAtPositions(find, with, positions);
}

// The common case of ReplaceAll and the whole of Replace: count matches that do not overlap,
// the first at first and each later one the next match at or after the end of the one
// before. The result is the one the running shift of ReplaceAtPositions gives, reached in
// one pass: shrinking in place, growing into one new block. The String is unchanged when
// memory runs out, which is reported as ReplaceAtPositions reports it.
void String::ReplaceSeparate(String const& find, String const& with, unsigned long first,
                             unsigned long count) {
    if (&find == this || &with == this) {  // the text changes under them
        String const findCopy(find);
        String const withCopy(with);
        ReplaceSeparate(findCopy, withCopy, first, count);
        return;
    }
    unsigned long const findLength = find.mLength;
    unsigned long const withLength = with.mLength;
    // An empty find matches before every byte; the next match is one byte further on.
    unsigned long const step = findLength != 0 ? findLength : 1;
    auto const next = [&](unsigned long p) {
        return FindBytes(mBuffer, mLength, find.mBuffer, findLength, p + step);
    };
    if (withLength == findLength) {
        for (unsigned long p = first, k = 0; k < count; ++k, p = next(p))
            std::memcpy(mBuffer + p, with.mBuffer, withLength);
        return;
    }
    // The matches lie in the text without overlapping: removed <= mLength.
    unsigned long const removed = findLength * count;
    unsigned long added;
    unsigned long length;
    if (__builtin_mul_overflow(withLength, count, &added) ||
        __builtin_add_overflow(mLength - removed, added, &length) || length == kNotFound)
        LSTD_THROW(UnknownException, "String::ReplaceAtPositions()");  // no block could hold it
    if (withLength < findLength) {
        // Shrinking: the text written never reaches the text still to be scanned.
        char* out = mBuffer + first;
        unsigned long p = first;
        for (unsigned long k = 0; k < count; ++k) {
            std::memcpy(out, with.mBuffer, withLength);
            out += withLength;
            unsigned long const from = p + findLength;
            unsigned long const to = k + 1 < count ? next(p) : mLength;
            std::memmove(out, mBuffer + from, to - from);
            out += to - from;
            p = to;
        }
        try {
            Reallocate(length);
        } catch (Exception const&) {
            // Cannot happen in practice: the block shrinks. The moved text is complete
            // up to length, so the larger block simply stays.
        }
        mLength = length;
        if (OwnsBlock())
            mBuffer[length] = '\0';
        return;
    }
    char* block = static_cast<char*>(std::malloc(length + 1));
    if (block == nullptr)
        LSTD_THROW(UnknownException, "String::ReplaceAtPositions()");
    char* out = block;
    unsigned long from = 0;
    for (unsigned long p = first, k = 0; k < count; ++k, p = next(p)) {
        std::memcpy(out, mBuffer + from, p - from);
        out += p - from;
        std::memcpy(out, with.mBuffer, withLength);
        out += withLength;
        from = p + findLength;
    }
    std::memcpy(out, mBuffer + from, mLength - from);
    block[length] = '\0';
    Adopt(block, length);
}

void String::ReplaceAtPositions(String const& find, String const& with,
                                ValDLinkList<unsigned long> const& positions) {
    if (&find == this || &with == this) {  // the moves below would change them
        String const findCopy(find);
        String const withCopy(with);
        ReplaceAtPositions(findCopy, withCopy, positions);
        return;
    }
    long long const findLength = static_cast<long long>(find.mLength);
    long long const withLength = static_cast<long long>(with.mLength);
    long long const d = findLength - withLength;
    long long const c = static_cast<long long>(positions.GetNumberOfEntry());
    // Positions and shifts whose sums do not fit in 64 bits lie outside any text.
    auto const add = [](long long a, long long b) {
        long long sum;
        if (__builtin_add_overflow(a, b, &sum))
            LSTD_THROW(UnknownException, "String::ReplaceAtPositions()");
        return sum;
    };
    auto const sub = [](long long a, long long b) {
        long long difference;
        if (__builtin_sub_overflow(a, b, &difference))
            LSTD_THROW(UnknownException, "String::ReplaceAtPositions()");
        return difference;
    };
    try {
        long long const before = static_cast<long long>(mLength);
        long long change;  // d * c, the length given up (negative: gained)
        bool const huge = __builtin_mul_overflow(d, c, &change);
        if (d < 0) {
            if (huge)
                OutOfMemory(__LINE__);  // a length no block could hold
            long long const grown = sub(before, change);
            Resize(static_cast<unsigned long>(grown > 0 ? grown : 0));
        }
        long long const size = static_cast<long long>(mLength);
        // Only bytes that are really read or written must lie in the block: once earlier
        // matches have shrunk the text, an overlapping one may start below 0 with nothing
        // left behind it to move, and then touches nothing.
        auto const inside = [size](long long from, long long n) {
            return n <= 0 || (from >= 0 && from <= size - n);
        };
        long long shift = 0;
        long long logical = before;
        for (ValDoubleLink<unsigned long>* node = positions.GetHead(); node != nullptr;
             node = node->mNext) {
            long long const p = add(static_cast<long long>(node->mValue), shift);
            if (d != 0) {
                long long const tail = sub(logical, add(p, findLength));
                if (tail > 0) {
                    if (!inside(p + findLength, tail) || !inside(p + withLength, tail))
                        LSTD_THROW(UnknownException, "String::ReplaceAtPositions()");
                    Memory::CopyOverlappedMemory(mBuffer + p + findLength, mBuffer + p + withLength,
                                                 static_cast<unsigned long>(tail));
                }
                logical = sub(logical, d);
                shift = sub(shift, d);
            }
            if (!inside(p, withLength))
                LSTD_THROW(UnknownException, "String::ReplaceAtPositions()");
            if (withLength > 0)
                std::memcpy(mBuffer + p, with.mBuffer, with.mLength);
        }
        if (d > 0) {
            long long const shrunk = huge ? 0 : static_cast<long long>(mLength) - change;
            Resize(static_cast<unsigned long>(shrunk > 0 ? shrunk : 0));
        }
    } catch (Exception const&) {
        LSTD_THROW(UnknownException, "String::ReplaceAtPositions()");
    }
}

// ---- trimming and case ---------------------------------------------------------------------

void String::TrimHead() {
    unsigned long k = 0;
    while (k < mLength && IsWhite(mBuffer[k]))
        ++k;
    if (k == 0)
        return;
    unsigned long const n = mLength - k;
    if (n == 0) {
        Clear();
        return;
    }
    Memory::CopyOverlappedMemory(mBuffer + k, mBuffer, n);
    mBuffer[n] = '\0';
    mLength = n;
    // Shrinking cannot fail in practice; if it does, the larger block simply stays.
    if (char* block = static_cast<char*>(std::realloc(mBuffer, n + 1)))
        mBuffer = block;
}

void String::TrimTrail() {
    unsigned long n = mLength;
    while (n > 0 && IsWhite(mBuffer[n - 1]))
        --n;
    if (n == mLength)
        return;
    // Deliberate: only the terminator moves; the block keeps its size.
    mLength = n;
    mBuffer[n] = '\0';
}

void String::Trim() {
    TrimHead();
    TrimTrail();
}

String String::TrimHead() const {
    unsigned long k = 0;
    while (k < mLength && IsWhite(mBuffer[k]))
        ++k;
    return String(mBuffer + k, mLength - k);
}

String String::TrimTrail() const {
    unsigned long n = mLength;
    while (n > 0 && IsWhite(mBuffer[n - 1]))
        --n;
    return String(mBuffer, n);
}

String String::Trim() const {
    unsigned long k = 0;
    while (k < mLength && IsWhite(mBuffer[k]))
        ++k;
    unsigned long n = mLength;
    while (n > k && IsWhite(mBuffer[n - 1]))
        --n;
    return String(mBuffer + k, n - k);
}

void String::ToUpper() {
    for (unsigned long i = 0; i < mLength; ++i)
        mBuffer[i] = Character::ToUpper(mBuffer[i]);
}

void String::ToLower() {
    for (unsigned long i = 0; i < mLength; ++i)
        mBuffer[i] = Character::ToLower(mBuffer[i]);
}

String String::ToUpper() const {
    String copy(*this);
    copy.ToUpper();
    return copy;
}

String String::ToLower() const {
    String copy(*this);
    copy.ToLower();
    return copy;
}

// ---- digits and hashing --------------------------------------------------------------------

bool String::IsDigit(char const* s, long long const& n) {
    for (long long i = 0; i < n; ++i)
        if (s[i] < '0' || s[i] > '9')
            return false;
    return true;
}

bool String::IsDigit(char const* s) { return IsDigit(s, static_cast<long long>(std::strlen(s))); }

bool String::IsDigit(String const& s) {
    return IsDigit(s.mBuffer, static_cast<long long>(s.mLength));
}

bool String::IsDigit() const { return IsDigit(*this); }

unsigned long String::Hash(String const& s) {
    return HashGenerator::DoFNV1Hash64(s.mBuffer, s.mLength);
}

unsigned long String::Hash(String const* s) { return s == nullptr ? 0 : Hash(*s); }

// ---- formatting ----------------------------------------------------------------------------

// GCC wrongly warns that attributes of the va_list element type are ignored in every
// definition with a va_list const& parameter; the parameter type is part of the interface.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wattributes"

void String::Sprintf(char*& buffer, unsigned long& length, char const* format,
                     va_list const& args) {
    unsigned long size;
    if (__builtin_mul_overflow(std::strlen(format), 10ul, &size))
        OutOfMemory(__LINE__);
    if (size == 0)
        return;  // Deliberate: an empty format leaves the target as it was.
    char* block = static_cast<char*>(std::malloc(size));
    if (block == nullptr)
        OutOfMemory(__LINE__);
    block[0] = '\0';
    va_list copy;
    va_copy(copy, const_cast<va_list&>(args));
    int const result = std::vsnprintf(block, size, format, copy);
    va_end(copy);
    unsigned long n;
    if (result < 0) {
        // The C library rejected a conversion (an incomplete "%l", say): keep the text it
        // wrote before failing. A negative count never reaches an allocation size.
        block[size - 1] = '\0';
        n = std::strlen(block);
    } else {
        n = static_cast<unsigned long>(result);
    }
    if (n > size - 1) {
        char* larger = static_cast<char*>(std::realloc(block, n + 1));
        if (larger == nullptr) {
            std::free(block);
            OutOfMemory(__LINE__);
        }
        block = larger;
        va_copy(copy, const_cast<va_list&>(args));
        std::vsnprintf(block, n + 1, format, copy);
        va_end(copy);
    } else if (n < size - 1) {
        if (char* smaller = static_cast<char*>(std::realloc(block, n + 1)))
            block = smaller;
    }
    block[n] = '\0';
    if (buffer != nullptr)
        std::free(buffer);
    buffer = block;
    length = n;
}

// Most texts fit a small buffer on the stack; copied from there, the target keeps its block
// when the length is unchanged and is resized in place otherwise. Longer texts and
// conversions the C library rejects take the worker's way, with a fresh pass of the
// arguments: the result is the worker's in every case.
bool String::FormatShort(char const* format, va_list args) {
    if (format[0] == '\0')
        return true;  // Deliberate: an empty format leaves the target as it was.
    char local[256];
    int const result = std::vsnprintf(local, sizeof local, format, args);
    if (result < 0 || static_cast<unsigned long>(result) >= sizeof local)
        return false;
    Assign(local, static_cast<unsigned long>(result));
    return true;
}

void String::FormatFrom(char const* format, va_list const& args) {
    va_list copy;
    va_copy(copy, const_cast<va_list&>(args));
    bool const done = FormatShort(format, copy);
    va_end(copy);
    if (done)
        return;
    char* block = nullptr;
    unsigned long length = 0;
    Sprintf(block, length, format, args);
    if (block != nullptr)
        Adopt(block, length);
}

void String::Sprintf(String& target, char const* format, va_list const& args) {
    target.FormatFrom(format, args);
}
#pragma GCC diagnostic pop

// va_start after a reference parameter: these signatures are part of the interface. GCC and
// clang place the variadic arguments the same way whatever the last named parameter is.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wvarargs"
#endif

// The variadic forms: one pass of the arguments for the stack buffer, a fresh one for the
// worker when the text did not fit (a va_list copy would cost more than starting again).
#define LSTD_FORMAT_ARGUMENTS(target, format, last)                                                \
    do {                                                                                           \
        va_list args;                                                                              \
        va_start(args, last);                                                                      \
        bool const done = (target).FormatShort((format), args);                                    \
        va_end(args);                                                                              \
        if (!done) {                                                                               \
            va_start(args, last);                                                                  \
            (target).FormatFrom((format), args);                                                   \
            va_end(args);                                                                          \
        }                                                                                          \
    } while (0)

void String::Sprintf(char const* format, ...) { LSTD_FORMAT_ARGUMENTS(*this, format, format); }

void String::Sprintf(String const& format, ...) {
    // format may be this string: it is read before the text is replaced
    LSTD_FORMAT_ARGUMENTS(*this, format.mBuffer, format);
}

void String::Sprintf(String& target, char const* format, ...) {
    LSTD_FORMAT_ARGUMENTS(target, format, format);
}

void String::Sprintf(String& target, String const& format, ...) {
    LSTD_FORMAT_ARGUMENTS(target, format.mBuffer, format);
}

String String::SSprintf(String const& format, ...) {
    String result;
    LSTD_FORMAT_ARGUMENTS(result, format.mBuffer, format);
    return result;
}
#undef LSTD_FORMAT_ARGUMENTS

#if defined(__clang__)
#pragma clang diagnostic pop
#endif
std::ostream& operator<<(std::ostream& out, String const& s) { return out << s.View(); }
}  // namespace lstd
