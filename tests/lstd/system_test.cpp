// System: exit handlers, environment variables, clock and shell commands.
#include <expect_throw.h>
#include <lkit.h>

#include <cstdlib>
#include <ctime>
#include <string>
#include <vector>

namespace {
using lstd::System;
using Order = std::vector<int>;

Order order;
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
// Records whether it and Two are registered while it runs (6 for yes, 7 for no, each).
void SeesRegistrations() {
    order.push_back(System::ExistsExitHandler(SeesRegistrations) ? 6 : 7);
    order.push_back(System::ExistsExitHandler(Two) ? 6 : 7);
}

// The exit handlers are process-wide: each test starts and ends with none.
struct ExitHandlers : ::testing::Test {
    void SetUp() override {
        System::HandleExitEvent();
        order.clear();
    }
    void TearDown() override { System::HandleExitEvent(); }
};
}  // namespace

// They run in order, once, when a System object is destroyed; one that throws stops the pass
// and is gone.
TEST_F(ExitHandlers, RunInOrderOnceUntilOneThrows) {
    for (void (*f)() : {One, Two, One, AddsThree})
        System::AddExitHandler(f);
    EXPECT_TRUE(System::ExistsExitHandler(One) && !System::ExistsExitHandler(Three) &&
                order.empty());
    { System system; }  // a handler added while running runs in the same pass
    { System again; }
    EXPECT_EQ(order, (Order{1, 2, 1, 4, 3}));
    EXPECT_FALSE(System::ExistsExitHandler(One) || System::ExistsExitHandler(Three));
    order.clear();
    for (void (*f)() : {One, Fails, Two})
        System::AddExitHandler(f);
    ExpectThrow<lstd::InvalidOperationException>([] { System::HandleExitEvent(); },
                                                 "handler failed");
    EXPECT_EQ(order, (Order{1, 5}));
    EXPECT_TRUE(!System::ExistsExitHandler(Fails) && System::ExistsExitHandler(Two));
    System::HandleExitEvent();
    EXPECT_EQ(order, (Order{1, 5, 2}));
}

TEST_F(ExitHandlers, StayRegisteredWhileThePassRuns) {
    for (void (*f)() : {One, SeesRegistrations, Two})
        System::AddExitHandler(f);
    System::HandleExitEvent();
    EXPECT_EQ(order, (Order{1, 6, 6, 2}));
    EXPECT_FALSE(System::ExistsExitHandler(SeesRegistrations) || System::ExistsExitHandler(Two));
}

// putenv keeps the text, so a replaced variable would show as a leak: every run of the test
// (--gtest_repeat) uses fresh names.
TEST(System, EnvironmentVariables) {
    static int run = 0;
    std::string const p = "LKIT_SYSTEM_TEST_" + std::to_string(run++), q = p + "Q";
    lstd::String value("kept");
    EXPECT_TRUE(!System::GetEnvVariable("LKIT_SYSTEM_TEST_UNSET", value) && value == "kept");
    System::SetEnvVariable((p + "PLAIN").c_str(), "a b", 0);
    EXPECT_TRUE(System::GetEnvVariable((p + "PLAIN").c_str(), value) && value == "a b");
    System::SetEnvVariable(p.c_str(), "x", 1);
    EXPECT_STREQ(("x:${" + p + "}").c_str(), std::getenv(p.c_str()));
    System::SetEnvVariable(q.c_str(), "", 2);  // any non-zero flag appends
    EXPECT_STREQ((":${" + q + "}").c_str(), std::getenv(q.c_str()));
}

TEST(System, ClockValuesAndShellStatus) {
    EXPECT_TRUE(System::GetTickFrequency() == 1000000000.0 && System::GetCPUTickCount() == 0);
    std::time_t const before = std::time(nullptr);
    std::time_t const seconds = System::GetTickCount() / 1000000;  // microseconds
    EXPECT_LE(before, seconds);
    // time() reads a coarse clock that may still show the previous second.
    EXPECT_LE(seconds, std::time(nullptr) + 1);
    EXPECT_EQ(System::Run("exit 3"), 3 << 8);  // the wait status, unchanged
}
