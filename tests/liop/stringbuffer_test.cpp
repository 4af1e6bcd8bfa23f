// tests/liop/stringbuffer_test.cpp - StringReadBuffer and StringWriteBuffer over real files.
#include "liop_test.h"

#include <liop/stringreadbuffer.h>
#include <liop/stringwritebuffer.h>

namespace {
using liop::File;
using lstd::String;

// A file that records what reaches Print instead of writing it.
class PrintRecorder : public File {
public:
    using File::Print;
    int Print(String const& text) override {
        mPrinted.push_back(Std(text));
        return 1;
    }
    Strings mPrinted;
};

class StringBufferTest : public testing::Test {
protected:
    // Every chunk a read buffer of size delivers from content opened in mode, then what the
    // buffer holds after false.
    Strings Chunks(std::string const& content, unsigned long size,
                   File::OpenFileMode mode = File::OPEN_READ) {
        WriteFile(mDir.file("in.txt"), content);
        File file(Lstd(mDir.file("in.txt")), File::FILE_TEXT);
        file.Open(mode);
        liop::StringReadBuffer buffer(file, size);
        Strings chunks;
        for (bool more = buffer.Load(); more && chunks.size() < 100;
             more = buffer.ContinueReading())
            chunks.push_back(Std(buffer.GetBuffer()));
        chunks.push_back(Std(buffer.GetBuffer()));
        return chunks;
    }

    TempDir mDir;
};
}  // namespace

TEST_F(StringBufferTest, ReadBufferDeliversLineChunks) {
    EXPECT_EQ((Strings{"hello w", "orld\n", "xxxxxxx", "xxx\n", "end", ""}),
              Chunks("hello world\n" + std::string(10, 'x') + "\nend", 8));
    EXPECT_EQ((Strings{"", ""}), Chunks("", 255));  // an empty file loads ""
    EXPECT_EQ((Strings{"a\n", "b\n", "", ""}), Chunks("a\nb\n", 255, File::OPEN_READ_WRITE));
    File closed;
    liop::StringReadBuffer buffer(closed, 16);
    char const* message = "File is not opened or open mode is invalid";
    ExpectThrow<liop::IOException>([&] { buffer.Load(); }, message);
    closed.Open(Lstd(mDir.file("out.txt")), File::OPEN_WRITE, File::FILE_TEXT);
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
        EXPECT_EQ((Strings{"abcde", "fghijkl", "12:z!!"}), file.mPrinted);
    }
    EXPECT_EQ("tail", file.mPrinted.back());  // the rest goes when the buffer is destroyed
    for (unsigned long size : {0ul, 1ul}) {
        PrintRecorder each;
        liop::StringWriteBuffer buffer(each, size);
        buffer.Write("a");
        buffer.Write("bc");
        EXPECT_EQ((Strings{"a", "bc"}), each.mPrinted);
    }
    PrintRecorder untouched;
    { liop::StringWriteBuffer idle(untouched, 8); }
    EXPECT_TRUE(untouched.mPrinted.empty());
}

TEST_F(StringBufferTest, WriteBufferReachesTheDiskAndPassesPrintErrorsOn) {
    File file(Lstd(mDir.file("out.txt")), File::FILE_TEXT);
    file.Open(File::OPEN_WRITE);
    {
        liop::StringWriteBuffer buffer(file, 255);
        buffer.Write("<a>");
        buffer.FPrint("%s=%d", "k", 1);
    }
    file.Close();
    EXPECT_EQ("<a>k=1", ReadFile(mDir.file("out.txt")));
    liop::StringWriteBuffer buffer(file, 2);
    ExpectThrow<lstd::InvalidOperationException>([&] { buffer.Write("abc"); },
                                                 "The file it not opened");
    buffer.GetBuffer().Clear();  // nothing pending: the destructor makes no call
}
