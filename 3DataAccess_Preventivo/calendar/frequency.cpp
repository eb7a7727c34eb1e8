#include "calendar/frequency.h"

#include <array>
#include <cstddef>

namespace Zontara::calendar {

namespace {

struct Row {
    std::string_view word;
    std::int16_t step;
    std::int32_t daysToDelivery;
};

/// By the numbers of `Frequency`.
constexpr std::array<Row, 10> kRows{{{"", 0, 0},
                                     {"Fecha", 1, 0},
                                     {"Diaria", 1, 7},
                                     {"Semanal", 1, 7},
                                     {"Quincenal", 1, 15},
                                     {"Mensual", 1, 30},
                                     {"Bimestral", 2, 0},
                                     {"Trimestral", 3, 0},
                                     {"Semestral", 6, 0},
                                     {"Anual", 12, 30}}};

const Row& RowOf(Frequency frequency) { return kRows[static_cast<std::size_t>(frequency)]; }

}  // namespace

Frequency FrequencyOf(std::string_view word) {
    for (std::size_t i = 1; i < kRows.size(); ++i) {
        if (kRows[i].word == word) return static_cast<Frequency>(i);
    }
    return Frequency::Unknown;
}

std::int16_t StepOf(Frequency frequency) { return RowOf(frequency).step; }

std::int32_t DaysToDelivery(Frequency frequency) { return RowOf(frequency).daysToDelivery; }

}  // namespace Zontara::calendar
