// lstd/exception.cpp - exception construction, deep copies and stack-trace capture.
#include <lstd/exception.h>

#include <lstd/string.h>
#include <lstd/stringbuilder.h>

#include <cstdarg>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <cxxabi.h>
#include <execinfo.h>
#include <exception>

namespace lstd {
namespace {

// malloc'ed copy of text, or null when text is null or memory is short.
char* DuplicateText(char const* text) noexcept {
    if (text == nullptr)
        return nullptr;
    size_t const length = std::strlen(text);
    char* copy = static_cast<char*>(std::malloc(length + 1));
    if (copy != nullptr)
        std::memcpy(copy, text, length + 1);
    return copy;
}

// Set while this thread builds a stack trace. Building one allocates; an exception raised
// meanwhile (NotEnoughMemoryException when memory runs out) would build a trace of its own,
// fail the same way, and so on until the stack overflowed.
thread_local bool gBuildingTrace = false;

struct TraceScope {
    TraceScope() { gBuildingTrace = true; }
    ~TraceScope() { gBuildingTrace = false; }
};

// Releases the symbol array on every path out.
struct SymbolArray {
    char** symbols = nullptr;
    ~SymbolArray() { std::free(symbols); }
};

// The demangler's work buffer, 1024 bytes to start with; shared by the frames of a trace
// (the demangler grows it with realloc when a name needs more). Null when memory is short:
// names are then shown raw.
struct DemangleBuffer {
    std::size_t size = 1024;
    char* bytes = static_cast<char*>(std::malloc(1024));
    ~DemangleBuffer() { std::free(bytes); }
};

// A copy of n bytes of s, terminated: on the stack when short, else on the heap. Throws
// NotEnoughMemoryException when the heap has no room.
class FieldText {
public:
    FieldText(char const* s, std::size_t n) : mText(n < sizeof mLocal ? mLocal : nullptr) {
        if (mText == nullptr) {
            mText = static_cast<char*>(std::malloc(n + 1));
            if (mText == nullptr)
                LSTD_THROW(NotEnoughMemoryException, "Out of memory");
        }
        std::memcpy(mText, s, n);
        mText[n] = '\0';
    }
    FieldText(FieldText const&) = delete;
    FieldText& operator=(FieldText const&) = delete;
    ~FieldText() {
        if (mText != mLocal)
            std::free(mText);
    }
    char const* Get() const { return mText; }

private:
    char mLocal[128];
    char* mText;
};

// Appends the formatted text to builder; through a stack buffer when it fits.
__attribute__((format(printf, 2, 3))) void AppendFormatted(StringBuilder& builder,
                                                           char const* format, ...) {
    char local[512];
    va_list args;
    va_start(args, format);
    int const n = std::vsnprintf(local, sizeof local, format, args);
    va_end(args);
    if (n >= 0 && static_cast<std::size_t>(n) < sizeof local) {
        builder.Append(local);
        return;
    }
    String text;
    va_start(args, format);
    String::Sprintf(text, format, args);
    va_end(args);
    builder.Append(text);
}

// FormatStackFrame with the demangler's buffer of the whole trace.
void FormatFrame(StringBuilder& builder, char* line, DemangleBuffer& work) {
    char* open = nullptr;
    char* plus = nullptr;
    char* bracket = nullptr;
    for (char* c = line; *c != '\0'; ++c) {
        if (*c == '(')
            open = c;
        else if (*c == '+')
            plus = c;
        else if (*c == '[' && (open != nullptr || plus != nullptr))
            bracket = c;
    }
    if (open == nullptr || bracket == nullptr || bracket < open) {
        AppendFormatted(builder, "  %s\n", line);
        return;
    }
    // The address and offset texts are copied before the line is cut.
    char const* addressEnd = std::strchr(bracket + 1, ']');
    FieldText const address(bracket + 1, addressEnd != nullptr
                                             ? static_cast<std::size_t>(addressEnd - bracket - 1)
                                             : std::strlen(bracket + 1));
    char const* offsetEnd = plus != nullptr ? std::strchr(plus + 1, ')') : nullptr;
    FieldText const offset(plus != nullptr ? plus + 1 : "",
                           plus == nullptr        ? 0
                           : offsetEnd != nullptr ? static_cast<std::size_t>(offsetEnd - plus - 1)
                                                  : std::strlen(plus + 1));
    *open = '\0';
    *bracket = '\0';
    if (plus != nullptr)
        *plus = '\0';
    char const* name = open + 1;
    if (work.bytes != nullptr) {
        int status = -1;
        char* result = abi::__cxa_demangle(name, work.bytes, &work.size, &status);
        if (result != nullptr)
            work.bytes = result;  // the demangler may have grown the buffer
        if (status == 0)
            name = work.bytes;
    }
    if (plus != nullptr)
        AppendFormatted(builder, "  %s [ \033[31m%s\033[0m + %s ] [%s]\n", line, name, offset.Get(),
                        address.Get());
    else
        AppendFormatted(builder, "  %s [ %s   %s ] [%s]\n", line, name, "", address.Get());
}
}  // namespace

Exception::Exception(char const* message, char const* file, unsigned long long const& line)
    : mMessage(DuplicateText(message)), mFile(DuplicateText(file)), mLine(line),
      mStackTrace(nullptr) {
    try {
        BuildStackTrace();
    } catch (...) {
        // A trace that cannot be built leaves the field null; the exception itself stands.
    }
}

Exception::Exception(Exception const& other)
    : std::exception(other), mMessage(DuplicateText(other.mMessage)),
      mFile(DuplicateText(other.mFile)), mLine(other.mLine),
      mStackTrace(DuplicateText(other.mStackTrace)) {}

Exception& Exception::operator=(Exception const& other) {
    if (this != &other) {
        char* message = DuplicateText(other.mMessage);
        char* file = DuplicateText(other.mFile);
        char* trace = DuplicateText(other.mStackTrace);
        std::free(mMessage);
        std::free(mFile);
        std::free(mStackTrace);
        mMessage = message;
        mFile = file;
        mLine = other.mLine;
        mStackTrace = trace;
    }
    return *this;
}

Exception::~Exception() {
    std::free(mMessage);
    std::free(mFile);
    std::free(mStackTrace);
}

char const* Exception::what() const noexcept { return mMessage; }

// Kept out of line so that the frames it skips are always the same three: this function,
// the Exception constructor and the constructor of the class being thrown.
__attribute__((noinline)) void Exception::BuildStackTrace() {
    if (gBuildingTrace)
        return;  // raised while a trace is being built: this exception carries none
    TraceScope const scope;
    StringBuilder builder;
    builder.Append("Stack trace:\n");
    void* frames[64];
    int const count = backtrace(frames, 64);
    if (count <= 0) {
        builder.Append("  \n");
        std::free(mStackTrace);
        mStackTrace = nullptr;
        GenerateStackTraceMessage(builder, mStackTrace);
        return;
    }
    SymbolArray symbols;
    symbols.symbols = backtrace_symbols(frames, count);
    if (symbols.symbols != nullptr) {
        DemangleBuffer work;
        for (int i = 3; i <= count - 2; ++i)
            FormatFrame(builder, symbols.symbols[i], work);
    }
    std::free(mStackTrace);
    mStackTrace = nullptr;
    GenerateStackTraceMessage(builder, mStackTrace);
}

void FormatStackFrame(StringBuilder& builder, char* line) {
    DemangleBuffer work;
    FormatFrame(builder, line, work);
}

void GenerateStackTraceMessage(StringBuilder const& builder, char*& out) {
    out = static_cast<char*>(std::malloc(builder.GetLength() + 1));
    if (out == nullptr)
        return;
    out[builder.CopyTo(out)] = '\0';
}

NotEnoughMemoryException::NotEnoughMemoryException(char const* message, char const* file,
                                                   unsigned long long const& line)
    : Exception(message, file, line) {}
NotEnoughMemoryException::~NotEnoughMemoryException() {}

UnknownException::UnknownException(char const* message, char const* file,
                                   unsigned long long const& line)
    : Exception(message, file, line) {}
UnknownException::~UnknownException() {}

InvalidIndexException::InvalidIndexException(char const* message, char const* file,
                                             unsigned long long const& line)
    : Exception(message, file, line) {}
InvalidIndexException::~InvalidIndexException() {}

InvalidOperationException::InvalidOperationException(char const* message, char const* file,
                                                     unsigned long long const& line)
    : Exception(message, file, line) {}
InvalidOperationException::~InvalidOperationException() {}

NotInitializedIteratorException::NotInitializedIteratorException(char const* message,
                                                                 char const* file,
                                                                 unsigned long long const& line)
    : Exception(message, file, line) {}
NotInitializedIteratorException::~NotInitializedIteratorException() {}
void EndOnUndeclaredException() noexcept {
    std::terminate();
}
}  // namespace lstd
