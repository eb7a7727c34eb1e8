#pragma once

#include "frame/date.h"
#include "frame/member_table.h"
#include "frame/value.h"
#include "host/rpc/handles.h"
#include "host/rpc/json.h"

#include <optional>
#include <string_view>

namespace host::rpc {

/// A value as JSON. With `handles` an object goes out under its handle, a list with its notices, a recordset with its
/// rows, and then stands on its first row; without, rows and notices alone. What holds nothing is null.
Json ToJson(const Zontara::Value& value, Handles* handles);

/// The value of a type that JSON stands for. Nothing is converted: whole numbers for the integer types (5.0 is one)
/// within their range, numbers for float32 and money (this one with at most four decimals), true and false for a bool,
/// texts, dates as `ReadDate`, a known handle of the right class or null for an object; for a tagged value a text, a
/// number, true or false. A `Refusal` for everything else, which names `argument`.
Zontara::Value FromJson(const Input& json, const Zontara::TypeOf& type, const Handles& handles,
                        std::string_view argument);

/// The date of "2026-03-05" or "2026-03-05T08:00:00"; none for any other text and for what is no day of the calendar.
std::optional<Zontara::Date> ReadDate(std::string_view text);

/// A date in one of the two forms, the longer when it has a time of day.
std::string WriteDate(Zontara::Date date);

}  // namespace host::rpc
