// liop/stringbuffer.h - the text held between a file and its reader or writer.
#ifndef LIOP_STRINGBUFFER_H
#define LIOP_STRINGBUFFER_H

#include <lstd/string.h>

namespace liop {
class File;

/// Text in hand between a File and a consumer: for the read buffer the chunk last read, for
/// the write buffer the text not yet handed to the file. The file is not owned and must
/// outlive the buffer; the buffer neither opens, checks nor closes it.
class StringBuffer {
public:
    /// Stores the file's address, an empty text and bufferSize; the file is not touched.
    StringBuffer(File& file, unsigned long const& bufferSize);
    StringBuffer(StringBuffer const&) = delete;
    StringBuffer& operator=(StringBuffer const&) = delete;
    /// Destroys the text; the file is left as it is.
    virtual ~StringBuffer();

    ///@{
    /// The text in hand. A consumer of a read buffer reads (or moves out) the chunk here
    /// after each Load or ContinueReading; the next read replaces it.
    lstd::String& GetBuffer() { return mBuffer; }
    lstd::String const& GetBuffer() const { return mBuffer; }
    ///@}
    /// The size given at construction.
    unsigned long GetBufferSize() const { return mBufferSize; }

protected:
    /// The file, not owned.
    File* mFile;
    /// The text in hand.
    lstd::String mBuffer;
    /// The size given at construction.
    unsigned long mBufferSize;
};
}  // namespace liop
#endif  // LIOP_STRINGBUFFER_H
