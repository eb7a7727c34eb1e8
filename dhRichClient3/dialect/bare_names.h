#pragma once

#include "dhRichClient3/dialect/catalogue.h"
#include "dhRichClient3/dialect/tokens.h"

#include <optional>
#include <string>
#include <string_view>
#include <vector>

namespace dhRichClient3::dialect {

/// The bare name in an engine's refusal "ambiguous column name: X"; none for any other refusal, and for a name that is
/// qualified already.
std::optional<std::string> AmbiguousName(std::string_view refusal);

/// The text with each of these bare names qualified by the first table of the FROM list that offers it; none when a
/// name stands nowhere bare or no table offers it.
///
/// Only the first SELECT of the outermost level is looked at: its list, ON conditions, WHERE, GROUP BY, HAVING and
/// ORDER BY. Sub-selects, strings, aliases where they are given, and an ORDER BY term that is an alias are left alone.
/// An item of the list that isn't just the column keeps the column name that it would have had.
std::optional<std::string> QualifyBareNames(std::string_view text, const std::vector<Token>& tokens,
                                            const std::vector<std::string>& names, const Catalogue& catalogue);

}  // namespace dhRichClient3::dialect
