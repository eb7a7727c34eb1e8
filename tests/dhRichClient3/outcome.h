#pragma once

#include "tests/dhRichClient3/engine_support.h"

#include <sqlite3.h>

#include <ostream>
#include <string>
#include <vector>

/// What a text gives, by the connection's door and by the engine alone, in one form.
namespace support {

/// Column names, cells and error of one text.
struct Outcome {
    std::vector<std::string> names;
    std::vector<std::string> cells;
    std::int32_t error = 0;
    std::string message;

    friend bool operator==(const Outcome&, const Outcome&) = default;
    friend std::ostream& operator<<(std::ostream& stream, const Outcome& outcome) {
        for (const auto& list : {outcome.names, outcome.cells}) {
            for (const auto& text : list)
                stream << text << " | ";
            stream << "\n";
        }
        return stream << outcome.error << " " << outcome.message;
    }
};

/// The engine alone.
class Plain {
public:
    explicit Plain(const std::string& script) {
        sqlite3_open(":memory:", &database_);
        sqlite3_exec(database_, script.c_str(), nullptr, nullptr, nullptr);
    }
    ~Plain() { sqlite3_close(database_); }
    Plain(const Plain&) = delete;
    Plain& operator=(const Plain&) = delete;

    void Script(const std::string& script) { sqlite3_exec(database_, script.c_str(), nullptr, nullptr, nullptr); }

    Outcome Run(const std::string& text) {
        Outcome outcome;
        sqlite3_stmt* statement = nullptr;
        int code = sqlite3_prepare_v2(database_, text.c_str(), -1, &statement, nullptr);
        if (code == SQLITE_OK) {
            for (int i = 0; i < sqlite3_column_count(statement); ++i)
                outcome.names.emplace_back(sqlite3_column_name(statement, i));
            while ((code = sqlite3_step(statement)) == SQLITE_ROW) {
                for (int i = 0; i < sqlite3_column_count(statement); ++i)
                    outcome.cells.push_back(Cell(statement, i));
            }
        }
        if (code != SQLITE_DONE) {
            outcome = {{}, {}, Code(code & 0xFF), sqlite3_errmsg(database_)};
        }
        sqlite3_finalize(statement);
        return outcome;
    }

private:
    static std::string Cell(sqlite3_stmt* row, int column) {
        switch (sqlite3_column_type(row, column)) {
            case SQLITE_INTEGER: {
                const std::int64_t number = sqlite3_column_int64(row, column);
                const bool fits = number == static_cast<std::int32_t>(number);
                return fits ? "whole " + std::to_string(number) : "real " + std::to_string(static_cast<double>(number));
            }
            case SQLITE_FLOAT:
                return "real " + std::to_string(sqlite3_column_double(row, column));
            case SQLITE_NULL:
                return "null";
            default:
                return "text " + std::string(reinterpret_cast<const char*>(sqlite3_column_text(row, column)));
        }
    }

    sqlite3* database_ = nullptr;
};

inline std::string CellOf(const Zontara::Value& value) {
    if (value.IsNull()) return "null";
    if (value.Is<std::int32_t>()) return "whole " + std::to_string(value.Get<std::int32_t>());
    if (value.Is<double>()) return "real " + std::to_string(value.Get<double>());
    return "text " + value.Get<std::string>();
}

inline Outcome RunByDoor(const Zontara::Ref<dhRichClient3::Connection>& connection, const std::string& text) {
    Outcome outcome;
    try {
        const auto rows = Opened(connection, text);
        for (std::int32_t i = 0; i < rows->TotalColumnas(); ++i)
            outcome.names.push_back(rows->NombreColumna(i));
        for (; !rows->FinDeDatos(); rows->MoverSiguiente()) {
            for (std::int32_t i = 0; i < rows->TotalColumnas(); ++i)
                outcome.cells.push_back(CellOf(rows->ValorEn(i)));
        }
    } catch (const Zontara::RaisedError& error) {
        outcome = {{}, {}, error.Number(), error.Description()};
    }
    return outcome;
}

}  // namespace support
