// lstd/integer.h - hexadecimal text of integers.
#ifndef LSTD_INTEGER_H
#define LSTD_INTEGER_H

#include <lstd/string.h>

namespace lstd {

/// Hexadecimal tests and formatting.
class Integer {
public:
    Integer();
    virtual ~Integer();
    /// Whether every byte is a hexadecimal digit; true for "". No "0x", sign or blank.
    static bool IsHexadecimal(String const& s);
    /// Lower-case hexadecimal with "0x" for every non-zero value ("0xff"), "0" for zero.
    template <typename T>
    static String ToHexaString(T const& value);
};

template <typename T>
String Integer::ToHexaString(T const& value) {
    // The digit count is only a minimum field width (never wider than the printed text),
    // so its odd rule for powers of 16 changes nothing visible.
    int count = 1;
    if (!(value < 17)) {
        for (T v = value; v > 16; v >>= 4)
            ++count;
    }
    String const format = "%" + String::SSprintf("#0%d", count) + "llx";
    return String::SSprintf(format, static_cast<unsigned long long>(value));
}
}  // namespace lstd
#endif  // LSTD_INTEGER_H
