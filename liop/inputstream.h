// liop/inputstream.h - the InputStream marker interface.
#ifndef LIOP_INPUTSTREAM_H
#define LIOP_INPUTSTREAM_H

namespace liop {

/// Marks a source that serialisable objects read themselves from.
/// It has no operations; it exists so that types can name the role.
class InputStream {
public:
    InputStream();
    virtual ~InputStream();
};
}  // namespace liop
#endif  // LIOP_INPUTSTREAM_H
