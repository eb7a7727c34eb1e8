#include "frame/sql.h"

#include "frame/convert.h"
#include "frame/raised_error.h"
#include "frame/regional.h"

#include <charconv>
#include <cstdint>
#include <cstring>

namespace Zontara {

SqlPiece::SqlPiece(std::int32_t number) {
    const auto result = std::to_chars(digits_.data(), digits_.data() + digits_.size(), number);
    text_ = {digits_.data(), result.ptr};
}

SqlPiece::SqlPiece(float number) { text_ = {digits_.data(), WriteText(number, digits_.data())}; }

SqlPiece::SqlPiece(Money amount) { Keep(amount.ToText()); }

SqlPiece::SqlPiece(Date date) { Keep(SqlDate(date)); }

void SqlPiece::Keep(std::string_view text) {
    if (text.size() > digits_.size()) Raise(RunTimeError::Overflow);
    std::memcpy(digits_.data(), text.data(), text.size());
    text_ = {digits_.data(), text.size()};
}

namespace {

/// Copies as a machine word or two what is as short as most pieces, without a call; gives the length.
template <class Word> std::size_t CopyShort(std::string_view text, char* to) {
    Word head;
    Word tail;
    const char* const last = text.data() + text.size() - sizeof(Word);
    std::memcpy(&head, text.data(), sizeof(Word));
    std::memcpy(&tail, last, sizeof(Word));
    std::memcpy(to, &head, sizeof(Word));
    std::memcpy(to + text.size() - sizeof(Word), &tail, sizeof(Word));
    return text.size();
}

std::size_t Copy(std::string_view text, char* to) {
    const std::size_t size = text.size();
    if (size > 2 * sizeof(std::uint64_t)) {
        std::memcpy(to, text.data(), size);
        return size;
    }
    if (size >= sizeof(std::uint64_t)) return CopyShort<std::uint64_t>(text, to);
    if (size >= sizeof(std::uint32_t)) return CopyShort<std::uint32_t>(text, to);
    if (size >= sizeof(std::uint16_t)) return CopyShort<std::uint16_t>(text, to);
    if (size == 1) *to = text.front();
    return size;
}

}  // namespace

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
    // With room for what is put behind it later.
    if (length > statement.capacity()) statement.reserve(2 * length);
    statement.resize(length);
    for (const SqlPiece& piece : pieces)
        end += Copy(piece.Text(), statement.data() + end);
}

std::string SelectHead(std::string_view defaultHead, std::string_view sColumnas) {
    return sColumnas.empty() ? std::string(defaultHead) : Sql({"Select ", sColumnas});
}

}  // namespace Zontara
