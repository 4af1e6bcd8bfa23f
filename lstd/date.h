// lstd/date.h - the calendar date of one moment, local or universal.
#ifndef LSTD_DATE_H
#define LSTD_DATE_H

#include <sys/types.h>

struct tm;

namespace lstd {

/// The current date, captured once at construction. As with lstd::Time, the fields live in
/// the C library's one shared broken-down time: any later gmtime/localtime call in the
/// process (another Time or Date included) overwrites what this object shows.
class Date {
public:
    /// 2 selects universal time; every other value (1 is the usual one) local time.
    enum DateType : int { DATE_LOCAL = 1, DATE_UTC = 2 };

    /// Captures the current date, universal for DATE_UTC, else local.
    explicit Date(DateType type);
    virtual ~Date();

    /// The captured moment, in seconds since the epoch.
    time_t GetTime() const { return mTime; }
    /// The shared broken-down time (see the class comment); null if the conversion failed.
    struct tm* GetTm() const { return mTm; }
    ///@{
    /// Year (e.g. 2026), month 1..12, day of the month 1..31, day of the week 0..6 (Sunday
    /// 0), read from the shared broken-down time.
    int GetYear() const;
    int GetMonth() const;
    int GetDay() const;
    int GetWeekDay() const;
    ///@}

private:
    time_t mTime;
    struct tm* mTm;
};
}  // namespace lstd
#endif  // LSTD_DATE_H
