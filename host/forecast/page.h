#pragma once

#include "host/forecast/report.h"

#include <ostream>

namespace host::forecast {

/// One HTML page that needs nothing else: the totals, the load per week as bars, the weeks by trade as a heat map, both
/// as SVG, and the tables behind them. It fits a desk and a phone, and follows the reader's choice of light or dark.
void PrintPage(std::ostream& out, const Told& told);

}  // namespace host::forecast
