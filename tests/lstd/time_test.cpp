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
#include <vector>

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
    EXPECT_EQ((std::vector<int>{expected.tm_year + 1900, expected.tm_mon + 1, expected.tm_mday,
                                expected.tm_hour, expected.tm_min, expected.tm_sec}),
              (std::vector<int>{utc.GetYear(), utc.GetMonth(), utc.GetDay(), utc.GetHour(),
                                utc.GetMinute(), utc.GetSecond()}));
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
    EXPECT_TRUE(diff >= 2 && diff <= 3) << diff;
    EXPECT_EQ((std::vector<long long>{-diff, 0}),
              (std::vector<long long>{later.GetDiffTime(earlier), earlier.GetDiffTime(earlier)}));
}

// A new timer reads 0 and a running one the clock; Stop without Start reports the stop time.
TEST(Timer, ReadsZeroTheRunningClockOrTheStopTime) {
    using T = lstd::Timer;
    T const fresh;
    for (T::ElapsedTimeType u : {T::ELAPSED_SECOND, T::ELAPSED_MILLISECOND, T::ELAPSED_MICROSECOND})
        EXPECT_EQ(0u, fresh.GetElapsedTime(u));
    T running, unstarted;
    running.Start();
    unsigned long long const first = running.GetElapsedTime(T::ELAPSED_MICROSECOND);
    unsigned long long const before = lstd::System::GetTickCount();
    unstarted.Stop();
    unsigned long long const after = lstd::System::GetTickCount();
    unsigned long long const micro = unstarted.GetElapsedTime(T::ELAPSED_MICROSECOND);
    EXPECT_TRUE(before <= micro && micro <= after);
    Sleep(20);
    EXPECT_GE(running.GetElapsedTime(T::ELAPSED_MICROSECOND), first + 20000);
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
}  // namespace
