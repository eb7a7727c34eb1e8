#pragma once

#include "dhRichClient3/dialect/door.h"
#include "dhRichClient3/dialect/tokens.h"

#include <vector>

namespace dhRichClient3::dialect {

/// Picks the literals of an accepted text that may be parameters, so that all texts that differ in nothing else run as
/// one compiled statement. The meaning of the text, its plan and its column names stay what they are:
///
///   - of a change that the door calls reusable, all strings and whole numbers, and the decimal numbers of an INSERT or
///     of what an UPDATE sets; none of a WHERE when `partialIndexes` says that the engine must see values to choose;
///   - of a single SELECT, what a column is compared with in its outermost WHERE. Not 0 and 1, which the planner takes
///     for flags; nothing of the list of columns, of GROUP BY, ORDER BY, LIMIT, of calls, lists and LIKE.
///
/// None when there are more than a statement should have parameters.
void Lift(const std::vector<Token>& tokens, const Verdict& verdict, bool partialIndexes, std::vector<Token>& lifted);

}  // namespace dhRichClient3::dialect
