#include "tests/faults/hostile.h"

#include <string_view>

namespace faults {

namespace {

using namespace std::string_literals;

/// What a second statement would do.
constexpr const char* kStatements[] = {
    "DROP TABLE Boletin",
    "DELETE FROM Activo",
    "UPDATE Activo SET Descripcion = 'evil'",
    "CREATE TABLE evil (a)",
    "CREATE TRIGGER evil AFTER INSERT ON Boletin BEGIN DELETE FROM Activo; END",
    "CREATE TEMP VIEW evil AS SELECT 1",
    "ALTER TABLE Boletin RENAME TO evil",
    "ATTACH DATABASE 'evil.db' AS evil",
    "DETACH DATABASE main",
    "PRAGMA writable_schema = 1",
    "PRAGMA journal_mode = DELETE",
    "PRAGMA user_version = 666",
    "VACUUM INTO 'evil.db'",
    "COMMIT",
    "ROLLBACK",
    "SAVEPOINT evil",
    "REINDEX",
    "ANALYZE",
    "INSERT INTO sqlite_schema VALUES ('table', 'evil', 'evil', 0, 'CREATE TABLE evil (a)')",
    "UPDATE sqlite_schema SET sql = ''",
};

/// How a value gets out of its place in a statement.
constexpr const char* kWaysOut[] = {"x'; @; --", "x'); @; --", "1; @", "; @; SELECT '", "x\"; @; --", "1 /* */ ; @ /*"};

/// What an expression would do.
constexpr const char* kExpressions[] = {
    "load_extension('evil')",
    "readfile('decoy.txt')",
    "writefile('evil.txt', 'x')",
    "edit('x')",
    "fts3_tokenizer('simple')",
    "sqlite_compileoption_get(1)",
    "randomblob(1000000000)",
    "length(zeroblob(1000000000))",
    "printf('%.*c', 1000000000, 'x')",
    "replace(hex(zeroblob(100000)), '0', hex(zeroblob(100000)))",
    "(WITH RECURSIVE r(i) AS (SELECT 1 UNION ALL SELECT i + 1 FROM r) SELECT count(*) FROM r)",
    "(WITH RECURSIVE r(i) AS (SELECT 1 UNION ALL SELECT i FROM r) SELECT max(i) FROM r)",
    "(SELECT count(*) FROM pragma_database_list)",
    "(SELECT 1 FROM pragma_user_version)",
    "(SELECT data FROM sqlite_dbpage)",
    "(SELECT count(*) FROM sqlite_schema a, sqlite_schema b, sqlite_schema c, sqlite_schema d, sqlite_schema e)",
    "(SELECT 1 FROM evil.evil)",
    "(SELECT 1) IN (VALUES (1), (load_extension('evil')))",
};

/// How an expression gets into a statement.
constexpr const char* kWaysIn[] = {"x' || @ || '", "@", "x' OR @ OR '1' = '2", "* FROM Activo WHERE @ --",
                                   "1 UNION SELECT @ --"};

std::string Put(std::string pattern, std::string_view into) { return pattern.replace(pattern.find('@'), 1, into); }

/// Single characters and odd texts.
std::vector<std::string> OddTexts() {
    return {"'", "''", "'''", "\"", "`", "[", "]", "--", "/*", "*/", ";", ";;", "\\", "\\'", "?", "?1", ":a", "@a",
            "$a", "#", "%", "%s%n%x", "\b", "\bnl\b", "%nl%", "\r\n", "\t", "\x1b[2J", "\x7f", "' OR '1' = '1", "x' --",
            "NULL", "../../evil.txt", "file:evil.db?mode=rwc", "evil.db", "|touch evil.txt", "$(touch evil.txt)",
            "`touch evil.txt`", "-1", "1e999", "0x7fffffffffffffffffff", "99999999999999999999999999999999", "nan",
            "inf",
            // NUL, alone, in the midst, ahead of a statement
            "\0"s, "a\0b"s, "x'\0; DROP TABLE Boletin"s, "\0\0\0\0"s,
            // broken UTF-8: stray bytes, a cut sequence, overlong, a surrogate, beyond the last code point
            "\xff", "\xfe\xff", "\xc3", "\xe2\x82", "\xc0\xaf", "\xc0\xa7", "\xed\xa0\x80", "\xf4\x90\x80\x80", "\x80'",
            // whole UTF-8 that looks like something else
            "\xef\xbb\xbf", "\xe2\x80\xae", "\xe2\x80\x99", "\xef\xbc\x87", "\xe2\x80\xa8", "\xcc\x81"};
}

/// Nested deeper than any parser likes.
std::vector<Hostile> DeepTexts() {
    constexpr std::size_t kDeep = 20000;
    std::string selects;
    for (std::size_t i = 0; i < 2000; ++i)
        selects += "(SELECT ";
    return {{"brackets", std::string(kDeep, '(')},
            {"nots", Put("x' OR @", std::string(kDeep, '~') + "1 OR '1'='")},
            {"selects", selects},
            {"quotes", std::string(kDeep, '\'')}};
}

}  // namespace

std::vector<Hostile> HostileValues() {
    std::vector<Hostile> values;
    const auto add = [&](std::string text) { values.push_back({text.substr(0, 100), text}); };
    for (const char* statement : kStatements) {
        for (const char* way : kWaysOut)
            add(Put(way, statement));
    }
    for (const char* expression : kExpressions) {
        for (const char* way : kWaysIn)
            add(Put(way, expression));
    }
    for (std::string& text : OddTexts())
        add(std::move(text));
    for (Hostile& text : DeepTexts())
        values.push_back(std::move(text));
    return values;
}

std::vector<Hostile> HugeValues() {
    constexpr std::size_t kHuge = 10'000'000;
    std::string comments;
    for (std::size_t i = 0; i < kHuge / 4; ++i)
        comments += "/**/";
    return {{"ten megabytes of a letter", std::string(kHuge, 'a')},
            {"ten megabytes of quotes", std::string(kHuge, '\'')},
            {"ten megabytes of comments", "1 = 1 " + comments}};
}

}  // namespace faults
