#include "dhRichClient3/row_store.h"

#include <limits>

namespace dhRichClient3 {
namespace {

constexpr char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::uint32_t HashOf(std::string_view name) {
    std::uint32_t hash = 2166136261U;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(Lower(c))) * 16777619U;
    return hash;
}

bool SameName(std::string_view left, std::string_view right) {
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (Lower(left[i]) != Lower(right[i])) return false;
    }
    return true;
}

}  // namespace

RowStore::RowStore(std::vector<std::string> columns) {
    columns_.reserve(columns.size());
    for (auto& name : columns) {
        const auto hash = HashOf(name);
        columns_.push_back({std::move(name), hash});
    }
}

void RowStore::AddNull() { cells_.push_back(Cell{{0}, 0, Kind::Null}); }

void RowStore::AddInteger(std::int64_t value) {
    const bool fits =
        value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max();
    if (!fits) return AddReal(static_cast<double>(value));
    cells_.push_back(Cell{{static_cast<std::int32_t>(value)}, 0, Kind::Int32});
}

void RowStore::AddReal(double value) {
    Cell cell{{0}, 0, Kind::Float64};
    cell.real = value;
    cells_.push_back(cell);
}

void RowStore::AddText(std::string_view text) {
    Cell cell{{0}, static_cast<std::uint32_t>(text.size()), Kind::Text};
    cell.offset = arena_.size();
    cells_.push_back(cell);
    arena_.append(text);
}

std::size_t RowStore::Find(std::string_view name) const {
    const auto hash = HashOf(name);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].hash == hash && SameName(columns_[i].name, name)) return i;
    }
    return kNone;
}

Zontara::Value RowStore::At(std::size_t row, std::size_t column) const {
    const Cell& cell = cells_[row * columns_.size() + column];
    switch (cell.kind) {
        case Kind::Int32:
            return cell.whole;
        case Kind::Float64:
            return cell.real;
        case Kind::Text:
            return std::string_view(arena_).substr(cell.offset, cell.length);
        case Kind::Null:
            break;
    }
    return Zontara::Null{};
}

}  // namespace dhRichClient3
