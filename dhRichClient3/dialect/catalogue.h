#pragma once

#include <string>
#include <string_view>
#include <unordered_map>

namespace dhRichClient3::dialect {

/// The word in a column's declared type that says: a bare name never means this column where another table has one
/// of that name.
inline constexpr std::string_view kQualifiedOnly = "QUALIFIED_ONLY";

/// Which table has which columns, and which of these are marked. Names without regard to case.
class Catalogue {
public:
    void Clear() { columns_.clear(); }
    void Add(std::string_view table, std::string_view column, std::string_view declaredType);

    /// Whether a bare name may mean this table's column: it is there and isn't marked.
    bool Offers(std::string_view table, std::string_view column) const;

private:
    /// "table.column" in small letters, and whether the column is marked.
    std::unordered_map<std::string, bool> columns_;
};

}  // namespace dhRichClient3::dialect
