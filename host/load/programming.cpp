#include "host/load/programming.h"

#include "host/load/cells.h"

#include <fmt/format.h>
#include <algorithm>
#include <array>
#include <charconv>

namespace host::load {

namespace {

constexpr std::array<std::string_view, 9> kFrequencies = {
    "Fecha", "Diaria", "Semanal", "Quincenal", "Mensual", "Bimestral", "Trimestral", "Semestral", "Anual"};

bool IsLong(std::string_view frequency) {
    return frequency == "Bimestral" || frequency == "Trimestral" || frequency == "Semestral" || frequency == "Anual";
}

bool Within(std::string_view text, int low, int high) {
    text = Trimmed(text);
    int number = 0;
    const auto [stop, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    return error == std::errc() && stop == text.data() + text.size() && number >= low && number <= high;
}

std::string SynchronisedFault(std::string_view frequency, std::string_view programming) {
    if (frequency == "Fecha") return "a synchronised assignment can't have the frequency Fecha";
    if (frequency == "Quincenal" || frequency == "Mensual") {
        if (!Within(programming, 1, 4)) return fmt::format("'{}' is no week of the month, 1 to 4", programming);
    } else if (IsLong(frequency) && !Within(programming, 1, 12)) {
        return fmt::format("'{}' is no month, 1 to 12", programming);
    }
    return {};
}

std::string ConventionalFault(std::string_view frequency, std::string_view programming) {
    const std::size_t comma = programming.find(',');
    const std::string_view first = programming.substr(0, comma);
    if (frequency == "Fecha" && !IsoDate(programming)) {
        return fmt::format("'{}' is no date; write yyyy-mm-dd or dd/mm/yyyy", programming);
    }
    if (frequency == "Semanal" && !Within(programming, 1, 7)) {
        return fmt::format("'{}' is no weekday, 1 for Monday to 7 for Sunday", programming);
    }
    if (frequency == "Mensual" && !Within(first, 1, 31)) {
        return fmt::format("'{}' is no day of the month, 1 to 31", programming);
    }
    if (IsLong(frequency)) {
        const bool both =
            comma != std::string_view::npos && Within(first, 1, 31) && Within(programming.substr(comma + 1), 1, 12);
        if (!both) return fmt::format("'{}' is no day and month with a comma between, such as 15,3", programming);
    }
    return {};
}

}  // namespace

bool IsFrequency(std::string_view word) {
    return std::find(kFrequencies.begin(), kFrequencies.end(), word) != kFrequencies.end();
}

std::string ProgrammingFault(bool synchronised, std::string_view frequency, std::string_view programming) {
    return synchronised ? SynchronisedFault(frequency, programming) : ConventionalFault(frequency, programming);
}

}  // namespace host::load
