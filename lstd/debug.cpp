// lstd/debug.cpp - the process-wide diagnostic printer.
#include <lstd/debug.h>

#include <lstd/string.h>

#include <cstdarg>

namespace lstd {

Debug::DebugModeType Debug::mMode = Debug::MODE_INFO;
FILE* Debug::mOutputFile = nullptr;

Debug::Debug() {}
Debug::~Debug() {}

void Debug::Init(String const& path) {
    if (mOutputFile != nullptr)
        std::fclose(mOutputFile);
    if (path.IsNull())
        return;  // Deliberate: the closed stream stays stored.
    mOutputFile = std::freopen(path.GetStdChar(), "w", stdout);
}

void Debug::SetDebugMode(DebugModeType const& mode) { mMode = mode; }

namespace {
void Print(String const& text) { std::fputs(text.GetStdChar(), stdout); }

// Takes the caller's va_list object itself: a va_list parameter would decay to a pointer
// and no longer bind to the formatter's va_list const&. GCC wrongly warns that attributes
// of the va_list element type are ignored in a definition with this parameter type.
#pragma GCC diagnostic push
#pragma GCC diagnostic ignored "-Wattributes"
void PrintFormatted(char const* format, va_list const& args) {
    String text;
    String::Sprintf(text, format, args);
    Print(text);
}
#pragma GCC diagnostic pop
}  // namespace

void Debug::Info(String const& text) {
    if (mMode <= MODE_INFO)
        Print(text);
}

void Debug::Warning(String const& text) {
    if (mMode <= MODE_WARNING)
        Print(text);
}

void Debug::Error(String const& text) {
    if (mMode <= MODE_ERROR)
        Print(text);
}

void Debug::Info(char const* format, ...) {
    if (mMode > MODE_INFO)
        return;
    va_list args;
    va_start(args, format);
    PrintFormatted(format, args);
    va_end(args);
}

void Debug::Warning(char const* format, ...) {
    if (mMode > MODE_WARNING)
        return;
    va_list args;
    va_start(args, format);
    PrintFormatted(format, args);
    va_end(args);
}

void Debug::Error(char const* format, ...) {
    if (mMode > MODE_ERROR)
        return;
    va_list args;
    va_start(args, format);
    PrintFormatted(format, args);
    va_end(args);
}

void Debug::Terminate() {
    if (mOutputFile != nullptr)
        std::fclose(mOutputFile);
}
}  // namespace lstd
