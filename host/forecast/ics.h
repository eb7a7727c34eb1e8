#pragma once

#include "host/forecast/report.h"

#include <ostream>

namespace host::forecast {

/// A calendar by RFC 5545 with one all-day event a week, from the day of its launch to the day before the next one. An
/// event keeps its identifier from one forecast of a plant to the next, so that importing anew replaces it.
void PrintIcs(std::ostream& out, const Told& told);

}  // namespace host::forecast
