// llog/logconfig.cpp - the process-wide setting of the logger: where log files go.
#include <llog/logconfig.h>

#include <lstd/exception.h>

#include <new>

namespace llog {

LogConfig* LogConfig::mGlobalConfig = nullptr;

LogConfig::LogConfig(lstd::String const& outputDir) : mOutputDir(outputDir) {}

LogConfig::~LogConfig() {}

LogConfig* LogConfig::GetGlobalConfig() { return mGlobalConfig; }

void LogConfig::SetOutputDir(lstd::String const& dir) {
    if (mGlobalConfig != nullptr) {
        mGlobalConfig->mOutputDir = dir;
        return;
    }
    try {
        mGlobalConfig = new LogConfig(dir);
    } catch (std::bad_alloc const& e) {
        LSTD_THROW(lstd::NotEnoughMemoryException, e.what());
    }
}

void LogConfig::DestroyGlobalConfig() {
    delete mGlobalConfig;
    mGlobalConfig = nullptr;
}
}  // namespace llog
