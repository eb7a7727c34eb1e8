#include "host/dump/cell.h"

#include "host/csv/reader.h"
#include "host/csv/writer.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>
#include <string_view>

namespace host::dump {

namespace {

constexpr std::string_view kDigits = "0123456789abcdef";

std::string Hex(char mark, std::string_view bytes) {
    std::string hex{mark, '\''};
    for (const char c : bytes) {
        const auto byte = static_cast<unsigned char>(c);
        hex += kDigits[byte >> 4];
        hex += kDigits[byte & 15];
    }
    hex += '\'';
    return hex;
}

/// The bytes between the quotes of x'...' or t'...'.
std::optional<std::string> FromHex(std::string_view cell) {
    if (cell.size() < 3 || cell[1] != '\'' || cell.back() != '\'' || cell.size() % 2 == 0) return std::nullopt;
    std::string bytes;
    for (std::size_t at = 2; at + 1 < cell.size(); at += 2) {
        const std::size_t high = kDigits.find(cell[at]);
        const std::size_t low = kDigits.find(cell[at + 1]);
        if (high == std::string_view::npos || low == std::string_view::npos) return std::nullopt;
        bytes += static_cast<char>(high * 16 + low);
    }
    return bytes;
}

/// The shortest text that reads back as the same number, and that no whole number has.
std::string RealText(double number) {
    if (std::isinf(number)) return number > 0 ? "inf" : "-inf";
    std::array<char, 32> buffer{};
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), number).ptr;
    std::string text(buffer.data(), end);
    if (text.find_first_of(".e") == std::string::npos) text += ".0";
    return text;
}

std::string TextCell(const std::string& text) {
    const bool plain = text.find('\0') == std::string::npos && csv::IsUtf8(text);
    return plain ? csv::Quoted(text) : Hex('t', text);
}

template <class Number> std::optional<Number> NumberIn(const std::string& cell) {
    Number number{};
    const char* const end = cell.data() + cell.size();
    const auto [stop, error] = std::from_chars(cell.data(), end, number);
    if (error != std::errc() || stop != end) return std::nullopt;
    return number;
}

}  // namespace

std::string ToCsv(const Stored& value) {
    switch (value.index()) {
        case 1:
            return std::to_string(std::get<std::int64_t>(value));
        case 2:
            return RealText(std::get<double>(value));
        case 3:
            return TextCell(std::get<std::string>(value));
        case 4:
            return Hex('x', std::get<Bytes>(value).bytes);
        default:
            return {};
    }
}

std::optional<Stored> FromCsv(const std::string& cell, bool quoted) {
    if (quoted) return Stored(cell);
    if (cell.empty()) return Stored();
    if (cell.front() == 'x' || cell.front() == 't') {
        std::optional<std::string> bytes = FromHex(cell);
        if (!bytes) return std::nullopt;
        return cell.front() == 'x' ? Stored(Bytes{std::move(*bytes)}) : Stored(std::move(*bytes));
    }
    if (cell == "inf") return Stored(std::numeric_limits<double>::infinity());
    if (cell == "-inf") return Stored(-std::numeric_limits<double>::infinity());
    if (cell.find_first_not_of("-+.e0123456789") != std::string::npos) return std::nullopt;
    if (const auto whole = NumberIn<std::int64_t>(cell)) return Stored(*whole);
    if (const auto real = NumberIn<double>(cell)) return Stored(*real);
    return std::nullopt;
}

}  // namespace host::dump
