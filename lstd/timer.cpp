// lstd/timer.cpp - elapsed wall-clock time.
#include <lstd/timer.h>

#include <lstd/system.h>

#include <cmath>

namespace lstd {

Timer::Timer()
    : mStartTick(0), mStopTick(0), mIsStopped(1), mTickFrequency(System::GetTickFrequency()) {}

Timer::~Timer() {}

// The clock in microseconds times ceil(10^6 / frequency). With the frequency of 10^9 that
// System reports the factor is 1: the pair is kept exactly so.
unsigned long long Timer::Ticks() const {
    auto const factor = static_cast<unsigned long long>(std::ceil(1000000.0 / mTickFrequency));
    return System::GetTickCount() * factor;
}

void Timer::Start() {
    mStartTick = Ticks();
    mIsStopped = 0;
}

void Timer::Stop() {
    mStopTick = Ticks();
    mIsStopped = 1;
}

unsigned long long Timer::GetElapsedTime(ElapsedTimeType const& unit) const {
    unsigned long long const elapsed = (mIsStopped == 1 ? mStopTick : Ticks()) - mStartTick;
    if (unit == ELAPSED_MILLISECOND)
        return elapsed / 1000;
    if (unit == ELAPSED_SECOND)
        return elapsed / 1000000;
    return elapsed;
}
}  // namespace lstd
