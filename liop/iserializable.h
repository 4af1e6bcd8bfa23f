// liop/iserializable.h - the interface of objects that write and read themselves.
#ifndef LIOP_ISERIALIZABLE_H
#define LIOP_ISERIALIZABLE_H

namespace liop {
class InputStream;
class OutputStream;

/// An object that can write itself to an output stream and read itself back.
class ISerializable {
public:
    ISerializable();
    virtual ~ISerializable();
    /// Writes the object to out.
    virtual void WriteObject(OutputStream& out) = 0;
    /// Reads the object from in.
    virtual void ReadObject(InputStream& in) = 0;
};
}  // namespace liop
#endif  // LIOP_ISERIALIZABLE_H
