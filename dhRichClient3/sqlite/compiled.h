#pragma once

#include "dhRichClient3/sqlite/table_changes.h"

#include <memory>
#include <string>
#include <utility>

struct sqlite3_stmt;

namespace dhRichClient3 {

class ColumnNames;

/// A compiled statement, and the text that a cache finds it under, which need not be the one it was compiled from.
struct Compiled {
    Compiled(std::string key, sqlite3_stmt* compiled) : text(std::move(key)), handle(compiled) {}
    Compiled(const Compiled&) = delete;
    Compiled& operator=(const Compiled&) = delete;
    ~Compiled();

    std::string text;
    sqlite3_stmt* handle;
    Reach reach;
    /// The names of its columns, once it gave rows, and how often the engine had compiled it anew by then.
    std::shared_ptr<const ColumnNames> columns;
    int timesCompiledAnew = 0;
};

}  // namespace dhRichClient3
