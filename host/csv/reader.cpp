#include "host/csv/reader.h"

#include <fmt/format.h>
#include <algorithm>

namespace host::csv {

namespace {

constexpr std::string_view kByteOrderMark = "\xEF\xBB\xBF";

/// Number of bytes that a UTF-8 character with this first byte has; 0 for none.
std::size_t Utf8Length(unsigned char first) {
    if (first < 0x80) return 1;
    if (first >= 0xC2 && first <= 0xDF) return 2;
    if (first >= 0xE0 && first <= 0xEF) return 3;
    if (first >= 0xF0 && first <= 0xF4) return 4;
    return 0;
}

/// Whether the second byte is in order for the first: no overlong form, no surrogate, nothing above U+10FFFF.
bool SecondByteFits(unsigned char first, unsigned char second) {
    switch (first) {
        case 0xE0:
            return second >= 0xA0;
        case 0xED:
            return second <= 0x9F;
        case 0xF0:
            return second >= 0x90;
        case 0xF4:
            return second <= 0x8F;
        default:
            return true;
    }
}

/// The separator that the first line holds more of outside quotes; a comma when there is a tie.
char SeparatorOf(std::string_view text) {
    std::size_t commas = 0;
    std::size_t semicolons = 0;
    bool quoted = false;
    for (const char c : text) {
        if (c == '"') quoted = !quoted;
        if (quoted) continue;
        if (c == '\n' || c == '\r') break;
        if (c == ',') ++commas;
        if (c == ';') ++semicolons;
    }
    return semicolons > commas ? ';' : ',';
}

std::string Trimmed(const std::string& text) {
    const std::size_t from = text.find_first_not_of(" \t");
    if (from == std::string::npos) return {};
    return text.substr(from, text.find_last_not_of(" \t") - from + 1);
}

/// Walks the text record by record.
class Walk {
public:
    Walk(std::string_view text, char separator, std::vector<Fault>& faults)
        : text_(text), separator_(separator), faults_(faults) {}

    bool AtEnd() const { return at_ >= text_.size(); }

    /// The next record. False when it has a fault, which is noted.
    bool Next(Record& record) {
        record.line = line_;
        record.cells.clear();
        record.quoted.clear();
        const std::size_t before = faults_.size();
        do {
            record.quoted.push_back(Here('"'));
            record.cells.push_back(Cell(record));
        } while (TakeSeparator());
        TakeLineEnd();
        return faults_.size() == before;
    }

private:
    bool Here(char c) const { return !AtEnd() && text_[at_] == c; }
    bool AtLineEnd() const { return AtEnd() || text_[at_] == '\n' || text_[at_] == '\r'; }

    void Fail(const Record& record, std::string reason) {
        faults_.push_back({record.line, record.cells.size() + 1, std::move(reason)});
    }

    bool TakeSeparator() {
        if (!Here(separator_)) return false;
        ++at_;
        return true;
    }

    void TakeLineEnd() {
        if (AtEnd()) return;
        const bool carriageReturn = Here('\r');
        ++at_;
        if (carriageReturn && Here('\n')) ++at_;
        ++line_;
    }

    std::string Cell(const Record& record) {
        std::string cell = Here('"') ? Quoted(record) : Bare(record);
        if (cell.find('\0') != std::string::npos) {
            Fail(record, "the cell holds a character of code 0");
        } else if (!IsUtf8(cell)) {
            Fail(record, "the cell isn't UTF-8; save the file in that encoding");
        }
        return cell;
    }

    std::string Bare(const Record& record) {
        const std::size_t from = at_;
        while (!AtLineEnd() && !Here(separator_))
            ++at_;
        const std::string_view cell = text_.substr(from, at_ - from);
        if (cell.find('"') != std::string_view::npos) {
            Fail(record, "a quote inside a cell without quotes; put the cell in quotes and double those inside it");
        }
        return std::string(cell);
    }

    std::string Quoted(const Record& record) {
        std::string cell;
        ++at_;
        for (;;) {
            if (AtEnd()) {
                Fail(record, "the quote that opens this cell is never closed");
                return cell;
            }
            const char c = text_[at_++];
            if (c == '"' && !Here('"')) break;
            if (c == '"') ++at_;
            if (c == '\n' || (c == '\r' && !Here('\n'))) ++line_;
            cell += c;
        }
        if (!AtLineEnd() && !Here(separator_)) {
            Fail(record, "text behind the quote that closes the cell; double the quotes inside it");
            while (!AtLineEnd())
                ++at_;
        }
        return cell;
    }

    std::string_view text_;
    char separator_;
    std::vector<Fault>& faults_;
    std::size_t at_ = 0;
    std::size_t line_ = 1;
};

bool IsBlank(const Record& record, Blank blank) {
    if (blank == Blank::NoCharacter) {
        return record.cells.size() == 1 && record.cells.front().empty() && !record.quoted.front();
    }
    return std::all_of(record.cells.begin(), record.cells.end(), [](const std::string& cell) { return cell.empty(); });
}

}  // namespace

bool IsUtf8(std::string_view text) {
    for (std::size_t at = 0; at < text.size();) {
        const auto first = static_cast<unsigned char>(text[at]);
        const std::size_t length = Utf8Length(first);
        if (length == 0 || at + length > text.size()) return false;
        for (std::size_t i = 1; i < length; ++i) {
            const auto next = static_cast<unsigned char>(text[at + i]);
            if ((next & 0xC0) != 0x80 || (i == 1 && !SecondByteFits(first, next))) return false;
        }
        at += length;
    }
    return true;
}

Document Read(std::string_view text, Blank blank) {
    Document document;
    if (text.substr(0, kByteOrderMark.size()) == kByteOrderMark) text.remove_prefix(kByteOrderMark.size());
    document.separator = SeparatorOf(text);

    Walk walk(text, document.separator, document.faults);
    Record record;
    bool headed = false;
    while (!walk.AtEnd()) {
        const bool whole = walk.Next(record);
        if (!headed) {
            if (whole && IsBlank(record, blank)) continue;
            headed = true;
            for (const std::string& name : record.cells)
                document.header.push_back(Trimmed(name));
            if (!whole) break;
        } else if (whole && !IsBlank(record, blank)) {
            if (record.cells.size() == document.header.size()) {
                document.records.push_back(std::move(record));
            } else {
                document.faults.push_back(
                    {record.line, 0,
                     fmt::format("{} cells where the header has {}", record.cells.size(), document.header.size())});
            }
        }
    }
    return document;
}

}  // namespace host::csv
