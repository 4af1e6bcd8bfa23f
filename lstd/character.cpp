// lstd/character.cpp - case conversion of one byte.
#include <lstd/character.h>

#include <cctype>

namespace lstd {

Character::Character() {}
Character::~Character() {}

// The C library's tables also cover the negative values of signed chars.
char Character::ToUpper(char const& ch) { return static_cast<char>(std::toupper(ch)); }
char Character::ToLower(char const& ch) { return static_cast<char>(std::tolower(ch)); }
}  // namespace lstd
