// lstd/iptrorderlist.h - positional contract of the pointer lists.
#ifndef LSTD_IPTRORDERLIST_H
#define LSTD_IPTRORDERLIST_H

#include <lstd/iptrcollection.h>
#include <lstd/iptrorderlistiterator.h>

namespace lstd {

/// A pointer collection with positions 0 .. n - 1.
template <typename T>
class IPtrOrderList : public IPtrCollection<T> {
public:
    IPtrOrderList() {}
    virtual ~IPtrOrderList() {}

    /// Removes every item equal to *item; removed (when given) is emptied first with
    /// Clear(0) and receives the removed pointers in list order.
    virtual void RemoveAll(T const* item, IPtrCollection<T>* removed) = 0;
    /// The item slot at position; throws InvalidIndexException when out of range.
    virtual T*& operator[](unsigned long const& position) const = 0;
    /// The item at position, or null when out of range.
    virtual T* Get(unsigned long const& position) const = 0;
    /// A new iterator (the caller deletes it) standing on position, over [begin, end].
    virtual IPtrOrderListIterator<T>* CreateIterator(unsigned long const& position = 0,
                                                     long long const& begin = 0,
                                                     long long const& end = -1) const = 0;

protected:
    /// Copies nothing; for the derived containers.
    ///@{
    IPtrOrderList(IPtrOrderList const& other) : IPtrCollection<T>(other) {}
    IPtrOrderList& operator=(IPtrOrderList const&) { return *this; }
    ///@}
};
}  // namespace lstd
#endif  // LSTD_IPTRORDERLIST_H
