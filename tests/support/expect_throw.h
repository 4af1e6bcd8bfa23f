// expect_throw.h - shared helpers of the lkit unit tests.
#ifndef LKIT_TESTS_EXPECT_THROW_H
#define LKIT_TESTS_EXPECT_THROW_H

#include <gtest/gtest.h>

#include <lstd/string.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <sstream>
#include <string>
#include <typeinfo>
#include <utility>

#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

namespace lstd {
// Lets failing assertions show a String as quoted text, embedded NULs included.
inline void PrintTo(String const& s, std::ostream* os) {
    *os << testing::PrintToString(std::string(s.GetStdChar(), s.GetLength()));
}
}  // namespace lstd

namespace lkit_test {

// Runs f and expects an exception whose dynamic type is exactly E (not a type derived from
// E) with what() equal to message.
template <class E, class F>
void ExpectThrow(F&& f, char const* message) {
    try {
        std::forward<F>(f)();
    } catch (E const& e) {
        EXPECT_EQ(typeid(E), typeid(e)) << "caught " << typeid(e).name();
        EXPECT_STREQ(message, e.what());
        return;
    } catch (std::exception const& e) {
        ADD_FAILURE() << "expected " << typeid(E).name() << " but caught " << typeid(e).name()
                      << " with what() \"" << e.what() << "\"";
        return;
    } catch (...) {
        ADD_FAILURE() << "expected " << typeid(E).name() << " but caught something else";
        return;
    }
    ADD_FAILURE() << "expected " << typeid(E).name() << " but nothing was thrown";
}

// The whole content of the file at path; fails the test (giving "") if it cannot be opened.
inline std::string ReadFile(std::string const& path) {
    std::ifstream in(path, std::ios::in | std::ios::binary);
    if (!in) {
        ADD_FAILURE() << "cannot open '" << path << "' for reading";
        return std::string();
    }
    std::ostringstream out;
    out << in.rdbuf();
    return out.str();
}

// A fresh directory under /tmp, removed with everything in it on destruction.
class TempDir {
public:
    TempDir() {
        char pattern[] = "/tmp/lkit_test_XXXXXX";
        if (char* made = ::mkdtemp(pattern))
            mPath = made;
        else
            ADD_FAILURE() << "mkdtemp failed: " << std::strerror(errno);
    }
    ~TempDir() {
        if (!mPath.empty())
            ::nftw(mPath.c_str(), &RemoveEntry, 16, FTW_DEPTH | FTW_PHYS);
    }
    TempDir(TempDir const&) = delete;
    TempDir& operator=(TempDir const&) = delete;

    // Absolute path of the directory, without a trailing slash.
    std::string const& path() const { return mPath; }
    // path() + "/" + name.
    std::string file(std::string const& name) const { return mPath + "/" + name; }

private:
    static int RemoveEntry(char const* p, struct stat const*, int, struct FTW*) {
        ::remove(p);
        return 0;
    }

    std::string mPath;
};
}  // namespace lkit_test

using lkit_test::ExpectThrow;
using lkit_test::ReadFile;
using lkit_test::TempDir;

#endif  // LKIT_TESTS_EXPECT_THROW_H
