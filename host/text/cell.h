#pragma once

#include "host/text/colour.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>

namespace host::text {

/// One cell of a table: the text that people read, and the value that programs get.
class Cell {
public:
    using Value = std::variant<std::nullptr_t, bool, std::int64_t, double, std::string>;

    /// Nothing: an empty text, null for programs.
    Cell() = default;
    Cell(std::string text) : text_(std::move(text)), value_(text_) {}
    Cell(std::string_view text) : Cell(std::string(text)) {}
    Cell(const char* text) : Cell(std::string(text)) {}
    template <class Whole, class = std::enable_if_t<std::is_integral_v<Whole> && !std::is_same_v<Whole, bool>>>
    Cell(Whole number) : text_(std::to_string(number)), value_(static_cast<std::int64_t>(number)) {}

    /// A number with decimals; people read the shortest text of it, or the text given.
    static Cell Real(double number);
    static Cell Real(double number, std::string text);
    /// True or false; people read a word.
    static Cell Flag(bool holds, std::string_view yes = "yes", std::string_view no = "no");

    /// The same cell, its text in a tone.
    Cell In(Tone tone) &&;

    const std::string& Text() const { return text_; }
    const Value& ForPrograms() const { return value_; }
    Tone InTone() const { return tone_; }

private:
    Cell(std::string text, Value value) : text_(std::move(text)), value_(std::move(value)) {}

    std::string text_;
    Value value_ = nullptr;
    Tone tone_ = Tone::Plain;
};

}  // namespace host::text
