// The time header included before <ctime>: both names keep their meaning.
#include <lstd/time.h>

#include <ctime>

#include <gtest/gtest.h>

namespace {

static_assert(TIME_UTC == 1, "the C library's macro stays intact");
static_assert(lstd::Time::TIME_UNIVERSAL == 2, "");
#pragma push_macro("TIME_UTC")
#undef TIME_UTC
static_assert(lstd::Time::TIME_UTC == 2, "the enumerator keeps its name and value");
#pragma pop_macro("TIME_UTC")

TEST(Time, HeaderBeforeCtimeSelectsUniversalTime) {
    lstd::Time const utc(lstd::Time::TimeType(2));
    std::time_t const moment = utc.GetTime();
    EXPECT_EQ(std::gmtime(&moment)->tm_hour, utc.GetHour());
}
}  // namespace
