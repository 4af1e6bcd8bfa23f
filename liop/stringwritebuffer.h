// liop/stringwritebuffer.h - gathers text and hands it to a file in large pieces.
#ifndef LIOP_STRINGWRITEBUFFER_H
#define LIOP_STRINGWRITEBUFFER_H

#include <liop/stringbuffer.h>

namespace liop {

/// Collects text and hands all of it to the file's Print once it reaches bufferSize bytes,
/// so the file sees pieces of at least bufferSize bytes, never split texts. What remains is
/// written when the buffer is destroyed; the file is neither flushed nor closed.
class StringWriteBuffer : public StringBuffer {
public:
    /// Writes to file (not owned, not opened here) once bufferSize bytes are gathered.
    StringWriteBuffer(File& file, unsigned long const& bufferSize);
    /// Hands pending text to the file's Print. A destructor cannot pass an exception on:
    /// if Print raises (the file was closed first), the process ends. Destroy the buffer
    /// before closing its file.
    virtual ~StringWriteBuffer();

    /// Appends text; when the pending text reaches bufferSize bytes it all goes to the
    /// file's Print and the buffer is emptied. Whatever Print raises passes on.
    void Write(lstd::String const& text);
    /// Formats the arguments with format and writes the result. Deliberate: when the
    /// formatting itself raises, nothing is written and the call returns normally.
    void FPrint(lstd::String const& format, ...);
};
}  // namespace liop
#endif  // LIOP_STRINGWRITEBUFFER_H
