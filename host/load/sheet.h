#pragma once

#include "frame/money.h"
#include "frame/value.h"
#include "host/load/problems.h"

#include <cstddef>
#include <cstdint>
#include <filesystem>
#include <string>
#include <string_view>
#include <vector>

namespace host::load {

/// What a cell may hold.
enum class CellKind {
    Text,       ///< free text
    PlainText,  ///< free text that the component writes as it came: a quote in it is refused
    Code,       ///< a name that other files refer to, or a word; blanks around it are taken off
    PlainCode,  ///< a code that the component writes as it came: a quote in it is refused
    Int32,      ///< a whole number
    Int16,      ///< a whole number from -32768 to 32767
    Byte,       ///< a whole number from 0 to 255
    Flag,       ///< 0 or 1
    Real,       ///< a number with a point
    Money,      ///< an amount with a point and at most four decimals
    Date,       ///< yyyy-mm-dd or dd/mm/yyyy
};

struct Column {
    std::string_view name;
    CellKind kind = CellKind::Text;
    /// The file must have the column, and every line a value in it.
    bool required = false;
};

/// One line of a file, every cell of which is of its column's kind. Columns count from 0 in the order of the table's
/// own list, whatever the order in the file. An empty cell, or a column that the file hasn't, gives the fallback.
class Row {
public:
    Row(std::size_t line, std::vector<Zontara::Value> cells) : line_(line), cells_(std::move(cells)) {}

    std::size_t Line() const { return line_; }
    bool Has(std::size_t column) const { return !cells_[column].Is<Zontara::Empty>(); }
    /// A text or code, or a date as yyyy-mm-dd.
    std::string Text(std::size_t column) const;
    std::int32_t Int32(std::size_t column, std::int32_t fallback = 0) const;
    std::int16_t Int16(std::size_t column, std::int16_t fallback = 0) const;
    std::uint8_t Byte(std::size_t column, std::uint8_t fallback = 0) const;
    float Real(std::size_t column, float fallback = 0) const;
    Zontara::Money Money(std::size_t column) const;

private:
    std::size_t line_;
    std::vector<Zontara::Value> cells_;
};

/// The rows of one file. Lines with a problem are left out.
struct Sheet {
    std::string file;
    std::vector<Row> rows;
};

/// Reads the file of a table: `file` inside `folder`, with the columns given. Adds what is wrong to `problems`:
/// unknown, missing and repeated columns, faults of the text, cells that aren't of their kind. A `Failure` when the
/// file can't be read at all.
Sheet ReadSheet(const std::filesystem::path& folder, std::string_view file, const std::vector<Column>& columns,
                Problems& problems);

/// Reads a whole file. A `Failure` when it can't.
std::string ReadText(const std::filesystem::path& path);

}  // namespace host::load
