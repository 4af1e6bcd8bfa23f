// lstd/timer.h - elapsed wall-clock time.
#ifndef LSTD_TIMER_H
#define LSTD_TIMER_H

namespace lstd {

/// Measures elapsed time with System::GetTickCount (microseconds). The arithmetic is
/// unsigned on purpose: a Stop without a Start reports the stop time itself, and a clock
/// that goes back wraps around; callers rely on these results.
class Timer {
public:
    /// Unit of GetElapsedTime; any value other than 0 and 1 means microseconds.
    enum ElapsedTimeType : int {
        ELAPSED_SECOND = 0,
        ELAPSED_MILLISECOND = 1,
        ELAPSED_MICROSECOND = 2
    };

    /// Stopped, with start and stop 0: every unit reads 0.
    Timer();
    virtual ~Timer();

    /// Records the start tick and runs.
    void Start();
    /// Records the stop tick and stops.
    void Stop();
    /// Stop - start when stopped; now - start while running (the timer is not changed).
    /// Divided, truncating, into whole seconds, milliseconds or microseconds.
    unsigned long long GetElapsedTime(ElapsedTimeType const& unit) const;

private:
    unsigned long long Ticks() const;

    unsigned long long mStartTick;
    unsigned long long mStopTick;
    unsigned char mIsStopped;
    double mTickFrequency;
};
}  // namespace lstd
#endif  // LSTD_TIMER_H
