// lstd/date.cpp - the calendar date of one moment.
#include <lstd/date.h>

#include <ctime>

namespace lstd {

Date::Date(DateType type) : mTime(std::time(nullptr)), mTm(nullptr) {
    mTm = type == DATE_UTC ? std::gmtime(&mTime) : std::localtime(&mTime);
}

Date::~Date() {}

int Date::GetYear() const { return mTm->tm_year + 1900; }
int Date::GetMonth() const { return mTm->tm_mon + 1; }
int Date::GetDay() const { return mTm->tm_mday; }
int Date::GetWeekDay() const { return mTm->tm_wday; }
}  // namespace lstd
