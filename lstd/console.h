// lstd/console.h - terminal services.
#ifndef LSTD_CONSOLE_H
#define LSTD_CONSOLE_H

namespace lstd {

/// Static terminal services, through the shell.
class Console {
public:
    Console();
    virtual ~Console();
    /// Clears the terminal by running the shell command "clear"; its status is ignored.
    static void Clear();
};
}  // namespace lstd
#endif  // LSTD_CONSOLE_H
