#pragma once

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/money.h"

#include <array>
#include <cstdint>
#include <initializer_list>
#include <string>
#include <string_view>

namespace Zontara {

/// One piece of a statement: a literal text as it stands, or a value in the one form that its kind takes: whole numbers
/// in plain digits, money and float32 in their default text, a date as YYYY-MM-DD. Quotes are part of the pieces
/// around a value. A text is put in as it came: a quote inside it breaks the statement, and is meant to.
/// A piece refers to its text and lives no longer than the call it is made for.
class SqlPiece {
public:
    SqlPiece(const char* text) : text_(text) {}
    SqlPiece(std::string_view text) : text_(text) {}
    SqlPiece(const std::string& text) : text_(text) {}
    SqlPiece(std::uint8_t number) : SqlPiece(static_cast<std::int32_t>(number)) {}
    SqlPiece(std::int16_t number) : SqlPiece(static_cast<std::int32_t>(number)) {}
    SqlPiece(std::int32_t number);
    SqlPiece(float number);
    SqlPiece(Money amount);
    SqlPiece(Date date);
    /// A flag has no form of its own: say 1 or 0.
    SqlPiece(bool) = delete;
    SqlPiece(const SqlPiece&) = delete;
    SqlPiece& operator=(const SqlPiece&) = delete;

    std::string_view Text() const { return text_; }

private:
    void Keep(std::string_view text);

    std::string_view text_;
    /// What a value is written in; `text_` then refers to it.
    std::array<char, kLongestText> digits_;
};

/// The statement that the pieces make, joined with nothing between them.
std::string Sql(std::initializer_list<SqlPiece> pieces);

/// Puts further pieces behind a statement.
void Append(std::string& statement, std::initializer_list<SqlPiece> pieces);

/// The head of a SELECT: the default one, or "Select " and the caller's columns when there are any.
std::string SelectHead(std::string_view defaultHead, std::string_view sColumnas);

}  // namespace Zontara
