// lstd/wstring.h - conversion between multibyte and wide C strings.
#ifndef LSTD_WSTRING_H
#define LSTD_WSTRING_H

#include <cstddef>

namespace lstd {

/// Conversions by mbstowcs / wcstombs in the current locale. The caller owns dst and
/// releases it with delete[].
class WString {
public:
    WString();
    virtual ~WString();
    /// dst = new wchar_t[length + 1]; returns mbstowcs(dst, src, length + 1), all ones for
    /// an invalid sequence. length counts the characters of src without its terminator.
    /// Throws NotEnoughMemoryException (dst untouched) when the array cannot be had.
    static unsigned long ConvertCharToWChar(char const* src, wchar_t*& dst,
                                            unsigned long const& length);
    /// dst = new char[length + 1]; returns wcstombs(dst, src, length + 1). Deliberate: the
    /// buffer is length + 1 bytes whatever the encoding, so text needing more than a byte
    /// per character is cut (and then not terminated); the result says how much was
    /// written, or all ones for a character that cannot be converted.
    static unsigned long ConvertWCharToChar(wchar_t const* src, char*& dst,
                                            unsigned long const& length);
};
}  // namespace lstd
#endif  // LSTD_WSTRING_H
