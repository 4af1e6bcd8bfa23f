// tools/toolinput.h - the command-line conventions shared by the lkit tools.
#ifndef LKIT_TOOLS_TOOLINPUT_H
#define LKIT_TOOLS_TOOLINPUT_H

#include <liop/file.h>
#include <liop/ioexception.h>

#include <sys/stat.h>

#include <cerrno>
#include <cstdio>
#include <cstring>
#include <string>

namespace lkit_tools {

/// Exit status for a usage error or an input that cannot be read.
int const EXIT_INPUT = 2;

/// Opens the input named on the command line into file, "-" naming the standard input.
/// Returns the file to read, or null after printing "<tool>: cannot read '<path>': <reason>"
/// as one line on standard error. A directory is refused here: the C library would open it
/// and fail only at the first read.
inline liop::File* OpenInput(char const* tool, std::string const& path, liop::File& file) {
    if (path == "-")
        return &liop::File::GetStdin();
    struct stat status;
    int error = 0;
    if (::stat(path.c_str(), &status) != 0)
        error = errno;
    else if (S_ISDIR(status.st_mode))
        error = EISDIR;
    if (error == 0) {
        try {
            file.Open(path.c_str(), liop::File::OPEN_READ, liop::File::FILE_TEXT);
            return &file;
        } catch (liop::IOException const&) {
            error = errno != 0 ? errno : EIO;
        }
    }
    std::fprintf(stderr, "%s: cannot read '%s': %s\n", tool, path.c_str(), std::strerror(error));
    return nullptr;
}

/// Prints "<tool>: <message>" and a hint to --help on standard error; returns EXIT_INPUT.
inline int UsageError(char const* tool, std::string const& message) {
    std::fprintf(stderr, "%s: %s (try '%s --help')\n", tool, message.c_str(), tool);
    return EXIT_INPUT;
}
/// The command line of a tool that takes one FILE: prints help for "--help" and a usage
/// error for anything but one argument, else opens FILE (OpenInput) into file and input.
/// Returns the exit status when the tool is done, or -1 when it goes on with input.
inline int OpenSingleInput(int argc, char** argv, char const* tool, void (*help)(),
                           liop::File& file, liop::File*& input) {
    if (argc == 2 && std::strcmp(argv[1], "--help") == 0) {
        help();
        return 0;
    }
    if (argc != 2)
        return UsageError(tool, "expects one FILE");
    input = OpenInput(tool, argv[1], file);
    return input == nullptr ? EXIT_INPUT : -1;
}
}  // namespace lkit_tools
#endif  // LKIT_TOOLS_TOOLINPUT_H
