// liop/fileiterator.h - walks the entries of one directory.
#ifndef LIOP_FILEITERATOR_H
#define LIOP_FILEITERATOR_H

#include <lstd/hashcollection.h>
#include <lstd/string.h>

#include <dirent.h>

namespace liop {

/// Yields the entries of one directory in the order the directory stream returns them
/// (nothing is sorted), never "." or "..", and, once extensions are registered, only names
/// ending in "." and one of them (case-sensitive). A directory that cannot be opened yields
/// nothing; nothing is raised.
///
/// Use: construct with a path (or Init), register extensions, then call ++ until it returns
/// false, reading GetCurrentPath() after each true. The first ++ yields the first entry.
/// Both name sets have 32767 buckets, like every set the library builds; they cost only
/// what they hold.
class FileIterator {
public:
    /// Empty path, no stream, empty sets.
    FileIterator();
    /// FileIterator(), then Init(path).
    explicit FileIterator(lstd::String const& path);
    FileIterator(FileIterator const&) = delete;
    FileIterator& operator=(FileIterator const&) = delete;
    /// Closes the directory stream if one is held.
    virtual ~FileIterator();

    /// Walks path: the directory text is path trimmed, "//" added unless it is empty or ends
    /// in "/" or a backslash; the stream is opened on path as given (a stream held before is
    /// closed). "." and ".." become the skipped names; registered extensions stay.
    void Init(lstd::String const& path);
    /// Accepts names ending in "." followed by extension.
    void AppendFilteredFileExtension(lstd::String const& extension);
    /// Moves to the next accepted entry; false when there is none.
    bool operator++();
    /// The directory text followed by the current entry's name.
    lstd::String GetCurrentPath() const;
    /// Closes the stream and empties both sets; follow it with Init. (Closing here, rather
    /// than only forgetting the stream, is this class's choice: nothing leaks.)
    void Reset();

private:
    // The next entry's name into mCurrentName; false when there is none or no stream.
    bool GetNextItem();
    // Whether name ends with a registered extension (always true when none is registered).
    bool IsFilteredFileName(lstd::String const& name) const;

    lstd::String mDirPath;
    lstd::ValHashSet<lstd::String> mSkipNameSet;
    lstd::ValHashSet<lstd::String> mExtensionSet;
    DIR* mDir;
    lstd::String mCurrentName;
};
}  // namespace liop
#endif  // LIOP_FILEITERATOR_H
