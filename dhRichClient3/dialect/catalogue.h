#pragma once

#include <functional>
#include <string>
#include <string_view>
#include <unordered_map>
#include <unordered_set>
#include <utility>
#include <vector>

namespace dhRichClient3::dialect {

/// The word in a column's declared type that says: a bare name never means this column where another table has one
/// of that name.
inline constexpr std::string_view kQualifiedOnly = "QUALIFIED_ONLY";

/// Which table has which columns, and which of these are marked. Names without regard to case.
class Catalogue {
public:
    struct Column {
        std::string name;
        std::string declaredType;
    };
    /// Gives the columns of a table, none if there is no such table.
    using Reader = std::function<std::vector<Column>(std::string_view table)>;

    /// A catalogue that is filled by hand, or one that has a table read when it is asked about first.
    explicit Catalogue(Reader reader = {}) : reader_(std::move(reader)) {}

    void Clear();
    void Add(std::string_view table, std::string_view column, std::string_view declaredType);

    /// Whether a bare name may mean this table's column: it is there and isn't marked.
    bool Offers(std::string_view table, std::string_view column) const;

private:
    Reader reader_;
    /// Tables that were read, in small letters.
    mutable std::unordered_set<std::string> read_;
    /// "table.column" in small letters, and whether the column is marked.
    mutable std::unordered_map<std::string, bool> columns_;
};

}  // namespace dhRichClient3::dialect
