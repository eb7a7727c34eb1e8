#pragma once

#include <cstdint>
#include <string_view>

namespace Zontara::calendar {

/// The frequency words, in the order of their length.
enum class Frequency { Unknown, Fecha, Diaria, Semanal, Quincenal, Mensual, Bimestral, Trimestral, Semestral, Anual };

/// The frequency of a word, exact as to case.
Frequency FrequencyOf(std::string_view word);

/// What a row of that frequency counts when it is due: 1 for the short words, the months of the long ones, 0 for
/// `Unknown`.
std::int16_t StepOf(Frequency frequency);

inline bool IsShort(Frequency frequency) { return frequency >= Frequency::Fecha && frequency <= Frequency::Mensual; }
inline bool IsLong(Frequency frequency) { return frequency >= Frequency::Bimestral; }

/// Days that a bulletin of that frequency has until its delivery. A year has as many as a month, and the frequencies
/// between deliver on the day of their launch.
std::int32_t DaysToDelivery(Frequency frequency);

}  // namespace Zontara::calendar
