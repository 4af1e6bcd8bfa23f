// lstd/iterator.h - root of every iterator: the bound collection.
#ifndef LSTD_ITERATOR_H
#define LSTD_ITERATOR_H

#include <lstd/collection.h>

namespace lstd {

/// Binds an iterator to a collection; starts unbound.
template <typename T>
class Iterator {
public:
    Iterator() : mCollection(nullptr) {}
    /// Bound to the same collection as other.
    Iterator(Iterator const& other) : mCollection(other.mCollection) {}
    virtual ~Iterator() {}

    /// Binds the iterator to collection.
    virtual void Init(Collection<T> const& collection) { mCollection = &collection; }
    /// Copies the bound collection only.
    virtual Iterator& operator=(Iterator const& other) {
        mCollection = other.mCollection;
        return *this;
    }
    /// Unbinds the iterator.
    virtual void Clear() { mCollection = nullptr; }

    /// The bound collection, or null.
    Collection<T> const* GetCollection() const { return mCollection; }

protected:
    /// The collection walked, or null.
    Collection<T> const* mCollection;
};
}  // namespace lstd
#endif  // LSTD_ITERATOR_H
