// lstd/hashmap.h - root of the hash maps, their key/value entries and the iterator root.
//
// A map is a set of heap-allocated entries (PtrHashMap, ValHashMap); an entry carries the
// map's key hash function, so that the static Hash of its class, the hash of the map's inner
// set, is the key hash of its key. Two map entries are equal for the set when their keys are
// equal under K's operator==; the comparison operators of PairEntry, which every entry
// inherits, are a different thing on purpose: they compare identities.
#ifndef LSTD_HASHMAP_H
#define LSTD_HASHMAP_H

#include <cstdint>

namespace lstd {

/// Root of the hash maps.
template <typename K, typename V>
class HashMap {
public:
    HashMap() {}
    HashMap(HashMap const&) = delete;
    HashMap& operator=(HashMap const&) = delete;
    virtual ~HashMap() {}

    /// Deliberately an identity test: true only for the very same map.
    virtual bool operator==(HashMap const& other) const { return this == &other; }
    /// Whether the map holds no entry.
    virtual bool IsEmpty() const = 0;
    /// The number of entries.
    virtual unsigned long Length() const = 0;
};

/// Root of the key/value entries. Deliberate: the operators compare the entries' identities
/// and addresses, never their keys (the maps find keys with the key equality of their entries).
template <typename K, typename V>
class PairEntry {
public:
    PairEntry() {}
    virtual ~PairEntry() {}

    virtual bool operator==(PairEntry const& other) const { return this == &other; }
    virtual bool operator>(PairEntry const& other) const { return Address(this) > Address(&other); }
    virtual bool operator>=(PairEntry const& other) const {
        return Address(this) >= Address(&other);
    }
    virtual bool operator<(PairEntry const& other) const { return Address(this) < Address(&other); }
    virtual bool operator<=(PairEntry const& other) const {
        return Address(this) <= Address(&other);
    }

private:
    static std::uintptr_t Address(PairEntry const* entry) {
        return reinterpret_cast<std::uintptr_t>(entry);
    }
};

/// A key pointer and a value pointer; the entry owns neither.
template <typename K, typename V>
class PtrPairEntry : public PairEntry<K, V> {
public:
    PtrPairEntry(K* key, V* value) : mKey(key), mValue(value) {}
    virtual ~PtrPairEntry() {}

    K* mKey;
    V* mValue;
};

/// A copy of a key and a copy of a value.
template <typename K, typename V>
class ValPairEntry : public PairEntry<K, V> {
public:
    ValPairEntry(K const& key, V const& value) : mKey(key), mValue(value) {}
    virtual ~ValPairEntry() {}

    K mKey;
    V mValue;
};

/// An entry of PtrHashMap.
template <typename K, typename V>
class PtrHashMapEntry : public PtrPairEntry<K, V> {
public:
    typedef unsigned long (*KeyHashFunc)(K const*);

    PtrHashMapEntry(K* key, V* value, KeyHashFunc keyHashFunc)
        : PtrPairEntry<K, V>(key, value), mKeyHashFunc(keyHashFunc) {}
    virtual ~PtrHashMapEntry() {}

    using PairEntry<K, V>::operator==;
    /// Key equality: *mKey == *other.mKey; a null key equals only a null key. The value
    /// takes no part.
    bool operator==(PtrHashMapEntry const& other) const {
        if (this->mKey == nullptr || other.mKey == nullptr)
            return this->mKey == other.mKey;
        return *this->mKey == *other.mKey;
    }
    /// The hash of the map's inner set: the key hash of entry's key (null keys included).
    static unsigned long Hash(PtrHashMapEntry const* entry) {
        return entry->mKeyHashFunc(entry->mKey);
    }

    KeyHashFunc mKeyHashFunc;
};

/// An entry of ValHashMap.
template <typename K, typename V>
class ValHashMapEntry : public ValPairEntry<K, V> {
public:
    typedef unsigned long (*KeyHashFunc)(K const&);

    ValHashMapEntry(K const& key, V const& value, KeyHashFunc keyHashFunc)
        : ValPairEntry<K, V>(key, value), mKeyHashFunc(keyHashFunc) {}
    virtual ~ValHashMapEntry() {}

    using PairEntry<K, V>::operator==;
    /// Key equality: mKey == other.mKey; the value takes no part.
    bool operator==(ValHashMapEntry const& other) const { return this->mKey == other.mKey; }
    /// The hash of the map's inner set: the key hash of entry's key.
    static unsigned long Hash(ValHashMapEntry const* entry) {
        return entry->mKeyHashFunc(entry->mKey);
    }

    KeyHashFunc mKeyHashFunc;
};

/// Root of the map iterators.
template <typename K, typename V>
class HashMapIterator {
public:
    HashMapIterator() {}
    virtual ~HashMapIterator() {}
};
}  // namespace lstd
#endif  // LSTD_HASHMAP_H
