// lstd/iptrcollection.h - contract of the containers that hold T pointers.
#ifndef LSTD_IPTRCOLLECTION_H
#define LSTD_IPTRCOLLECTION_H

namespace lstd {

/// Operations of a pointer container. The container owns its nodes, never implicitly its
/// items: items are deleted only by Clear with a delete flag equal to 1.
template <typename T>
class IPtrCollection {
public:
    IPtrCollection() {}
    virtual ~IPtrCollection() {}

    /// The number of items stored.
    virtual unsigned long GetNumberOfEntry() const = 0;
    /// Stores item (which may be null for lists).
    virtual void Append(T* item) = 0;
    /// Removes the first item equal to *item and hands it back undeleted; null when none.
    virtual T* Remove(T const* item) = 0;
    /// Calls fn on every item, in the container's order.
    virtual void Apply(void (*fn)(T*)) = 0;
    /// Empties the container, deleting the items when deleteFlag equals 1.
    virtual void Clear(unsigned char const& deleteFlag) = 0;
    /// The first stored item equal to *item, or null.
    virtual T* Find(T const* item) const = 0;

protected:
    /// Copies nothing; for the derived containers.
    ///@{
    IPtrCollection(IPtrCollection const&) {}
    IPtrCollection& operator=(IPtrCollection const&) { return *this; }
    ///@}
};
}  // namespace lstd
#endif  // LSTD_IPTRCOLLECTION_H
