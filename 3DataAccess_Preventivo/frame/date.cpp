#include "frame/date.h"

#include "frame/raised_error.h"

#include <array>
#include <cmath>

namespace Zontara {

namespace {

constexpr std::int64_t kSecondsPerDay = 86400;
/// Days from 1899-12-30 to 1970-01-01.
constexpr std::int64_t kEpoch = 25569;
constexpr std::int32_t kFirstYear = 100;
constexpr std::int32_t kLastYear = 9999;

/// Days from 1899-12-30 to a day of the proleptic Gregorian calendar. The year is counted from March, so that the leap
/// day is its last, in eras of 400 years, which all have the same number of days.
constexpr std::int64_t SerialOf(std::int64_t year, std::int64_t month, std::int64_t day) {
    const std::int64_t y = month <= 2 ? year - 1 : year;
    const std::int64_t era = (y >= 0 ? y : y - 399) / 400;
    const std::int64_t yearOfEra = y - era * 400;
    const std::int64_t dayOfYear = (153 * (month > 2 ? month - 3 : month + 9) + 2) / 5 + day - 1;
    const std::int64_t dayOfEra = yearOfEra * 365 + yearOfEra / 4 - yearOfEra / 100 + dayOfYear;
    return era * 146097 + dayOfEra - 719468 + kEpoch;
}

CivilDate CivilOfSerial(std::int64_t serial) {
    const std::int64_t z = serial - kEpoch + 719468;
    const std::int64_t era = (z >= 0 ? z : z - 146096) / 146097;
    const std::int64_t dayOfEra = z - era * 146097;
    const std::int64_t yearOfEra = (dayOfEra - dayOfEra / 1460 + dayOfEra / 36524 - dayOfEra / 146096) / 365;
    const std::int64_t dayOfYear = dayOfEra - (365 * yearOfEra + yearOfEra / 4 - yearOfEra / 100);
    const std::int64_t shifted = (5 * dayOfYear + 2) / 153;
    CivilDate civil;
    civil.day = static_cast<std::int32_t>(dayOfYear - (153 * shifted + 2) / 5 + 1);
    civil.month = static_cast<std::int32_t>(shifted < 10 ? shifted + 3 : shifted - 9);
    civil.year = static_cast<std::int32_t>(yearOfEra + era * 400 + (civil.month <= 2 ? 1 : 0));
    return civil;
}

/// A date apart: its day, and the seconds since midnight, rounded so that the last half second belongs to the next day.
struct Split {
    std::int64_t day;
    std::int64_t seconds;
};

constexpr std::int64_t kFirstDay = SerialOf(kFirstYear, 1, 1);
constexpr std::int64_t kLastDay = SerialOf(kLastYear, 12, 31);

Split SplitOf(Date date) {
    // Before the zero date the time of day counts away from it, so only the whole days tell what is in range.
    const double whole = std::trunc(date.days);
    if (!(whole >= static_cast<double>(kFirstDay) && whole <= static_cast<double>(kLastDay))) {
        Raise(RunTimeError::Overflow);
    }
    Split split{static_cast<std::int64_t>(whole), 0};
    if (whole == date.days) return split;
    split.seconds = std::llround(std::fabs(date.days - whole) * static_cast<double>(kSecondsPerDay));
    if (split.seconds == kSecondsPerDay && split.day < kLastDay) {
        ++split.day;
        split.seconds = 0;
    }
    return split;
}

TimeOfDay TimeOfSeconds(std::int64_t sinceMidnight) {
    const auto seconds = static_cast<std::int32_t>(sinceMidnight);
    return {seconds / 3600, seconds / 60 % 60, seconds % 60};
}

Date FromParts(std::int64_t day, double fraction) {
    const auto whole = static_cast<double>(day);
    return {day < 0 ? whole - fraction : whole + fraction};
}

double FractionOf(Date date) { return std::fabs(date.days - std::trunc(date.days)); }

}  // namespace

CivilDate CivilOf(Date date) { return CivilOfSerial(SplitOf(date).day); }

TimeOfDay TimeOf(Date date) { return TimeOfSeconds(SplitOf(date).seconds); }

Moment MomentOf(Date date) {
    const Split split = SplitOf(date);
    return {CivilOfSerial(split.day), TimeOfSeconds(split.seconds)};
}

Date DateOf(std::int32_t year, std::int32_t month, std::int32_t day) {
    const std::int64_t months = static_cast<std::int64_t>(year) * 12 + month - 1;
    const std::int64_t rolledYear = months >= 0 ? months / 12 : (months - 11) / 12;
    if (rolledYear < 0 || rolledYear > kLastYear + 1) Raise(RunTimeError::InvalidCall);
    const std::int64_t serial = SerialOf(rolledYear, months - rolledYear * 12 + 1, 1) + day - 1;
    if (serial < kFirstDay || serial > kLastDay) Raise(RunTimeError::InvalidCall);
    return {static_cast<double>(serial)};
}

Date WithTime(Date day, TimeOfDay time) {
    const double seconds = time.hour * 3600.0 + time.minute * 60.0 + time.second;
    return FromParts(SplitOf(day).day, seconds / static_cast<double>(kSecondsPerDay));
}

bool IsCalendarDay(std::int32_t year, std::int32_t month, std::int32_t day) {
    static constexpr std::array<std::int32_t, 12> kDays{31, 28, 31, 30, 31, 30, 31, 31, 30, 31, 30, 31};
    if (year < kFirstYear || year > kLastYear || month < 1 || month > 12 || day < 1) return false;
    const bool leap = (year % 4 == 0 && year % 100 != 0) || year % 400 == 0;
    const std::int32_t days = month == 2 && leap ? 29 : kDays[static_cast<std::size_t>(month - 1)];
    return day <= days;
}

Date AddDays(Date date, std::int32_t days) {
    const Date moved = FromParts(static_cast<std::int64_t>(std::trunc(date.days)) + days, FractionOf(date));
    SplitOf(moved);
    return moved;
}

std::int32_t DaysBetween(Date from, Date to) { return static_cast<std::int32_t>(SplitOf(to).day - SplitOf(from).day); }

std::int32_t MonthsBetween(Date from, Date to) {
    const CivilDate a = CivilOf(from);
    const CivilDate b = CivilOf(to);
    return (b.year - a.year) * 12 + b.month - a.month;
}

std::int32_t WeekdayOf(Date date) {
    // Day 2 of the count, 1900-01-01, was a Monday.
    const std::int64_t shifted = (SplitOf(date).day - 2) % 7;
    return static_cast<std::int32_t>(shifted < 0 ? shifted + 8 : shifted + 1);
}

std::int32_t WeekOfYear(Date date) {
    const Date newYear = DateOf(CivilOf(date).year, 1, 1);
    return (DaysBetween(newYear, date) + WeekdayOf(newYear) - 1) / 7 + 1;
}

}  // namespace Zontara
