#include "host/text/grid.h"

#include <algorithm>
#include <nlohmann/json.hpp>

namespace host::text {

namespace {

/// Whether a byte goes on with a character instead of beginning one.
bool Continues(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

/// The text without line breaks, and without blanks at its end.
std::string OneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    text.resize(text.find_last_not_of(' ') + 1);
    return text;
}

std::string KeyOf(std::string key) {
    for (char& c : key) {
        if (c == ' ') c = '_';
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return key;
}

/// A text as it stands on the screen.
struct Shown {
    std::string text;
    Tone tone = Tone::Plain;
};

}  // namespace

std::size_t Length(std::string_view text) {
    return static_cast<std::size_t>(std::count_if(text.begin(), text.end(), [](char c) { return !Continues(c); }));
}

std::string Cut(std::string_view text, std::size_t widest) {
    if (widest == 0 || Length(text) <= widest) return std::string(text);
    std::size_t at = 0;
    for (std::size_t left = widest - 1; left > 0; --left) {
        do {
            ++at;
        } while (at < text.size() && Continues(text[at]));
    }
    return std::string(text.substr(0, at)) + "…";
}

Grid::Grid(std::vector<Column> columns) : columns_(std::move(columns)) {
    for (Column& column : columns_) {
        if (column.key.empty()) column.key = KeyOf(column.title);
    }
}

void Grid::Add(std::vector<Cell> cells) {
    cells.resize(columns_.size());
    lines_.push_back(std::move(cells));
}

void Grid::Print(std::ostream& out, std::size_t indent) const {
    std::vector<std::vector<Shown>> shown(1);
    std::vector<std::size_t> widths;
    for (const Column& column : columns_) {
        shown.front().push_back({column.title, Tone::Strong});
        widths.push_back(Length(column.title));
    }
    for (const std::vector<Cell>& line : lines_) {
        std::vector<Shown> cells;
        for (std::size_t i = 0; i < line.size(); ++i) {
            cells.push_back({Cut(OneLine(line[i].Text()), columns_[i].widest), line[i].InTone()});
            widths[i] = std::max(widths[i], Length(cells.back().text));
        }
        shown.push_back(std::move(cells));
    }
    std::vector<Shown> rule;
    rule.reserve(widths.size());
    for (const std::size_t width : widths)
        rule.push_back({std::string(width, '-'), Tone::Faint});
    shown.insert(shown.begin() + 1, std::move(rule));

    for (const std::vector<Shown>& cells : shown) {
        std::size_t blanks = indent;
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::size_t room = widths[i] - Length(cells[i].text);
            const bool right = columns_[i].align == Align::Right;
            if (i > 0) blanks += 2;
            if (right) blanks += room;
            if (!cells[i].text.empty()) {
                out << std::string(blanks, ' ') << Paint(out, cells[i].tone, cells[i].text);
                blanks = 0;
            }
            if (!right) blanks += room;
        }
        out << '\n';
    }
}

nlohmann::ordered_json Grid::ToJson() const {
    nlohmann::ordered_json array = nlohmann::ordered_json::array();
    for (const std::vector<Cell>& line : lines_) {
        nlohmann::ordered_json object = nlohmann::ordered_json::object();
        for (std::size_t i = 0; i < line.size(); ++i) {
            std::visit([&](const auto& value) { object[columns_[i].key] = value; }, line[i].ForPrograms());
        }
        array.push_back(std::move(object));
    }
    return array;
}

}  // namespace host::text
