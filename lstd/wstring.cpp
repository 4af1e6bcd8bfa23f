// lstd/wstring.cpp - multibyte and wide string conversion.
#include <lstd/wstring.h>

#include <lstd/exception.h>

#include <cstdlib>
#include <new>

namespace lstd {

WString::WString() {}
WString::~WString() {}

unsigned long WString::ConvertCharToWChar(char const* src, wchar_t*& dst,
                                          unsigned long const& length) {
    wchar_t* block;
    try {
        block = new wchar_t[length + 1];
    } catch (std::bad_alloc const& e) {
        LSTD_THROW(NotEnoughMemoryException, e.what());
    }
    dst = block;
    return std::mbstowcs(dst, src, length + 1);
}

unsigned long WString::ConvertWCharToChar(wchar_t const* src, char*& dst,
                                          unsigned long const& length) {
    char* block;
    try {
        block = new char[length + 1];
    } catch (std::bad_alloc const& e) {
        LSTD_THROW(NotEnoughMemoryException, e.what());
    }
    dst = block;
    return std::wcstombs(dst, src, length + 1);
}
}  // namespace lstd
