#include "host/load/cells.h"

#include "frame/convert.h"
#include "frame/date.h"
#include "frame/raised_error.h"

#include <fmt/format.h>
#include <array>
#include <charconv>
#include <cmath>

namespace host::load {

namespace {

using Zontara::Value;

std::optional<std::int64_t> WholeNumber(std::string_view text) {
    std::int64_t number = 0;
    const char* const end = text.data() + text.size();
    if (!text.empty() && text.front() == '+') text.remove_prefix(1);
    const auto [stop, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || stop != end || text.empty()) return std::nullopt;
    return number;
}

std::optional<Value> Whole(std::string_view text, CellKind kind, std::string& reason) {
    std::int64_t low = INT32_MIN;
    std::int64_t high = INT32_MAX;
    if (kind == CellKind::Int16) low = INT16_MIN, high = INT16_MAX;
    if (kind == CellKind::Byte) low = 0, high = UINT8_MAX;
    if (kind == CellKind::Flag) low = 0, high = 1;
    const std::optional<std::int64_t> number = WholeNumber(text);
    if (!number || *number < low || *number > high) {
        reason = kind == CellKind::Flag ? fmt::format("'{}' is neither 0 nor 1", text)
                                        : fmt::format("'{}' is no whole number from {} to {}", text, low, high);
        return std::nullopt;
    }
    switch (kind) {
        case CellKind::Int16:
            return Value(static_cast<std::int16_t>(*number));
        case CellKind::Byte:
        case CellKind::Flag:
            return Value(static_cast<std::uint8_t>(*number));
        default:
            return Value(static_cast<std::int32_t>(*number));
    }
}

std::optional<Value> Decimal(std::string_view text, CellKind kind, std::string& reason) {
    const std::optional<double> number = Zontara::NumberIn(text);
    if (!number || !std::isfinite(*number)) {
        reason = fmt::format("'{}' is no number{}", text,
                             text.find(',') == std::string_view::npos ? "" : "; write decimals behind a point");
        return std::nullopt;
    }
    if (kind == CellKind::Money) {
        try {
            return Value(Zontara::Money::FromNumber(*number));
        } catch (const Zontara::RaisedError&) {
            reason = fmt::format("'{}' is no amount of money", text);
            return std::nullopt;
        }
    }
    const auto narrow = static_cast<float>(*number);
    if (!std::isfinite(narrow)) {
        reason = fmt::format("'{}' is too large", text);
        return std::nullopt;
    }
    return Value(narrow);
}

}  // namespace

std::string_view Trimmed(std::string_view text) {
    const std::size_t from = text.find_first_not_of(" \t");
    if (from == std::string_view::npos) return {};
    return text.substr(from, text.find_last_not_of(" \t") - from + 1);
}

std::optional<std::string> IsoDate(std::string_view text) {
    const char separator = text.find('-') != std::string_view::npos ? '-' : '/';
    std::array<std::int32_t, 3> parts{};
    std::array<std::size_t, 3> digits{};
    for (std::size_t i = 0; i < parts.size(); ++i) {
        const std::size_t end = i + 1 < parts.size() ? text.find(separator) : text.size();
        if (end == std::string_view::npos) return std::nullopt;
        const auto [stop, error] = std::from_chars(text.data(), text.data() + end, parts[i]);
        if (error != std::errc() || stop != text.data() + end || parts[i] < 0) return std::nullopt;
        digits[i] = end;
        text.remove_prefix(std::min(end + 1, text.size()));
    }
    const std::size_t year = separator == '-' ? 0 : 2;
    const std::size_t day = 2 - year;
    if (digits[year] != 4 || digits[1] > 2 || digits[day] > 2) return std::nullopt;
    if (parts[year] < 100 || !Zontara::IsCalendarDay(parts[year], parts[1], parts[day])) return std::nullopt;
    return fmt::format("{:04}-{:02}-{:02}", parts[year], parts[1], parts[day]);
}

std::optional<Value> Cell(std::string_view text, CellKind kind, std::string& reason) {
    if (text.empty()) return Value();
    const bool freeText = kind == CellKind::Text || kind == CellKind::PlainText;
    if (!freeText) {
        text = Trimmed(text);
        if (text.empty()) return Value();
    }
    switch (kind) {
        case CellKind::PlainText:
        case CellKind::PlainCode:
            if (text.find('\'') != std::string_view::npos) {
                reason = fmt::format("a quote (') can't be stored in this column: {}", text);
                return std::nullopt;
            }
            return Value(text);
        case CellKind::Text:
        case CellKind::Code:
            return Value(text);
        case CellKind::Real:
        case CellKind::Money:
            return Decimal(text, kind, reason);
        case CellKind::Date:
            if (const std::optional<std::string> date = IsoDate(text)) return Value(*date);
            reason = fmt::format("'{}' is no date; write yyyy-mm-dd or dd/mm/yyyy", text);
            return std::nullopt;
        default:
            return Whole(text, kind, reason);
    }
}

}  // namespace host::load
