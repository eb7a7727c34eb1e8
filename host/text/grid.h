#pragma once

#include "host/text/cell.h"

#include <cstddef>
#include <nlohmann/json_fwd.hpp>
#include <ostream>
#include <string>
#include <string_view>
#include <vector>

namespace host::text {

/// A table of cells. People get a header, a rule, and lines whose columns stand under one another; programs get one
/// JSON object a line.
class Grid {
public:
    enum class Align { Left, Right };
    struct Column {
        std::string title;
        Align align = Align::Left;
        /// Longest text that people see whole; a longer one is cut and ends in an ellipsis. 0 for no limit.
        std::size_t widest = 0;
        /// Name of the member in an object; when it is empty, the title in small letters with _ for blanks.
        std::string key = {};
    };

    explicit Grid(std::vector<Column> columns);

    /// Adds a line; cells that are missing are empty.
    void Add(std::vector<Cell> cells);
    std::size_t Lines() const { return lines_.size(); }

    /// Writes header, rule and lines, each behind so many blanks. No line ends in blanks.
    void Print(std::ostream& out, std::size_t indent = 0) const;
    /// An array with an object for each line: members in the order of the columns, numbers as numbers, texts whole.
    nlohmann::ordered_json ToJson() const;

private:
    std::vector<Column> columns_;
    std::vector<std::vector<Cell>> lines_;
};

/// Number of characters of a UTF-8 text.
std::size_t Length(std::string_view text);

/// The text, cut to so many characters with an ellipsis as the last when it is longer.
std::string Cut(std::string_view text, std::size_t widest);

}  // namespace host::text
