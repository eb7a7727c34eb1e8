#include "errors/text.h"

#include <cstdint>

namespace Zontara::HuntERR31 {

namespace {

/// What the first byte of a sequence says of it: its length, and the range of its second byte. Length 1 for a byte
/// that stands alone, valid or not.
struct Lead {
    std::size_t length;
    std::uint8_t low;
    std::uint8_t high;
};

Lead LeadOf(std::uint8_t byte) {
    if (byte < 0xC2 || byte > 0xF4) return {1, 0, 0};
    if (byte < 0xE0) return {2, 0x80, 0xBF};
    if (byte == 0xE0) return {3, 0xA0, 0xBF};
    if (byte == 0xED) return {3, 0x80, 0x9F};
    if (byte < 0xF0) return {3, 0x80, 0xBF};
    if (byte == 0xF0) return {4, 0x90, 0xBF};
    if (byte == 0xF4) return {4, 0x80, 0x8F};
    return {4, 0x80, 0xBF};
}

std::uint8_t ByteAt(std::string_view text, std::size_t position) { return static_cast<std::uint8_t>(text[position]); }

}  // namespace

std::size_t FirstCharacter(std::string_view text) {
    const Lead lead = LeadOf(ByteAt(text, 0));
    if (lead.length == 1 || text.size() < lead.length) return 1;
    if (ByteAt(text, 1) < lead.low || ByteAt(text, 1) > lead.high) return 1;
    for (std::size_t i = 2; i < lead.length; ++i) {
        if ((ByteAt(text, i) & 0xC0) != 0x80) return 1;
    }
    return lead.length;
}

std::size_t CountCharacters(std::string_view text, std::size_t enough) {
    std::size_t count = 0;
    while (!text.empty() && count < enough) {
        text.remove_prefix(FirstCharacter(text));
        ++count;
    }
    return count;
}

std::string_view WithoutFirst(std::string_view text) {
    if (!text.empty()) text.remove_prefix(FirstCharacter(text));
    return text;
}

std::string_view WithoutLast(std::string_view text) {
    if (text.empty()) return text;
    // A valid sequence that ends the text is one character; otherwise its last byte is one by itself.
    for (std::size_t length = 4; length > 1; --length) {
        if (text.size() >= length && FirstCharacter(text.substr(text.size() - length)) == length) {
            text.remove_suffix(length);
            return text;
        }
    }
    text.remove_suffix(1);
    return text;
}

std::vector<std::string_view> Split(std::string_view text, char separator) {
    std::vector<std::string_view> pieces;
    if (text.empty()) return pieces;
    for (;;) {
        const std::size_t end = text.find(separator);
        pieces.push_back(text.substr(0, end));
        if (end == std::string_view::npos) return pieces;
        text.remove_prefix(end + 1);
    }
}

std::string ReplaceAll(std::string_view text, std::string_view what, std::string_view by) {
    std::string result;
    result.reserve(text.size());
    for (;;) {
        const std::size_t found = text.find(what);
        result += text.substr(0, found);
        if (found == std::string_view::npos) return result;
        result += by;
        text.remove_prefix(found + what.size());
    }
}

}  // namespace Zontara::HuntERR31
