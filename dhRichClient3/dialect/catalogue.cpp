#include "dhRichClient3/dialect/catalogue.h"

#include "dhRichClient3/dialect/tokens.h"

namespace dhRichClient3::dialect {
namespace {

std::string KeyOf(std::string_view table, std::string_view column) {
    std::string key;
    key.reserve(table.size() + column.size() + 1);
    key.append(table).append(1, '.').append(column);
    for (char& c : key) {
        if (c >= 'A' && c <= 'Z') c = static_cast<char>(c - 'A' + 'a');
    }
    return key;
}

bool IsMarked(std::string_view declaredType) {
    std::vector<Token> words;
    Tokenize(declaredType, words);
    for (const Token& word : words) {
        if (word.Names(kQualifiedOnly)) return true;
    }
    return false;
}

}  // namespace

void Catalogue::Add(std::string_view table, std::string_view column, std::string_view declaredType) {
    columns_[KeyOf(table, column)] = IsMarked(declaredType);
}

void Catalogue::Clear() {
    columns_.clear();
    read_.clear();
}

bool Catalogue::Offers(std::string_view table, std::string_view column) const {
    // A table counts as read only after its columns came: the reader may fail.
    if (reader_ && !read_.contains(KeyOf(table, ""))) {
        for (const Column& found : reader_(table))
            columns_[KeyOf(table, found.name)] = IsMarked(found.declaredType);
        read_.insert(KeyOf(table, ""));
    }
    const auto found = columns_.find(KeyOf(table, column));
    return found != columns_.end() && !found->second;
}

}  // namespace dhRichClient3::dialect
