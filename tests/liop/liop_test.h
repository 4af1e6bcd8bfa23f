// tests/liop/liop_test.h - helpers shared by the liop tests.
#ifndef LKIT_TESTS_LIOP_TEST_H
#define LKIT_TESTS_LIOP_TEST_H

#include <liop/file.h>

#include <expect_throw.h>

#include <string>
#include <vector>

namespace liop_test {
inline std::string Std(lstd::String const& s) { return std::string(s.GetStdChar(), s.GetLength()); }
inline lstd::String Lstd(std::string const& s) { return lstd::String(s.data(), s.size()); }

inline void WriteFile(std::string const& path, std::string const& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

// Every line Read(String&) returns until it answers false, then the String left at that.
inline std::vector<std::string> Lines(liop::File& file) {
    std::vector<std::string> lines;
    lstd::String line("untouched");
    while (file.Read(line) && lines.size() < 100)
        lines.push_back(Std(line));
    lines.push_back(Std(line));
    return lines;
}
}  // namespace liop_test

using liop_test::Lines;
using liop_test::Lstd;
using liop_test::Std;
using liop_test::WriteFile;
using Strings = std::vector<std::string>;

#endif  // LKIT_TESTS_LIOP_TEST_H
