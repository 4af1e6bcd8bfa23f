// lstd/exception.h - the library's exception family: message, place of the throw, stack trace.
#ifndef LSTD_EXCEPTION_H
#define LSTD_EXCEPTION_H

#include <exception>

namespace lstd {
class StringBuilder;

/// Root of every exception the library raises. It owns copies of the message and of the
/// source file path, the line of the throw, and a symbolised stack trace captured when the
/// object is built. Copies are deep: two objects never share or free the same text.
/// Throw by value, catch by reference.
class Exception : public std::exception {
public:
    /// Copies message and file (either may be null) and captures the stack trace. Never
    /// throws: a copy that cannot be allocated stays null, a failing capture is ignored.
    Exception(char const* message, char const* file, unsigned long long const& line);
    /// A deep copy: message, file, line and stack trace.
    Exception(Exception const& other);
    /// Replaces this exception's contents with a deep copy of other's.
    Exception& operator=(Exception const& other);
    virtual ~Exception();
    /// The message exactly as given (no file, line or trace); null if it could not be copied.
    char const* what() const noexcept override;

    /// The source file given at construction; null if it could not be copied.
    char const* GetFile() const { return mFile; }
    /// The source line given at construction.
    unsigned long long GetLine() const { return mLine; }
    /// "Stack trace:\n" followed by one line per caller frame; null if it could not be built.
    char const* GetStackTrace() const { return mStackTrace; }

    /// Fills the stack trace: the three innermost frames (the capture machinery) and the
    /// outermost one are left out; mangled names are demangled and printed in red. Does
    /// nothing when called while this thread is already building a trace: an exception
    /// raised by the capture itself (memory running out, say) carries no trace, so the
    /// capture never recurses.
    void BuildStackTrace();

private:
    char* mMessage;
    char* mFile;
    unsigned long long mLine;
    char* mStackTrace;
};

/// Appends one line of backtrace_symbols() output to builder. A line shaped
/// "module(name+offset) [address]" becomes "  module [ <red>demangled name<reset> + offset ]
/// [address]" (the colour codes are always written); "module(name) [address]" becomes
/// "  module [ name   ] [address]"; any other line is appended whole after two blanks.
/// Cuts line in place.
void FormatStackFrame(StringBuilder& builder, char* line);

/// Stores a malloc'ed, NUL-terminated copy of the builder's text in out (null when the
/// allocation fails). Never throws.
void GenerateStackTraceMessage(StringBuilder const& builder, char*& out);

/// An allocation failed.
class NotEnoughMemoryException : public Exception {
public:
    /// An allocation failure: message, file and line of the throw.
    NotEnoughMemoryException(char const* message, char const* file, unsigned long long const& line);
    virtual ~NotEnoughMemoryException();
};

/// An internal state that should never occur was reached.
class UnknownException : public Exception {
public:
    /// An impossible state: message, file and line of the throw.
    UnknownException(char const* message, char const* file, unsigned long long const& line);
    virtual ~UnknownException();
};

/// An index or position lies outside a container's range.
class InvalidIndexException : public Exception {
public:
    /// A bad index: message, file and line of the throw.
    InvalidIndexException(char const* message, char const* file, unsigned long long const& line);
    virtual ~InvalidIndexException();
};

/// An operation is not allowed in the current state or with the given argument.
class InvalidOperationException : public Exception {
public:
    /// A forbidden operation: message, file and line of the throw.
    InvalidOperationException(char const* message, char const* file,
                              unsigned long long const& line);
    virtual ~InvalidOperationException();
};

/// An iterator was used before Init() or without a current item.
class NotInitializedIteratorException : public Exception {
public:
    /// A bad iterator use: message, file and line of the throw.
    NotInitializedIteratorException(char const* message, char const* file,
                                    unsigned long long const& line);
    virtual ~NotInitializedIteratorException();
};

/// Ends the process because an exception that the running operation does not declare
/// escaped it: the library's operations name what they may raise, and anything else is a
/// broken contract, not an error to recover from. Called only from a catch handler, so the
/// runtime's termination handler can still name the exception. Never returns.
[[noreturn]] void EndOnUndeclaredException() noexcept;

/// Called inside `catch (...)`: rethrows the exception in hand when it is one of Declared
/// (caught as `Declared const&`, so subclasses pass too), otherwise ends the process through
/// EndOnUndeclaredException(). With no Declared type every exception ends the process.
template <class... Declared>
[[noreturn]] void RethrowDeclared();

namespace detail {
template <class... Declared>
struct DeclaredRethrower;

template <>
struct DeclaredRethrower<> {
    [[noreturn]] static void Rethrow() { EndOnUndeclaredException(); }
};

template <class First, class... Rest>
struct DeclaredRethrower<First, Rest...> {
    [[noreturn]] static void Rethrow() {
        try {
            throw;
        } catch (First const&) {
            throw;
        } catch (...) {
            DeclaredRethrower<Rest...>::Rethrow();
        }
    }
};
}  // namespace detail

template <class... Declared>
[[noreturn]] void RethrowDeclared() {
    detail::DeclaredRethrower<Declared...>::Rethrow();
}
}  // namespace lstd

/// Throws E with a plain message, recording the place of the throw.
#define LSTD_THROW(E, message) throw E((message), __FILE__, __LINE__)
/// Throws E with a printf-style message formatted through lstd::String::SSprintf.
/// Needs <lstd/string.h> at the place of use.
#define LSTD_THROWF(E, ...)                                                                        \
    throw E(::lstd::String::SSprintf(__VA_ARGS__).GetStdChar(), __FILE__, __LINE__)

#endif  // LSTD_EXCEPTION_H
