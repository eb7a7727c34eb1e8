#include "dhRichClient3/sqlite/compiled.h"
#include "dhRichClient3/statement.h"
#include "frame/convert.h"

#include <sqlite3.h>

/// Columns of a lent statement's current row.
namespace dhRichClient3 {

std::int32_t Statement::Int(int column) const { return Zontara::NarrowToInt32(Int64(column)); }

std::int64_t Statement::Int64(int column) const { return sqlite3_column_int64(held_->handle, column); }

double Statement::Real(int column) const { return sqlite3_column_double(held_->handle, column); }

std::string Statement::Text(int column) const {
    const auto* const text = reinterpret_cast<const char*>(sqlite3_column_text(held_->handle, column));
    return text ? std::string(text, static_cast<std::size_t>(sqlite3_column_bytes(held_->handle, column)))
                : std::string();
}

bool Statement::IsNull(int column) const { return sqlite3_column_type(held_->handle, column) == SQLITE_NULL; }

Zontara::Value Statement::Value(int column) const {
    switch (sqlite3_column_type(held_->handle, column)) {
        case SQLITE_INTEGER: {
            const std::int64_t number = Int64(column);
            const auto narrow = static_cast<std::int32_t>(number);
            return narrow == number ? Zontara::Value(narrow) : Zontara::Value(static_cast<double>(number));
        }
        case SQLITE_FLOAT:
            return Real(column);
        case SQLITE_NULL:
            return Zontara::Null{};
        default:
            return Text(column);
    }
}

int Statement::ColumnCount() const { return sqlite3_column_count(held_->handle); }

}  // namespace dhRichClient3
