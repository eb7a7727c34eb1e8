#pragma once

#include "planning/forecast.h"

#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>

namespace host::forecast {

/// A forecast and what its renderings say about where it comes from.
struct Told {
    planning::Forecast forecast;
    /// The database, as people call it: the name of its file.
    std::string plant;

    /// Its first day; the day after its last week.
    Zontara::Date From() const { return forecast.weeks.front().day; }
    Zontara::Date Until() const { return Zontara::AddDays(forecast.weeks.back().day, 7); }
};

/// yyyy-mm-dd; hours with one decimal, amounts with two.
std::string Iso(Zontara::Date day);
std::string Hours(double hours);
std::string Amount(Zontara::Money amount);

/// For people: the weeks with their total, then the meters with the use they moved on by.
void Print(std::ostream& out, const Told& told);

/// The weeks, one a line behind a header.
void PrintCsv(std::ostream& out, const Told& told);

/// {"from", "plant", "weeks": [...], "total", "materials": [...], "meters": [...]}.
nlohmann::ordered_json ToJson(const Told& told);

}  // namespace host::forecast
