#pragma once

#include "host/load/known.h"
#include "host/load/sheet.h"
#include "host/plant.h"

#include <string>
#include <vector>

namespace host::load {

/// What the checks of one line work with.
struct Line {
    Known& known;
    const std::string& file;
    const std::vector<Column>& columns;
    const Row& row;
    Problems& problems;

    /// Notes a problem of this line, in a column or in the line as a whole.
    void Fail(std::size_t column, std::string reason) const;
    void Fail(std::string reason) const;

    /// Notes that a code which the line refers to exists neither in the database nor in `home`. An empty cell refers to
    /// nothing.
    void Require(std::size_t column, const Codes& codes, std::string_view noun, std::string_view home) const;
    /// Adds the line's own code, or notes that it is there already.
    void Register(std::size_t column, Codes& codes, std::string_view noun) const;
};

/// One table of an import: its file, its columns, and how a line goes into the database. Lines are taken in three
/// walks, each over all files in the order of `Tables()`: first all tell their codes, then all are checked, and only
/// when no problem was found are they written.
struct Table {
    std::string_view file;
    std::vector<Column> columns;
    /// Tells the codes that other lines may refer to. May be empty.
    void (*tell)(const Line& line) = nullptr;
    /// Checks what the line refers to. May be empty.
    void (*check)(const Line& line) = nullptr;
    /// Writes the line, by the component's own operation where it has one.
    void (*write)(Plant& plant, Known& known, const Row& row) = nullptr;
};

Table Units();
Table Groups();
Table Executors();
Table Users();
Table Tasks();
Table Materials();
Table Processes();
Table Assets();
Table Equipment();
Table Documents();
Table CalendarAssignments();
Table MeterAssignments();
Table Parallels();
Table Readings();

/// All tables, in an order in which no line needs a row of a later file.
const std::vector<Table>& Tables();

}  // namespace host::load
