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

    static std::string PrintAll() {
        std::fflush(stdout);
        testing::internal::CaptureStdout();
        lstd::Debug::Info(lstd::String("i"));
        lstd::Debug::Warning(lstd::String("w"));
        lstd::Debug::Error(lstd::String("e"));
        lstd::Debug::Info("I%d", 1);
        lstd::Debug::Warning("W%s", "2");
        lstd::Debug::Error("E%c", '3');
        std::fflush(stdout);
        return testing::internal::GetCapturedStdout();
    }
};

TEST_F(DebugTest, ModeFiltersSeverities) {
    struct Row {
        lstd::Debug::DebugModeType mode;
        char const* printed;
    } const rows[] = {{lstd::Debug::MODE_INFO, "iweI1W2E3"},
                      {lstd::Debug::MODE_WARNING, "weW2E3"},
                      {lstd::Debug::MODE_ERROR, "eE3"},
                      {lstd::Debug::MODE_QUIET, ""},
                      {static_cast<lstd::Debug::DebugModeType>(7), ""}};
    for (Row const& row : rows) {
        SCOPED_TRACE(row.mode);
        lstd::Debug::SetDebugMode(row.mode);
        EXPECT_EQ(row.mode, lstd::Debug::GetDebugMode());
        EXPECT_EQ(row.printed, PrintAll());
    }
}

TEST_F(DebugTest, TextIsWrittenUnchangedWithoutNewline) {
    std::fflush(stdout);
    testing::internal::CaptureStdout();
    lstd::Debug::Info(lstd::String("100%d\n"));
    lstd::Debug::Info(lstd::String("x"));
    std::fflush(stdout);
    EXPECT_EQ("100%d\nx", testing::internal::GetCapturedStdout());
}

// Redirection replaces the process's standard output, so it runs in a child process.
TEST(DebugDeathTest, InitRedirectsStandardOutputIntoTheFile) {
    lkit_test::TempDir dir;
    std::string const first = dir.path() + "/first.txt";
    std::string const second = dir.path() + "/second.txt";
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
    EXPECT_EQ("to first", lkit_test::ReadFile(first));
    EXPECT_EQ("to second", lkit_test::ReadFile(second));
}

TEST(DebugDeathTest, InitWithEmptyPathClosesWithoutReopening) {
    lkit_test::TempDir dir;
    std::string const path = dir.path() + "/out.txt";
    EXPECT_EXIT(
        {
            lstd::Debug::Init(lstd::String(path.c_str()));
            lstd::Debug::Warning(lstd::String("kept"));
            lstd::Debug::Init(lstd::String());
            // Standard output is now closed; nothing more may be written or closed.
            std::_Exit(0);
        },
        testing::ExitedWithCode(0), "");
    EXPECT_EQ("kept", lkit_test::ReadFile(path));
}
}  // namespace
