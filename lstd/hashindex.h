// lstd/hashindex.h - the buckets of the hash collections, found by bucket number.
//
// A bucket is a run of items in append order (pointers, or small trivial values kept in
// place), each with a 16-bit digest of its full hash. A lookup compares the digests first and
// calls the item's operator== only where they agree, so a long bucket is searched in one
// contiguous array of digests instead of one item at a time. The one requirement this puts on
// a hash function is the usual one: equal items have equal hashes.
//
// The index keeps its buckets in one of two forms, chosen by the index and never visible
// outside it:
// - sparse, while few buckets hold items: an open-addressing table (linear probing over a
//   power of two of 32-byte slots, at most half full) of the non-empty buckets only, so that
//   a table of 32767 buckets with a handful of items costs a handful of slots;
// - dense, once the sparse slots would take about as much memory as an array of every
//   bucket: that array, indexed by bucket number, 24 bytes a bucket. The switch happens on a
//   growth and costs the table size once, which the items already stored pay for.
// Clear returns to an empty sparse index. A bucket holds its first item in itself and moves
// to a block of its own at the second.
#ifndef LSTD_HASHINDEX_H
#define LSTD_HASHINDEX_H

#include <lstd/exception.h>

#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <new>
#include <type_traits>
#include <vector>

namespace lstd {
class String;

namespace hashtable {

/// Whether destroying a T has no effect that a program can see besides the memory it frees,
/// so that a collection may destroy its items in any order: trivially destructible types and
/// String.
template <typename T>
struct QuietDestructor {
    static bool const value = std::is_trivially_destructible<T>::value;
};
template <>
struct QuietDestructor<String> {
    static bool const value = true;
};

/// n % divisor for a divisor fixed in advance, without a division instruction: the
/// divisor's reciprocal is kept as a 128-bit fixed-point fraction, so that a remainder costs
/// a few multiplications. Exact for every 64-bit n and every divisor from 1 up.
class Modulus {
public:
    explicit Modulus(unsigned long const& divisor) : mDivisor(divisor) {
        mReciprocal = ~static_cast<Wide>(0) / divisor + 1;  // wraps to 0 for 1: n % 1 is 0
    }
    unsigned long Of(unsigned long const& n) const {
        Wide const fraction = mReciprocal * n;  // the fractional part of n / divisor
        Wide const low = (static_cast<Wide>(static_cast<unsigned long>(fraction)) * mDivisor) >> 64;
        Wide const high = static_cast<Wide>(static_cast<unsigned long>(fraction >> 64)) * mDivisor;
        return static_cast<unsigned long>((low + high) >> 64);
    }

private:
    __extension__ typedef unsigned __int128 Wide;

    Wide mReciprocal;
    unsigned long mDivisor;
};

/// Whether a value collection keeps T in place in its records instead of a heap copy: for
/// trivial types no larger than a pointer (unsigned long, pointers, enumerations).
template <typename T>
struct InPlace {
    static bool const value =
        std::is_trivial<T>::value && sizeof(T) <= sizeof(void*) && alignof(T) <= alignof(void*);
};

/// The item part of a record: a pointer to the item, or, for a value kept in place, the
/// value itself.
template <typename T, bool = InPlace<T>::value>
union Slot {
    T* mPointer;
};
template <typename T>
union Slot<T, true> {
    T* mPointer;
    T mValue;
};

/// The digest of a hash that a bucket keeps beside each item: all 64 bits folded into 16.
inline unsigned short Digest(unsigned long hash) {
    hash ^= hash >> 32;
    hash ^= hash >> 16;
    return static_cast<unsigned short>(hash);
}

/// A non-empty bucket: its items in append order, each with the digest of its hash. The
/// first item lives in the bucket itself; from the second on, the bucket owns a block of
/// mCapacity digests followed by mCapacity items, so that a search of a long bucket reads
/// its digests from one or two cache lines and touches an item only where a digest agrees.
template <typename P>
struct Bucket {
    /// The items, contiguous, in append order.
    P* Items() { return mCount <= 1 ? &mStorage.mOne.mItem : ItemsOf(mStorage.mMany); }
    P const* Items() const { return mCount <= 1 ? &mStorage.mOne.mItem : ItemsOf(mStorage.mMany); }
    /// The position of the first item whose digest is digest and for which match(item) is
    /// true; mCount when there is none.
    template <typename Match>
    unsigned long Search(unsigned short const& digest, Match const& match) const {
        if (mCount <= 1)
            return mCount == 1 && mStorage.mOne.mDigest == digest && match(mStorage.mOne.mItem)
                       ? 0
                       : mCount;
        unsigned short const* digests = static_cast<unsigned short const*>(mStorage.mMany.mBlock);
        P const* items = ItemsOf(mStorage.mMany);
        for (unsigned long i = 0; i < mCount; ++i)
            if (digests[i] == digest && match(items[i]))
                return i;
        return mCount;
    }
    /// Sets the digest of the item at position (below mCount).
    void SetDigest(unsigned long const& position, unsigned short const& digest) {
        if (mCount <= 1)
            mStorage.mOne.mDigest = digest;
        else
            static_cast<unsigned short*>(mStorage.mMany.mBlock)[position] = digest;
    }

    unsigned long mCount;
    union Storage {
        struct One {
            unsigned long mDigest;
            P mItem;
        } mOne;
        struct Many {
            void* mBlock;
            unsigned long mCapacity;  // a multiple of 4: the items start 8-byte aligned
        } mMany;
    } mStorage;

    static P* ItemsOf(typename Storage::Many const& many) {
        return reinterpret_cast<P*>(static_cast<unsigned short*>(many.mBlock) + many.mCapacity);
    }
};

/// The non-empty buckets of a hash collection of hashSize buckets, found by number (below
/// hashSize). The index stores records; it never creates or destroys the items they hold.
template <typename P>
class BucketIndex {
public:
    typedef hashtable::Bucket<P> Bucket;

    explicit BucketIndex(unsigned long const& hashSize)
        : mSlots(nullptr), mDense(nullptr), mCapacity(0), mSize(0), mShift(0), mHashSize(hashSize) {
        static_assert(std::is_trivially_copyable<P>::value && alignof(P) <= 8 && sizeof(P) % 8 == 0,
                      "items are moved as bytes and follow their digests 8-byte aligned");
    }
    BucketIndex(BucketIndex const&) = delete;
    BucketIndex& operator=(BucketIndex const&) = delete;
    ~BucketIndex() { Clear(); }

    /// The bucket numbered number, or null when it holds no record.
    Bucket* Find(unsigned long const& number) const {
        if (mDense != nullptr)
            return mDense[number].mCount != 0 ? mDense + number : nullptr;
        if (mCapacity == 0)
            return nullptr;
        unsigned long const mask = mCapacity - 1;
        for (unsigned long i = Home(number);; i = (i + 1) & mask) {
            if (mSlots[i].mNumber == number)
                return &mSlots[i].mBucket;
            if (mSlots[i].mNumber == FREE)
                return nullptr;
        }
    }
    /// Makes bucket number, which must hold no record, ready for its first record: the caller
    /// appends one at once (which cannot fail). Throws NotEnoughMemoryException when the index
    /// cannot grow; other buckets found before may then have moved.
    Bucket* Insert(unsigned long const& number) {
        if (mDense == nullptr && (mSize + 1) * 2 > mCapacity)
            Grow();
        ++mSize;
        if (mDense != nullptr)
            return mDense + number;
        Slot* slot = Place(number);
        slot->mNumber = number;
        slot->mBucket.mCount = 0;
        return &slot->mBucket;
    }
    /// Appends item, whose hash has digest digest, at the bucket's tail. Throws
    /// NotEnoughMemoryException when the bucket's block cannot grow, the bucket then
    /// unchanged; never throws for a bucket's first item.
    static void Append(Bucket& bucket, unsigned short const& digest, P const& item) {
        typename Bucket::Storage& s = bucket.mStorage;
        unsigned long const n = bucket.mCount;
        if (n == 0) {
            s.mOne.mDigest = digest;
            s.mOne.mItem = item;
        } else if (n == 1 || n == s.mMany.mCapacity) {
            unsigned long const capacity = n == 1 ? 4 : n * 2;
            void* block = std::malloc(capacity * (sizeof(unsigned short) + sizeof(P)));
            if (block == nullptr)
                LSTD_THROW(NotEnoughMemoryException, std::bad_alloc().what());
            unsigned short* digests = static_cast<unsigned short*>(block);
            P* items = reinterpret_cast<P*>(digests + capacity);
            if (n == 1) {
                digests[0] = static_cast<unsigned short>(s.mOne.mDigest);
                items[0] = s.mOne.mItem;
            } else {
                std::memcpy(digests, s.mMany.mBlock, n * sizeof(unsigned short));
                std::memcpy(static_cast<void*>(items), Bucket::ItemsOf(s.mMany), n * sizeof(P));
                std::free(s.mMany.mBlock);
            }
            digests[n] = digest;
            items[n] = item;
            s.mMany.mBlock = block;
            s.mMany.mCapacity = capacity;
        } else {
            static_cast<unsigned short*>(s.mMany.mBlock)[n] = digest;
            Bucket::ItemsOf(s.mMany)[n] = item;
        }
        bucket.mCount = n + 1;
    }
    /// Removes the item at position (below the count), keeping the others in order. Returns
    /// true when the bucket became empty: it is then gone, and the pointer must not be used.
    /// Never throws.
    bool RemoveAt(Bucket* bucket, unsigned long const& position) {
        typename Bucket::Storage& s = bucket->mStorage;
        unsigned long const n = bucket->mCount;
        if (n >= 2) {
            unsigned short* digests = static_cast<unsigned short*>(s.mMany.mBlock);
            P* items = Bucket::ItemsOf(s.mMany);
            for (unsigned long i = position; i + 1 < n; ++i) {
                digests[i] = digests[i + 1];
                items[i] = items[i + 1];
            }
            if (n == 2) {
                void* const block = s.mMany.mBlock;
                s.mOne.mDigest = digests[0];
                s.mOne.mItem = items[0];
                std::free(block);
            }
        }
        bucket->mCount = n - 1;
        if (n == 1) {
            --mSize;
            if (mDense == nullptr)
                Erase(bucket);
            return true;
        }
        return false;
    }
    /// Forgets every bucket and releases all memory; the items are not touched.
    void Clear() {
        if (mDense != nullptr) {
            for (unsigned long n = 0; n < mHashSize; ++n)
                if (mDense[n].mCount > 1)
                    std::free(mDense[n].mStorage.mMany.mBlock);
            std::free(mDense);
        }
        for (unsigned long i = 0; i < mCapacity; ++i)
            if (mSlots[i].mNumber != FREE && mSlots[i].mBucket.mCount > 1)
                std::free(mSlots[i].mBucket.mStorage.mMany.mBlock);
        std::free(mSlots);
        mSlots = nullptr;
        mDense = nullptr;
        mCapacity = mSize = 0;
        mShift = 0;
    }
    /// Releases this index's memory and takes other's buckets and table size; other is left
    /// empty, with its table size. Never throws.
    void Take(BucketIndex& other) {
        Clear();
        mSlots = other.mSlots;
        mDense = other.mDense;
        mCapacity = other.mCapacity;
        mSize = other.mSize;
        mShift = other.mShift;
        mHashSize = other.mHashSize;
        other.mSlots = nullptr;
        other.mDense = nullptr;
        other.mCapacity = other.mSize = 0;
        other.mShift = 0;
    }
    /// Exchanges the contents of two indexes of the same table size.
    void Swap(BucketIndex& other) {
        Exchange(mSlots, other.mSlots);
        Exchange(mDense, other.mDense);
        Exchange(mCapacity, other.mCapacity);
        Exchange(mSize, other.mSize);
        Exchange(mShift, other.mShift);
    }

    /// Number of non-empty buckets.
    unsigned long Size() const { return mSize; }
    /// Whether the buckets are kept in one array of the table size.
    bool IsDense() const { return mDense != nullptr; }
    /// Bucket places allocated: 0 while empty; sparse, a power of two at least twice Size();
    /// dense, the table size.
    unsigned long Capacity() const { return mDense != nullptr ? mHashSize : mCapacity; }
    /// The number of bucket, a bucket of this index.
    unsigned long NumberOf(Bucket const* bucket) const {
        if (mDense != nullptr)
            return static_cast<unsigned long>(bucket - mDense);
        return reinterpret_cast<Slot const*>(reinterpret_cast<char const*>(bucket) -
                                             offsetof(Slot, mBucket))
            ->mNumber;
    }
    /// Whether bucket is a bucket of this index that holds records (a stale pointer into
    /// memory the index no longer uses is not).
    bool Holds(Bucket const* bucket) const {
        std::uintptr_t const p = reinterpret_cast<std::uintptr_t>(bucket);
        if (mDense != nullptr) {
            std::uintptr_t const first = reinterpret_cast<std::uintptr_t>(mDense);
            return p >= first && p < first + mHashSize * sizeof(Bucket) &&
                   (p - first) % sizeof(Bucket) == 0 && bucket->mCount != 0;
        }
        std::uintptr_t const first =
            reinterpret_cast<std::uintptr_t>(mSlots) + offsetof(Slot, mBucket);
        return mSlots != nullptr && p >= first && p < first + mCapacity * sizeof(Slot) &&
               (p - first) % sizeof(Slot) == 0 && NumberOf(bucket) != FREE;
    }
    /// The numbers of the non-empty buckets: ascending when dense, else in no particular
    /// order. Throws std::bad_alloc.
    void GetNumbers(std::vector<unsigned long>& numbers) const {
        numbers.reserve(mSize);
        ForEach([&numbers, this](Bucket const& bucket) { numbers.push_back(NumberOf(&bucket)); });
    }
    /// Calls fn(bucket) on every non-empty bucket: ascending when dense, else in slot order.
    template <typename F>
    void ForEach(F const& fn) const {
        if (mDense != nullptr) {
            for (unsigned long n = 0; n < mHashSize; ++n)
                if (mDense[n].mCount != 0)
                    fn(mDense[n]);
            return;
        }
        for (unsigned long i = 0; i < mCapacity; ++i)
            if (mSlots[i].mNumber != FREE)
                fn(mSlots[i].mBucket);
    }

private:
    struct Slot {
        unsigned long mNumber;
        Bucket mBucket;
    };
    static unsigned long const FREE = ~0UL;  // no bucket number reaches it: numbers < hashSize

    template <typename V>
    static void Exchange(V& a, V& b) {
        V const t = a;
        a = b;
        b = t;
    }
    // Fibonacci hashing spreads consecutive and strided bucket numbers over the slots.
    unsigned long Home(unsigned long const& number) const {
        return (number * 0x9E3779B97F4A7C15UL) >> mShift;
    }
    Slot* Place(unsigned long const& number) {
        unsigned long const mask = mCapacity - 1;
        unsigned long i = Home(number);
        while (mSlots[i].mNumber != FREE)
            i = (i + 1) & mask;
        return mSlots + i;
    }
    // Doubles the sparse slots, or moves to the dense array once it takes at most twice the
    // memory of the grown slots (then the sparse form would save little and probe more).
    void Grow() {
        unsigned long const capacity = mCapacity == 0 ? 2 : mCapacity * 2;
        if (mHashSize <= capacity * (2 * sizeof(Slot)) / sizeof(Bucket) && MakeDense())
            return;
        Slot* slots = static_cast<Slot*>(std::aligned_alloc(64, capacity * sizeof(Slot)));
        if (slots == nullptr)
            LSTD_THROW(NotEnoughMemoryException, std::bad_alloc().what());
        for (unsigned long i = 0; i < capacity; ++i)
            slots[i].mNumber = FREE;
        Slot* old = mSlots;
        unsigned long const oldCapacity = mCapacity;
        mSlots = slots;
        mCapacity = capacity;
        mShift = 64;
        for (unsigned long c = capacity; c > 1; c >>= 1)
            --mShift;
        for (unsigned long i = 0; i < oldCapacity; ++i)
            if (old[i].mNumber != FREE)
                *Place(old[i].mNumber) = old[i];
        std::free(old);
    }
    // Moves the buckets into an array of the table size; false, nothing changed, when that
    // array cannot be had.
    bool MakeDense() {
        if (mHashSize > ~0UL / sizeof(Bucket))
            return false;
        Bucket* dense = static_cast<Bucket*>(std::calloc(mHashSize, sizeof(Bucket)));
        if (dense == nullptr)
            return false;
        for (unsigned long i = 0; i < mCapacity; ++i)
            if (mSlots[i].mNumber != FREE)
                dense[mSlots[i].mNumber] = mSlots[i].mBucket;
        std::free(mSlots);
        mSlots = nullptr;
        mCapacity = 0;
        mShift = 0;
        mDense = dense;
        return true;
    }
    // Backward-shift deletion: later slots of the probe run move up into the hole, so that
    // lookups need no tombstones.
    void Erase(Bucket* bucket) {
        unsigned long const mask = mCapacity - 1;
        Slot* slot =
            reinterpret_cast<Slot*>(reinterpret_cast<char*>(bucket) - offsetof(Slot, mBucket));
        unsigned long hole = static_cast<unsigned long>(slot - mSlots);
        for (unsigned long i = (hole + 1) & mask; mSlots[i].mNumber != FREE; i = (i + 1) & mask) {
            unsigned long const home = Home(mSlots[i].mNumber);
            if (((i - home) & mask) >= ((i - hole) & mask)) {
                mSlots[hole] = mSlots[i];
                hole = i;
            }
        }
        mSlots[hole].mNumber = FREE;
    }

    Slot* mSlots;             // sparse form, null when dense or empty
    Bucket* mDense;           // dense form, mHashSize buckets, null when sparse
    unsigned long mCapacity;  // sparse slots
    unsigned long mSize;      // non-empty buckets
    unsigned int mShift;      // 64 - log2(mCapacity)
    unsigned long mHashSize;
};
}  // namespace hashtable
}  // namespace lstd
#endif  // LSTD_HASHINDEX_H
