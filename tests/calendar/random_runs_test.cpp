#include "calendar/CImputacionPreventiva.h"

#include "calendar/due.h"
#include "frame/regional.h"
#include "tests/calendar/made_up_row.h"
#include "tests/calendar/plant.h"
#include "tests/calendar/reference_rules.h"

#include <random>

namespace {

using reference::Day;
using support::World;

/// Random rows and days from 2020 to 2030, the same for the same seed.
class Dice {
public:
    explicit Dice(unsigned seed) : engine_(seed) {}

    int From(int low, int high) { return low + static_cast<int>(engine_() % static_cast<unsigned>(high - low + 1)); }
    Day AnyDay() {
        const Day first(std::chrono::year(2020), std::chrono::January, std::chrono::day(1));
        return reference::Later(first, From(0, 4017));
    }
    /// Mostly near another day, now and then far off.
    Day DayBefore(Day day) {
        const int spans[] = {3, 20, 70, 200, 400, 1000};
        return reference::Later(day, -From(From(0, 9) == 0 ? -30 : 0, spans[From(0, 5)]));
    }
    template <std::size_t N> const char* Any(const char* const (&words)[N]) {
        return words[From(0, static_cast<int>(N) - 1)];
    }
    reference::Row Row(bool synchronised, Day day, bool sometimesBad) {
        static const char* const words[] = {"Fecha",     "Diaria",     "Semanal",   "Quincenal", "Mensual",
                                            "Bimestral", "Trimestral", "Semestral", "Anual",     "Bienal"};
        static const char* const bad[] = {"", "x", "5", "5,x", ",5", "5,", "x,5"};
        reference::Row row;
        row.synchronised = synchronised;
        row.frequency = Any(words);
        row.last = DayBefore(day);
        row.week = From(0, 2) == 0 ? reference::WeekOf(day) : From(1, 54);
        const int intervals[] = {1, 1, 1, 1, 1, 2, 3, 6, 12, 0, -1};
        row.interval = intervals[From(0, 10)];
        row.anchor = sometimesBad && From(0, 5) == 0 ? Any(bad) : Anchor(row, day);
        return row;
    }

private:
    std::string Anchor(const reference::Row& row, Day day) {
        const std::string& f = row.frequency;
        if (row.synchronised) return std::to_string(f == "Quincenal" || f == "Mensual" ? From(0, 5) : From(1, 12));
        if (f == "Fecha") {
            const std::string iso = reference::Iso(DayBefore(day));
            return iso.substr(8, 2) + "/" + iso.substr(5, 2) + "/" + iso.substr(0, 4);
        }
        if (f == "Semanal") return std::to_string(From(1, 7));
        if (f == "Mensual") return std::to_string(From(1, 31));
        return std::to_string(From(1, 31)) + "," + std::to_string(From(1, 12));
    }

    std::mt19937 engine_;
};

std::string Describe(const reference::Row& row, Day day) {
    return std::string(row.synchronised ? "synchronised " : "conventional ") + row.frequency + " '" + row.anchor +
           "' last " + reference::Iso(row.last) + " week " + std::to_string(row.week) + " interval " +
           std::to_string(row.interval) + " on " + reference::Iso(day);
}

TEST(RandomRows, DueTestsDecideAsTheReferenceDoes) {
    const auto preventive = Zontara::Create<Zontara::CImputacionPreventiva>();
    Dice dice(20260305);
    int due = 0;
    int failed = 0;
    for (int i = 0; i < 8000; ++i) {
        const Day day = dice.AnyDay();
        const reference::Row row = dice.Row(i % 2 == 0, day, true);
        SCOPED_TRACE(Describe(row, day));
        const reference::Decision expected = reference::Decide(row, day);
        const auto made = std::make_shared<support::MadeUpRow>(
            support::MadeUpRow::Fields{{"Frecuencia", row.frequency},
                                       {"Programacion", row.anchor},
                                       {"Fecha_Ultimo_Lanzamiento", reference::Iso(row.last)},
                                       {"Semana", row.week},
                                       {"Intervalo_Frecuencia", row.interval}});
        const Zontara::Date date = World::Day(reference::Iso(day));
        const auto test = row.synchronised ? Zontara::calendar::DueSynchronised : Zontara::calendar::DueConventional;
        if (expected.error != 0) {
            ++failed;
            ASSERT_EQ(support::NumberOf([&] { test(*made, date); }), expected.error);
            continue;
        }
        const Zontara::calendar::Due found = test(*made, date);
        ASSERT_EQ(found.step, expected.step);
        ASSERT_EQ(found.booking.has_value(), expected.booked.has_value());
        if (expected.booked) {
            ASSERT_EQ(Zontara::Format(found.booking->On(date), "yyyy-mm-dd"), reference::Iso(*expected.booked));
        }
        if (row.synchronised) {
            ASSERT_EQ(preventive->ImputacionEstaVencida(made, date), expected.step >= row.interval);
        }
        if (expected.step > 0) ++due;
    }
    EXPECT_GT(due, 1600);
    EXPECT_GT(failed, 200);
}

/// Plants of random rows, launched again and again, beside a model that books what the reference decides.
class RandomRuns : public support::CalendarTest, public testing::WithParamInterface<unsigned> {
protected:
    struct Modelled {
        reference::Row row;
        int cycle = 0;
        int done = 0;
        bool ends = false;
        bool cancelled = false;
    };

    void Plant(Dice& dice, Day day, int rows) {
        for (int key = 1; key <= rows; ++key) {
            Modelled each;
            each.row = dice.Row(key % 2 == 0, day, false);
            each.cycle = dice.From(0, 8);
            each.done = dice.From(0, 4);
            each.ends = dice.From(0, 1) == 1;
            AddAsset("R-" + std::to_string(key));
            Add({.key = key,
                 .asset = "R-" + std::to_string(key),
                 .frequency = each.row.frequency,
                 .anchor = each.row.anchor,
                 .last = reference::Iso(each.row.last),
                 .week = each.row.week,
                 .interval = each.row.interval,
                 .cycle = each.cycle,
                 .done = each.done,
                 .ends = each.ends ? 1 : 0,
                 .synchronised = each.row.synchronised,
                 .start = "2010-01-01"});
            model.push_back(each);
        }
    }

    /// Launches the model's rows of one kind; the bulletins to expect, in order.
    std::vector<std::string> LaunchModel(bool synchronised, Day day) {
        std::vector<std::string> bulletins;
        std::string booked = "1899-12-30";
        int bookedWeek = 53;
        for (std::size_t i = 0; i < model.size(); ++i) {
            Modelled& each = model[i];
            if (each.cancelled || each.row.synchronised != synchronised) continue;
            const reference::Decision decision = reference::Decide(each.row, day);
            if (decision.booked) {
                booked = reference::Iso(*decision.booked);
                bookedWeek = reference::WeekOf(*decision.booked);
            }
            if (decision.step < each.row.interval) continue;
            bulletins.push_back(std::to_string(i + 1) + "|" + booked + "|" + std::to_string(bookedWeek));
            if (each.cycle > 0 && each.ends) {
                each.cancelled = each.done + decision.step >= each.cycle;
                each.done = each.cancelled ? 0 : each.done + decision.step;
            }
            each.row.week = bookedWeek;
            each.row.last = FromIso(booked);
        }
        return bulletins;
    }
    static Day FromIso(const std::string& iso) {
        return {std::chrono::year(std::stoi(iso.substr(0, 4))),
                std::chrono::month(static_cast<unsigned>(std::stoi(iso.substr(5, 2)))),
                std::chrono::day(static_cast<unsigned>(std::stoi(iso.substr(8, 2))))};
    }

    std::vector<std::string> StoredRows() {
        return world.Rows(
            "SELECT Fecha_Ultimo_Lanzamiento, Semana, Acumulado_Ciclo, Anulada FROM Imputacion_Preventiva"
            " ORDER BY SC_Imputacion_Preventiva");
    }
    std::vector<std::string> ModelRows() const {
        std::vector<std::string> rows;
        for (const Modelled& each : model) {
            rows.push_back(reference::Iso(each.row.last) + "|" + std::to_string(each.row.week) + "|" +
                           std::to_string(each.done) + "|" + (each.cancelled ? "1" : "0"));
        }
        return rows;
    }
    /// What the overdue question has to answer for the asset of a row.
    void ExpectOverdueAnswers(Day day) {
        world.Platform().now = World::Day(reference::Iso(day) + " 13:45:00");
        for (std::size_t i = 0; i < model.size(); ++i) {
            const Modelled& each = model[i];
            const std::string asset = "R-" + std::to_string(i + 1);
            const bool due = !each.cancelled && reference::Decide(each.row, day).step >= each.row.interval;
            SCOPED_TRACE(Describe(each.row, day));
            ASSERT_EQ(preventive->ActivoTieneMantenimientoVencido(asset), due && each.row.synchronised);
            ASSERT_EQ(preventive->ActivoTieneMantenimientoConvencionalVencido(asset), due && !each.row.synchronised);
        }
    }

    std::vector<Modelled> model;
};

TEST_P(RandomRuns, LaunchAndOverdueQuestionsDecideAsTheReferenceDoesRowByRow) {
    Dice dice(GetParam());
    Day day = dice.AnyDay();
    Plant(dice, day, 250);
    std::size_t launched = 0;
    for (int run = 0; run < 12; ++run) {
        SCOPED_TRACE("run " + std::to_string(run) + " on " + reference::Iso(day));
        if (run % 6 == 0) ExpectOverdueAnswers(day);
        for (const bool synchronised : {true, false}) {
            world.Run("DELETE FROM Boletin");
            const std::vector<std::string> expected = LaunchModel(synchronised, day);
            const std::string iso = reference::Iso(day);
            ASSERT_EQ(synchronised ? Launch(iso) : LaunchConventional(iso), static_cast<int>(expected.size()));
            ASSERT_EQ(world.Rows("SELECT SC_Imputacion_Preventiva, Fecha_Lanzamiento, Semana_Del_Ano FROM Boletin"
                                 " ORDER BY SC_Boletin"),
                      expected);
            launched += expected.size();
        }
        ASSERT_EQ(StoredRows(), ModelRows());
        world.Forget();
        day = reference::Later(day, dice.From(1, 25));
    }
    EXPECT_GT(launched, 250u);
}

INSTANTIATE_TEST_SUITE_P(Seeds, RandomRuns, testing::Values(1u, 2u, 3u, 4u, 5u, 6u));

}  // namespace
