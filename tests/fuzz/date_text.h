#pragma once

#include "frame/raised_error.h"
#include "frame/regional.h"
#include "tests/fuzz/check.h"

#include <string>

namespace fuzz {

/// An input of the date reader's target: any text, under each order of day, month and year. What is read reads back
/// as itself, and what isn't is left alone.
inline void FeedDate(std::string_view text) {
    for (const char* form : {"dd/mm/yyyy", "mm-dd-yyyy", "yyyy.mm.dd"}) {
        const Zontara::Regional regional(form);
        const auto date = regional.Read(text);
        if (!date) continue;
        const std::string shown = regional.ToText(*date);
        const auto again = regional.Read(shown);
        Require(again && regional.ToText(*again) == shown, "a date doesn't read back as itself");
    }
    const std::string sql = Zontara::SqlDate(text);
    const bool isDate = Zontara::Regional().Read(text).has_value();
    Require(isDate ? sql.size() == 10 && Zontara::SqlDate(sql) == sql : sql == text, "a statement's date is none");
}

}  // namespace fuzz
