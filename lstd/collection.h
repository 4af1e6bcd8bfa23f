// lstd/collection.h - identity-based root of every container.
#ifndef LSTD_COLLECTION_H
#define LSTD_COLLECTION_H

#include <cstdint>

namespace lstd {

/// Root of every container. Comparisons are deliberately by identity: == and != compare
/// addresses, the orderings compare addresses as unsigned numbers, and operator= changes
/// nothing (each container defines its own copying, if any).
template <typename T>
class Collection {
public:
    Collection() {}
    virtual ~Collection() {}

    /// Assigns nothing: a collection's identity cannot be copied.
    virtual Collection& operator=(Collection const&) { return *this; }
    /// Deliberate: collections compare by identity and address, never by contents.
    ///@{
    virtual bool operator==(Collection const& other) const { return this == &other; }
    virtual bool operator>(Collection const& other) const {
        return Address(this) > Address(&other);
    }
    virtual bool operator>=(Collection const& other) const {
        return Address(this) >= Address(&other);
    }
    virtual bool operator<(Collection const& other) const {
        return Address(this) < Address(&other);
    }
    virtual bool operator<=(Collection const& other) const {
        return Address(this) <= Address(&other);
    }
    virtual bool operator!=(Collection const& other) const { return this != &other; }
    ///@}

protected:
    /// Copies nothing; for the derived containers.
    Collection(Collection const&) {}

private:
    static std::uintptr_t Address(Collection const* c) {
        return reinterpret_cast<std::uintptr_t>(c);
    }
};
}  // namespace lstd
#endif  // LSTD_COLLECTION_H
