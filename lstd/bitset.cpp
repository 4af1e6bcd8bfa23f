// lstd/bitset.cpp - a fixed-length set of bits.
#include <lstd/bitset.h>

#include <lstd/exception.h>

namespace lstd {

unsigned long BitSet::WordsFor(unsigned long bitNumber) {
    unsigned long const words = (bitNumber + 63) / 64;
    return words == 0 ? 1 : words;
}

BitSet::BitSet(unsigned long const& bitNumber)
    : mBitNumber(bitNumber), mWords(WordsFor(bitNumber)) {}

BitSet::BitSet(BitSet const& other) : mBitNumber(other.mBitNumber), mWords(other.GetWordNumber()) {
    for (unsigned long i = 0; i < GetWordNumber(); ++i)
        mWords[i] = other.mWords[i];
}

BitSet& BitSet::operator=(BitSet const& other) {
    if (this != &other) {
        mWords.Resize(other.GetWordNumber());
        mBitNumber = other.mBitNumber;
        for (unsigned long i = 0; i < GetWordNumber(); ++i)
            mWords[i] = other.mWords[i];
    }
    return *this;
}

BitSet::~BitSet() {}

void BitSet::Clear() { mWords.Fill(0); }

void BitSet::CheckIndex(unsigned long b) const {
    if (b >= mBitNumber)
        LSTD_THROWF(InvalidIndexException, "The bit index '%d' is invalid. (mBitNumber=%d)",
                    static_cast<int>(b), static_cast<int>(mBitNumber));
}

bool BitSet::Get(unsigned long const& b) const {
    CheckIndex(b);
    return ((mWords[b >> 6] >> (b & 63)) & 1UL) != 0;
}

void BitSet::Set(unsigned long const& b, unsigned char const& value) {
    if (value > 1)
        LSTD_THROW(InvalidOperationException, "The bit value is invalid. (Only 0 or 1 is allowed)");
    CheckIndex(b);
    unsigned long& word = mWords[b >> 6];
    if (value == 1)
        word |= 1UL << (b & 63);
    else
        word &= ~(1UL << (b & 63));
}

unsigned long BitSet::Count() const {
    unsigned long count = 0;
    for (unsigned long i = 0; i < GetWordNumber(); ++i)
        count += static_cast<unsigned long>(__builtin_popcountl(mWords[i]));
    return count;
}

void BitSet::CheckLength(BitSet const& other) const {
    if (other.mBitNumber != mBitNumber)
        LSTD_THROWF(InvalidOperationException,
                    "The bit sets differ in length. (%d and %d bits)", static_cast<int>(mBitNumber),
                    static_cast<int>(other.mBitNumber));
}

template <typename Op>
BitSet& BitSet::Combine(BitSet const& other, Op op) {
    CheckLength(other);
    for (unsigned long i = 0; i < GetWordNumber(); ++i)
        mWords[i] = op(mWords[i], other.mWords[i]);
    return *this;
}

BitSet& BitSet::operator|=(BitSet const& other) {
    return Combine(other, [](unsigned long a, unsigned long b) { return a | b; });
}

BitSet& BitSet::operator&=(BitSet const& other) {
    return Combine(other, [](unsigned long a, unsigned long b) { return a & b; });
}

BitSet& BitSet::operator^=(BitSet const& other) {
    return Combine(other, [](unsigned long a, unsigned long b) { return a ^ b; });
}

BitSet BitSet::operator|(BitSet const& other) const {
    BitSet result(*this);
    result |= other;
    return result;
}
BitSet BitSet::operator&(BitSet const& other) const {
    BitSet result(*this);
    result &= other;
    return result;
}
BitSet BitSet::operator^(BitSet const& other) const {
    BitSet result(*this);
    result ^= other;
    return result;
}

bool BitSet::operator==(BitSet const& other) const {
    if (mBitNumber != other.mBitNumber)
        return false;
    for (unsigned long i = 0; i < GetWordNumber(); ++i)
        if (mWords[i] != other.mWords[i])
            return false;
    return true;
}

String BitSet::ToHexString() const {
    static char const kDigits[] = "0123456789abcdef";
    unsigned long const digits = mBitNumber == 0 ? 1 : (mBitNumber + 3) / 4;
    String text;
    text.Resize(digits);
    for (unsigned long d = 0; d < digits; ++d) {
        unsigned long const nibble = (mWords[d >> 4] >> ((d & 15) * 4)) & 0xF;
        text[static_cast<long long>(digits - 1 - d)] = kDigits[nibble];
    }
    return text;
}
}  // namespace lstd
