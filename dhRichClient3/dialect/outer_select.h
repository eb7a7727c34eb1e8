#pragma once

#include "dhRichClient3/dialect/tokens.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace dhRichClient3::dialect {

/// A table of a FROM list. A sub-select or a join in brackets is none.
struct FromTable {
    std::string table;
    /// What its columns are qualified with, as it stands in the text: the alias, or else the table.
    std::string_view qualifier;
};

/// An item of a SELECT list: tokens `begin` up to, but not with, `end`.
struct ListItem {
    std::size_t begin;
    std::size_t end;
    /// Its column is named by its text: it has no alias and is more than one column.
    bool named;
};

/// The first SELECT of the outermost level, taken apart.
struct OuterSelect {
    std::vector<FromTable> tables;
    std::vector<ListItem> items;
    /// Places of the tokens that may be bare column names, in order. Keywords are among them.
    std::vector<std::size_t> bareNames;
};

/// Reads the tokens of a text; everything is empty when it holds no SELECT at its outermost level.
OuterSelect ReadOuterSelect(const std::vector<Token>& tokens);

}  // namespace dhRichClient3::dialect
