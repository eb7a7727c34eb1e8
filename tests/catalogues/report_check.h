#pragma once

#include "frame/convert.h"
#include "frame/raised_error.h"
#include "tests/support/world.h"

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include <algorithm>
#include <functional>
#include <string>
#include <string_view>
#include <vector>

namespace support {

inline constexpr std::int32_t kSyntaxRefused = Zontara::vbObjectError + 1;
inline constexpr std::int32_t kConstraintRefused = Zontara::vbObjectError + 19;

/// The calls of a report, innermost first, each with its values: "CBoletin.Borrar(SC_Boletin=5)".
inline std::vector<std::string> CallsOf(const Zontara::ErrorRecord& error) {
    static constexpr std::string_view kMark = "Call Stack: ";
    std::vector<std::string> calls;
    for (std::string line : CallStackOf(error.description)) {
        if (const auto at = line.find(kMark); at != std::string::npos) line.erase(0, at + kMark.size());
        line.erase(line.find_last_not_of(" -") + 1);
        calls.push_back(line);
    }
    return calls;
}

/// The requests of a world by their kind, statements without their text: "begin", "key Gama", "sql", "notice", ...
inline std::vector<std::string> StepsOf(const World& world) {
    std::vector<std::string> steps;
    for (const Asked& asked : world.Record()) {
        switch (asked.what) {
            case Asked::What::Sql:
                steps.emplace_back("sql");
                break;
            case Asked::What::Begin:
                steps.emplace_back("begin");
                break;
            case Asked::What::Commit:
                steps.emplace_back("commit");
                break;
            case Asked::What::Rollback:
                steps.emplace_back("rollback");
                break;
            case Asked::What::Key:
                steps.push_back("key " + asked.text);
                break;
            case Asked::What::Service:
                steps.push_back("service " + asked.text);
                break;
            case Asked::What::Event:
                steps.push_back("event " + asked.text);
                break;
            case Asked::What::Notice:
                steps.push_back("notice" + asked.text);
                break;
        }
    }
    return steps;
}

/// The arguments of each call of a service, in order.
inline std::vector<std::vector<Zontara::Value>> CallsOfService(const World& world, std::string_view service) {
    std::vector<std::vector<Zontara::Value>> calls;
    for (const Asked& asked : world.Record()) {
        if (asked.what == Asked::What::Service && asked.text == service) calls.push_back(asked.arguments);
    }
    return calls;
}

/// A call that has to issue just this statement.
struct StatementCase {
    std::string label;
    std::function<void()> call;
    std::string statement;
};

inline void ExpectStatements(World& world, const std::vector<StatementCase>& cases) {
    for (const StatementCase& expected : cases) {
        SCOPED_TRACE(expected.label);
        world.Forget();
        expected.call();
        EXPECT_THAT(world.Statements(), testing::ElementsAre(expected.statement));
    }
}

/// A call whose request, named by a part of its line in the story, is refused by force; the report then has to end with
/// this call, and the nesting depth has to be this.
struct RefusedCase {
    std::string request;
    std::function<void()> call;
    std::string reported;
    int depth = 0;
};

/// Runs each case and looks that the rows of `watched` are the same afterwards and that no notice was sent.
inline void ExpectRefused(World& world, const std::string& watched, const std::vector<RefusedCase>& cases) {
    for (const RefusedCase& refused : cases) {
        SCOPED_TRACE(refused.reported + " refused at " + refused.request);
        const std::vector<std::string> before = world.Rows(watched);
        world.Forget();
        world.FailOn(refused.request);
        const Zontara::ErrorRecord error = ErrorOf(refused.call);
        world.Heal();
        EXPECT_EQ(error.number, kConstraintRefused);
        EXPECT_EQ(error.source, "HuntERR.ErrorIn");
        EXPECT_EQ(error.description.find("forced failure"), 0U);
        const std::vector<std::string> calls = CallsOf(error);
        EXPECT_EQ(calls.empty() ? "" : calls.back(), refused.reported);
        EXPECT_EQ(world.Depth(), refused.depth);
        EXPECT_THAT(StepsOf(world), testing::Not(testing::Contains("notice")));
        EXPECT_THAT(StepsOf(world), testing::Not(testing::Contains("rollback")));
        if (refused.depth > 0) world.Abort();
        EXPECT_EQ(world.Rows(watched), before);
    }
}

/// The columns of a recordset, joined by commas.
inline std::string ColumnsOf(const Zontara::Ref<Zontara::Recordset>& rows) {
    std::string columns;
    for (std::int32_t i = 0; i < rows->TotalColumnas(); ++i)
        columns += (i == 0 ? "" : ",") + rows->NombreColumna(i);
    return columns;
}

/// The values of one column over all rows, joined by commas.
inline std::string ColumnOf(const Zontara::Ref<Zontara::Recordset>& rows, std::string_view column) {
    std::string values;
    for (rows->MoverPrimero(); !rows->FinDeDatos(); rows->MoverSiguiente()) {
        values += (values.empty() ? "" : ",") + Zontara::ToText(rows->Valor(column));
    }
    return values;
}

}  // namespace support
