// lstd/exception.cpp - exception construction, deep copies and stack-trace capture.
#include <lstd/exception.h>

#include <lstd/string.h>
#include <lstd/stringbuilder.h>

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
    SymbolArray work;
    work.symbols = backtrace_symbols(frames, count);
    if (work.symbols != nullptr) {
        for (int i = 3; i <= count - 2; ++i)
            FormatStackFrame(builder, work.symbols[i]);
    }
    std::free(mStackTrace);
    mStackTrace = nullptr;
    GenerateStackTraceMessage(builder, mStackTrace);
}

void FormatStackFrame(StringBuilder& builder, char* line) {
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
        builder.Append(String::SSprintf("  %s\n", line));
        return;
    }
    char const* addressEnd = std::strchr(bracket + 1, ']');
    String const address(bracket + 1, addressEnd != nullptr
                                          ? static_cast<unsigned long>(addressEnd - bracket - 1)
                                          : std::strlen(bracket + 1));
    String offset;
    if (plus != nullptr) {
        char const* offsetEnd = std::strchr(plus + 1, ')');
        offset =
            String(plus + 1, offsetEnd != nullptr ? static_cast<unsigned long>(offsetEnd - plus - 1)
                                                  : std::strlen(plus + 1));
    }
    *open = '\0';
    *bracket = '\0';
    if (plus != nullptr)
        *plus = '\0';
    char const* name = open + 1;
    size_t size = 1024;
    char* work = static_cast<char*>(std::malloc(size));
    int status = -1;
    if (work != nullptr) {
        char* result = abi::__cxa_demangle(name, work, &size, &status);
        if (result != nullptr)
            work = result;  // the demangler may have grown the buffer
        if (status == 0)
            name = work;
    }
    try {
        if (plus != nullptr)
            builder.Append(String::SSprintf("  %s [ \033[31m%s\033[0m + %s ] [%s]\n", line, name,
                                            offset.GetStdChar(), address.GetStdChar()));
        else
            builder.Append(
                String::SSprintf("  %s [ %s   %s ] [%s]\n", line, name, "", address.GetStdChar()));
    } catch (...) {
        std::free(work);
        throw;
    }
    std::free(work);
}

void GenerateStackTraceMessage(StringBuilder const& builder, char*& out) {
    out = static_cast<char*>(std::malloc(builder.GetLength() + 1));
    if (out == nullptr)
        return;
    try {
        String const text = builder.ToString();
        std::memcpy(out, text.GetStdChar(), text.GetLength() + 1);
    } catch (...) {
        std::free(out);
        out = nullptr;
    }
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
