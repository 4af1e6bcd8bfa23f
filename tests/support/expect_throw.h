// expect_throw.h - shared helpers for the lkit unit tests.
#ifndef LKIT_TESTS_EXPECT_THROW_H
#define LKIT_TESTS_EXPECT_THROW_H

#include <gtest/gtest.h>

#include <cerrno>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <exception>
#include <fstream>
#include <iterator>
#include <sstream>
#include <string>
#include <typeinfo>
#include <utility>

#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

#include <lstd/string.h>

namespace lstd {
// Lets failing assertions show a String as quoted text, embedded NULs included.
inline void PrintTo(String const& s, std::ostream* os) {
    *os << testing::PrintToString(std::string(s.GetStdChar(), s.GetLength()));
}
}  // namespace lstd

namespace lkit_test {

// Runs f and expects it to throw an exception whose dynamic type is exactly E
// (not a type derived from E) with what() equal to message.
template <class E, class F> void ExpectThrow(F&& f, char const* message) {
    try {
        std::forward<F>(f)();
    } catch (E const& e) {
        if (typeid(e) != typeid(E)) {
            ADD_FAILURE() << "expected exactly " << typeid(E).name() << " but caught "
                          << typeid(e).name() << " with what() \"" << e.what() << "\"";
            return;
        }
        EXPECT_STREQ(e.what(), message);
        return;
    } catch (std::exception const& e) {
        ADD_FAILURE() << "expected " << typeid(E).name() << " but caught " << typeid(e).name()
                      << " with what() \"" << e.what() << "\"";
        return;
    } catch (...) {
        ADD_FAILURE() << "expected " << typeid(E).name()
                      << " but caught an exception of another type";
        return;
    }
    ADD_FAILURE() << "expected " << typeid(E).name() << " but nothing was thrown";
}

// Returns the whole content of the file at path; fails the test (and returns an
// empty string) if it cannot be opened.
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

// Writes content to the file at path, replacing it; fails the test on error.
inline void WriteFile(std::string const& path, std::string const& content) {
    std::ofstream out(path, std::ios::out | std::ios::binary | std::ios::trunc);
    if (!out) {
        ADD_FAILURE() << "cannot open '" << path << "' for writing";
        return;
    }
    out << content;
    if (!out.flush()) {
        ADD_FAILURE() << "cannot write '" << path << "'";
    }
}

// A fresh directory under /tmp, removed with everything in it on destruction.
class TempDir {
  public:
    TempDir() {
        char pattern[] = "/tmp/lkit_test_XXXXXX";
        char* made = ::mkdtemp(pattern);
        if (made == nullptr) {
            ADD_FAILURE() << "mkdtemp failed: " << std::strerror(errno);
            return;
        }
        path_ = made;
    }

    ~TempDir() {
        if (!path_.empty()) {
            ::nftw(path_.c_str(), &RemoveEntry, 16, FTW_DEPTH | FTW_PHYS);
        }
    }

    TempDir(TempDir const&) = delete;
    TempDir& operator=(TempDir const&) = delete;

    // Absolute path of the directory, without a trailing slash.
    std::string const& path() const { return path_; }

    // path() + "/" + name.
    std::string file(std::string const& name) const { return path_ + "/" + name; }

  private:
    static int RemoveEntry(char const* p, struct stat const*, int, struct FTW*) {
        ::remove(p);
        return 0;
    }

    std::string path_;
};

} // namespace lkit_test

using lkit_test::ExpectThrow;
using lkit_test::ReadFile;
using lkit_test::TempDir;
using lkit_test::WriteFile;

#endif // LKIT_TESTS_EXPECT_THROW_H
