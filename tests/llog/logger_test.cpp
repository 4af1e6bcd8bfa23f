// Logger and LogConfig: record texts byte for byte, path resolution, shared files, the
// standard-output fallback and closing at exit.
#include <expect_throw.h>
#include <lkit.h>

#include <cstdio>
#include <string>

#include <sys/wait.h>
#include <unistd.h>

namespace {
using llog::LogConfig;
using llog::Logger;

// The file table, the global configuration, the exit handlers and the current directory
// are process-wide: each test starts and ends without them, inside a fresh directory.
struct LoggerTest : ::testing::Test {
    void SetUp() override {
        Reset();
        char* cwd = ::getcwd(nullptr, 0);
        saved = cwd;
        std::free(cwd);
        ASSERT_EQ(::chdir(dir.path().c_str()), 0);
    }
    void TearDown() override {
        Reset();
        EXPECT_EQ(::chdir(saved.c_str()), 0);
    }
    static void Reset() {
        Logger::Terminate();
        lstd::System::HandleExitEvent();
    }
    TempDir dir;
    std::string saved;
};

TEST_F(LoggerTest, RecordsAreAppendedAsFormattedWithoutLineEnds) {
    std::FILE* old = std::fopen(dir.file("records.log").c_str(), "w");
    std::fputs("old\n", old);
    std::fclose(old);
    Logger const log("records.log");
    log.Error("disk full\n", 5);
    log.Warning("low", 0);
    log.Info(" ok ", 42);
    log.Info(7, "%s-%d", "x", 3);
    log.Warning(9, "%05.1f|", 2.5);
    log.Debug("%d%% done;", 50);
    log.Print("[Info: %d] %s", 1, "as it stands");
    log.Info("wide", 0x100000005ULL);          // cut to 32 bits: 5
    log.Error(0xFFFFFFFFULL, "%s", "minus");  // and signed: -1
    Logger::Terminate();
    EXPECT_EQ(ReadFile(dir.file("records.log")),
              "old\n[Error: 5] disk full\n[Warn: 0] low[Info: 42]  ok [Info: 7] x-3[Warn: 9] "
              "002.5|50% done;[Info: 1] as it stands[Info: 5] wide[Error: -1] minus");
}

// The joined path is also the table key: only the exact text finds a Logger's file.
TEST_F(LoggerTest, PathsAreJoinedWithTwoSlashesAndFilesShared) {
    TempDir other;
    LogConfig::DestroyGlobalConfig();  // none: nothing happens
    Logger const unnamed("");
    Logger const before("a.log");
    LogConfig::SetOutputDir("first");
    LogConfig* config = LogConfig::GetGlobalConfig();
    LogConfig::SetOutputDir(other.path().c_str());  // only for Loggers made after it
    EXPECT_EQ(LogConfig::GetGlobalConfig(), config);
    Logger const after("a.log");
    Logger const again("a.log");
    Logger const absolute(dir.file("b.log").c_str());
    liop::File* shared = Logger::GetOrOpenFile(liop::Directory::GetCurDir() + "//log.txt");
    unnamed.Info("1", 1);
    shared->FPrint("|2|");
    unnamed.Info("3", 3);
    after.Info("4", 4);
    again.Warning("5", 5);
    after.Print("6");
    before.Error("7", 7);
    absolute.Error("8", 8);
    EXPECT_NE(Logger::GetOrOpenFile(dir.file("a.log").c_str()),  // another spelling
              Logger::GetOrOpenFile(liop::Directory::GetCurDir() + "//a.log"));
    Logger::Terminate();
    Logger::Terminate();                                // harmless
    EXPECT_EQ(LogConfig::GetGlobalConfig(), nullptr);  // Terminate releases it too
    EXPECT_EQ(ReadFile(dir.file("log.txt")), "[Info: 1] 1|2|[Info: 3] 3");
    EXPECT_EQ(ReadFile(other.file("a.log")), "[Info: 4] 4[Warn: 5] 56");
    EXPECT_EQ(ReadFile(dir.file("a.log")), "[Error: 7] 7");
    EXPECT_EQ(ReadFile(dir.file("b.log")), "[Error: 8] 8");
}

TEST_F(LoggerTest, UnopenableFileFallsBackToStandardOutput) {
    LogConfig::SetOutputDir((dir.path() + "/missing").c_str());
    std::fflush(stdout);
    testing::internal::CaptureStdout();
    {
        Logger const log("x.log");
        Logger const again("x.log");  // the same unopened file: no second error
        log.Error("e\n", 0x1FFFFFFFFULL);
        again.Warning(2, "%s|", "w");
        log.Info("i", 3);
        log.Debug("%d", 4);
    }
    std::fflush(stdout);
    EXPECT_EQ(testing::internal::GetCapturedStdout(),
              "Cannot open file '" + dir.path() + "/missing//x.log'.[Error: -1] e\n[Warn: 2] w|"
              "[Info: 3] i4");
}

// The records stay in the stream's buffer until the file is closed; the child ends with
// _Exit, which flushes nothing, so only the exit handlers can have put them on the disk.
TEST_F(LoggerTest, ExitHandlersCloseTheFilesWhenSystemIsDestroyed) {
    std::string const path = dir.file("exit.log");
    std::fflush(nullptr);
    pid_t const child = ::fork();
    ASSERT_NE(child, -1);
    if (child == 0) {
        int status = 0;
        {
            lstd::System system;
            Logger const log(path.c_str());
            for (int i = 0; i < 3; ++i)
                log.Info(i, "record %d\n", i);
            status = lstd::System::ExistsExitHandler(Logger::Terminate) ? 0 : 2;
        }
        std::_Exit(lstd::System::ExistsExitHandler(Logger::Terminate) ? 3 : status);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    EXPECT_TRUE(WIFEXITED(status) && WEXITSTATUS(status) == 0) << status;
    EXPECT_EQ(ReadFile(path), "[Info: 0] record 0\n[Info: 1] record 1\n[Info: 2] record 2\n");
}
}  // namespace
