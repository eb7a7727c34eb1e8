#pragma once

#include "frame/export.h"

#include <cstdint>

namespace Zontara {

/// A date and time of day: days since 1899-12-30, the time as the fraction of a day. The default is the zero
/// date, 1899-12-30 at midnight. Before the zero date the fraction still counts forward from midnight, so -1.25
/// is 1899-12-29 at six in the morning.
struct Date {
    double days = 0.0;

    friend constexpr bool operator==(const Date&, const Date&) = default;
};

/// Year, month 1 to 12 and day 1 to 31 of the proleptic Gregorian calendar.
struct CivilDate {
    std::int32_t year = 1899;
    std::int32_t month = 12;
    std::int32_t day = 30;

    friend constexpr bool operator==(const CivilDate&, const CivilDate&) = default;
};

/// Hours, minutes and seconds of a day, each from 0.
struct TimeOfDay {
    std::int32_t hour = 0;
    std::int32_t minute = 0;
    std::int32_t second = 0;

    friend constexpr bool operator==(const TimeOfDay&, const TimeOfDay&) = default;
};

/// The day of a date, its time of day left out. Error 6 outside the years 100 to 9999.
ZONTARA_EXPORT CivilDate CivilOf(Date date);

/// The time of day, rounded to the second.
ZONTARA_EXPORT TimeOfDay TimeOf(Date date);

/// Day and time of day of a date.
struct Moment {
    CivilDate day;
    TimeOfDay time;
};

/// Both at once. Error 6 as `CivilOf`.
ZONTARA_EXPORT Moment MomentOf(Date date);

/// The date of a year, a month and a day, both of which roll over: month 13 is January of the next year, day 31 of
/// a month of 30 days is the first of the next, day 0 the last of the month before. Error 5 outside the years 100 to
/// 9999.
ZONTARA_EXPORT Date DateOf(std::int32_t year, std::int32_t month, std::int32_t day);

/// The same day with a time of day put to it.
ZONTARA_EXPORT Date WithTime(Date day, TimeOfDay time);

/// Whether year, month and day name a day of the calendar as they stand, with no roll-over.
ZONTARA_EXPORT bool IsCalendarDay(std::int32_t year, std::int32_t month, std::int32_t day);

/// The date so many calendar days later (earlier, if negative), at the same time of day.
ZONTARA_EXPORT Date AddDays(Date date, std::int32_t days);

/// Calendar days from one date to another, times of day ignored; negative when the second lies before the first.
ZONTARA_EXPORT std::int32_t DaysBetween(Date from, Date to);

/// Month boundaries crossed from one date to another: January 31 to February 1 is one.
ZONTARA_EXPORT std::int32_t MonthsBetween(Date from, Date to);

/// Day of the week, 1 = Monday to 7 = Sunday.
ZONTARA_EXPORT std::int32_t WeekdayOf(Date date);

/// Week of the year with Monday first, week 1 being the one that holds January 1: 1 to 54. Not the ISO week.
ZONTARA_EXPORT std::int32_t WeekOfYear(Date date);

}  // namespace Zontara
