#pragma once

#include "frame/value.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace dhRichClient3 {

/// Rows of a query in compact form: one fixed-size cell per value, all texts in one arena, no heap object per cell.
/// A row is added cell by cell, in the order of the columns. Knows nothing of where the rows come from.
class RowStore {
public:
    /// Starts a table of these columns with no rows.
    explicit RowStore(std::vector<std::string> columns = {});

    void AddNull();
    /// A whole number: an int32 if it fits, else a float64.
    void AddInteger(std::int64_t value);
    void AddReal(double value);
    /// The text is copied into the arena.
    void AddText(std::string_view text);

    std::size_t Rows() const { return columns_.empty() ? 0 : cells_.size() / columns_.size(); }
    std::size_t Columns() const { return columns_.size(); }
    /// Memory that cells and texts take.
    std::size_t Bytes() const { return cells_.size() * sizeof(Cell) + arena_.size(); }
    const std::string& ColumnName(std::size_t column) const { return columns_[column].name; }

    /// Position of the first column of a name, without regard to the case of ASCII letters; `kNone` if there is none.
    std::size_t Find(std::string_view name) const;
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

    /// A value. Row and column must be there.
    Zontara::Value At(std::size_t row, std::size_t column) const;

private:
    enum class Kind : std::uint32_t { Null, Int32, Float64, Text };
    struct Cell {
        union {
            std::int32_t whole;
            double real;
            std::size_t offset;
        };
        std::uint32_t length;
        Kind kind;
    };
    struct Column {
        std::string name;
        std::uint32_t hash;
    };

    std::vector<Column> columns_;
    std::vector<Cell> cells_;
    std::string arena_;
};

}  // namespace dhRichClient3
