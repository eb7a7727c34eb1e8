#include "host/text/grid.h"

#include <algorithm>

namespace host::text {

namespace {

/// Whether a byte goes on with a character instead of beginning one.
bool Continues(char c) { return (static_cast<unsigned char>(c) & 0xC0) == 0x80; }

std::string OneLine(std::string text) {
    std::replace_if(
        text.begin(), text.end(), [](char c) { return static_cast<unsigned char>(c) < ' '; }, ' ');
    return text;
}

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

Grid::Grid(std::vector<Column> columns) : columns_(std::move(columns)) {}

void Grid::Add(std::vector<std::string> cells) {
    cells.resize(columns_.size());
    for (std::size_t i = 0; i < cells.size(); ++i)
        cells[i] = Cut(OneLine(std::move(cells[i])), columns_[i].widest);
    lines_.push_back(std::move(cells));
}

void Grid::Print(std::ostream& out, std::size_t indent) const {
    std::vector<std::size_t> widths;
    std::vector<std::string> titles;
    std::vector<std::string> rules;
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        std::size_t width = Length(columns_[i].title);
        for (const auto& line : lines_)
            width = std::max(width, Length(line[i]));
        widths.push_back(width);
        titles.push_back(columns_[i].title);
        rules.emplace_back(width, '-');
    }
    const auto print = [&](const std::vector<std::string>& cells) {
        std::string line(indent, ' ');
        for (std::size_t i = 0; i < cells.size(); ++i) {
            const std::string blanks(widths[i] - Length(cells[i]), ' ');
            if (i > 0) line += "  ";
            line += columns_[i].align == Align::Right ? blanks + cells[i] : cells[i] + blanks;
        }
        line.resize(line.find_last_not_of(' ') + 1);
        out << line << '\n';
    };
    print(titles);
    print(rules);
    for (const auto& line : lines_)
        print(line);
}

}  // namespace host::text
