// tests/liop/directory_test.cpp - Directory services and FileIterator on real directories.
#include "liop_test.h"

#include <liop/directory.h>
#include <liop/fileiterator.h>

#include <algorithm>

namespace {
using liop::Directory;
using liop::FileIterator;

// Every path the iterator yields, sorted (the directory order is the file system's).
Strings Paths(FileIterator& it) {
    Strings paths;
    while (++it && paths.size() < 100)
        paths.push_back(Std(it.GetCurrentPath()));
    std::sort(paths.begin(), paths.end());
    return paths;
}

bool IsDir(std::string const& path) {
    struct stat status;
    return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
}

class DirectoryTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_NE(nullptr, ::getcwd(mCwd, sizeof mCwd)); }
    void TearDown() override { EXPECT_EQ(0, ::chdir(mCwd)); }

    char mCwd[4096];
    TempDir mDir;
};
}  // namespace

TEST_F(DirectoryTest, PathTestsAndNormalisation) {
    EXPECT_EQ(std::string(mCwd), Std(Directory::GetCurDir()));
    WriteFile(mDir.file("f.txt"), "f");
    EXPECT_TRUE(Directory::IsDirectory(Lstd(mDir.path())));
    EXPECT_FALSE(Directory::IsDirectory(Lstd(mDir.file("f.txt"))));
    std::string const missing = mDir.file("none");
    ExpectThrow<liop::FileNotFoundException>(
        [&] { Directory::IsDirectory(Lstd(missing)); },
        ("The file/directory not found. (" + missing + ")").c_str());
    for (char const* absolute : {"/a", " \t/a"})
        EXPECT_TRUE(Directory::IsAbsolutePath(absolute)) << absolute;
    for (char const* relative : {"\\a", "a/b", "", "  "})
        EXPECT_FALSE(Directory::IsAbsolutePath(relative)) << relative;
    char const* const rows[][2] = {{"", ""},
                                   {"a\\b\\c", "a//b//c"},
                                   {"/a/b/", "//a//b//"},
                                   {" / a //  b ", "//a//b"},
                                   {"\\x\\", "//x//"},
                                   {"/", "//"}};
    for (auto const& row : rows)
        EXPECT_EQ(row[1], Std(Directory::NormalizePath(row[0]))) << row[0];
}

TEST_F(DirectoryTest, CreateAndCreateAll) {
    std::string const made = mDir.file("made");
    EXPECT_EQ(0, Directory::Create(Lstd(made)));
    EXPECT_EQ(1, Directory::Create(Lstd(made)));  // exists: nothing made
    std::string const deep = mDir.file("no/such");
    ExpectThrow<liop::IOException>(
        [&] { Directory::Create(Lstd(deep)); },
        ("Cannot create directory '" + deep + "'. (status = -1)").c_str());
    Directory::CreateAll(Lstd(mDir.path() + "/a/ b \\c/file.txt"), 1);
    EXPECT_TRUE(IsDir(mDir.file("a/b/c")));
    EXPECT_FALSE(liop::File::Exist(Lstd(mDir.file("a/b/c/file.txt"))));
    ASSERT_EQ(0, ::chdir(mDir.path().c_str()));  // relative chains start at the current directory
    Directory::CreateAll("x\\y", 0);
    EXPECT_TRUE(IsDir(mDir.file("x/y")));
    // The chain is joined with "//", from "//" for an absolute path; it stops at the first
    // failure, here below a plain file.
    WriteFile(mDir.file("plain"), "p");
    std::string joined = "//";
    for (char c : mDir.path())
        joined += c == '/' ? std::string("//") : std::string(1, c);
    ExpectThrow<liop::IOException>(
        [&] { Directory::CreateAll(Lstd(mDir.path() + "/plain/sub/leaf"), 0); },
        ("Cannot create directory '" + joined + "//plain//sub'. (status = -1)").c_str());
}

TEST_F(DirectoryTest, FileIteratorYieldsEntriesByExtension) {
    FileIterator empty(Lstd(mDir.path()));
    EXPECT_EQ(Strings{}, Paths(empty));  // never "." or ".."
    for (char const* name : {"a.txt", "b.log", "c.TXT", "dtxt", "e.txt.bak"})
        WriteFile(mDir.file(name), name);
    ::mkdir(mDir.file("sub.txt").c_str(), 0777);
    std::string const base = mDir.path() + "//";
    FileIterator all(Lstd(mDir.path()));
    EXPECT_EQ((Strings{base + "a.txt", base + "b.log", base + "c.TXT", base + "dtxt",
                       base + "e.txt.bak", base + "sub.txt"}),
              Paths(all));
    FileIterator filtered(Lstd(mDir.path() + "/"));  // a final separator is kept as it is
    filtered.AppendFilteredFileExtension("txt");
    filtered.AppendFilteredFileExtension("log");
    std::string const slash = mDir.path() + "/";
    EXPECT_EQ((Strings{slash + "a.txt", slash + "b.log", slash + "sub.txt"}), Paths(filtered));
    filtered.Reset();  // no stream, no filter
    EXPECT_FALSE(++filtered);
    filtered.Init(Lstd(mDir.path()));
    EXPECT_EQ(6u, Paths(filtered).size());
    FileIterator missing(Lstd(mDir.file("none")));  // yields nothing, raises nothing
    EXPECT_FALSE(++missing);
}
