// tests/liop/file_test.cpp - liop::File: modes, line reads, writes, static helpers, Remove.
#include "liop_test.h"

#include <dirent.h>
#include <functional>

#if defined(__SANITIZE_ADDRESS__)
#define LKIT_TEST_LSAN 1
#elif defined(__has_feature)
#if __has_feature(address_sanitizer)
#define LKIT_TEST_LSAN 1
#endif
#endif
#if defined(LKIT_TEST_LSAN)
#include <sanitizer/lsan_interface.h>
#endif

namespace {
using liop::File;
using lstd::String;

int OpenDescriptors() {
    int count = 0;
    DIR* dir = ::opendir("/proc/self/fd");
    while (dir != nullptr && ::readdir(dir) != nullptr)
        ++count;
    ::closedir(dir);
    return count;
}

class FileTest : public testing::Test {
protected:
    // A file on name in the temporary directory, holding bytes, opened in mode.
    File& Open(std::string const& name, std::string const& bytes,
               File::OpenFileMode mode = File::OPEN_READ) {
        WriteFile(mDir.file(name), bytes);
        mFile.Open(Lstd(mDir.file(name)), mode, File::FILE_TEXT);
        return mFile;
    }

    TempDir mDir;
    File mFile;
};
}  // namespace

TEST_F(FileTest, OpenWriteCloseAndClosedFileErrors) {
    File file(Lstd(mDir.file("out.txt")), File::FILE_TEXT);
    EXPECT_EQ(File::OPEN_WRITE, file.Open(File::OPEN_WRITE));
    EXPECT_TRUE(file.IsOpened() && file.IsOpened(File::OPEN_WRITE));
    EXPECT_FALSE(file.IsOpened(File::OPEN_READ));
    EXPECT_EQ(1, file.Print("abc"));
    EXPECT_EQ(3, file.GetSize());  // the position: what was written so far
    EXPECT_EQ(0, file.Close());
    EXPECT_FALSE(file.IsOpened());
    EXPECT_EQ("abc", ReadFile(mDir.file("out.txt")));
    char bytes[4] = {};
    String text;
    std::function<void()> const calls[] = {
        [&] { file.Close(); },           [&] { file.IsEOF(); },
        [&] { file.Read(bytes, 1, 1); }, [&] { file.Write(bytes, 1, 1); },
        [&] { file.Read(text); },        [&] { file.Read(text, 10); },
        [&] { file.Read(bytes, 4); },    [&] { file.Print("x"); },
        [&] { file.FPrint("%d", 1); },   [&] { file.Println("x"); },
        [&] { file.FPrintln("x"); },     [&] { file.Flush(); },
        [&] { file.GetSize(); }};
    for (auto const& call : calls)
        ExpectThrow<lstd::InvalidOperationException>(call, "The file it not opened");
}

TEST_F(FileTest, OpenFailuresAndTheReadOnlyReadWriteMode) {
    std::string const path = mDir.file("missing/out.txt");
    ExpectThrow<liop::IOException>(
        [&] { mFile.Open(Lstd(path), File::OPEN_WRITE, File::FILE_BINARY); },
        ("Cannot open file '" + path + "'.").c_str());
    EXPECT_FALSE(mFile.IsOpened());
    // Mode 3 opens with "rw", which the C library reads as "r": nothing is created or written,
    // yet the file answers for writing.
    std::string const rw = mDir.file("rw.txt");
    ExpectThrow<liop::IOException>(
        [&] { mFile.Open(Lstd(rw), File::OPEN_READ_WRITE, File::FILE_TEXT); },
        ("Cannot open file '" + rw + "'.").c_str());
    WriteFile(rw, "line\n");
    EXPECT_EQ(3, mFile.Open(Lstd(rw), File::OPEN_READ_WRITE, File::FILE_TEXT));
    EXPECT_TRUE(mFile.IsOpened(File::OPEN_WRITE));
    EXPECT_EQ(EOF, mFile.Print("more"));
    EXPECT_EQ((Strings{"line\n", "", ""}), Lines(mFile));
    File append(Lstd(rw), File::FILE_BINARY);
    EXPECT_EQ(File::OPEN_APPEND, append.Open(File::OPEN_APPEND));
    append.Print("tail");
    append.Close();
    EXPECT_EQ("line\ntail", ReadFile(rw));
}

// The stream dropped by a second Open is a leak kept on purpose; it is made with the leak
// check switched off so that the sanitizer builds report only unintended leaks.
TEST_F(FileTest, OpenTwiceKeepsTheFirstStreamOpenAndReadsTheSecond) {
    WriteFile(mDir.file("b.txt"), "from b\n");
    int const before = OpenDescriptors();
    {
#if defined(LKIT_TEST_LSAN)
        __lsan::ScopedDisabler dropped;
#endif
        Open("a.txt", "from a\n");
    }
    mFile.Open(Lstd(mDir.file("b.txt")), File::OPEN_READ, File::FILE_TEXT);
    EXPECT_EQ((Strings{"from b\n", "", ""}), Lines(mFile));
    mFile.Close();
    EXPECT_EQ(before + 1, OpenDescriptors());  // the first stream is still open
}

TEST_F(FileTest, ReadLineKeepsLineEndsAndBytesAndEndsAfterTheLastLine) {
    std::string const head(1022, 'a');
    struct Row {
        std::string bytes;
        Strings lines;  // the last entry: the String after false
    } const rows[] = {
        {"a\r\nbb\n\nlast", {"a\r\n", "bb\n", "\n", "last", "last"}},
        {"x\n", {"x\n", "", ""}},  // a final line end gives one empty line
        {"", {"", ""}},
        {std::string("n\0ul\xff\xe9\rx\n", 9), {std::string("n\0ul\xff\xe9\rx\n", 9), "", ""}},
        // A piece of 1023 bytes ending in a carriage return ends the line.
        {head + "\r\n" + head + "\rbc\n" + "z", {head + "\r", "\n", head + "\r", "bc\n", "z", "z"}},
        {std::string(3000, 'q') + "\nend", {std::string(3000, 'q') + "\n", "end", "end"}},
    };
    for (Row const& row : rows) {
        Open("lines.txt", row.bytes);
        EXPECT_EQ(0, mFile.GetSize());
        EXPECT_EQ(row.lines, Lines(mFile)) << testing::PrintToString(row.bytes.substr(0, 40));
        EXPECT_TRUE(mFile.IsEOF());
        mFile.Close();
    }
}

TEST_F(FileTest, ChunkReadsStopAtLineEndsAndMaxLength) {
    std::string const line = std::string(2500, 'c') + "\n";
    Open("long.txt", line + "end");
    Strings chunks;
    for (String chunk; !mFile.IsEOF() && chunks.size() < 100 && mFile.Read(chunk, 1000);)
        chunks.push_back(Std(chunk));
    EXPECT_EQ((Strings{line.substr(0, 999), line.substr(999, 999), line.substr(1998), "end"}),
              chunks);
    String chunk("x");
    EXPECT_TRUE(mFile.Read(chunk, 1000));  // at end of file the chunk read is ""
    EXPECT_EQ("", Std(chunk));
    mFile.Close();
    Open("c.txt", "abcdef\ngh");
    char buffer[8] = "zzzzzzz";
    Strings pieces;
    for (int i = 0; i < 4 && mFile.Read(buffer, 4); ++i)
        pieces.push_back(buffer);
    EXPECT_EQ((Strings{"abc", "def", "\n", "gh"}), pieces);
    EXPECT_TRUE(mFile.Read(buffer, 4));
    EXPECT_STREQ("", buffer);
}

TEST_F(FileTest, BlockAndFormattedWritesReturnTheCResults) {
    File file(Lstd(mDir.file("w.bin")), File::FILE_BINARY);
    file.Open(File::OPEN_WRITE);
    char block[128] = {'1', '2', '\0', '3', '4', '5'};
    EXPECT_EQ(3, file.Write(block, 2, 3));
    EXPECT_EQ(4, file.FPrint("%d-%s", 42, "x"));
    EXPECT_EQ(10, file.FPrintln("<%c>", 'q'));
    EXPECT_EQ(3, file.Println("ab"));
    EXPECT_EQ(1, file.Print(String("n\0l", 3)));  // NUL bytes are written too
    EXPECT_EQ(0, file.Flush());
    EXPECT_EQ(20, file.GetSize());
    std::string const bytes("12\0"
                            "34542-x<q>\nab\nn\0l",
                            20);
    EXPECT_EQ(bytes, ReadFile(mDir.file("w.bin")));
    file.Close();
    file.Open(File::OPEN_READ);
    EXPECT_TRUE(file.Read(block, 1, 100));  // a short read is not reported
    EXPECT_EQ(bytes, std::string(block, 20));
}

TEST_F(FileTest, StreamsWhoseReadsFailEndReadLoops) {
    File dir(Lstd(mDir.path()), File::FILE_TEXT);
    dir.Open(File::OPEN_READ);  // a directory opens, but every read fails
    EXPECT_EQ((Strings{"untouched"}), Lines(dir));
    char buffer[4] = "abc";
    EXPECT_FALSE(dir.Read(buffer, 4));
    EXPECT_STREQ("", buffer);
    String chunk("x");
    EXPECT_FALSE(dir.Read(chunk, 4));
    EXPECT_EQ((Strings{"untouched"}), Lines(Open("w.txt", "", File::OPEN_WRITE)));
}

TEST_F(FileTest, StaticPathHelpers) {
    WriteFile(mDir.file("five.txt"), "12345");
    EXPECT_TRUE(File::Exist(Lstd(mDir.path())) && File::Exist(Lstd(mDir.file("five.txt"))));
    EXPECT_FALSE(File::Exist(Lstd(mDir.file("none"))));
    EXPECT_EQ(5, File::GetSize(Lstd(mDir.file("five.txt"))));
    EXPECT_EQ(0, File::GetSize(Lstd(mDir.file("none"))) + File::GetSize(""));
    ::mkdir(mDir.file("sub").c_str(), 0777);
    char* real = ::realpath(mDir.path().c_str(), nullptr);
    EXPECT_EQ(std::string(real) + "/five.txt",
              Std(File::GetRealPath(Lstd(mDir.path() + "/sub/..//five.txt"))));
    std::free(real);
    std::string const missing = mDir.file("none");
    ExpectThrow<lstd::UnknownException>(
        [&] { File::GetRealPath(Lstd(missing)); },
        ("Cannot get real path. (" + missing + ", errno=2)").c_str());
    EXPECT_EQ("//a//b", Std(File::NormalizePath("\\a\\b")));
}

TEST_F(FileTest, StandardStreamsAreAttachedOnce) {
    File& out = File::GetStdout();
    EXPECT_TRUE(&out == &File::GetStdout() && out.IsOpened(File::OPEN_WRITE));
    fflush(stdout);
    testing::internal::CaptureStdout();
    out.FPrint("%s=%d", "n", 7);
    out.Flush();
    EXPECT_EQ("n=7", testing::internal::GetCapturedStdout());
    File& in = File::GetStdin();
    EXPECT_TRUE(&in == &File::GetStdin() && in.IsOpened(File::OPEN_READ));
    EXPECT_FALSE(in.IsOpened(File::OPEN_WRITE));
}

TEST_F(FileTest, RemoveDeletesTreesAndTakesLinksAsLinks) {
    File::Remove(Lstd(mDir.file("none")));  // nothing to do, no error
    std::string const outside = mDir.file("outside");
    std::string const tree = mDir.file("tree");
    for (std::string const& dir : {outside, tree, tree + "/a", tree + "/a/b"})
        ::mkdir(dir.c_str(), 0777);
    WriteFile(outside + "/keep.txt", "keep");
    WriteFile(mDir.file("target.txt"), "target");
    WriteFile(tree + "/a/b/g.txt", "g");
    std::string const links[][2] = {{outside, tree + "/dirlink"},
                                    {mDir.file("target.txt"), tree + "/filelink"},
                                    {mDir.file("gone"), tree + "/dangling"},
                                    {outside, mDir.file("toplink")},
                                    {mDir.file("target.txt"), mDir.file("topfile")}};
    for (auto const& link : links)
        ASSERT_EQ(0, ::symlink(link[0].c_str(), link[1].c_str()));
    for (char const* name : {"tree", "toplink", "topfile"})
        File::Remove(Lstd(mDir.file(name)));
    struct stat status;
    for (char const* name : {"tree", "toplink", "topfile"})
        EXPECT_NE(0, ::lstat(mDir.file(name).c_str(), &status)) << name;
    EXPECT_EQ("keep", ReadFile(outside + "/keep.txt"));
    EXPECT_EQ("target", ReadFile(mDir.file("target.txt")));
}
