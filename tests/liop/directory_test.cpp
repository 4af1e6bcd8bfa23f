// tests/liop/directory_test.cpp - Directory services and FileIterator on real directories.
#include <liop/directory.h>
#include <liop/file.h>
#include <liop/fileiterator.h>

#include <expect_throw.h>

#include <algorithm>
#include <string>
#include <vector>

namespace {
using liop::Directory;
using liop::FileIterator;
using lstd::String;

std::string Std(String const& s) { return std::string(s.GetStdChar(), s.GetLength()); }
String Lstd(std::string const& s) { return String(s.data(), s.size()); }

// Every path the iterator yields, sorted (the directory order is the file system's).
std::vector<std::string> Paths(FileIterator& it) {
    std::vector<std::string> paths;
    while (++it && paths.size() < 100)
        paths.push_back(Std(it.GetCurrentPath()));
    std::sort(paths.begin(), paths.end());
    return paths;
}

class DirectoryTest : public testing::Test {
protected:
    void SetUp() override { ASSERT_NE(nullptr, ::getcwd(mCwd, sizeof mCwd)); }
    void TearDown() override { EXPECT_EQ(0, ::chdir(mCwd)); }
    bool IsDir(std::string const& path) {
        struct stat status;
        return ::stat(path.c_str(), &status) == 0 && S_ISDIR(status.st_mode);
    }

    char mCwd[4096];
    TempDir mDir;
};
}  // namespace

TEST_F(DirectoryTest, PathTests) {
    EXPECT_EQ(std::string(mCwd), Std(Directory::GetCurDir()));
    EXPECT_TRUE(Directory::IsDirectory(Lstd(mDir.path())));
    std::ofstream(mDir.file("f.txt")) << "f";
    EXPECT_FALSE(Directory::IsDirectory(Lstd(mDir.file("f.txt"))));
    std::string const missing = mDir.file("none");
    ExpectThrow<liop::FileNotFoundException>(
        [&] { Directory::IsDirectory(Lstd(missing)); },
        ("The file/directory not found. (" + missing + ")").c_str());
    for (auto const& row : std::vector<std::pair<char const*, bool>>{{"/a", true},
                                                                     {" \t/a", true},
                                                                     {"\\a", false},
                                                                     {"a/b", false},
                                                                     {"", false},
                                                                     {"  ", false}}) {
        SCOPED_TRACE(row.first);
        EXPECT_EQ(row.second, Directory::IsAbsolutePath(row.first));
    }
}

TEST_F(DirectoryTest, NormalizePathJoinsPartsWithDoubleSlashes) {
    for (auto const& row :
         std::vector<std::pair<char const*, char const*>>{{"", ""},
                                                          {"a\\b\\c", "a//b//c"},
                                                          {"/a/b/", "//a//b//"},
                                                          {" / a //  b ", "//a//b"},
                                                          {"\\x\\", "//x//"},
                                                          {"/", "//"},
                                                          {"a", "a"}}) {
        SCOPED_TRACE(row.first);
        EXPECT_EQ(row.second, Std(Directory::NormalizePath(row.first)));
    }
}

TEST_F(DirectoryTest, CreateMakesOneDirectoryOrReportsItExists) {
    std::string const made = mDir.file("made");
    EXPECT_EQ(0, Directory::Create(Lstd(made)));
    EXPECT_TRUE(IsDir(made));
    EXPECT_EQ(1, Directory::Create(Lstd(made)));
    std::string const deep = mDir.file("no/such");
    ExpectThrow<liop::IOException>(
        [&] { Directory::Create(Lstd(deep)); },
        ("Cannot create directory '" + deep + "'. (status = -1)").c_str());
}

TEST_F(DirectoryTest, CreateAllMakesTheChainAndStopsAtTheFirstFailure) {
    Directory::CreateAll(Lstd(mDir.path() + "/a/ b \\c/file.txt"), 1);
    EXPECT_TRUE(IsDir(mDir.file("a/b/c")));
    EXPECT_FALSE(liop::File::Exist(Lstd(mDir.file("a/b/c/file.txt"))));
    Directory::CreateAll(Lstd(mDir.path() + "/a/b/c/d"), 0);
    EXPECT_TRUE(IsDir(mDir.file("a/b/c/d")));

    ASSERT_EQ(0, ::chdir(mDir.path().c_str()));  // relative chains start at the current directory
    Directory::CreateAll("x\\y", 0);
    EXPECT_TRUE(IsDir(mDir.file("x/y")));

    std::ofstream(mDir.file("plain")) << "p";
    std::string joined = "//";
    for (char const* part = mDir.path().c_str() + 1; *part != '\0'; ++part)
        joined += *part == '/' ? std::string("//") : std::string(1, *part);
    ExpectThrow<liop::IOException>(
        [&] { Directory::CreateAll(Lstd(mDir.path() + "/plain/sub/leaf"), 0); },
        ("Cannot create directory '//" + joined + "//plain//sub'. (status = -1)").c_str());
    EXPECT_FALSE(IsDir(mDir.file("plain/sub")));
}

TEST_F(DirectoryTest, FileIteratorYieldsEntriesByExtension) {
    FileIterator empty(Lstd(mDir.path()));
    EXPECT_EQ(std::vector<std::string>{}, Paths(empty));  // never "." or ".."

    for (char const* name : {"a.txt", "b.log", "c.TXT", "dtxt", "e.txt.bak"})
        std::ofstream(mDir.file(name)) << name;
    ::mkdir(mDir.file("sub.txt").c_str(), 0777);
    std::string const base = mDir.path() + "//";
    FileIterator all(Lstd(mDir.path()));
    EXPECT_EQ((std::vector<std::string>{base + "a.txt", base + "b.log", base + "c.TXT",
                                        base + "dtxt", base + "e.txt.bak", base + "sub.txt"}),
              Paths(all));

    FileIterator filtered(Lstd(mDir.path() + "/"));  // a final separator is kept as it is
    filtered.AppendFilteredFileExtension("txt");
    filtered.AppendFilteredFileExtension("log");
    std::string const slash = mDir.path() + "/";
    EXPECT_EQ((std::vector<std::string>{slash + "a.txt", slash + "b.log", slash + "sub.txt"}),
              Paths(filtered));

    filtered.Reset();  // no stream, no filter
    EXPECT_FALSE(++filtered);
    filtered.Init(Lstd(mDir.path()));
    EXPECT_EQ(6u, Paths(filtered).size());

    FileIterator missing(Lstd(mDir.file("none")));  // yields nothing, raises nothing
    EXPECT_FALSE(++missing);
}
