#include "dhRichClient3/dialect/outer_select.h"

#include <algorithm>

namespace dhRichClient3::dialect {
namespace {

/// Words behind which an operand follows, so that a name there is no alias.
constexpr std::string_view kOperandFollows[] = {"SELECT", "DISTINCT", "ALL",     "AND",  "OR",    "NOT",  "IN",
                                                "IS",     "LIKE",     "GLOB",    "CASE", "WHEN",  "THEN", "ELSE",
                                                "MATCH",  "REGEXP",   "BETWEEN", "FROM", "ESCAPE"};

/// Words that can't be the alias of a table.
constexpr std::string_view kAfterTable[] = {"ON",    "USING",  "JOIN",   "LEFT",  "RIGHT",   "FULL",      "INNER",
                                            "CROSS", "OUTER",  "WHERE",  "GROUP", "ORDER",   "HAVING",    "LIMIT",
                                            "UNION", "EXCEPT", "WINDOW", "NOT",   "NATURAL", "INTERSECT", "INDEXED"};

/// Words that may follow an ORDER BY term.
constexpr std::string_view kAfterTerm[] = {"ASC", "DESC", "COLLATE", "NULLS", "LIMIT"};

template <class Names> bool Contains(const Names& names, const Token& token) {
    return token.kind == TokenKind::Word &&
           std::any_of(std::begin(names), std::end(names), [&](auto name) { return SameName(name, token.text); });
}

class Reader {
public:
    explicit Reader(const std::vector<Token>& tokens) : tokens_(tokens) {}

    OuterSelect Read() {
        for (at_ = 0; at_ < tokens_.size() && clause_ != Clause::Behind; ++at_)
            Look();
        if (clause_ == Clause::List) CloseItem();
        return std::move(select_);
    }

private:
    enum class Clause { Before, List, Tables, On, Conditions, Order, Behind };

    bool IsSymbolAt(std::size_t at, char symbol) const { return at < tokens_.size() && tokens_[at].IsSymbol(symbol); }
    bool IsWordAt(std::size_t at, std::string_view word) const {
        return at < tokens_.size() && tokens_[at].IsWord(word);
    }

    void Look() {
        const Token& token = tokens_[at_];
        if (token.IsSymbol('(')) return Open();
        if (token.IsSymbol(')')) {
            --depth_;
            return;
        }
        if (depth_ == 0) {
            if (token.kind == TokenKind::Word && ChangesClause(token)) return;
            if (token.IsSymbol(',')) return Comma();
            if (clause_ == Clause::Tables) return LookAtTable();
        }
        if (clause_ != Clause::Before && clause_ != Clause::Tables) LookAtOperand(token);
    }

    /// Steps into brackets of an expression, and over a sub-select or anything in a FROM list.
    void Open() {
        const bool subSelect = IsWordAt(at_ + 1, "SELECT") || IsWordAt(at_ + 1, "WITH") || IsWordAt(at_ + 1, "VALUES");
        if (!subSelect && clause_ != Clause::Before && clause_ != Clause::Tables) {
            ++depth_;
            return;
        }
        // One that is never closed goes on to the last token.
        for (int open = 1; open > 0 && at_ + 1 < tokens_.size();) {
            ++at_;
            if (tokens_[at_].IsSymbol('(')) ++open;
            if (tokens_[at_].IsSymbol(')')) --open;
        }
        tableExpected_ = false;
    }

    bool ChangesClause(const Token& word) {
        if (clause_ == Clause::Before) return word.IsWord("SELECT") && Enter(Clause::List);
        if (word.IsWord("UNION") || word.IsWord("EXCEPT") || word.IsWord("INTERSECT") || word.IsWord("LIMIT")) {
            return Enter(Clause::Behind);
        }
        if (word.IsWord("FROM") && clause_ == Clause::List && !IsDistinctFrom()) return Enter(Clause::Tables);
        if (word.IsWord("WHERE") || word.IsWord("GROUP") || word.IsWord("HAVING") || word.IsWord("WINDOW")) {
            return Enter(Clause::Conditions);
        }
        if (word.IsWord("ORDER")) return Enter(Clause::Order);
        if (clause_ == Clause::Tables && word.IsWord("ON")) return Enter(Clause::On);
        if ((clause_ == Clause::Tables || clause_ == Clause::On) && word.IsWord("JOIN")) return Enter(Clause::Tables);
        return clause_ == Clause::On && Contains(kAfterTable, word) && !word.IsWord("NOT");
    }

    bool IsDistinctFrom() const { return IsWordAt(at_ - 1, "DISTINCT") && at_ >= 2 && !IsWordAt(at_ - 2, "SELECT"); }

    bool Enter(Clause clause) {
        if (clause_ == Clause::List) CloseItem();
        clause_ = clause;
        itemBegin_ = at_ + 1;
        tableExpected_ = clause == Clause::Tables;
        return true;
    }

    void Comma() {
        if (clause_ == Clause::List) {
            CloseItem();
            itemBegin_ = at_ + 1;
        } else if (clause_ == Clause::Tables || clause_ == Clause::On) {
            Enter(Clause::Tables);
        }
    }

    void LookAtTable() {
        if (!tableExpected_ || !tokens_[at_].IsName()) return;
        tableExpected_ = false;
        if (IsSymbolAt(at_ + 1, '.') && at_ + 2 < tokens_.size()) at_ += 2;
        FromTable from{Unquoted(tokens_[at_]), tokens_[at_].text};
        if (IsSymbolAt(at_ + 1, '(')) return;
        std::size_t alias = at_ + 1;
        if (IsWordAt(alias, "AS")) ++alias;
        if (alias < tokens_.size() && tokens_[alias].IsName() && !Contains(kAfterTable, tokens_[alias])) {
            from.qualifier = tokens_[alias].text;
            at_ = alias;
        }
        select_.tables.push_back(std::move(from));
    }

    void LookAtOperand(const Token& token) {
        if (!token.IsName() && token.kind != TokenKind::String) return;
        const bool first = at_ == 0 || (clause_ == Clause::List && depth_ == 0 && at_ == itemBegin_);
        if (!first && depth_ == 0 && clause_ == Clause::List && IsAlias()) {
            aliases_.push_back(Unquoted(token));
            itemAliased_ = true;
            return;
        }
        if (!token.IsName()) return;
        const bool qualifies = IsSymbolAt(at_ + 1, '.') || IsSymbolAt(at_ + 1, '(');
        const bool qualified = at_ > 0 && (tokens_[at_ - 1].IsSymbol('.') || tokens_[at_ - 1].IsWord("AS") ||
                                           tokens_[at_ - 1].IsWord("COLLATE"));
        if (!qualifies && !qualified && !IsAliasTerm()) select_.bareNames.push_back(at_);
    }

    /// Whether the name ends a list item that was complete before it.
    bool IsAlias() const {
        const Token& before = tokens_[at_ - 1];
        if (before.IsWord("AS")) return true;
        if (at_ + 1 < tokens_.size() && !tokens_[at_ + 1].IsSymbol(',') && !tokens_[at_ + 1].IsWord("FROM") &&
            !tokens_[at_ + 1].IsSymbol(';')) {
            return false;
        }
        if (before.kind == TokenKind::Symbol) return before.IsSymbol(')');
        if (before.kind != TokenKind::Word) return true;
        return !Contains(kOperandFollows, before) && !before.IsWord("COLLATE");
    }

    void CloseItem() {
        std::size_t operands = 0;
        for (std::size_t i = itemBegin_; i < at_; ++i) {
            if (!tokens_[i].IsSymbol('(') && !tokens_[i].IsSymbol(')') && !tokens_[i].IsWord("DISTINCT") &&
                !tokens_[i].IsWord("ALL")) {
                ++operands;
            }
        }
        if (itemBegin_ < at_) select_.items.push_back({SkipDistinct(itemBegin_), at_, !itemAliased_ && operands > 1});
        itemAliased_ = false;
    }

    std::size_t SkipDistinct(std::size_t at) const {
        return at + 1 < at_ && (IsWordAt(at, "DISTINCT") || IsWordAt(at, "ALL")) ? at + 1 : at;
    }

    /// An ORDER BY term that is just an alias means the item of the list, not a column.
    bool IsAliasTerm() const {
        if (clause_ != Clause::Order || depth_ != 0) return false;
        const Token& before = tokens_[at_ - 1];
        if (!before.IsWord("BY") && !before.IsSymbol(',')) return false;
        const bool whole = at_ + 1 >= tokens_.size() || tokens_[at_ + 1].IsSymbol(',') ||
                           tokens_[at_ + 1].IsSymbol(';') || Contains(kAfterTerm, tokens_[at_ + 1]);
        return whole && std::any_of(aliases_.begin(), aliases_.end(),
                                    [&](const auto& alias) { return tokens_[at_].Names(alias); });
    }

    const std::vector<Token>& tokens_;
    OuterSelect select_;
    std::vector<std::string> aliases_;
    Clause clause_ = Clause::Before;
    std::size_t at_ = 0;
    std::size_t itemBegin_ = 0;
    int depth_ = 0;
    bool itemAliased_ = false;
    bool tableExpected_ = false;
};

}  // namespace

OuterSelect ReadOuterSelect(const std::vector<Token>& tokens) { return Reader(tokens).Read(); }

}  // namespace dhRichClient3::dialect
