// liop/serializable.h - ISerializable with bodies that do nothing.
#ifndef LIOP_SERIALIZABLE_H
#define LIOP_SERIALIZABLE_H

#include <liop/iserializable.h>

namespace liop {

/// Serialisable in name: both operations do nothing and never fail. A subclass overrides
/// them where it has something to write.
class Serializable : public ISerializable {
public:
    Serializable();
    virtual ~Serializable();
    /// Writes nothing; never throws.
    void WriteObject(OutputStream& out) override;
    /// Reads nothing; never throws.
    void ReadObject(InputStream& in) override;
};
}  // namespace liop
#endif  // LIOP_SERIALIZABLE_H
