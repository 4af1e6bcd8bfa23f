// llog/logger.h - tagged records in log files shared by path.
#ifndef LLOG_LOGGER_H
#define LLOG_LOGGER_H

#include <lstd/ptrhashmap.h>
#include <lstd/string.h>

#include <cstdarg>

namespace liop {
class File;
}

namespace llog {

/// Writes records to a log file: "[Error: %d] %s", "[Warn: %d] %s" and "[Info: %d] %s" with
/// the code and the message, or a message as it stands (Debug, Print). Nothing is added: no
/// time stamp, no line end (put "\n" in the message for lines), no filtering. Loggers of
/// one path share one open file through a process-wide table, so their records interleave
/// in call order; the files are closed by Terminate, which runs among the exit handlers
/// when the application's lstd::System object is destroyed. When a file cannot be opened,
/// the records go to the standard output instead. Nothing is locked: use Loggers from one
/// thread, and none after Terminate.
class Logger {
public:
    /// Logs into name: an empty name means "log.txt", a relative one is placed in the
    /// global configuration's directory (the current directory without one), joined with
    /// "//"; an absolute name is used as it is. The path is resolved here, once. Throws
    /// lstd::NotEnoughMemoryException.
    explicit Logger(lstd::String const& name);
    /// Leaves the shared file open.
    virtual ~Logger();

    /// Creates the file table and adds Terminate to the exit handlers, unless the table
    /// exists. Throws lstd::NotEnoughMemoryException.
    static void Init();
    /// Closes and deletes every log file, deletes the table and the global configuration.
    /// Loggers that still exist must not be used afterwards.
    static void Terminate();
    /// The shared file of path, opened for appending (text) on first use; the table is made
    /// first (Init) when none exists. A file that cannot be opened is no error for the
    /// caller: the open error is printed to the standard output and the unopened file
    /// returned, to later Loggers of path too. Throws lstd::NotEnoughMemoryException.
    static liop::File* GetOrOpenFile(lstd::String const& path);

    /// Writes "[Error: %d] %s" with code (cut to a 32-bit int) and message.
    void Error(lstd::String const& message, unsigned long long const& code) const;
    /// Writes "[Warn: %d] %s" with code (cut to a 32-bit int) and message.
    void Warning(lstd::String const& message, unsigned long long const& code) const;
    /// Writes "[Info: %d] %s" with code (cut to a 32-bit int) and message.
    void Info(lstd::String const& message, unsigned long long const& code) const;
    /// The same records with the message formatted printf-style first; the code comes first
    /// here and last in the forms above.
    void Error(unsigned long long const& code, char const* format, ...) const
        __attribute__((format(printf, 3, 4)));
    /// As the Error form above, with "[Warn: %d] %s".
    void Warning(unsigned long long const& code, char const* format, ...) const
        __attribute__((format(printf, 3, 4)));
    /// As the Error form above, with "[Info: %d] %s".
    void Info(unsigned long long const& code, char const* format, ...) const
        __attribute__((format(printf, 3, 4)));
    ///@{
    /// Formats printf-style and writes the text as it stands; Debug and Print are the same.
    void Debug(char const* format, ...) const __attribute__((format(printf, 2, 3)));
    void Print(char const* format, ...) const __attribute__((format(printf, 2, 3)));
    ///@}

private:
    // Writes one tagged record (tag: 0 error, 1 warning, 2 information).
    void Write(int tag, unsigned long long const& code, char const* message) const;
    void WriteTagged(int tag, unsigned long long const& code, char const* format,
                     va_list& args) const;
    void WriteText(char const* format, va_list& args) const;

    liop::File* mFile;

    static lstd::PtrHashMap<lstd::String, liop::File>* mFileTable;
};
}  // namespace llog
#endif  // LLOG_LOGGER_H
