#pragma once

#include "planning/sheet.h"

#include <ostream>

namespace host::pages {

enum class Language { Spanish, English };

/// Writes the sheet of a week as one HTML page that needs nothing else, made for paper: A4, no bulletin torn across two
/// pages. What the plant holds stands there as it is; only the words around it are of the language.
void WriteSheet(std::ostream& out, const planning::WeekSheet& sheet, Language language);

}  // namespace host::pages
