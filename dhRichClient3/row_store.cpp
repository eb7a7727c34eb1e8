#include "dhRichClient3/row_store.h"

#include <algorithm>
#include <cstring>
#include <limits>
#include <utility>

namespace dhRichClient3 {
namespace {

constexpr std::size_t kFirstBlock = 1024;
constexpr std::size_t kLargestBlock = 256 * 1024;

constexpr char Lower(char c) { return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c; }

std::uint32_t HashOf(std::string_view name) {
    std::uint32_t hash = 2166136261U;
    for (const char c : name)
        hash = (hash ^ static_cast<unsigned char>(Lower(c))) * 16777619U;
    return hash;
}

bool SameName(std::string_view left, std::string_view right) {
    if (left == right) return true;
    if (left.size() != right.size()) return false;
    for (std::size_t i = 0; i < left.size(); ++i) {
        if (Lower(left[i]) != Lower(right[i])) return false;
    }
    return true;
}

std::string_view TextAt(const char* length) {
    std::uint32_t size = 0;
    std::memcpy(&size, length, sizeof size);
    return {length + sizeof size, size};
}

}  // namespace

ColumnNames::ColumnNames(std::vector<std::string> names) {
    columns_.reserve(names.size());
    for (auto& name : names) {
        const auto hash = HashOf(name);
        columns_.push_back({std::move(name), hash});
    }
}

std::size_t ColumnNames::Find(std::string_view name) const {
    Followers& followers = followers_[found_];
    if (Is(followers.last, name)) return found_ = followers.last;
    if (Is(followers.before, name)) return found_ = followers.before;
    const std::size_t column = Search(name);
    if (column < followers_.size()) {
        followers = {static_cast<std::uint8_t>(column), followers.last};
        found_ = column;
    }
    return column;
}

bool ColumnNames::Is(std::size_t column, std::string_view name) const {
    return column < columns_.size() && SameName(columns_[column].name, name);
}

std::size_t ColumnNames::Search(std::string_view name) const {
    const auto hash = HashOf(name);
    for (std::size_t i = 0; i < columns_.size(); ++i) {
        if (columns_[i].hash == hash && SameName(columns_[i].name, name)) return i;
    }
    return kNone;
}

const std::shared_ptr<const ColumnNames>& RowStore::NoColumns() {
    static const auto none = std::make_shared<const ColumnNames>(std::vector<std::string>());
    return none;
}

RowStore::RowStore(std::shared_ptr<const ColumnNames> columns) : columns_(std::move(columns)) {}

RowStore::RowStore() : columns_(NoColumns()) {}

RowStore::RowStore(std::vector<std::string> columns)
    : RowStore(std::make_shared<const ColumnNames>(std::move(columns))) {}

// Not value-initialised: a cell is written before it is read.
RowStore::Chunk::Chunk(std::size_t cells)
    : payloads(std::make_unique_for_overwrite<Payload[]>(cells)),
      kinds(std::make_unique_for_overwrite<Kind[]>(cells)) {}

RowStore::Payload& RowStore::Add(Kind kind) {
    if (cells_ == room_) MakeRoom();
    const std::size_t place = cells_ % kCellsOfChunk;
    ++cells_;
    chunks_.back().kinds[place] = kind;
    return chunks_.back().payloads[place];
}

/// The first chunk is a small one, and gives way to one of full size.
void RowStore::MakeRoom() {
    const std::size_t cells = chunks_.empty() ? kCellsOfFirstChunk : kCellsOfChunk;
    Chunk chunk(cells);
    if (room_ == kCellsOfFirstChunk) {
        std::copy_n(chunks_.front().payloads.get(), room_, chunk.payloads.get());
        std::copy_n(chunks_.front().kinds.get(), room_, chunk.kinds.get());
        chunks_.front() = std::move(chunk);
        room_ = cells;
    } else {
        chunks_.push_back(std::move(chunk));
        room_ += cells;
    }
}

void RowStore::AddNull() { Add(Kind::Null); }

void RowStore::AddInteger(std::int64_t value) {
    const bool fits =
        value >= std::numeric_limits<std::int32_t>::min() && value <= std::numeric_limits<std::int32_t>::max();
    if (!fits) return AddReal(static_cast<double>(value));
    Add(Kind::Int32).whole = static_cast<std::int32_t>(value);
}

void RowStore::AddReal(double value) { Add(Kind::Float64).real = value; }

void RowStore::AddText(std::string_view text) {
    const char* held = TextAbove(text);
    if (held == nullptr) {
        const auto size = static_cast<std::uint32_t>(text.size());
        char* const room = RoomFor(sizeof size + text.size());
        std::memcpy(room, &size, sizeof size);
        std::copy(text.begin(), text.end(), room + sizeof size);
        held = room;
    }
    Add(Kind::Text).text = held;
}

/// The text of the cell above the one that comes next, if it is the same; else none.
const char* RowStore::TextAbove(std::string_view text) const {
    if (cells_ < columns_->Count()) return nullptr;
    const std::size_t above = cells_ - columns_->Count();
    const Chunk& chunk = chunks_[above / kCellsOfChunk];
    if (chunk.kinds[above % kCellsOfChunk] != Kind::Text) return nullptr;
    const char* const held = chunk.payloads[above % kCellsOfChunk].text;
    return TextAt(held) == text ? held : nullptr;
}

char* RowStore::RoomFor(std::size_t bytes) {
    if (bytes > freeBytes_) {
        freeBytes_ = std::max(bytes, std::min(kFirstBlock << std::min<std::size_t>(blocks_.size(), 8), kLargestBlock));
        blocks_.push_back(std::unique_ptr<char[]>(new char[freeBytes_]));
        free_ = blocks_.back().get();
    }
    textBytes_ += bytes;
    freeBytes_ -= bytes;
    return std::exchange(free_, free_ + bytes);
}

Zontara::Value RowStore::At(std::size_t row, std::size_t column) const {
    const std::size_t cell = row * columns_->Count() + column;
    const Chunk& chunk = chunks_[cell / kCellsOfChunk];
    const Payload& payload = chunk.payloads[cell % kCellsOfChunk];
    switch (chunk.kinds[cell % kCellsOfChunk]) {
        case Kind::Int32:
            return payload.whole;
        case Kind::Float64:
            return payload.real;
        case Kind::Text:
            return TextAt(payload.text);
        case Kind::Null:
            break;
    }
    return Zontara::Null{};
}

}  // namespace dhRichClient3
