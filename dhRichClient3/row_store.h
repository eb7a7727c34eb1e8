#pragma once

#include "frame/value.h"

#include <array>
#include <cstddef>
#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace dhRichClient3 {

/// The names of a query's columns, in order; shared by all rows that one statement gives.
class ColumnNames {
public:
    explicit ColumnNames(std::vector<std::string> names);

    std::size_t Count() const { return columns_.size(); }
    const std::string& operator[](std::size_t column) const { return columns_[column].name; }

    /// Position of the first column of a name, without regard to the case of ASCII letters; `kNone` if there is none.
    /// Costs a comparison or two when names are asked for in the same order row after row, and run after run.
    std::size_t Find(std::string_view name) const;
    static constexpr std::size_t kNone = static_cast<std::size_t>(-1);

private:
    struct Column {
        std::string name;
        std::uint32_t hash;
    };

    std::size_t Search(std::string_view name) const;

    bool Is(std::size_t column, std::string_view name) const;

    std::vector<Column> columns_;
    /// By the column that was found last: the two that were found after it of late.
    struct Followers {
        std::uint8_t last = 0;
        std::uint8_t before = 0;
    };
    mutable std::array<Followers, 64> followers_{};
    mutable std::size_t found_ = 0;
};

/// Rows of a query in compact form: nine bytes a cell in chunks, texts behind their length in blocks, a text that
/// repeats the one above it held once. No heap object per cell, and but for a few cells at the beginning nothing is
/// moved when rows are added, so that at no time more memory is taken than in the end. A row is added cell by cell, in
/// the order of the columns. Knows nothing of where the rows come from.
class RowStore {
public:
    /// Starts a table of these columns with no rows.
    explicit RowStore(std::shared_ptr<const ColumnNames> columns);
    explicit RowStore(std::vector<std::string> columns);
    /// A table of no columns.
    RowStore();

    void AddNull();
    /// A whole number: an int32 if it fits, else a float64.
    void AddInteger(std::int64_t value);
    void AddReal(double value);
    /// The text is copied.
    void AddText(std::string_view text);

    std::size_t Rows() const { return columns_->Count() == 0 ? 0 : cells_ / columns_->Count(); }
    std::size_t Columns() const { return columns_->Count(); }
    /// Memory that cells and texts take.
    std::size_t Bytes() const { return cells_ * (sizeof(Payload) + sizeof(Kind)) + textBytes_; }
    const std::string& ColumnName(std::size_t column) const { return (*columns_)[column]; }

    /// As `ColumnNames::Find`.
    std::size_t Find(std::string_view name) const { return columns_->Find(name); }
    static constexpr std::size_t kNone = ColumnNames::kNone;

    /// A value. Row and column must be there.
    Zontara::Value At(std::size_t row, std::size_t column) const;

private:
    enum class Kind : std::uint8_t { Null, Int32, Float64, Text };
    union Payload {
        std::int32_t whole;
        double real;
        /// Where its length stands, and behind it the characters.
        const char* text;
    };
    static constexpr std::size_t kCellsOfChunk = 2048;
    /// Room for a row or a few, which most questions are answered with.
    static constexpr std::size_t kCellsOfFirstChunk = 64;
    struct Chunk {
        explicit Chunk(std::size_t cells);
        std::unique_ptr<Payload[]> payloads;
        std::unique_ptr<Kind[]> kinds;
    };

    static const std::shared_ptr<const ColumnNames>& NoColumns();
    Payload& Add(Kind kind);
    void MakeRoom();
    const char* TextAbove(std::string_view text) const;
    char* RoomFor(std::size_t bytes);

    std::shared_ptr<const ColumnNames> columns_;
    std::vector<Chunk> chunks_;
    std::size_t cells_ = 0;
    /// How many cells there is room for.
    std::size_t room_ = 0;
    std::vector<std::unique_ptr<char[]>> blocks_;
    char* free_ = nullptr;
    std::size_t freeBytes_ = 0;
    std::size_t textBytes_ = 0;
};

}  // namespace dhRichClient3
