#include "dhRichClient3/dialect/bare_names.h"

#include "dhRichClient3/dialect/outer_select.h"

#include <algorithm>

namespace dhRichClient3::dialect {
namespace {

/// A piece of text that goes in before a place of the original.
struct Insertion {
    std::size_t offset;
    std::string text;
};

/// The qualifier of a name with its point, or none.
std::optional<std::string> QualifierOf(std::string_view name, const std::vector<FromTable>& tables,
                                       const Catalogue& catalogue) {
    for (const FromTable& from : tables) {
        if (catalogue.Offers(from.table, name)) return std::string(from.qualifier) + ".";
    }
    return std::nullopt;
}

std::string AsAlias(std::string_view span) {
    std::string alias = " AS \"";
    for (const char c : span)
        alias.append(c == '"' ? 2 : 1, c);
    return alias + "\"";
}

std::string Joined(std::string_view text, const std::vector<Insertion>& insertions) {
    std::string result;
    std::size_t done = 0;
    for (const auto& [offset, piece] : insertions) {
        result.append(text, done, offset - done).append(piece);
        done = offset;
    }
    return result.append(text, done);
}

}  // namespace

std::optional<std::string> AmbiguousName(std::string_view refusal) {
    constexpr std::string_view kRefusal = "ambiguous column name: ";
    if (refusal.substr(0, kRefusal.size()) != kRefusal) return std::nullopt;
    refusal.remove_prefix(kRefusal.size());
    if (refusal.empty() || refusal.find('.') != std::string_view::npos) return std::nullopt;
    return std::string(refusal);
}

std::optional<std::string> QualifyBareNames(std::string_view text, const std::vector<Token>& tokens,
                                            const std::vector<std::string>& names, const Catalogue& catalogue) {
    const OuterSelect select = ReadOuterSelect(tokens);
    std::vector<std::string> qualifiers;
    for (const auto& name : names) {
        auto qualifier = QualifierOf(name, select.tables, catalogue);
        if (!qualifier) return std::nullopt;
        qualifiers.push_back(std::move(*qualifier));
    }

    std::vector<bool> used(names.size());
    std::vector<Insertion> insertions;
    const auto offsetOf = [&](const Token& token) { return static_cast<std::size_t>(token.text.data() - text.data()); };
    auto item = select.items.begin();
    bool itemTouched = false;
    const auto closeItem = [&] {
        const Token& last = tokens[item->end - 1];
        const std::size_t begin = offsetOf(tokens[item->begin]);
        const std::size_t end = offsetOf(last) + last.text.size();
        if (itemTouched && item->named) insertions.push_back({end, AsAlias(text.substr(begin, end - begin))});
        itemTouched = false;
        ++item;
    };
    for (const std::size_t place : select.bareNames) {
        while (item != select.items.end() && place >= item->end)
            closeItem();
        for (std::size_t i = 0; i < names.size(); ++i) {
            if (!tokens[place].Names(names[i])) continue;
            insertions.push_back({offsetOf(tokens[place]), qualifiers[i]});
            used[i] = true;
            itemTouched = true;
        }
    }
    while (item != select.items.end())
        closeItem();
    if (std::find(used.begin(), used.end(), false) != used.end()) return std::nullopt;
    return Joined(text, insertions);
}

}  // namespace dhRichClient3::dialect
