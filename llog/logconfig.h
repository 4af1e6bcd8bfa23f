// llog/logconfig.h - the process-wide setting of the logger: where log files go.
#ifndef LLOG_LOGCONFIG_H
#define LLOG_LOGCONFIG_H

#include <lstd/string.h>

namespace llog {

/// The directory in which Loggers place relative log file names. One configuration is
/// process-wide (the global one); it is unguarded, so set it from one thread.
class LogConfig {
public:
    /// Stores outputDir as given: it is not created, normalised or checked.
    explicit LogConfig(lstd::String const& outputDir);
    LogConfig(LogConfig const&) = delete;
    LogConfig& operator=(LogConfig const&) = delete;
    virtual ~LogConfig();

    /// The directory of relative log file names, as given.
    lstd::String const& GetOutputDir() const { return mOutputDir; }

    /// The global configuration, or null when none is set.
    static LogConfig* GetGlobalConfig();
    /// Replaces the global configuration's directory, creating the configuration first when
    /// there is none. Only Loggers constructed afterwards use it. Throws
    /// lstd::NotEnoughMemoryException.
    static void SetOutputDir(lstd::String const& dir);
    /// Deletes the global configuration, if any; the pointer becomes null.
    static void DestroyGlobalConfig();

private:
    lstd::String mOutputDir;

    static LogConfig* mGlobalConfig;
};
}  // namespace llog
#endif  // LLOG_LOGCONFIG_H
