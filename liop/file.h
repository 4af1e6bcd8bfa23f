// liop/file.h - the library's wrapper of a C buffered file stream.
#ifndef LIOP_FILE_H
#define LIOP_FILE_H

#include <liop/ioexception.h>
#include <liop/ipersistence.h>
#include <liop/serializable.h>
#include <lstd/string.h>

#include <cstdio>

namespace liop {

/// One C buffered stream opened on a path in one of four modes, text or binary: block, line
/// and line-chunk reads, block, string and formatted writes, and static helpers for existence,
/// size, real path and recursive deletion.
///
/// Every stream operation first checks that a stream is held and otherwise throws
/// lstd::InvalidOperationException "The file it not opened". Failures that the C library
/// reports by its return value are returned, not raised. Each operation names the exceptions
/// it may raise; any other exception reaching it (from an override, say) ends the process.
///
/// Lines are read byte for byte: a line may hold NUL bytes and bytes above 127, and nothing
/// of it is lost. Reads take bytes straight from the stream's buffer, without the stream's
/// lock: like everything in the library, a File is used by one thread at a time. The C
/// library's stream buffer sizes are left at their defaults.
class File : public Serializable, public IPersistence {
public:
    /// A set of bits; OPEN_READ_WRITE is both bits of read and write.
    enum OpenFileMode : int { OPEN_READ = 1, OPEN_WRITE = 2, OPEN_READ_WRITE = 3, OPEN_APPEND = 4 };
    /// Any value other than FILE_TEXT counts as binary.
    enum FileType : int { FILE_TEXT = 0, FILE_BINARY = 1 };

    /// Closed, empty path, text, mode 0.
    File();
    /// Closed, on path with type; mode 0.
    File(lstd::String const& path, FileType const& type);
    File(File const&) = delete;
    File& operator=(File const&) = delete;
    /// Closes a held stream, ignoring the result; never throws.
    virtual ~File();

    /// Opens the stored path with the stored type and returns mode. The C mode is "r", "w"
    /// or "a" for 1, 2 and 4 and "rw" for every other value, with "b" added for binary.
    /// Deliberate, kept for compatibility: the C library reads "rw" as "r", so mode 3 opens
    /// for reading only and does not create the file, while IsOpened(OPEN_WRITE) answers
    /// true. A stream that is already open is dropped unclosed (callers close first). Throws
    /// IOException "Cannot open file '%s'." with the path; the stream is then null and the
    /// mode keeps its old value.
    virtual int Open(OpenFileMode const& mode);
    /// Replaces path and type (also when the open then fails) and opens as above.
    virtual int Open(lstd::String const& path, OpenFileMode const& mode, FileType const& type);
    /// Whether a stream is held.
    virtual bool IsOpened() const;
    /// Whether a stream is held and every bit of mode is set in the mode of the last open.
    virtual bool IsOpened(OpenFileMode const& mode) const;
    /// Closes the stream and returns the C result (0 on success), untested.
    virtual int Close();
    /// The C end-of-file indicator of the stream.
    virtual bool IsEOF() const;

    /// Reads up to count items of size bytes; true whatever was read (a short read is not
    /// reported).
    virtual bool Read(char* buffer, unsigned long const& size, unsigned long const& count);
    /// Writes count items of size bytes; returns the number of items written.
    virtual int Write(void* buffer, unsigned long const& size, unsigned long const& count);
    /// Reads one line of any length, its line end kept; false, line untouched, when the
    /// stream is already at end of file or its read fails before a byte arrives (a
    /// directory, a write-only stream: read loops end instead of spinning). The line is gathered in
    /// chunks of up to 1023 bytes; deliberately, a chunk that ends in a carriage return ends the
    /// line even when a line feed follows, which then comes back as a line of its own. At end of
    /// file the line read is "" (a file ending in a line end gives one such empty line before
    /// false). Throws lstd::NotEnoughMemoryException when the line cannot be stored.
    virtual bool Read(lstd::String& line);
    /// Replaces text with at most maxLength - 1 bytes of one line (its line end kept when it
    /// fits); "" at end of file or when maxLength is below 2. Returns true, or false (text
    /// "") when the read fails before a byte arrives.
    virtual bool Read(lstd::String& text, unsigned long const& maxLength);
    /// Reads at most size - 1 bytes of one line into buffer and terminates it with a NUL
    /// (buffer[0] is 0 at end of file); returns true, or false when the read fails before a
    /// byte arrives. A size of 0 leaves buffer untouched.
    virtual bool Read(char* buffer, unsigned long const& size);
    /// Writes text as it is, NUL bytes included; returns 1 on success and EOF on failure,
    /// as the C string output does. Raises nothing but the closed-file exception.
    virtual int Print(lstd::String const& text);
    /// printf-style output of the arguments with format; the number of bytes written, or a
    /// negative value on failure.
    virtual int FPrint(lstd::String const& format, ...);
    /// Writes text and a line feed; the number of bytes written, or a negative value.
    virtual int Println(lstd::String const& text);
    /// FPrint, then one line feed; returns the result of writing the line feed (10, or EOF).
    virtual int FPrintln(lstd::String const& format, ...);

    /// Flushes the stream; the C result.
    int Flush();
    /// The stream's current position, not its size: 0 right after opening for reading, the
    /// bytes written so far while writing. Kept so on purpose: it never seeks.
    long long GetSize() const;

    /// The process's standard output, attached on the first call with mode OPEN_WRITE; later
    /// calls return the same object unchanged. Intended: once fetched, the stream is closed
    /// when the library is unloaded at exit.
    static File& GetStdout();
    /// The process's standard input, attached on the first call with mode OPEN_READ.
    static File& GetStdin();
    /// Whether the status query succeeds for path (a file or a directory).
    static bool Exist(lstd::String const& path);
    /// The size in bytes of path; 0 for an empty path or when the status query fails.
    static long long GetSize(lstd::String const& path);
    /// The absolute, resolved path. Throws lstd::UnknownException "Cannot get real path.
    /// (%s, errno=%d)" with path and the error number.
    static lstd::String GetRealPath(lstd::String const& path);
    /// Directory::NormalizePath(path).
    static lstd::String NormalizePath(lstd::String const& path);
    /// Deletes a file or a whole directory tree, children first; a missing path is no
    /// error. A symbolic link, at the top or inside the tree, is removed as a link and its
    /// target is never touched (a dangling link too). Throws IOException "Cannot delete file
    /// '%s'." when a removal fails (a directory that cannot be removed included) and
    /// "Cannot delete folder '%s'." when deleting a directory's contents fails.
    static void Remove(lstd::String const& path);

private:
    // Checks that a stream is held and returns it.
    FILE* Stream() const;
    // Gives a standard-stream file its stream and mode, once: a closed one stays closed.
    static File& Attach(File& file, bool& attached, FILE* stream, OpenFileMode mode);

    FILE* mStream;
    lstd::String mPath;
    FileType mFileType;
    OpenFileMode mOpenMode;

    static File mStdoutFile;
    static File mStdinFile;
};
}  // namespace liop
#endif  // LIOP_FILE_H
