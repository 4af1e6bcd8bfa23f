// lstd/hashgenerator.h - hash functions over byte strings.
#ifndef LSTD_HASHGENERATOR_H
#define LSTD_HASHGENERATOR_H

namespace lstd {

/// FNV-1 hashes and a 15-bit bit hash. Kept for compatibility with stored hash values, the
/// FNV functions take every byte as a sign-extended signed char (bytes 0x80..0xFF flip the
/// upper bits too) and DoFNV1Hash32 keeps a 64-bit state: its result is a 64-bit number
/// computed with the 32-bit basis and prime.
class HashGenerator {
public:
    HashGenerator();
    virtual ~HashGenerator();

    /// FNV-1 with basis 0x811C9DC5 and prime 16777619, 64-bit state; the basis for length 0.
    static unsigned long DoFNV1Hash32(char const* data, unsigned long const& length);
    /// FNV-1 with basis 0xCBF29CE484222325 and prime 0x100000001B3; the basis for length 0.
    static unsigned long DoFNV1Hash64(char const* data, unsigned long const& length);
    /// A 15-bit hash of 16-bit words. Not reentrant: it works in the static mBitHashVal.
    static unsigned long DoBitHash(char const* data, unsigned long const& length);

private:
    static unsigned long mBitHashVal;
};
}  // namespace lstd
#endif  // LSTD_HASHGENERATOR_H
