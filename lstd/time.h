// lstd/time.h - the calendar time of one moment, local or universal.
#ifndef LSTD_TIME_H
#define LSTD_TIME_H

#include <sys/types.h>

struct tm;

namespace lstd {

/// The current time, captured once at construction, with its broken-down fields.
///
/// The fields live in the C library's one shared buffer (what gmtime/localtime return):
/// any later gmtime/localtime call in the process, including building another Time or
/// Date, overwrites what this object shows. Copy the fields at once if they must last.
///
/// TIME_UTC is also a macro of the C headers ctime and time.h (value 1). This header leaves
/// that macro as it is, whatever the include order; where it is in scope, name the universal
/// value lstd::Time::TIME_UNIVERSAL (same value 2) or lstd::Time::TimeType(2).
class Time {
public:
#pragma push_macro("TIME_UTC")
#undef TIME_UTC
    /// 2 selects universal time; every other value (1 is the usual one) local time.
    enum TimeType : int { TIME_LOCAL = 1, TIME_UTC = 2, TIME_UNIVERSAL = 2 };
#pragma pop_macro("TIME_UTC")

    /// Captures the current time, universal for TIME_UTC (2), else local.
    explicit Time(TimeType type);
    virtual ~Time();

    /// Whole seconds from this moment to other, rounded up; negative when other is earlier.
    long long GetDiffTime(Time const& other) const;

    /// The captured moment, in seconds since the epoch.
    time_t GetTime() const { return mTime; }
    /// The shared broken-down time (see the class comment); null if the conversion failed.
    struct tm* GetTm() const { return mTm; }
    ///@{
    /// Calendar fields read from the shared broken-down time (see the class comment):
    /// year (e.g. 2026), month 1..12, day 1..31, hour 0..23, minute 0..59, second 0..60.
    int GetYear() const;
    int GetMonth() const;
    int GetDay() const;
    int GetHour() const;
    int GetMinute() const;
    int GetSecond() const;
    ///@}

private:
    time_t mTime;
    struct tm* mTm;
};
}  // namespace lstd
#endif  // LSTD_TIME_H
