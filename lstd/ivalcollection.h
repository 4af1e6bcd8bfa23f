// lstd/ivalcollection.h - contract of the containers that hold copies of T.
#ifndef LSTD_IVALCOLLECTION_H
#define LSTD_IVALCOLLECTION_H

namespace lstd {

/// Operations of a value container: values are copied in and out.
template <typename T>
class IValCollection {
public:
    IValCollection() {}
    virtual ~IValCollection() {}

    /// The number of values stored.
    virtual unsigned long GetNumberOfEntry() const = 0;
    /// Stores value; returns 1 (a set also returns 1 for a value it already holds).
    virtual unsigned char Append(T const& value) = 0;
    /// Removes the first value equal to value, copying it to *removed when given.
    /// Returns whether something was removed.
    virtual bool Remove(T const& value, T* removed) = 0;
    /// Calls fn on every stored value, in the container's order.
    virtual void Apply(void (*fn)(T&)) = 0;
    /// Removes every value.
    virtual void Clear() = 0;
    /// Whether a value equal to value is stored; copies it to *found when given.
    virtual bool Find(T const& value, T* found) const = 0;

protected:
    /// Copies nothing; for the derived containers.
    ///@{
    IValCollection(IValCollection const&) {}
    IValCollection& operator=(IValCollection const&) { return *this; }
    ///@}
};
}  // namespace lstd
#endif  // LSTD_IVALCOLLECTION_H
