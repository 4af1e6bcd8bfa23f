// tests/liop/stringbuffer_test.cpp - StringReadBuffer and StringWriteBuffer over real files.
#include <liop/file.h>
#include <liop/stringreadbuffer.h>
#include <liop/stringwritebuffer.h>

#include <expect_throw.h>

#include <string>
#include <vector>

namespace {
using liop::File;
using lstd::String;

std::string Std(String const& s) { return std::string(s.GetStdChar(), s.GetLength()); }

// A file that records what reaches Print instead of writing it.
class PrintRecorder : public File {
public:
    using File::Print;
    int Print(String const& text) override {
        mPrinted.push_back(Std(text));
        return 1;
    }
    std::vector<std::string> mPrinted;
};

class StringBufferTest : public testing::Test {
protected:
    // Opens path with content in mode; the file stays open for the test.
    File& Open(std::string const& content, File::OpenFileMode mode) {
        std::ofstream(mDir.file("in.txt"), std::ios::binary) << content;
        mFile.Open(String(mDir.file("in.txt").c_str()), mode, File::FILE_TEXT);
        return mFile;
    }
    // Every chunk a read buffer of size delivers, then what the buffer holds after false.
    std::vector<std::string> Chunks(unsigned long size) {
        liop::StringReadBuffer buffer(mFile, size);
        std::vector<std::string> chunks;
        for (bool more = buffer.Load(); more && chunks.size() < 100;
             more = buffer.ContinueReading())
            chunks.push_back(Std(buffer.GetBuffer()));
        chunks.push_back(Std(buffer.GetBuffer()));
        return chunks;
    }

    TempDir mDir;
    File mFile;
};
}  // namespace

TEST_F(StringBufferTest, ReadBufferDeliversLineChunks) {
    Open("hello world\n" + std::string(10, 'x') + "\nend", File::OPEN_READ);
    EXPECT_EQ((std::vector<std::string>{"hello w", "orld\n", "xxxxxxx", "xxx\n", "end", ""}),
              Chunks(8));
    Open("", File::OPEN_READ);  // an empty file: Load reads "" and succeeds
    EXPECT_EQ((std::vector<std::string>{"", ""}), Chunks(255));
    Open("a\nb\n", File::OPEN_READ_WRITE);  // mode 3 has the read bit
    EXPECT_EQ((std::vector<std::string>{"a\n", "b\n", "", ""}), Chunks(255));
    liop::StringReadBuffer buffer(mFile, 255);
    EXPECT_EQ(255u, buffer.GetBufferSize());
}

TEST_F(StringBufferTest, LoadNeedsAFileOpenForReading) {
    char const* message = "File is not opened or open mode is invalid";
    liop::StringReadBuffer buffer(mFile, 16);
    ExpectThrow<liop::IOException>([&] { buffer.Load(); }, message);
    Open("x", File::OPEN_WRITE);
    ExpectThrow<liop::IOException>([&] { buffer.Load(); }, message);
}

// The closed file's exception is not among those the reads declare: the process ends.
TEST(StringBufferDeathTest, ContinueReadingOnAClosedFileEndsTheProcess) {
    testing::FLAGS_gtest_death_test_style = "threadsafe";
    File closed;
    liop::StringReadBuffer buffer(closed, 16);
    EXPECT_DEATH(buffer.ContinueReading(), "");
}

TEST(StringWriteBuffer, HandsOnWholeTextsOnceTheThresholdIsReached) {
    PrintRecorder file;
    {
        liop::StringWriteBuffer buffer(file, 5);
        buffer.Write("abcd");  // one byte short: kept
        EXPECT_TRUE(file.mPrinted.empty());
        buffer.Write("e");  // exactly the threshold: handed on at once
        buffer.Write("fghijkl");
        buffer.FPrint("%d:%s", 12, "z");
        buffer.FPrint("%s", "!!");  // pending "12:z" + "!!" crosses the threshold
        buffer.Write("tail");
        EXPECT_EQ((std::vector<std::string>{"abcde", "fghijkl", "12:z!!"}), file.mPrinted);
        EXPECT_EQ("tail", Std(buffer.GetBuffer()));
    }
    EXPECT_EQ("tail", file.mPrinted.back());  // the rest goes when the buffer is destroyed
    for (unsigned long size : {0ul, 1ul}) {
        PrintRecorder each;
        liop::StringWriteBuffer buffer(each, size);
        buffer.Write("a");
        buffer.Write("bc");
        EXPECT_EQ((std::vector<std::string>{"a", "bc"}), each.mPrinted);
    }
    PrintRecorder untouched;
    { liop::StringWriteBuffer idle(untouched, 8); }
    EXPECT_TRUE(untouched.mPrinted.empty());
}

TEST_F(StringBufferTest, WriteBufferReachesTheDiskAndPassesPrintErrorsOn) {
    mFile.Open(String(mDir.file("out.txt").c_str()), File::OPEN_WRITE, File::FILE_TEXT);
    {
        liop::StringWriteBuffer buffer(mFile, 255);
        buffer.Write("<a>");
        buffer.FPrint("%s=%d", "k", 1);
    }
    mFile.Close();
    EXPECT_EQ("<a>k=1", ReadFile(mDir.file("out.txt")));
    liop::StringWriteBuffer buffer(mFile, 2);
    ExpectThrow<lstd::InvalidOperationException>([&] { buffer.Write("abc"); },
                                                 "The file it not opened");
    buffer.GetBuffer().Clear();  // nothing pending: the destructor makes no call
}
