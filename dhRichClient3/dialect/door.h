#pragma once

#include "dhRichClient3/dialect/tokens.h"

#include <string>
#include <string_view>
#include <vector>

namespace dhRichClient3::dialect {

/// What the closed door says of a text.
struct Verdict {
    /// Why it may not pass, as a sentence; empty when it may.
    std::string refusal;
    /// It changes rows, and what its literals are makes no difference to how it is compiled: an INSERT of values, an
    /// UPDATE or a DELETE with no sub-select, no order, no format, no blob and no number in hexadecimal or beyond 18
    /// digits.
    bool reusable = false;
    /// It is a SELECT, perhaps behind a WITH.
    bool selects = false;

    bool Accepted() const { return refusal.empty(); }
};

/// Decides on the tokens of a text whether it may pass: exactly one statement, a SELECT, INSERT, REPLACE, UPDATE,
/// DELETE or VALUES, perhaps behind a WITH; no NUL character; no table-valued function that stands for a PRAGMA; no
/// call of a function that reaches files or the engine's inside, and of `printf` only with a plain format that stands
/// there; no write to the engine's own tables. A text that is merely wrong passes, since the engine says best what is
/// wrong with it.
Verdict Judge(std::string_view text, const std::vector<Token>& tokens);

/// Whether a statement may call a function: the engine's own of texts, numbers, dates, aggregates, windows and JSON.
/// None that gives something else at each call or tells about the connection.
bool MayCall(std::string_view function);

/// Whether a function may give something else at a later time: it reads the clock, or may be told to.
bool AsksTime(std::string_view function);

/// Whether a statement may name a table at all: no PRAGMA in the guise of a table, nothing of the engine's inside.
bool MayRead(std::string_view table);

/// Whether a statement may change rows of a table: none of the engine's own.
bool MayWrite(std::string_view table);

}  // namespace dhRichClient3::dialect
