// lstd/time.cpp - the calendar time of one moment.
#include <lstd/time.h>

#include <cmath>
#include <ctime>

namespace lstd {

Time::Time(TimeType type) : mTime(std::time(nullptr)), mTm(nullptr) {
    mTm = type == TimeType(2) ? std::gmtime(&mTime) : std::localtime(&mTime);
}

Time::~Time() {}

long long Time::GetDiffTime(Time const& other) const {
    return static_cast<long long>(std::ceil(std::difftime(other.mTime, mTime)));
}

int Time::GetYear() const { return mTm->tm_year + 1900; }
int Time::GetMonth() const { return mTm->tm_mon + 1; }
int Time::GetDay() const { return mTm->tm_mday; }
int Time::GetHour() const { return mTm->tm_hour; }
int Time::GetMinute() const { return mTm->tm_min; }
int Time::GetSecond() const { return mTm->tm_sec; }
}  // namespace lstd
