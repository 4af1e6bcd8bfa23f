// Tests of the small text helpers: lstd::Integer, lstd::Character and lstd::WString.
#include <lstd/character.h>
#include <lstd/integer.h>
#include <lstd/string.h>
#include <lstd/wstring.h>

#include <gtest/gtest.h>

#include <climits>
#include <string>
#include <utility>

using lstd::String;

TEST(Integer, ToHexaString) {
    std::pair<unsigned long, char const *> const rows[] = {
        {0, "0"},     {1, "0x1"},     {15, "0xf"},     {16, "0x10"},    {17, "0x11"},
        {255, "0xff"}, {256, "0x100"}, {4096, "0x1000"}, {ULONG_MAX, "0xffffffffffffffff"}};
    for (auto const &[value, want] : rows) {
        SCOPED_TRACE(value);
        EXPECT_STREQ(lstd::Integer::ToHexaString<unsigned long>(value).GetStdChar(), want);
    }
}

TEST(Integer, IsHexadecimal) {
    std::pair<String, bool> const rows[] = {
        {"", true},   {"1aF", true}, {"0123456789abcdefABCDEF", true}, {"0x1", false},
        {"g", false}, {"G", false},  {" 1", false}, {"-1", false}, {String("1\0", 2), false}};
    for (auto const &[text, want] : rows) {
        SCOPED_TRACE(text.GetStdChar());
        EXPECT_EQ(lstd::Integer::IsHexadecimal(text), want);
    }
}

TEST(Character, CaseConversion) {
    using C = lstd::Character;
    // The "C" locale leaves bytes above 0x7F (negative chars) alone.
    EXPECT_EQ(std::string({C::ToUpper('a'), C::ToUpper('1'), C::ToLower('Q'), C::ToLower('['),
                           C::ToUpper('\xE9'), C::ToLower('\xC9')}),
              "A1q[\xE9\xC9");
}

TEST(WString, ConvertsBothWays) {
    wchar_t *wide = nullptr;
    EXPECT_EQ(lstd::WString::ConvertCharToWChar("abc", wide, 3), 3UL);
    EXPECT_EQ(std::wstring(wide), L"abc"); // terminated
    delete[] wide;
    char *narrow = nullptr;
    EXPECT_EQ(lstd::WString::ConvertWCharToChar(L"abc", narrow, 3), 3UL);
    EXPECT_STREQ(narrow, "abc");
    delete[] narrow;
    // A character the "C" locale cannot encode gives the all-ones count.
    EXPECT_EQ(lstd::WString::ConvertWCharToChar(L"a\x100", narrow, 2), ~0UL);
    delete[] narrow;
}
