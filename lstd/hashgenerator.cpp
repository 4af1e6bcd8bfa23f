// lstd/hashgenerator.cpp - FNV-1 and bit hashes.
#include <lstd/hashgenerator.h>

#include <cstring>

namespace lstd {

unsigned long HashGenerator::mBitHashVal = 0;

HashGenerator::HashGenerator() {}
HashGenerator::~HashGenerator() {}

namespace {
// One multiply and one XOR per byte: the multiply latency bounds the speed, so the loop is
// kept free of anything else.
inline unsigned long Fnv1(unsigned long h, unsigned long prime, char const* data,
                          unsigned long length) {
    signed char const* p = reinterpret_cast<signed char const*>(data);
    signed char const* const end = p + length;
    for (; p != end; ++p)
        h = (h * prime) ^ static_cast<unsigned long>(static_cast<long>(*p));
    return h;
}

inline unsigned long Word16(char const* data, unsigned long p) {
    return static_cast<unsigned char>(data[p]) |
           (static_cast<unsigned long>(static_cast<unsigned char>(data[p + 1])) << 8);
}
}  // namespace

unsigned long HashGenerator::DoFNV1Hash32(char const* data, unsigned long const& length) {
    return Fnv1(0x811C9DC5UL, 16777619UL, data, length);
}

unsigned long HashGenerator::DoFNV1Hash64(char const* data, unsigned long const& length) {
    return Fnv1(0xCBF29CE484222325UL, 0x100000001B3UL, data, length);
}

unsigned long HashGenerator::DoBitHash(char const* data, unsigned long const& length) {
    mBitHashVal &= ~0xFFFFUL;
    if (length <= 2) {
        if (length >= 1)
            mBitHashVal |= static_cast<unsigned char>(data[0]);
        if (length == 2)
            mBitHashVal |= static_cast<unsigned long>(static_cast<unsigned char>(data[1])) << 8;
        mBitHashVal &= 0x7FFF;
        return mBitHashVal;
    }
    unsigned long acc = 0;
    unsigned long p = 0;
    for (; p < length - 2; p += 2) {
        unsigned long const w = Word16(data, p);
        mBitHashVal = (mBitHashVal & ~0xFFFFUL) | w;
        unsigned long const s = (static_cast<unsigned char>(data[p + 2]) & 0x80) != 0 ? ~0UL : 0UL;
        acc = ((w << 1) | s) ^ (acc | w);
    }
    // Deliberate: a one-byte tail is merged over the low byte of the last word read, not
    // zero-padded.
    mBitHashVal = (mBitHashVal & ~0xFFUL) | static_cast<unsigned char>(data[p]);
    if (length - p == 2)
        mBitHashVal = (mBitHashVal & ~0xFF00UL) |
                      (static_cast<unsigned long>(static_cast<unsigned char>(data[p + 1])) << 8);
    acc |= mBitHashVal;
    return acc & 0x7FFF;
}
}  // namespace lstd
