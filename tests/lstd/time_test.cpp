// Time, Date and Timer: captured calendar fields, whole-second differences and the timer's
// unsigned arithmetic. Timings are asserted as ranges only.
#include <ctime>  // before lstd/time.h; time_order_test.cpp includes it after

#include <lstd/date.h>
#include <lstd/system.h>
#include <lstd/time.h>
#include <lstd/timer.h>

#include <gtest/gtest.h>

#include <chrono>
#include <thread>

namespace {

static_assert(TIME_UTC == 1, "the C library's macro stays intact");
static_assert(lstd::Time::TIME_UNIVERSAL == 2 && lstd::Time::TIME_LOCAL == 1, "");
#pragma push_macro("TIME_UTC")
#undef TIME_UTC
static_assert(lstd::Time::TIME_UTC == 2, "the enumerator keeps its name and value");
#pragma pop_macro("TIME_UTC")
static_assert(lstd::Date::DATE_LOCAL == 1 && lstd::Date::DATE_UTC == 2, "");

void Sleep(int milliseconds) {
    std::this_thread::sleep_for(std::chrono::milliseconds(milliseconds));
}

TEST(Time, FieldsComeFromTheSharedBrokenDownTime) {
    lstd::Time const utc(lstd::Time::TIME_UNIVERSAL);
    std::time_t const moment = utc.GetTime();
    std::tm const expected = *std::gmtime(&moment);
    EXPECT_EQ(expected.tm_year + 1900, utc.GetYear());
    EXPECT_EQ(expected.tm_mon + 1, utc.GetMonth());
    EXPECT_EQ(expected.tm_mday, utc.GetDay());
    EXPECT_EQ(expected.tm_hour, utc.GetHour());
    EXPECT_EQ(expected.tm_min, utc.GetMinute());
    EXPECT_EQ(expected.tm_sec, utc.GetSecond());
    // Deliberate sharing: a later conversion shows through the first object.
    std::time_t const epoch = 0;
    std::gmtime(&epoch);
    EXPECT_EQ(1970, utc.GetYear());
    lstd::Date const date(lstd::Date::DATE_UTC);
    EXPECT_EQ(utc.GetTm(), date.GetTm());
    EXPECT_EQ(expected.tm_mday, date.GetDay());
    lstd::Time const local(lstd::Time::TIME_LOCAL);
    std::time_t const now = local.GetTime();
    EXPECT_EQ(std::localtime(&now)->tm_hour, local.GetHour());
}

TEST(Time, DiffTimeCountsWholeSecondsTowardsTheOther) {
    lstd::Time const earlier(lstd::Time::TIME_LOCAL);
    Sleep(2100);
    lstd::Time const later(lstd::Time::TIME_LOCAL);
    long long const diff = earlier.GetDiffTime(later);
    EXPECT_GE(diff, 2);
    EXPECT_LE(diff, 3);
    EXPECT_EQ(-diff, later.GetDiffTime(earlier));
    EXPECT_EQ(0, earlier.GetDiffTime(earlier));
}

TEST(Timer, NewTimerReadsZeroInEveryUnit) {
    lstd::Timer const timer;
    EXPECT_EQ(0u, timer.GetElapsedTime(lstd::Timer::ELAPSED_SECOND));
    EXPECT_EQ(0u, timer.GetElapsedTime(lstd::Timer::ELAPSED_MILLISECOND));
    EXPECT_EQ(0u, timer.GetElapsedTime(lstd::Timer::ELAPSED_MICROSECOND));
}

TEST(Timer, StoppedTimerKeepsItsReading) {
    lstd::Timer timer;
    timer.Start();
    Sleep(1500);
    timer.Stop();
    unsigned long long const micro = timer.GetElapsedTime(lstd::Timer::ELAPSED_MICROSECOND);
    EXPECT_GE(micro, 1500000u);
    EXPECT_LT(micro, 10000000u);
    EXPECT_EQ(micro / 1000, timer.GetElapsedTime(lstd::Timer::ELAPSED_MILLISECOND));
    EXPECT_EQ(micro / 1000000, timer.GetElapsedTime(lstd::Timer::ELAPSED_SECOND));
    EXPECT_EQ(micro, timer.GetElapsedTime(static_cast<lstd::Timer::ElapsedTimeType>(9)));
    Sleep(20);
    EXPECT_EQ(micro, timer.GetElapsedTime(lstd::Timer::ELAPSED_MICROSECOND));
}

TEST(Timer, RunningTimerReadsTheClock) {
    lstd::Timer timer;
    timer.Start();
    unsigned long long const first = timer.GetElapsedTime(lstd::Timer::ELAPSED_MICROSECOND);
    Sleep(20);
    EXPECT_GE(timer.GetElapsedTime(lstd::Timer::ELAPSED_MICROSECOND), first + 20000);
}

TEST(Timer, StopWithoutStartReportsTheStopTime) {
    unsigned long long const before = lstd::System::GetTickCount();
    lstd::Timer timer;
    timer.Stop();
    unsigned long long const after = lstd::System::GetTickCount();
    unsigned long long const micro = timer.GetElapsedTime(lstd::Timer::ELAPSED_MICROSECOND);
    EXPECT_GE(micro, before);
    EXPECT_LE(micro, after);
}
}  // namespace
