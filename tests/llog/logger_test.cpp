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
    // What the standard output receives while f runs.
    template <class F>
    static std::string Stdout(F const& f) {
        std::fflush(stdout);
        testing::internal::CaptureStdout();
        f();
        std::fflush(stdout);
        return testing::internal::GetCapturedStdout();
    }
    TempDir dir;
    std::string saved;
};

TEST_F(LoggerTest, RecordFormatsWithoutLineEnds) {
    {
        Logger const log("records.log");
        log.Error("disk full\n", 5);
        log.Warning("low", 0);
        log.Info(" ok ", 42);
        log.Info(7, "%s-%d", "x", 3);
        log.Error(8, "%s", "");
        log.Warning(9, "%05.1f|", 2.5);
        log.Debug("%d%% done;", 50);
        log.Print("[Info: %d] %s", 1, "as it stands");
        log.Info("wide", 0x100000005ULL);          // cut to 32 bits: 5
        log.Error(0xFFFFFFFFULL, "%s", "minus");  // and signed: -1
    }
    Logger::Terminate();
    EXPECT_EQ(ReadFile(dir.file("records.log")),
              "[Error: 5] disk full\n[Warn: 0] low[Info: 42]  ok [Info: 7] x-3[Error: 8] "
              "[Warn: 9] 002.5|50% done;[Info: 1] as it stands[Info: 5] wide[Error: -1] minus");
}

TEST_F(LoggerTest, AppendsToAnExistingLog) {
    std::FILE* old = std::fopen(dir.file("log.txt").c_str(), "w");
    std::fputs("old\n", old);
    std::fclose(old);
    Logger("").Info("new", 1);
    Logger::Terminate();
    EXPECT_EQ(ReadFile(dir.file("log.txt")), "old\n[Info: 1] new");
}

// The joined path is also the table key: a file fetched by that exact text is the Logger's.
TEST_F(LoggerTest, EmptyNameIsLogTxtJoinedWithTwoSlashes) {
    Logger const log("");
    log.Info("a", 1);
    liop::File* shared = Logger::GetOrOpenFile(liop::Directory::GetCurDir() + "//log.txt");
    shared->FPrint("|between|");
    log.Info("b", 2);
    EXPECT_EQ(Logger::GetOrOpenFile(liop::Directory::GetCurDir() + "//" + "log.txt"), shared);
    Logger::Terminate();
    EXPECT_EQ(ReadFile(dir.file("log.txt")), "[Info: 1] a|between|[Info: 2] b");
}

TEST_F(LoggerTest, OutputDirectoryAppliesToLoggersMadeAfterIt) {
    TempDir other;
    Logger const before("a.log");
    LogConfig::SetOutputDir(other.path().c_str());
    Logger const after("a.log");
    Logger const absolute(dir.file("abs.log").c_str());
    EXPECT_EQ(Logger::GetOrOpenFile((other.path() + "//a.log").c_str()),
              Logger::GetOrOpenFile((other.path() + "//" + "a.log").c_str()));
    before.Info("here", 1);
    after.Info("there", 2);
    absolute.Info("abs", 3);
    Logger::Terminate();
    EXPECT_EQ(LogConfig::GetGlobalConfig(), nullptr);  // Terminate releases it too
    EXPECT_EQ(ReadFile(dir.file("a.log")), "[Info: 1] here");
    EXPECT_EQ(ReadFile(other.file("a.log")), "[Info: 2] there");
    EXPECT_EQ(ReadFile(dir.file("abs.log")), "[Info: 3] abs");
}

TEST_F(LoggerTest, LoggersOfOnePathInterleaveInCallOrder) {
    Logger const first("shared.log");
    Logger const second(dir.file("shared.log").c_str());  // another spelling: another file
    Logger const third("shared.log");
    first.Info("1", 1);
    third.Warning("2", 2);
    first.Error("3", 3);
    third.Print("4");
    Logger::Terminate();
    EXPECT_EQ(ReadFile(dir.file("shared.log")), "[Info: 1] 1[Warn: 2] 2[Error: 3] 34");
}

TEST_F(LoggerTest, UnopenableFileFallsBackToStandardOutput) {
    std::string const path = dir.path() + "/missing//x.log";
    LogConfig::SetOutputDir((dir.path() + "/missing").c_str());
    std::string const out = Stdout([] {
        Logger const log("x.log");
        Logger const again("x.log");  // the same unopened file: no second error
        log.Error("e\n", 0x1FFFFFFFFULL);
        again.Warning(2, "%s|", "w");
        log.Info("i", 3);
        log.Debug("%d", 4);
    });
    EXPECT_EQ(out, "Cannot open file '" + path + "'.[Error: -1] e\n[Warn: 2] w|[Info: 3] i4");
}

TEST_F(LoggerTest, GlobalConfigurationLifecycle) {
    LogConfig::DestroyGlobalConfig();  // none: nothing happens
    EXPECT_EQ(LogConfig::GetGlobalConfig(), nullptr);
    LogConfig::SetOutputDir("first");
    LogConfig* config = LogConfig::GetGlobalConfig();
    ASSERT_NE(config, nullptr);
    LogConfig::SetOutputDir("second");
    EXPECT_EQ(LogConfig::GetGlobalConfig(), config);
    EXPECT_EQ(config->GetOutputDir(), "second");
    LogConfig::DestroyGlobalConfig();
    EXPECT_EQ(LogConfig::GetGlobalConfig(), nullptr);
    EXPECT_EQ(LogConfig("own").GetOutputDir(), "own");
}

TEST_F(LoggerTest, InitRegistersTerminateOnceAndTerminateMayRunTwice) {
    EXPECT_FALSE(lstd::System::ExistsExitHandler(Logger::Terminate));
    Logger::Init();
    EXPECT_TRUE(lstd::System::ExistsExitHandler(Logger::Terminate));
    Logger::Terminate();
    Logger::Terminate();
    Logger("again.log").Info("x", 1);  // a new table after Terminate
    Logger::Terminate();
    EXPECT_EQ(ReadFile(dir.file("again.log")), "[Info: 1] x");
}

// The records stay in the stream's buffer until the file is closed; the child ends with
// _exit, which flushes nothing, so only the exit handlers can have put them on the disk.
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
            if (!lstd::System::ExistsExitHandler(Logger::Terminate))
                status = 2;
        }
        if (lstd::System::ExistsExitHandler(Logger::Terminate))  // it ran, and only once
            status = 3;
        std::_Exit(status);
    }
    int status = 0;
    ASSERT_EQ(::waitpid(child, &status, 0), child);
    ASSERT_TRUE(WIFEXITED(status));
    EXPECT_EQ(WEXITSTATUS(status), 0);
    EXPECT_EQ(ReadFile(path), "[Info: 0] record 0\n[Info: 1] record 1\n[Info: 2] record 2\n");
}
}  // namespace
