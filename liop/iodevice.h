// liop/iodevice.h - the IODevice marker interface.
#ifndef LIOP_IODEVICE_H
#define LIOP_IODEVICE_H

namespace liop {

/// Marks a class as a device that text or bytes can be read from or written to.
/// It has no operations; it exists so that types can name the role.
class IODevice {
public:
    IODevice();
    virtual ~IODevice();
};
}  // namespace liop
#endif  // LIOP_IODEVICE_H
