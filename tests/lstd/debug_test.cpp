// Debug: severity filtering and the redirection of standard output.
#include <lstd/debug.h>
#include <lstd/string.h>

#include <expect_throw.h>

#include <cstdio>
#include <cstdlib>
#include <string>

namespace {

class DebugTest : public testing::Test {
protected:
    void SetUp() override { lstd::Debug::SetDebugMode(lstd::Debug::MODE_INFO); }
    void TearDown() override { lstd::Debug::SetDebugMode(lstd::Debug::MODE_INFO); }
};

// The texts go out unchanged, a '%' in a String included, and without a newline.
TEST_F(DebugTest, ModeFiltersSeverities) {
    struct Row {
        lstd::Debug::DebugModeType mode;
        char const* printed;
    } const rows[] = {{lstd::Debug::MODE_INFO, "i%d\nweI1W2E3"},
                      {lstd::Debug::MODE_WARNING, "weW2E3"},
                      {lstd::Debug::MODE_ERROR, "eE3"},
                      {lstd::Debug::MODE_QUIET, ""},
                      {static_cast<lstd::Debug::DebugModeType>(7), ""}};
    for (Row const& row : rows) {
        SCOPED_TRACE(row.mode);
        lstd::Debug::SetDebugMode(row.mode);
        EXPECT_EQ(row.mode, lstd::Debug::GetDebugMode());
        std::fflush(stdout);
        testing::internal::CaptureStdout();
        lstd::Debug::Info(lstd::String("i%d\n"));
        lstd::Debug::Warning(lstd::String("w"));
        lstd::Debug::Error(lstd::String("e"));
        lstd::Debug::Info("I%d", 1);
        lstd::Debug::Warning("W%s", "2");
        lstd::Debug::Error("E%c", '3');
        std::fflush(stdout);
        EXPECT_EQ(row.printed, testing::internal::GetCapturedStdout());
    }
}

// Redirection replaces the process's standard output, so it runs in child processes.
TEST(DebugDeathTest, InitRedirectsStandardOutputIntoTheFile) {
    lkit_test::TempDir dir;
    std::string const first = dir.file("first.txt"), second = dir.file("second.txt");
    std::string const third = dir.file("third.txt");
    EXPECT_EXIT(
        {
            lstd::Debug::Init(lstd::String(first.c_str()));
            lstd::Debug::Info("to %s", "first");
            lstd::Debug::Init(lstd::String(second.c_str()));  // closes the first file
            lstd::Debug::Error(lstd::String("to second"));
            lstd::Debug::Terminate();
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EXIT(
        {
            lstd::Debug::Init(lstd::String(third.c_str()));
            lstd::Debug::Warning(lstd::String("kept"));
            lstd::Debug::Init(lstd::String());  // closes without reopening
            // Standard output is now closed; nothing more may be written or closed.
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ("to first", lkit_test::ReadFile(first));
    EXPECT_EQ("to second", lkit_test::ReadFile(second));
    EXPECT_EQ("kept", lkit_test::ReadFile(third));
}
}  // namespace
