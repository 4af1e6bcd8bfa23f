// liop/stringreadbuffer.h - reads a file one line chunk at a time.
#ifndef LIOP_STRINGREADBUFFER_H
#define LIOP_STRINGREADBUFFER_H

#include <liop/stringbuffer.h>

namespace liop {

/// Reads a file chunk by chunk into GetBuffer(): call Load() once, then ContinueReading()
/// while the previous call returned true. A chunk is at most one line of at most
/// bufferSize - 1 bytes (its line end kept when it fits); a longer line arrives in several
/// chunks. The three reads let IOException pass and raise nothing else: any other exception
/// reaching them (a closed file's, for one) ends the process, so check the file first.
class StringReadBuffer : public StringBuffer {
public:
    /// Reads from file (not owned, not opened here) in chunks of up to bufferSize - 1 bytes.
    StringReadBuffer(File& file, unsigned long const& bufferSize);
    virtual ~StringReadBuffer();

    /// The first read. Throws IOException "File is not opened or open mode is invalid"
    /// unless the file is open with the read bit; otherwise ReadFromFile().
    bool Load();
    /// Every later read: empties the text, returns false at end of file (the text stays
    /// empty), otherwise ReadFromFile().
    bool ContinueReading();
    /// Replaces the text with the file's next chunk (File::Read(text, bufferSize)); true.
    bool ReadFromFile();
};
}  // namespace liop
#endif  // LIOP_STRINGREADBUFFER_H
