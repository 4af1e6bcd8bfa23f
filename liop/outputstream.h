// liop/outputstream.h - the OutputStream marker interface.
#ifndef LIOP_OUTPUTSTREAM_H
#define LIOP_OUTPUTSTREAM_H

namespace liop {

/// Marks a sink that serialisable objects write themselves to.
/// It has no operations; it exists so that types can name the role.
class OutputStream {
public:
    OutputStream();
    virtual ~OutputStream();
};
}  // namespace liop
#endif  // LIOP_OUTPUTSTREAM_H
