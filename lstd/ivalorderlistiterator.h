// lstd/ivalorderlistiterator.h - value access of a value-list iterator.
#ifndef LSTD_IVALORDERLISTITERATOR_H
#define LSTD_IVALORDERLISTITERATOR_H

#include <lstd/listiterator.h>

namespace lstd {

/// A list iterator whose items are stored copies of T.
template <typename T>
class IValOrderListIterator : public ListIterator<T> {
public:
    IValOrderListIterator() {}
    virtual ~IValOrderListIterator() {}
    using ListIterator<T>::operator=;
    // The steps are the same slots as ListIterator's, declared pure again here: a value
    // iterator moves its own node, and a call through this interface then has the value
    // iterators as its only candidates, so the compiler can inline the step it sees.
    bool operator++() override = 0;
    bool operator--() override = 0;
    /// Copies the current value into value; returns true.
    virtual bool Get(T& value) const = 0;
    /// The stored current value.
    virtual T& Get() const = 0;
    /// Replaces the current value by a copy of value.
    virtual void Set(T const& value) const = 0;

protected:
    /// Copies the range and position; for the derived iterators.
    IValOrderListIterator(IValOrderListIterator const& other) : ListIterator<T>(other) {}
};
}  // namespace lstd
#endif  // LSTD_IVALORDERLISTITERATOR_H
