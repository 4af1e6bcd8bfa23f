// System: exit handlers, environment variables, clock and shell commands.
#include <expect_throw.h>
#include <gtest/gtest.h>
#include <lkit.h>

#include <chrono>
#include <cstdlib>
#include <string>
#include <vector>

namespace {
using lstd::String;
using lstd::System;

std::vector<int> order;
void One() { order.push_back(1); }
void Two() { order.push_back(2); }
void Three() { order.push_back(3); }
void AddsThree() {
    order.push_back(4);
    System::AddExitHandler(Three);
}
void Fails() {
    order.push_back(5);
    throw lstd::InvalidOperationException("handler failed", "here", 1);
}

// The exit handlers are process-wide: each test starts and ends with none.
struct ExitHandlers : ::testing::Test {
    void SetUp() override {
        System::HandleExitEvent();
        order.clear();
    }
    void TearDown() override { System::HandleExitEvent(); }
};

unsigned long long Now() {
    return std::chrono::duration_cast<std::chrono::microseconds>(
               std::chrono::system_clock::now().time_since_epoch())
        .count();
}
} // namespace

TEST_F(ExitHandlers, RunInOrderOnceWhenASystemObjectIsDestroyed) {
    System::AddExitHandler(One);
    System::AddExitHandler(Two);
    System::AddExitHandler(One);
    EXPECT_TRUE(System::ExistsExitHandler(One));
    EXPECT_FALSE(System::ExistsExitHandler(Three));
    EXPECT_TRUE(order.empty());
    { System system; }
    { System again; }
    EXPECT_EQ(order, (std::vector<int>{1, 2, 1}));
    EXPECT_FALSE(System::ExistsExitHandler(One));
}

TEST_F(ExitHandlers, HandlerAddedWhileRunningRunsInTheSamePass) {
    System::AddExitHandler(AddsThree);
    System::HandleExitEvent();
    EXPECT_EQ(order, (std::vector<int>{4, 3}));
    EXPECT_FALSE(System::ExistsExitHandler(Three));
}

TEST_F(ExitHandlers, ThrowingHandlerStopsThePassAndIsGone) {
    System::AddExitHandler(One);
    System::AddExitHandler(Fails);
    System::AddExitHandler(Two);
    ExpectThrow<lstd::InvalidOperationException>([] { System::HandleExitEvent(); },
                                                 "handler failed");
    EXPECT_EQ(order, (std::vector<int>{1, 5}));
    EXPECT_FALSE(System::ExistsExitHandler(Fails));
    EXPECT_TRUE(System::ExistsExitHandler(Two));
    System::HandleExitEvent();
    EXPECT_EQ(order, (std::vector<int>{1, 5, 2}));
}

// putenv keeps the text, which stays reachable while the variable holds it; a replaced one
// would show as a leak, so every run of the test (--gtest_repeat) uses fresh names.
TEST(System, EnvironmentVariables) {
    static int run = 0;
    std::string const n = std::to_string(run++);
    String const plain(("LKIT_SYSTEM_TEST_PLAIN" + n).c_str());
    std::string const p = "LKIT_SYSTEM_TEST_P" + n, q = "LKIT_SYSTEM_TEST_Q" + n;
    String value("kept");
    EXPECT_FALSE(System::GetEnvVariable("LKIT_SYSTEM_TEST_UNSET", value));
    EXPECT_EQ(value, "kept");
    System::SetEnvVariable(plain, "a b", 0);
    EXPECT_TRUE(System::GetEnvVariable(plain, value));
    EXPECT_EQ(value, "a b");
    System::SetEnvVariable(p.c_str(), "x", 1);
    EXPECT_EQ(std::string(std::getenv(p.c_str())), "x:${" + p + "}");
    System::SetEnvVariable(q.c_str(), "", 2); // any non-zero flag appends
    EXPECT_EQ(std::string(std::getenv(q.c_str())), ":${" + q + "}");
}

TEST(System, ClockValuesAndShellStatus) {
    EXPECT_EQ(System::GetTickFrequency(), 1000000000.0);
    EXPECT_EQ(System::GetCPUTickCount(), 0u);
    unsigned long long const before = Now(), ticks = System::GetTickCount();
    EXPECT_LE(before, ticks);
    EXPECT_LE(ticks, Now());
    TempDir dir;
    EXPECT_EQ(System::Run(("printf abc > " + dir.file("out")).c_str()), 0);
    EXPECT_EQ(ReadFile(dir.file("out")), "abc");
    EXPECT_EQ(System::Run("exit 3"), 3 << 8); // the wait status, unchanged
}
