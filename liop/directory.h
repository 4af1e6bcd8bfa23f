// liop/directory.h - static path and directory services.
#ifndef LIOP_DIRECTORY_H
#define LIOP_DIRECTORY_H

#include <liop/ioexception.h>
#include <lstd/string.h>

namespace liop {

/// Current directory, directory and absolute-path tests, creation of one directory or a
/// chain, and path normalisation. Input separators are "/" and the backslash; paths that
/// these functions build are joined with "//" (two slashes), deliberately: the file system
/// reads a doubled slash as one, and callers compare the joined text.
class Directory {
public:
    Directory();
    virtual ~Directory();

    /// The current working directory (up to 1023 bytes); "" when it cannot be read.
    static lstd::String GetCurDir();
    /// Whether bit 14 of path's mode (the directory type bit) is set. Throws
    /// FileNotFoundException "The file/directory not found. (%s)" when the status query fails.
    static bool IsDirectory(lstd::String const& path);
    /// Whether path, with leading blanks removed, starts with "/" (a backslash does not
    /// make a path absolute); false for an empty path.
    static bool IsAbsolutePath(lstd::String const& path);
    /// Creates the directory path with permission bits 0777: 0 when made, 1 when path
    /// already exists (nothing made). Throws IOException "Cannot create directory '%s'.
    /// (status = %d)" with the result of the creation call.
    static int Create(lstd::String const& path);
    /// Creates every missing directory of the chain path, from the root ("//") or the current
    /// directory on, each part joined with "//"; with lastIsFile equal to 1 the last part
    /// names a file and is left out. Stops at the first failure (IOException of Create),
    /// keeping the directories already made.
    static void CreateAll(lstd::String const& path, unsigned char const& lastIsFile);
    /// The parts of path between separators, trimmed, empty ones dropped, joined with "//";
    /// "//" in front when path began with a separator and behind when it ended with one.
    static lstd::String NormalizePath(lstd::String const& path);
};
}  // namespace liop
#endif  // LIOP_DIRECTORY_H
