#pragma once

#include "planning/forecast.h"

#include <string>

/// Drawings of the forecast's page. The SVG holds shapes alone and stretches to the room there is; texts stand beside
/// it, so that they are as large on a phone as on a desk.
namespace host::forecast {

/// Hours of labour a week as bars, those of meter orders on top.
std::string Bars(const planning::Forecast& forecast);

/// Hours of labour by trade and week, the darker the more.
std::string HeatMap(const planning::Forecast& forecast);

/// "1,234,567".
std::string Grouped(double number);

/// "2026-03-02, week 10".
std::string NameOf(const planning::Week& week);

/// A square in the colour of a shape's class, and what it stands for.
std::string Swatch(const std::string& shade, const std::string& text);

/// The name of a trade; what stands for none.
std::string TradeName(const std::string& trade);

}  // namespace host::forecast
