#include "tests/calendar/reference_rules.h"

#include <array>
#include <cstdio>
#include <cstdlib>
#include <vector>

namespace reference {

namespace {

using std::chrono::sys_days;

int YearOf(Day day) { return static_cast<int>(day.year()); }
int MonthOf(Day day) { return static_cast<int>(static_cast<unsigned>(day.month())); }
int DayOf(Day day) { return static_cast<int>(static_cast<unsigned>(day.day())); }
bool IsMonday(Day day) { return std::chrono::weekday(sys_days(day)) == std::chrono::Monday; }

Day Of(int year, int month, int day) {
    return {std::chrono::year(year), std::chrono::month(static_cast<unsigned>(month)),
            std::chrono::day(static_cast<unsigned>(day))};
}

/// 1 for Monday to 7 for Sunday, found by walking back to the Monday.
int WeekdayOf(Day day) {
    int weekday = 1;
    for (; !IsMonday(day); day = Later(day, -1))
        ++weekday;
    return weekday;
}

int Days(Day from, Day to) { return static_cast<int>((sys_days(to) - sys_days(from)).count()); }
int Months(Day from, Day to) { return 12 * (YearOf(to) - YearOf(from)) + MonthOf(to) - MonthOf(from); }

/// The day D of the month of another day, rolling over: count D-1 days from the first.
Day DayOfMonth(Day day, int number) { return Later(Of(YearOf(day), MonthOf(day), 1), number - 1); }

std::string Text(Day day) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%02d/%02d/%04d", DayOf(day), MonthOf(day), YearOf(day));
    return text.data();
}

/// A whole number of a few digits, or none.
std::optional<int> Number(const std::string& text) {
    if (text.empty() || text.size() > 4 || text.find_first_not_of("0123456789") != std::string::npos)
        return std::nullopt;
    return std::atoi(text.c_str());
}

std::vector<std::string> Items(const std::string& text) {
    std::vector<std::string> items;
    if (text.empty()) return items;
    items.emplace_back();
    for (const char c : text) {
        if (c == ',') {
            items.emplace_back();
        } else {
            items.back() += c;
        }
    }
    return items;
}

int MonthsOf(const std::string& frequency) {
    if (frequency == "Mensual") return 1;
    if (frequency == "Bimestral") return 2;
    if (frequency == "Trimestral") return 3;
    if (frequency == "Semestral") return 6;
    return frequency == "Anual" ? 12 : 0;
}

/// Whether a month is met when one goes round the year from the anchor, `months` at a time.
bool OnCycle(int month, int anchor, int months) {
    for (int at = anchor, steps = 0; steps <= 12; ++steps) {
        if (at == month) return true;
        for (int i = 0; i < months; ++i)
            at = at == 12 ? 1 : at + 1;
    }
    return false;
}

Decision Failed(int error) { return {error, 0, std::nullopt}; }

Decision Synchronised(const Row& row, Day day) {
    const std::string& f = row.frequency;
    if (f == "Diaria" || f == "Semanal" || f == "Quincenal" || f == "Mensual") {
        if (WeekOf(day) == row.week) return {};
        if (f == "Diaria" || f == "Semanal") return {0, 1, day};
        const std::optional<int> anchor = Number(row.anchor);
        if (!anchor) return Failed(13);
        int week = 4;
        if (DayOf(day) <= 21) week = 3;
        if (DayOf(day) <= 14) week = 2;
        if (DayOf(day) <= 7) week = 1;
        const bool agrees = *anchor == week || (f == "Quincenal" && std::abs(*anchor - week) == 2);
        return {0, agrees ? 1 : 0, day};
    }
    const int months = MonthsOf(f);
    if (months == 0) return {};
    const std::optional<int> anchor = Number(row.anchor);
    if (!anchor) return Failed(13);
    if (Months(row.last, day) < months) return {};
    const bool coordinates = f == "Anual" ? MonthOf(day) == *anchor : OnCycle(MonthOf(day), *anchor, months);
    if (!coordinates) return {};
    return {0, months, DayOfMonth(day, 1)};
}

Decision Conventional(const Row& row, Day day) {
    const std::string& f = row.frequency;
    if (f == "Fecha") {
        if (Text(day) >= row.anchor && Text(row.last) < row.anchor) return {0, 1, day};
        return {};
    }
    if (f == "Diaria") {
        if (Text(day) > Text(row.last)) return {0, 1, day};
        return {};
    }
    if (f == "Semanal") {
        const std::optional<int> anchor = Number(row.anchor);
        if (!anchor) return Failed(13);
        if (Days(row.last, day) < 7 || WeekdayOf(day) < *anchor) return {};
        return {0, 1, Later(day, *anchor - WeekdayOf(day))};
    }
    if (f == "Quincenal") {
        if (Days(row.last, day) < 15 || DayOf(day) >= 30) return {};
        return {0, 1, DayOf(day) <= 15 ? DayOfMonth(day, 1) : DayOfMonth(day, 15)};
    }
    const int months = MonthsOf(f);
    if (months == 0) return {};
    const std::vector<std::string> items = Items(row.anchor);
    if (items.empty()) return Failed(9);
    const std::optional<int> anchor = Number(items[0]);
    if (!anchor) return Failed(13);
    if (f != "Mensual") {
        if (items.size() < 2) return Failed(9);
        if (!Number(items[1])) return Failed(13);
    }
    const int passed = Months(row.last, day);
    if ((passed == months && DayOf(day) >= *anchor) || passed > months) return {0, months, DayOfMonth(day, *anchor)};
    return {};
}

}  // namespace

Day Later(Day day, int days) { return Day(sys_days(day) + std::chrono::days(days)); }

int WeekOf(Day day) {
    int week = 1;
    for (Day at = Of(YearOf(day), 1, 1); at != day;) {
        at = Later(at, 1);
        if (IsMonday(at)) ++week;
    }
    return week;
}

std::string Iso(Day day) {
    std::array<char, 32> text{};
    std::snprintf(text.data(), text.size(), "%04d-%02d-%02d", YearOf(day), MonthOf(day), DayOf(day));
    return text.data();
}

Decision Decide(const Row& row, Day day) { return row.synchronised ? Synchronised(row, day) : Conventional(row, day); }

}  // namespace reference
