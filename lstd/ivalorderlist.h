// lstd/ivalorderlist.h - positional contract of the value lists.
#ifndef LSTD_IVALORDERLIST_H
#define LSTD_IVALORDERLIST_H

#include <lstd/ivalcollection.h>
#include <lstd/ivalorderlistiterator.h>

namespace lstd {

/// A value collection with positions 0 .. n - 1.
template <typename T>
class IValOrderList : public IValCollection<T> {
public:
    IValOrderList() {}
    virtual ~IValOrderList() {}

    /// Removes every value equal to value; removed (when given) is emptied first and
    /// receives the removed values in list order.
    virtual void RemoveAll(T const& value, IValCollection<T>* removed) = 0;
    /// The stored value at position; throws InvalidIndexException when out of range.
    virtual T& operator[](unsigned long const& position) const = 0;
    /// Copies the value at position into value; false when out of range.
    virtual bool Get(unsigned long const& position, T& value) const = 0;
    /// The stored value at position; throws InvalidIndexException when out of range.
    virtual T& Get(unsigned long const& position) const = 0;
    /// A new iterator (the caller deletes it) standing on position, over [begin, end].
    virtual IValOrderListIterator<T>* CreateIterator(unsigned long const& position = 0,
                                                     long long const& begin = 0,
                                                     long long const& end = -1) const = 0;

protected:
    /// Copies nothing; for the derived containers.
    ///@{
    IValOrderList(IValOrderList const& other) : IValCollection<T>(other) {}
    IValOrderList& operator=(IValOrderList const&) { return *this; }
    ///@}
};
}  // namespace lstd
#endif  // LSTD_IVALORDERLIST_H
