#include "host/load/table.h"

#include <fmt/format.h>

namespace host::load {

void Line::Fail(std::size_t column, std::string reason) const {
    problems.Add({file, row.Line(), std::string(columns[column].name), std::move(reason)});
}

void Line::Fail(std::string reason) const { problems.Add({file, row.Line(), "", std::move(reason)}); }

namespace {

/// The code in a cell: a text, or the digits of a number.
std::string CodeIn(const Line& line, std::size_t column) {
    return line.columns[column].kind == CellKind::Int32 ? std::to_string(line.row.Int32(column))
                                                        : line.row.Text(column);
}

}  // namespace

void Line::Require(std::size_t column, const Codes& codes, std::string_view noun, std::string_view home) const {
    if (!row.Has(column)) return;
    const std::string code = CodeIn(*this, column);
    if (!codes.Has(code)) Fail(column, fmt::format("no {} '{}' in {} or in the database", noun, code, home));
}

void Line::Register(std::size_t column, Codes& codes, std::string_view noun) const {
    const std::string code = CodeIn(*this, column);
    if (!codes.Add(code)) Fail(column, fmt::format("there is already {} '{}'", noun, code));
}

const std::vector<Table>& Tables() {
    static const std::vector<Table> tables = {
        Units(),     Groups(),    Executors(),           Users(),
        Tasks(),     Materials(), Processes(),           Assets(),
        Equipment(), Documents(), CalendarAssignments(), MeterAssignments(),
        Parallels(), Readings(),
    };
    return tables;
}

}  // namespace host::load
