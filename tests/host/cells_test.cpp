#include "host/load/cells.h"

#include "host/load/programming.h"

#include <gtest/gtest.h>

namespace {

using host::load::Cell;
using host::load::CellKind;
using Zontara::Value;

struct Taken {
    const char* text;
    CellKind kind;
    Value value;
};

TEST(Cells, TakesWhatItsKindHolds) {
    const Taken cases[] = {
        {"", CellKind::Text, Value()},
        {"", CellKind::Int32, Value()},
        {"  ", CellKind::Int32, Value()},
        {"  ", CellKind::Text, Value("  ")},
        {" a'b ", CellKind::Text, Value(" a'b ")},
        {" a ", CellKind::PlainText, Value(" a ")},
        {" a'b ", CellKind::Code, Value("a'b")},
        {" A-1 ", CellKind::PlainCode, Value("A-1")},
        {"2147483647", CellKind::Int32, Value(std::int32_t{2147483647})},
        {"-2147483648", CellKind::Int32, Value(std::int32_t{-2147483647 - 1})},
        {"+5", CellKind::Int32, Value(std::int32_t{5})},
        {"-32768", CellKind::Int16, Value(std::int16_t{-32768})},
        {"255", CellKind::Byte, Value(std::uint8_t{255})},
        {" 1 ", CellKind::Flag, Value(std::uint8_t{1})},
        {"12.5", CellKind::Real, Value(12.5f)},
        {"-3", CellKind::Real, Value(-3.0f)},
        {"12.3456", CellKind::Money, Value(Zontara::Money::FromTenThousandths(123456))},
        {"2026-03-05", CellKind::Date, Value("2026-03-05")},
        {"5/3/2026", CellKind::Date, Value("2026-03-05")},
        {"29/02/2028", CellKind::Date, Value("2028-02-29")},
    };
    for (const Taken& each : cases) {
        SCOPED_TRACE(each.text);
        std::string reason;
        const auto value = Cell(each.text, each.kind, reason);
        ASSERT_TRUE(value) << reason;
        EXPECT_EQ(*value, each.value);
    }
}

struct Refused {
    const char* text;
    CellKind kind;
    const char* reason;
};

TEST(Cells, RefusesWhatItsKindCannotHoldAndSaysWhy) {
    const Refused cases[] = {
        {"O'Higgins", CellKind::PlainText, "a quote (') can't be stored in this column: O'Higgins"},
        {"A'1", CellKind::PlainCode, "a quote (') can't be stored in this column: A'1"},
        {"2147483648", CellKind::Int32, "'2147483648' is no whole number from -2147483648 to 2147483647"},
        {"1.5", CellKind::Int32, "'1.5' is no whole number from -2147483648 to 2147483647"},
        {"1 2", CellKind::Int32, "'1 2' is no whole number from -2147483648 to 2147483647"},
        {"x", CellKind::Int32, "'x' is no whole number from -2147483648 to 2147483647"},
        {"+", CellKind::Int32, "'+' is no whole number from -2147483648 to 2147483647"},
        {"32768", CellKind::Int16, "'32768' is no whole number from -32768 to 32767"},
        {"-1", CellKind::Byte, "'-1' is no whole number from 0 to 255"},
        {"256", CellKind::Byte, "'256' is no whole number from 0 to 255"},
        {"si", CellKind::Flag, "'si' is neither 0 nor 1"},
        {"2", CellKind::Flag, "'2' is neither 0 nor 1"},
        {"12,5", CellKind::Real, "'12,5' is no number; write decimals behind a point"},
        {"much", CellKind::Real, "'much' is no number"},
        {"1e39", CellKind::Real, "'1e39' is too large"},
        {"1e15", CellKind::Money, "'1e15' is no amount of money"},
        {"29/02/2026", CellKind::Date, "'29/02/2026' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
        {"2026-13-01", CellKind::Date, "'2026-13-01' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
        {"03/25/2026", CellKind::Date, "'03/25/2026' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
        {"5/3/26", CellKind::Date, "'5/3/26' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
        {"2026-03", CellKind::Date, "'2026-03' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
        {"2026-03-05-01", CellKind::Date, "'2026-03-05-01' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
        {"2026-03-05 08:00", CellKind::Date, "'2026-03-05 08:00' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
        {"0099-01-01", CellKind::Date, "'0099-01-01' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
    };
    for (const Refused& each : cases) {
        SCOPED_TRACE(each.text);
        std::string reason;
        EXPECT_FALSE(Cell(each.text, each.kind, reason));
        EXPECT_EQ(reason, each.reason);
    }
}

struct Anchor {
    bool synchronised;
    const char* frequency;
    const char* programming;
    const char* fault;
};

TEST(Programming, TakesOnlyWhatALaunchCanRead) {
    const Anchor cases[] = {
        {true, "Diaria", "", ""},
        {true, "Semanal", "anything", ""},
        {true, "Quincenal", "4", ""},
        {true, "Quincenal", "", "'' is no week of the month, 1 to 4"},
        {true, "Mensual", "5", "'5' is no week of the month, 1 to 4"},
        {true, "Bimestral", "12", ""},
        {true, "Trimestral", "0", "'0' is no month, 1 to 12"},
        {true, "Semestral", "13", "'13' is no month, 1 to 12"},
        {true, "Anual", "June", "'June' is no month, 1 to 12"},
        {true, "Fecha", "2026-01-01", "a synchronised assignment can't have the frequency Fecha"},
        {false, "Fecha", "05/03/2026", ""},
        {false, "Fecha", "2026-03-05", ""},
        {false, "Fecha", "31/02/2026", "'31/02/2026' is no date; write yyyy-mm-dd or dd/mm/yyyy"},
        {false, "Diaria", "", ""},
        {false, "Quincenal", "", ""},
        {false, "Semanal", "7", ""},
        {false, "Semanal", "8", "'8' is no weekday, 1 for Monday to 7 for Sunday"},
        {false, "Semanal", "", "'' is no weekday, 1 for Monday to 7 for Sunday"},
        {false, "Mensual", "31", ""},
        {false, "Mensual", "15,3", ""},
        {false, "Mensual", "32", "'32' is no day of the month, 1 to 31"},
        {false, "Bimestral", "15,3", ""},
        {false, "Trimestral", "15 , 3", ""},
        {false, "Semestral", "15", "'15' is no day and month with a comma between, such as 15,3"},
        {false, "Anual", "15,13", "'15,13' is no day and month with a comma between, such as 15,3"},
        {false, "Anual", "0,3", "'0,3' is no day and month with a comma between, such as 15,3"},
    };
    for (const Anchor& each : cases) {
        SCOPED_TRACE(std::string(each.frequency) + " " + each.programming);
        EXPECT_EQ(host::load::ProgrammingFault(each.synchronised, each.frequency, each.programming), each.fault);
    }
}

TEST(Programming, KnowsTheNineFrequenciesCaseIncluded) {
    for (const char* word :
         {"Fecha", "Diaria", "Semanal", "Quincenal", "Mensual", "Bimestral", "Trimestral", "Semestral", "Anual"}) {
        EXPECT_TRUE(host::load::IsFrequency(word)) << word;
    }
    for (const char* word : {"diaria", "MENSUAL", "", "Weekly"})
        EXPECT_FALSE(host::load::IsFrequency(word)) << word;
}

}  // namespace
