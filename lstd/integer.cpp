// lstd/integer.cpp - hexadecimal helpers.
#include <lstd/integer.h>

namespace lstd {

Integer::Integer() {}
Integer::~Integer() {}

bool Integer::IsHexadecimal(String const& s) {
    char const* p = s.GetStdChar();
    for (unsigned long i = 0; i < s.GetLength(); ++i) {
        char const c = p[i];
        if (!((c >= '0' && c <= '9') || (c >= 'a' && c <= 'f') || (c >= 'A' && c <= 'F')))
            return false;
    }
    return true;
}

template String Integer::ToHexaString<unsigned long>(unsigned long const& value);
}  // namespace lstd
