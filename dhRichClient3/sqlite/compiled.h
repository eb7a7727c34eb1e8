#pragma once

#include <string>

struct sqlite3_stmt;

namespace dhRichClient3 {

/// A compiled statement, and the text that a cache finds it under, which need not be the one it was compiled from.
struct Compiled {
    Compiled(std::string key, sqlite3_stmt* compiled) : text(std::move(key)), handle(compiled) {}
    Compiled(const Compiled&) = delete;
    Compiled& operator=(const Compiled&) = delete;
    ~Compiled();

    std::string text;
    sqlite3_stmt* handle;
};

}  // namespace dhRichClient3
