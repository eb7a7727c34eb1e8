#include "frame/sql.h"

#include "frame/convert.h"
#include "frame/raised_error.h"
#include "frame/regional.h"

#include <charconv>
#include <cstring>

namespace Zontara {

SqlPiece::SqlPiece(std::int32_t number) {
    const auto result = std::to_chars(digits_.data(), digits_.data() + digits_.size(), number);
    length_ = static_cast<std::size_t>(result.ptr - digits_.data());
}

SqlPiece::SqlPiece(float number) { Keep(ToText(number)); }

SqlPiece::SqlPiece(Money amount) { Keep(amount.ToText()); }

SqlPiece::SqlPiece(Date date) { Keep(SqlDate(date)); }

void SqlPiece::Keep(std::string_view text) {
    if (text.size() > digits_.size()) Raise(RunTimeError::Overflow);
    std::memcpy(digits_.data(), text.data(), text.size());
    length_ = text.size();
}

std::string Sql(std::initializer_list<SqlPiece> pieces) {
    std::string statement;
    Append(statement, pieces);
    return statement;
}

void Append(std::string& statement, std::initializer_list<SqlPiece> pieces) {
    std::size_t end = statement.size();
    std::size_t length = end;
    for (const SqlPiece& piece : pieces)
        length += piece.Text().size();
    statement.resize(length);
    for (const SqlPiece& piece : pieces)
        end += piece.Text().copy(statement.data() + end, std::string_view::npos);
}

std::string SelectHead(std::string_view defaultHead, std::string_view sColumnas) {
    return sColumnas.empty() ? std::string(defaultHead) : Sql({"Select ", sColumnas});
}

}  // namespace Zontara
