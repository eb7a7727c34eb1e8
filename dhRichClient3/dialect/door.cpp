#include "dhRichClient3/dialect/door.h"

#include <algorithm>

namespace dhRichClient3::dialect {
namespace {

constexpr std::string_view kFunctions[] = {
    // texts and choices
    "char", "coalesce", "format", "glob", "hex", "ifnull", "iif", "instr", "length", "like", "likelihood", "likely",
    "lower", "ltrim", "nullif", "printf", "quote", "replace", "rtrim", "soundex", "substr", "substring", "trim",
    "typeof", "unicode", "unlikely", "upper", "zeroblob",
    // numbers
    "abs", "acos", "acosh", "asin", "asinh", "atan", "atan2", "atanh", "ceil", "ceiling", "cos", "cosh", "degrees",
    "exp", "floor", "ln", "log", "log10", "log2", "mod", "pi", "pow", "power", "radians", "round", "sign", "sin",
    "sinh", "sqrt", "tan", "tanh", "trunc",
    // aggregates and windows
    "avg", "count", "cume_dist", "dense_rank", "first_value", "group_concat", "lag", "last_value", "lead", "max", "min",
    "nth_value", "ntile", "percent_rank", "rank", "row_number", "sum", "total",
    // JSON
    "->", "->>", "json", "json_array", "json_array_length", "json_each", "json_extract", "json_group_array",
    "json_group_object", "json_insert", "json_object", "json_patch", "json_quote", "json_remove", "json_replace",
    "json_set", "json_tree", "json_type", "json_valid"};

/// Of dates; they know what "now" is.
constexpr std::string_view kTimeFunctions[] = {"current_date", "current_time", "current_timestamp",
                                               "date",         "datetime",     "julianday",
                                               "strftime",     "time",         "unixepoch"};

/// What reaches files or the engine's inside where an engine has it; refused before any engine is asked.
constexpr std::string_view kForbiddenCalls[] = {"load_extension", "readfile", "writefile", "edit",
                                                "fts3_tokenizer", "fsdir",    "lsmode"};

/// Functions that fill up to a width.
constexpr std::string_view kFormats[] = {"printf", "format"};
constexpr std::size_t kMostFormatDigits = 3;

/// Tables that an engine makes up from its inside.
constexpr std::string_view kInsideTables[] = {
    "sqlite_stmt",  "sqlite_dbpage", "sqlite_dbptr", "sqlite_dbdata", "dbstat", "bytecode",      "tables_used",
    "fts3tokenize", "fts4aux",       "fts5vocab",    "completion",    "fsdir",  "sqlite_memstat"};

/// Words between the verb of a change and the table that it changes.
constexpr std::string_view kBeforeTarget[] = {"OR", "ABORT", "FAIL", "IGNORE", "REPLACE", "ROLLBACK", "INTO", "FROM"};

/// Words that make the meaning of a change depend on more than its rows: then its text is compiled as it stands.
constexpr std::string_view kNotReusable[] = {"SELECT", "WITH", "ORDER", "LIMIT", "RETURNING"};

template <class Names> bool Contains(const Names& names, std::string_view name) {
    return std::any_of(std::begin(names), std::end(names), [&](auto known) { return SameName(known, name); });
}

/// Goes over the tokens once.
class Judgement {
public:
    Judgement(const std::vector<Token>& tokens, Verdict& verdict) : tokens_(tokens), verdict_(verdict) {}

    void Run() {
        if (tokens_.empty() || tokens_.front().IsSymbol(';')) return Refuse("There is no statement in the text.");
        for (std::size_t at = 0; at < tokens_.size() && verdict_.Accepted(); ++at)
            Look(at);
        verdict_.reusable = verdict_.Accepted() && changes_ && plain_;
    }

private:
    void Look(std::size_t at) {
        const Token& token = tokens_[at];
        switch (token.kind) {
            case TokenKind::Symbol:
                return LookAtSymbol(at, token.text.front());
            case TokenKind::Word:
                if (!verb_ && depth_ == 0) LookForVerb(at);
                if (plain_ && Contains(kNotReusable, token.text)) plain_ = false;
                if (token.IsWord("ROLLBACK") && at > 0 && tokens_[at - 1].IsWord("OR")) {
                    Refuse("A statement may not roll the transaction back (OR ROLLBACK).");
                }
                return LookAtName(at);
            case TokenKind::Quoted:
                return LookAtName(at);
            case TokenKind::String:
            case TokenKind::Integer:
            case TokenKind::Decimal:
                return;
            default:
                plain_ = false;
        }
    }

    void LookAtSymbol(std::size_t at, char symbol) {
        if (symbol == '(') ++depth_;
        if (symbol == ')') --depth_;
        if (symbol != ';') return;
        const auto rest = tokens_.begin() + static_cast<std::ptrdiff_t>(at);
        if (std::any_of(rest, tokens_.end(), [](const Token& token) { return !token.IsSymbol(';'); })) {
            Refuse("More than one statement in the text: give them one at a time.");
        }
    }

    void LookForVerb(std::size_t at) {
        const Token& token = tokens_[at];
        const bool changes =
            token.IsWord("INSERT") || token.IsWord("UPDATE") || token.IsWord("DELETE") || token.IsWord("REPLACE");
        verdict_.selects = token.IsWord("SELECT");
        verb_ = changes || verdict_.selects || token.IsWord("VALUES");
        if (changes) {
            changes_ = true;
            LookAtTarget(at + 1);
        } else if (!verb_ && at == 0 && !token.IsWord("WITH")) {
            Refuse("A statement may not begin with " + std::string(token.text) +
                   ": only SELECT, INSERT, UPDATE and DELETE are allowed here.");
        }
    }

    void LookAtTarget(std::size_t at) {
        while (at < tokens_.size() && tokens_[at].kind == TokenKind::Word &&
               Contains(kBeforeTarget, tokens_[at].text)) {
            ++at;
        }
        if (at + 2 < tokens_.size() && tokens_[at + 1].IsSymbol('.')) at += 2;
        if (at >= tokens_.size()) return;
        const auto& target = tokens_[at];
        if (target.kind == TokenKind::Word ? !MayWrite(target.text) : !MayWrite(Unquoted(target))) {
            Refuse("The engine's own table " + Unquoted(target) + " may not be changed.");
        }
    }

    void LookAtName(std::size_t at) {
        const Token& token = tokens_[at];
        const bool call = at + 1 < tokens_.size() && tokens_[at + 1].IsSymbol('(');
        const bool quoted = token.kind == TokenKind::Quoted;
        if (!call && !quoted && (token.text.front() | 0x20) != 'p') return;
        const std::string held = quoted ? Unquoted(token) : std::string();
        const std::string_view name = quoted ? std::string_view(held) : token.text;
        // The door decides on the format, so that a text with another one is another text.
        if (call && Contains(kFormats, name)) plain_ = false;
        if (call && Contains(kFormats, name) && !IsModestFormat(at + 2)) {
            Refuse("A statement may call " + std::string(name) +
                   " only with a format in quotes, without * and without a width beyond three digits.");
        } else if (call && Contains(kForbiddenCalls, name)) {
            Refuse("A statement may not call " + std::string(name) + ".");
        } else if (HasPrefix(name, "pragma_")) {
            Refuse("A statement may not ask the engine about itself (" + std::string(name) + ").");
        }
    }

    /// Whether the token is a format that makes no more of its arguments than they hold: a width of a thousand million
    /// would keep the engine busy within one step, where no limit stops it.
    bool IsModestFormat(std::size_t at) const {
        if (at + 1 >= tokens_.size() || tokens_[at].kind != TokenKind::String) return false;
        if (!tokens_[at + 1].IsSymbol(',') && !tokens_[at + 1].IsSymbol(')')) return false;
        std::size_t digits = 0;
        for (const char c : tokens_[at].text) {
            digits = c >= '0' && c <= '9' ? digits + 1 : 0;
            if (c == '*' || digits > kMostFormatDigits) return false;
        }
        return true;
    }

    void Refuse(std::string why) {
        if (verdict_.refusal.empty()) verdict_.refusal = std::move(why);
    }

    const std::vector<Token>& tokens_;
    Verdict& verdict_;
    int depth_ = 0;
    bool verb_ = false;
    bool changes_ = false;
    bool plain_ = true;
};

}  // namespace

Verdict Judge(std::string_view text, const std::vector<Token>& tokens) {
    Verdict verdict;
    if (text.find('\0') != std::string_view::npos) {
        verdict.refusal = "There is a NUL character in the text.";
    } else {
        Judgement(tokens, verdict).Run();
    }
    return verdict;
}

bool MayCall(std::string_view function) { return Contains(kFunctions, function) || AsksTime(function); }

bool AsksTime(std::string_view function) { return Contains(kTimeFunctions, function); }

bool MayRead(std::string_view table) { return !HasPrefix(table, "pragma_") && !Contains(kInsideTables, table); }

bool MayWrite(std::string_view table) { return MayRead(table) && !HasPrefix(table, "sqlite_"); }

}  // namespace dhRichClient3::dialect
