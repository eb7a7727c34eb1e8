#pragma once

#include "host/csv/reader.h"
#include "tests/fuzz/check.h"

#include <algorithm>
#include <string>

namespace fuzz {

/// A document written out again with every cell in quotes.
inline std::string WriteCsv(const host::csv::Document& document) {
    std::string text;
    const auto write = [&](const std::vector<std::string>& cells) {
        for (std::size_t i = 0; i < cells.size(); ++i) {
            if (i > 0) text += document.separator;
            text += '"';
            for (const char c : cells[i])
                text += c == '"' ? std::string("\"\"") : std::string(1, c);
            text += '"';
        }
        text += '\n';
    };
    write(document.header);
    for (const auto& record : document.records)
        write(record.cells);
    return text;
}

/// An input of the CSV reader's target: any bytes. Records are as wide as the header and in order, and what was read
/// without a fault and is written out reads back as the same.
inline void FeedCsv(std::string_view text) {
    const host::csv::Document document = host::csv::Read(text);
    std::size_t line = 0;
    for (const auto& record : document.records) {
        Require(record.cells.size() == document.header.size(), "a record of another width than the header");
        Require(record.line > line, "records out of order");
        line = record.line;
        for (const std::string& cell : record.cells)
            Require(host::csv::IsUtf8(cell), "a cell that isn't UTF-8");
    }
    // A separator has to be seen to be found again, and a header that is blank but for blanks would be passed over.
    const bool blank =
        std::all_of(document.header.begin(), document.header.end(), [](auto& cell) { return cell.empty(); });
    if (!document.faults.empty() || document.header.size() < 2 || blank) return;
    const host::csv::Document again = host::csv::Read(WriteCsv(document));
    Require(again.faults.empty() && again.records.size() == document.records.size(), "a document doesn't read back");
    for (std::size_t i = 0; i < again.records.size(); ++i)
        Require(again.records[i].cells == document.records[i].cells, "a record doesn't read back");
}

}  // namespace fuzz
