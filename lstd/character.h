// lstd/character.h - case conversion of one byte.
#ifndef LSTD_CHARACTER_H
#define LSTD_CHARACTER_H

namespace lstd {

/// Case conversion of single bytes by the C library, in the current locale.
class Character {
public:
    Character();
    virtual ~Character();
    /// toupper / tolower of the byte, passed as a signed char value.
    static char ToUpper(char const& ch);
    /// ch in lower case (the C library's tolower, current locale).
    static char ToLower(char const& ch);
};
}  // namespace lstd
#endif  // LSTD_CHARACTER_H
