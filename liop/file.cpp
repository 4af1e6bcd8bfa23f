// liop/file.cpp - the library's wrapper of a C buffered file stream.
#include <liop/file.h>

#include <liop/directory.h>
#include <liop/fileiterator.h>
#include <lstd/exception.h>

#include <cerrno>
#include <cstdarg>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <sys/stat.h>
#include <unistd.h>

namespace liop {
namespace {
char const kNotOpened[] = "The file it not opened";
char const kReadError[] = "There is error(s) occurred while attemp to read file";
char const kWriteError[] = "There is error(s) occurred while attemp to write to file";

// The longest piece of a line that Read(String&) asks of the stream at once; a piece that
// ends in a carriage return ends the line.
unsigned long const kChunk = 1023;

// Runs a C stream call; an exception raised inside it becomes IOException with message.
// Thread cancellation passes unchanged.
template <class Call>
auto CCall(char const* message, Call const& call) -> decltype(call()) {
    try {
        return call();
    } catch (abi::__forced_unwind&) {
        throw;
    } catch (...) {
        LSTD_THROW(IOException, message);
    }
}

// A growing byte area: 1024 bytes on the stack, then the heap. Lines of any length are
// gathered here and copied into their String once.
class Scratch {
public:
    Scratch() : mData(mLocal), mLength(0), mCapacity(sizeof mLocal) {}
    Scratch(Scratch const&) = delete;
    Scratch& operator=(Scratch const&) = delete;
    ~Scratch() {
        if (mData != mLocal)
            std::free(mData);
    }
    // Room for n more bytes after the data; throws NotEnoughMemoryException.
    char* Reserve(unsigned long n) {
        if (mCapacity - mLength < n) {
            unsigned long capacity = mCapacity * 2;
            while (capacity - mLength < n)
                capacity *= 2;
            void* grown = mData == mLocal ? std::malloc(capacity) : std::realloc(mData, capacity);
            if (grown == nullptr)
                LSTD_THROW(lstd::NotEnoughMemoryException, "File::Read()");
            if (mData == mLocal)
                std::memcpy(grown, mLocal, mLength);
            mData = static_cast<char*>(grown);
            mCapacity = capacity;
        }
        return mData + mLength;
    }
    void Commit(unsigned long n) { mLength += n; }
    char const* Data() const { return mData; }
    unsigned long Length() const { return mLength; }

private:
    char mLocal[1024];
    char* mData;
    unsigned long mLength;
    unsigned long mCapacity;
};

// The end-of-file flag, and the bytes already in the stream's buffer: lines are taken
// straight out of it, as the C library's own line reads do, without taking the stream's
// lock. Other C libraries go byte by byte through getc_unlocked.
#if defined(__GLIBC__)
bool AtEnd(FILE* stream) { return feof_unlocked(stream) != 0; }
long Buffered(FILE* stream) { return stream->_IO_read_end - stream->_IO_read_ptr; }
char* BufferedData(FILE* stream) { return stream->_IO_read_ptr; }
void Consume(FILE* stream, unsigned long n) { stream->_IO_read_ptr += n; }
#else
bool AtEnd(FILE* stream) { return std::feof(stream) != 0; }
long Buffered(FILE*) { return 0; }
char* BufferedData(FILE*) { return nullptr; }
void Consume(FILE*, unsigned long) {}
#endif

// Reads up to limit bytes into out, through the first line feed: the contract of fgets, but
// counted, so NUL bytes are kept. Returns the count, 0 when nothing could be read; failed
// tells whether the C read failed (an end-of-file result without the end-of-file flag).
unsigned long ReadLinePart(FILE* stream, char* out, unsigned long limit, bool& failed) {
    unsigned long n = 0;
    failed = false;
    while (n < limit) {
        long const buffered = Buffered(stream);
        if (buffered > 0) {
            char const* data = BufferedData(stream);
            unsigned long take = static_cast<unsigned long>(buffered);
            if (take > limit - n)
                take = limit - n;
            void const* lineFeed = std::memchr(data, '\n', take);
            if (lineFeed != nullptr)
                take = static_cast<unsigned long>(static_cast<char const*>(lineFeed) - data) + 1;
            std::memcpy(out + n, data, take);
            Consume(stream, take);
            n += take;
            if (lineFeed != nullptr)
                return n;
            continue;
        }
        int const c = getc_unlocked(stream);  // refills the buffer
        if (c == EOF) {
            failed = !AtEnd(stream);
            return n;
        }
        out[n++] = static_cast<char>(c);
        if (c == '\n')
            return n;
    }
    return n;
}

// When the stream's buffer already holds a line feed within limit bytes (or, if whole is
// false, at least limit bytes), makes out from the buffer directly and returns true: the
// common line costs one copy. False, nothing consumed, otherwise.
bool TakeBuffered(FILE* stream, unsigned long limit, bool whole, lstd::String& out) {
    long const buffered = Buffered(stream);
    if (buffered <= 0)
        return false;
    char const* data = BufferedData(stream);
    unsigned long take = static_cast<unsigned long>(buffered);
    if (take > limit)
        take = limit;
    void const* lineFeed = std::memchr(data, '\n', take);
    if (lineFeed != nullptr)
        take = static_cast<unsigned long>(static_cast<char const*>(lineFeed) - data) + 1;
    else if (whole || take < limit)
        return false;
    out = lstd::String(data, take);
    Consume(stream, take);
    return true;
}

// Bytes of a String may exceed an int in theory; the C-style results stay defined.
int ToInt(unsigned long n) { return n > 0x7fffffffUL ? 0x7fffffff : static_cast<int>(n); }

// printf-style output of args with format; the C result.
int FormatTo(FILE* stream, char const* format, va_list args) {
    return CCall(kWriteError, [&] { return std::vfprintf(stream, format, args); });
}

bool IsLink(lstd::String const& path) {
    struct stat status;
    return ::lstat(path.GetStdChar(), &status) == 0 && S_ISLNK(status.st_mode);
}

bool IsRealDirectory(lstd::String const& path) {
    struct stat status;
    return ::lstat(path.GetStdChar(), &status) == 0 && S_ISDIR(status.st_mode);
}

// Standard streams are attached on the first fetch only: a closed one is never re-attached.
bool gStdoutAttached = false;
bool gStdinAttached = false;
}  // namespace

File File::mStdoutFile;
File File::mStdinFile;

File::File() : mStream(nullptr), mFileType(FILE_TEXT), mOpenMode(static_cast<OpenFileMode>(0)) {}

File::File(lstd::String const& path, FileType const& type)
    : mStream(nullptr), mPath(path), mFileType(type), mOpenMode(static_cast<OpenFileMode>(0)) {}

File::~File() {
    if (mStream != nullptr)
        std::fclose(mStream);
}

FILE* File::Stream() const {
    if (mStream == nullptr)
        LSTD_THROW(lstd::InvalidOperationException, kNotOpened);
    return mStream;
}

int File::Open(OpenFileMode const& mode) {
    try {
        bool const binary = mFileType != FILE_TEXT;
        char const* cMode;
        switch (mode) {
        case OPEN_READ:
            cMode = binary ? "rb" : "r";
            break;
        case OPEN_WRITE:
            cMode = binary ? "wb" : "w";
            break;
        case OPEN_APPEND:
            cMode = binary ? "ab" : "a";
            break;
        default:
            // Deliberate, kept for compatibility: "rw" is read-only to the C library.
            cMode = binary ? "rwb" : "rw";
            break;
        }
        // Deliberate: a stream already held is dropped unclosed; callers close first.
        mStream = std::fopen(mPath.GetStdChar(), cMode);
        if (mStream == nullptr)
            LSTD_THROWF(IOException, "Cannot open file '%s'.", mPath.GetStdChar());
        mOpenMode = mode;
        return mode;
    } catch (...) {
        lstd::RethrowDeclared<IOException, lstd::NotEnoughMemoryException>();
    }
}

int File::Open(lstd::String const& path, OpenFileMode const& mode, FileType const& type) {
    try {
        mPath = path;
        mFileType = type;
        return Open(mode);
    } catch (...) {
        lstd::RethrowDeclared<IOException, lstd::NotEnoughMemoryException>();
    }
}

bool File::IsOpened() const { return mStream != nullptr; }

bool File::IsOpened(OpenFileMode const& mode) const {
    return mStream != nullptr && (mOpenMode & mode) == mode;
}

int File::Close() {
    try {
        FILE* stream = Stream();
        mStream = nullptr;
        try {
            return std::fclose(stream);
        } catch (abi::__forced_unwind&) {
            throw;
        } catch (...) {
            LSTD_THROWF(IOException, "Cannot close file '%s'.", mPath.GetStdChar());
        }
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException, IOException,
                              lstd::NotEnoughMemoryException>();
    }
}

bool File::IsEOF() const {
    try {
        return AtEnd(Stream());
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException>();
    }
}

bool File::Read(char* buffer, unsigned long const& size, unsigned long const& count) {
    try {
        FILE* stream = Stream();
        CCall(kReadError, [&] { return std::fread(buffer, size, count, stream); });
        return true;  // a short read is not reported
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException, IOException>();
    }
}

int File::Write(void* buffer, unsigned long const& size, unsigned long const& count) {
    try {
        FILE* stream = Stream();
        return ToInt(CCall(kWriteError, [&] { return std::fwrite(buffer, size, count, stream); }));
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException, IOException>();
    }
}

bool File::Read(lstd::String& line) {
    try {
        FILE* stream = Stream();
        if (IsEOF())
            return false;
        // A line feed within the first piece ends the line whatever precedes it.
        if (TakeBuffered(stream, kChunk, true, line))
            return true;
        Scratch text;
        while (!AtEnd(stream)) {
            char* piece = text.Reserve(kChunk);
            bool failed;
            unsigned long const n =
                CCall(kReadError, [&] { return ReadLinePart(stream, piece, kChunk, failed); });
            if (n == 0) {
                if (failed && text.Length() == 0)
                    return false;  // a stream whose reads fail ends like one at its end
                break;
            }
            text.Commit(n);
            // Deliberate: a piece ending in a carriage return ends the line, even when a
            // line feed follows; that line feed is then read as a line of its own.
            if (piece[n - 1] == '\n' || piece[n - 1] == '\r')
                break;
        }
        line = lstd::String(text.Data(), text.Length());
        return true;
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException, IOException,
                              lstd::NotEnoughMemoryException>();
    }
}

bool File::Read(lstd::String& text, unsigned long const& maxLength) {
    try {
        FILE* stream = Stream();
        if (maxLength < 2) {
            text = lstd::String();
            return true;
        }
        unsigned long const limit = maxLength - 1;
        if (TakeBuffered(stream, limit, false, text))
            return true;
        // The area grows with what arrives, so a huge maxLength costs nothing up front.
        Scratch read;
        for (unsigned long left = limit; left > 0;) {
            unsigned long const step = left < kChunk ? left : kChunk;
            char* piece = read.Reserve(step);
            bool failed;
            unsigned long const n =
                CCall(kReadError, [&] { return ReadLinePart(stream, piece, step, failed); });
            if (failed && n == 0 && read.Length() == 0) {
                text = lstd::String();
                return false;
            }
            read.Commit(n);
            if (n < step || piece[n - 1] == '\n')
                break;
            left -= n;
        }
        text = lstd::String(read.Data(), read.Length());
        return true;
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException, IOException,
                              lstd::NotEnoughMemoryException>();
    }
}

bool File::Read(char* buffer, unsigned long const& size) {
    try {
        FILE* stream = Stream();
        if (size == 0)
            return true;
        buffer[0] = '\0';
        bool failed;
        unsigned long const n =
            CCall(kReadError, [&] { return ReadLinePart(stream, buffer, size - 1, failed); });
        buffer[n] = '\0';
        return !(failed && n == 0);
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException, IOException>();
    }
}

int File::Print(lstd::String const& text) {
    try {
        unsigned long const length = text.GetLength();
        return std::fwrite(text.GetStdChar(), 1, length, Stream()) == length ? 1 : EOF;
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException>();
    }
}

// va_start after a reference parameter: the signatures are part of the interface. GCC and
// clang place the variadic arguments the same way whatever the last named parameter is.
#if defined(__clang__)
#pragma clang diagnostic push
#pragma clang diagnostic ignored "-Wvarargs"
#endif

int File::FPrint(lstd::String const& format, ...) {
    va_list args;
    va_start(args, format);
    try {
        int const result = FormatTo(Stream(), format.GetStdChar(), args);
        va_end(args);
        return result;
    } catch (...) {
        va_end(args);
        lstd::RethrowDeclared<lstd::InvalidOperationException, IOException>();
    }
}

int File::FPrintln(lstd::String const& format, ...) {
    va_list args;
    va_start(args, format);
    try {
        FILE* stream = Stream();
        FormatTo(stream, format.GetStdChar(), args);
        va_end(args);
        return CCall(kWriteError, [&] { return std::fputc(10, stream); });
    } catch (...) {
        va_end(args);
        lstd::RethrowDeclared<lstd::InvalidOperationException, IOException>();
    }
}

#if defined(__clang__)
#pragma clang diagnostic pop
#endif

int File::Println(lstd::String const& text) {
    try {
        FILE* stream = Stream();
        unsigned long const length = text.GetLength();
        return CCall(kWriteError, [&] {
            if (std::fwrite(text.GetStdChar(), 1, length, stream) != length ||
                std::fputc('\n', stream) == EOF)
                return EOF;
            return ToInt(length + 1);
        });
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException, IOException>();
    }
}

int File::Flush() {
    try {
        return std::fflush(Stream());
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException>();
    }
}

long long File::GetSize() const {
    try {
        return std::ftell(Stream());
    } catch (...) {
        lstd::RethrowDeclared<lstd::InvalidOperationException>();
    }
}

File& File::Attach(File& file, bool& attached, FILE* stream, OpenFileMode mode) {
    if (!attached) {
        attached = true;
        file.mStream = stream;
        file.mOpenMode = mode;
    }
    return file;
}

File& File::GetStdout() { return Attach(mStdoutFile, gStdoutAttached, stdout, OPEN_WRITE); }

File& File::GetStdin() { return Attach(mStdinFile, gStdinAttached, stdin, OPEN_READ); }

bool File::Exist(lstd::String const& path) {
    struct stat status;
    return ::stat(path.GetStdChar(), &status) == 0;
}

long long File::GetSize(lstd::String const& path) {
    struct stat status;
    if (path.IsNull() || ::stat(path.GetStdChar(), &status) != 0)
        return 0;
    return status.st_size;
}

lstd::String File::GetRealPath(lstd::String const& path) {
    char* resolved = ::realpath(path.GetStdChar(), nullptr);
    if (resolved == nullptr) {
        int const error = errno;
        LSTD_THROWF(lstd::UnknownException, "Cannot get real path. (%s, errno=%d)",
                    path.GetStdChar(), error);
    }
    try {
        lstd::String result(resolved);
        std::free(resolved);
        return result;
    } catch (...) {
        std::free(resolved);
        throw;
    }
}

lstd::String File::NormalizePath(lstd::String const& path) {
    return Directory::NormalizePath(path);
}

void File::Remove(lstd::String const& path) {
    try {
        // A link goes as a link, wherever it points: deletion never leaves the tree.
        if (IsLink(path)) {
            if (std::remove(path.GetStdChar()) != 0)
                LSTD_THROWF(IOException, "Cannot delete file '%s'.", path.GetStdChar());
            return;
        }
        if (!Exist(path))
            return;
        lstd::String const real = GetRealPath(path);
        int result;
        // Only a real directory is walked: a socket or device node is removed as a file.
        if (IsRealDirectory(real)) {
            try {
                FileIterator entries(real);
                while (++entries)
                    Remove(entries.GetCurrentPath());
                result = ::rmdir(real.GetStdChar());
            } catch (...) {
                LSTD_THROWF(IOException, "Cannot delete folder '%s'.", real.GetStdChar());
            }
        } else {
            result = std::remove(real.GetStdChar());
        }
        // Deliberate: a directory that cannot be removed is reported as a file.
        if (result != 0)
            LSTD_THROWF(IOException, "Cannot delete file '%s'.", real.GetStdChar());
    } catch (...) {
        lstd::RethrowDeclared<IOException, lstd::UnknownException,
                              lstd::NotEnoughMemoryException>();
    }
}
}  // namespace liop
