// lstd/debug.h - process-wide diagnostic printer with three severities.
#ifndef LSTD_DEBUG_H
#define LSTD_DEBUG_H

#include <cstdio>

namespace lstd {
class String;

/// Prints information, warnings and errors to standard output, filtered by one process-wide
/// threshold, and can redirect standard output into a file. Nothing is locked: threads
/// serialise their own use.
class Debug {
public:
    /// Thresholds: each prints its own severity and the ones above it; QUIET and above print
    /// nothing. Stored as a plain int-sized enumeration.
    enum DebugModeType : int { MODE_INFO = 0, MODE_WARNING = 1, MODE_ERROR = 2, MODE_QUIET = 3 };

    Debug();
    virtual ~Debug();

    /// Closes the previous redirection, then, unless path is empty, reopens standard output
    /// onto path in mode "w". A failed reopen leaves the stored stream null; nothing throws.
    /// With an empty path the closed stream deliberately stays stored: a later Init or
    /// Terminate closes it again, so call Terminate once, at the end.
    static void Init(String const& path);
    /// Sets the threshold: the severities it lets through are printed.
    static void SetDebugMode(DebugModeType const& mode);
    /// The threshold in force.
    static DebugModeType GetDebugMode() { return mMode; }

    ///@{
    /// Write text as given (no newline added) when the threshold lets the severity through.
    static void Info(String const& text);
    static void Warning(String const& text);
    static void Error(String const& text);
    ///@}
    ///@{
    /// printf-style forms; return at once, without formatting, when filtered out.
    static void Info(char const* format, ...) __attribute__((format(printf, 1, 2)));
    static void Warning(char const* format, ...) __attribute__((format(printf, 1, 2)));
    static void Error(char const* format, ...) __attribute__((format(printf, 1, 2)));
    ///@}

    /// Closes the redirection if any; the pointer is not cleared (see Init).
    static void Terminate();

private:
    static DebugModeType mMode;
    static FILE* mOutputFile;
};
}  // namespace lstd
#endif  // LSTD_DEBUG_H
