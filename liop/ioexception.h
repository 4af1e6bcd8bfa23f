// liop/ioexception.h - the exceptions of the input/output classes.
#ifndef LIOP_IOEXCEPTION_H
#define LIOP_IOEXCEPTION_H

#include <lstd/exception.h>

namespace liop {

/// A file or directory operation failed: opening, closing, reading, writing, creating or
/// deleting. The message names the path where there is one.
class IOException : public lstd::Exception {
public:
    /// An input/output failure: message, file and line of the throw.
    IOException(char const* message, char const* file, unsigned long long const& line);
    virtual ~IOException();
};

/// A path that had to exist does not (Directory::IsDirectory).
class FileNotFoundException : public IOException {
public:
    /// A missing file or directory: message, file and line of the throw.
    FileNotFoundException(char const* message, char const* file, unsigned long long const& line);
    virtual ~FileNotFoundException();
};
}  // namespace liop
#endif  // LIOP_IOEXCEPTION_H
