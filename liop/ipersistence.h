// liop/ipersistence.h - the IPersistence marker interface.
#ifndef LIOP_IPERSISTENCE_H
#define LIOP_IPERSISTENCE_H

namespace liop {

/// Marks a class whose objects persist outside the process (files).
/// It has no operations; it exists so that types can name the role.
class IPersistence {
public:
    IPersistence();
    virtual ~IPersistence();
};
}  // namespace liop
#endif  // LIOP_IPERSISTENCE_H
