#include "planning/lint.h"

#include "frame/convert.h"
#include "frame/regional.h"
#include "planning/lint_parts.h"

#include <algorithm>

namespace planning {

namespace lint {

std::string TextIn(const Zontara::Recordset& row, std::string_view column) {
    return Zontara::ToText(row.Valor(column));
}

std::string TaskName(const std::string& number, const std::string& description) {
    if (number.empty() || description.empty()) return number + description;
    return number + " " + description;
}

void ForEach(Zontara::Recordset& rows, const std::function<void()>& visit) {
    for (rows.MoverPrimero(); !rows.FinDeDatos(); rows.MoverSiguiente())
        visit();
}

std::string Iso(Zontara::Date day) { return Zontara::Format(day, "yyyy-mm-dd"); }

std::string CauseOf(const Zontara::RaisedError& error) {
    const std::string& text = error.Description();
    return text.substr(0, text.find_first_of("\r\n"));
}

}  // namespace lint

std::vector<Finding> Lint(Zontara::CGlobalPreventivo& component, dhRichClient3::Connection& database,
                          const LintRequest& request) {
    std::vector<Finding> findings;
    const lint::Look look{component, database, request, findings};
    lint::CalendarRules(look);
    lint::CalendarRows(look);
    lint::Meters(look);
    lint::Catalogues(look);
    std::stable_sort(findings.begin(), findings.end(),
                     [](const Finding& a, const Finding& b) { return a.severity < b.severity; });
    return findings;
}

}  // namespace planning
