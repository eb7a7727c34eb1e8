#include "dhRichClient3/dialect/lifting.h"

#include <algorithm>

namespace dhRichClient3::dialect {
namespace {

constexpr std::size_t kMostLiterals = 200;

constexpr std::string_view kEndsOfWhere[] = {"GROUP", "HAVING", "ORDER", "LIMIT", "WINDOW"};
constexpr std::string_view kEndsOfTerm[] = {"AND", "OR", "GROUP", "ORDER", "LIMIT"};

template <class Words> bool IsOneOf(const Token& token, const Words& words) {
    return std::any_of(std::begin(words), std::end(words), [&](auto word) { return token.IsWord(word); });
}

bool IsComparison(const Token& token) {
    return token.kind == TokenKind::Symbol &&
           std::string_view("=<>!").find(token.text.front()) != std::string_view::npos;
}

/// Whether a literal stands alone on the right of a comparison with a name.
bool IsCompared(const std::vector<Token>& tokens, std::size_t at) {
    std::size_t operators = at;
    while (operators > 0 && IsComparison(tokens[operators - 1]))
        --operators;
    if (operators == at || operators == 0 || !tokens[operators - 1].IsName()) return false;
    if (at + 1 == tokens.size()) return true;
    const Token& next = tokens[at + 1];
    return next.IsSymbol(')') || next.IsSymbol(';') || IsOneOf(next, kEndsOfTerm);
}

/// Whether a decimal number may be a parameter behind this token. Not behind a minus, since minus zero is a number too.
bool LeadsToAnExpression(const Token& token) {
    return token.kind == TokenKind::Symbol &&
           std::string_view("(,=<>+*/").find(token.text.front()) != std::string_view::npos;
}

void LiftFromSelect(const std::vector<Token>& tokens, std::vector<Token>& lifted) {
    if (!tokens.front().IsWord("SELECT")) return;
    int depth = 0;
    bool where = false;
    for (std::size_t at = 1; at < tokens.size(); ++at) {
        const Token& token = tokens[at];
        if (token.IsSymbol('(')) ++depth;
        if (token.IsSymbol(')')) --depth;
        if (token.IsWord("SELECT") || token.kind == TokenKind::Variable) return lifted.clear();
        if (depth == 0 && token.IsWord("WHERE")) where = true;
        if (depth == 0 && IsOneOf(token, kEndsOfWhere)) where = false;
        if (where && token.IsLiteral() && !token.IsFlag() && IsCompared(tokens, at)) lifted.push_back(token);
    }
}

void LiftFromChange(const std::vector<Token>& tokens, std::vector<Token>& lifted) {
    bool where = false;
    for (std::size_t at = 0; at < tokens.size(); ++at) {
        const Token& token = tokens[at];
        if (token.IsWord("WHERE")) where = true;
        // What a decimal number is compared with would see that it isn't a literal.
        const bool mayBeDecimal = !where && at > 0 && LeadsToAnExpression(tokens[at - 1]);
        if (mayBeDecimal && (token.kind == TokenKind::Integer || token.kind == TokenKind::Decimal)) {
            lifted.push_back({TokenKind::Decimal, token.text});
        } else if (token.IsLiteral()) {
            lifted.push_back(token);
        }
    }
}

}  // namespace

void Lift(const std::vector<Token>& tokens, const Verdict& verdict, bool partialIndexes, std::vector<Token>& lifted) {
    lifted.clear();
    if (verdict.selects) {
        if (!partialIndexes) LiftFromSelect(tokens, lifted);
    } else if (verdict.reusable) {
        const bool finds =
            std::any_of(tokens.begin(), tokens.end(), [](const Token& token) { return token.IsWord("WHERE"); });
        if (!partialIndexes || !finds) LiftFromChange(tokens, lifted);
    }
    if (lifted.size() > kMostLiterals) lifted.clear();
}

}  // namespace dhRichClient3::dialect
