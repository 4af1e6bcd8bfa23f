// liop/ioexception.cpp - the exceptions of the input/output classes.
#include <liop/ioexception.h>

namespace liop {
IOException::IOException(char const* message, char const* file, unsigned long long const& line)
    : lstd::Exception(message, file, line) {}
IOException::~IOException() {}

FileNotFoundException::FileNotFoundException(char const* message, char const* file,
                                             unsigned long long const& line)
    : IOException(message, file, line) {}
FileNotFoundException::~FileNotFoundException() {}
}  // namespace liop
