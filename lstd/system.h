// lstd/system.h - shell commands, environment, clock and process exit handlers.
#ifndef LSTD_SYSTEM_H
#define LSTD_SYSTEM_H

#include <lstd/signal.h>

namespace lstd {
class String;

/// Static process services over the C library. The exit handlers are process-wide and
/// unguarded: register and run them from one thread.
class System {
public:
    System();
    /// Runs the exit handlers (HandleExitEvent): keep one System object alive for the life
    /// of main so that they run at its end. A throwing handler ends the process here.
    virtual ~System();

    /// system(command); the wait status comes back unchanged.
    static int Run(String const& command);
    /// Copies the variable's text into value and returns true; false (value untouched) when
    /// the variable is not set.
    static bool GetEnvVariable(String const& name, String& value);
    /// Sets name to value; with a non-zero append, to value + ":${name}", the reference
    /// stored literally (a shell may expand it later). The result of putenv is ignored.
    /// Throws NotEnoughMemoryException "Out of memory" when the text cannot be allocated.
    static void SetEnvVariable(String const& name, String const& value,
                               unsigned char const& append);
    /// Microseconds since the epoch.
    static unsigned long long GetTickCount();
    /// Always 1000000000.0, although GetTickCount counts microseconds: Timer relies on the
    /// pair exactly as it is.
    static double GetTickFrequency();
    /// Always 0: no processor counter is read.
    static unsigned long long GetCPUTickCount();

    /// Appends handler to OnExit (a handler added twice runs twice). Throws
    /// NotEnoughMemoryException with the allocator's text; nothing is then registered.
    static void AddExitHandler(void (*handler)());
    /// Whether OnExit holds a connection calling handler; false before the first
    /// AddExitHandler, even for connections made on OnExit directly.
    static bool ExistsExitHandler(void (*handler)());
    /// Runs the exit handlers in registration order, then removes them all, so each runs at
    /// most once. A running handler is still registered (ExistsExitHandler of it is true);
    /// handlers added meanwhile run in the same pass; none may be removed while it runs.
    /// When a handler throws, the pass stops and the exception propagates: the handlers
    /// that ran, the throwing one included, are removed, the later ones stay registered.
    /// Nothing runs at the C library's exit.
    static void HandleExitEvent();

    /// The exit handlers, in registration order.
    static sign::NoArgSignal OnExit;

private:
    /// 1 once AddExitHandler was called; never reset.
    static unsigned char mIsSetAtExit;
};
}  // namespace lstd
#endif  // LSTD_SYSTEM_H
