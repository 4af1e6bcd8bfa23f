// lstd/iptrorderlistiterator.h - item access of a pointer-list iterator.
#ifndef LSTD_IPTRORDERLISTITERATOR_H
#define LSTD_IPTRORDERLISTITERATOR_H

#include <lstd/listiterator.h>

namespace lstd {

/// A list iterator whose items are T pointers.
template <typename T>
class IPtrOrderListIterator : public ListIterator<T> {
public:
    IPtrOrderListIterator() {}
    virtual ~IPtrOrderListIterator() {}
    using ListIterator<T>::operator=;
    // The steps are the same slots as ListIterator's, declared pure again here: a pointer
    // iterator moves its own node, and a call through this interface then has the pointer
    // iterators as its only candidates, so the compiler can inline the step it sees.
    bool operator++() override = 0;
    bool operator--() override = 0;
    /// The current item.
    virtual T* Get() const = 0;
    /// Stores item at the current place and returns the previous one (not deleted).
    virtual T* Set(T* item) const = 0;

protected:
    /// Copies the range and position; for the derived iterators.
    IPtrOrderListIterator(IPtrOrderListIterator const& other) : ListIterator<T>(other) {}
};
}  // namespace lstd
#endif  // LSTD_IPTRORDERLISTITERATOR_H
