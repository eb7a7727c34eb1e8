#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// Reads comma-separated text by RFC 4180: cells in quotes may hold the separator, line breaks and doubled quotes.
/// UTF-8 with or without a byte-order mark; lines end in LF, CR LF or CR; the separator is `,` or `;`, whichever the
/// first line holds more of outside quotes.
namespace host::csv {

struct Record {
    /// The line on which the record begins, the first of the text being 1.
    std::size_t line = 0;
    /// As many as the header has.
    std::vector<std::string> cells;
    /// For each cell whether it stood in quotes.
    std::vector<bool> quoted;
};

/// What is wrong with a record, which is then left out.
struct Fault {
    std::size_t line = 0;
    /// The cell, from 1; 0 when the record as a whole is meant.
    std::size_t cell = 0;
    std::string reason;
};

struct Document {
    char separator = ',';
    /// The first record's cells, blanks around them taken off. Empty when the text holds no record at all.
    std::vector<std::string> header;
    std::vector<Record> records;
    /// In the order of the text.
    std::vector<Fault> faults;
};

/// Which lines say nothing and are passed over: those with nothing but empty cells, as spreadsheets write them, or only
/// those without any character.
enum class Blank { EmptyCells, NoCharacter };

/// Reads a whole text. Never fails: what is wrong stands among the faults.
Document Read(std::string_view text, Blank blank = Blank::EmptyCells);

/// Whether a text is well-formed UTF-8.
bool IsUtf8(std::string_view text);

}  // namespace host::csv
