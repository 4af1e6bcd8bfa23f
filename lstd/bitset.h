// lstd/bitset.h - a fixed-length set of bits stored as 64-bit words.
#ifndef LSTD_BITSET_H
#define LSTD_BITSET_H

#include <lstd/array.h>
#include <lstd/string.h>

namespace lstd {

/// A fixed number of bits, all 0 at first, kept in ceil(bitNumber / 64) 64-bit words (at
/// least one): bit b is bit b & 63 of word b >> 6. Bits of the last word above bitNumber
/// stay 0. The words are open to callers that work on them directly (the matrix graph).
class BitSet {
public:
    /// bitNumber bits, all 0. Throws NotEnoughMemoryException when the words can't be had.
    explicit BitSet(unsigned long const& bitNumber);
    /// A copy of other's length and bits.
    BitSet(BitSet const& other);
    /// Takes other's length and bits.
    BitSet& operator=(BitSet const& other);
    virtual ~BitSet();

    /// Sets every bit to 0.
    void Clear();
    /// Bit b. Throws InvalidIndexException when b >= the number of bits.
    bool Get(unsigned long const& b) const;
    /// Sets bit b to value. Throws InvalidIndexException when b >= the number of bits and
    /// InvalidOperationException "The bit value is invalid. (Only 0 or 1 is allowed)"
    /// for any other value.
    void Set(unsigned long const& b, unsigned char const& value);
    /// The number of bits set.
    unsigned long Count() const;
    /// The number of bits, fixed at construction.
    unsigned long GetBitNumber() const { return mBitNumber; }

    ///@{
    /// Bitwise or, and, exclusive or with a bit set of the same length. Throw
    /// InvalidOperationException when the lengths differ.
    BitSet& operator|=(BitSet const& other);
    BitSet& operator&=(BitSet const& other);
    BitSet& operator^=(BitSet const& other);
    BitSet operator|(BitSet const& other) const;
    BitSet operator&(BitSet const& other) const;
    BitSet operator^(BitSet const& other) const;
    ///@}
    ///@{
    /// Same length and same bits.
    bool operator==(BitSet const& other) const;
    bool operator!=(BitSet const& other) const { return !(*this == other); }
    ///@}

    /// Lower-case hexadecimal, the highest bit first, one digit per four bits
    /// (ceil(bitNumber / 4) digits, at least one), no prefix: bits 0 and 5 of 8 give "21".
    String ToHexString() const;

    ///@{
    /// The words, for callers that read or write them directly.
    Array<unsigned long>& GetWords() { return mWords; }
    Array<unsigned long> const& GetWords() const { return mWords; }
    ///@}
    /// The number of 64-bit words: ceil(bits / 64), at least one.
    unsigned long GetWordNumber() const { return mWords.GetLength(); }

private:
    static unsigned long WordsFor(unsigned long bitNumber);
    void CheckIndex(unsigned long b) const;
    void CheckLength(BitSet const& other) const;
    template <typename Op>
    BitSet& Combine(BitSet const& other, Op op);

    unsigned long mBitNumber;
    Array<unsigned long> mWords;
};
}  // namespace lstd
#endif  // LSTD_BITSET_H
