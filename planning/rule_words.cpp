#include "planning/rule_words.h"

#include "calendar/frequency.h"
#include "calendar/months.h"
#include "frame/convert.h"
#include "frame/regional.h"

#include <optional>
#include <string_view>

namespace planning {

namespace {

using Zontara::Date;
using Zontara::Recordset;
using Zontara::calendar::Frequency;

std::string StepMonths(Frequency frequency) { return std::to_string(Zontara::calendar::StepOf(frequency)); }

std::string SynchronisedRule(Frequency frequency) {
    std::string anotherWeek =
        "due when the week of the year has another number than the week of the last launch, whatever the year";
    switch (frequency) {
        case Frequency::Diaria:
        case Frequency::Semanal:
            return anotherWeek;
        case Frequency::Quincenal:
            return anotherWeek + ", and the week of the month is the one in Programacion or lies two weeks off it";
        case Frequency::Mensual:
            return anotherWeek + ", and the week of the month is the one in Programacion";
        case Frequency::Bimestral:
        case Frequency::Trimestral:
        case Frequency::Semestral:
            return "due when " + StepMonths(frequency) +
                   " months or more have begun since the last launch, and the month is the one in Programacion or "
                   "follows it in steps of " +
                   StepMonths(frequency);
        case Frequency::Anual:
            return "due when 12 months or more have begun since the last launch, and the month is the one in "
                   "Programacion";
        default:
            return "due never by itself: no synchronised rule knows this frequency";
    }
}

std::string ConventionalRule(Frequency frequency) {
    switch (frequency) {
        case Frequency::Fecha:
            return "due when the day as dd/mm/yyyy doesn't sort before the date in Programacion, and the last launch "
                   "sorts before it; texts are compared, the day of the month first";
        case Frequency::Diaria:
            return "due when the day as dd/mm/yyyy sorts behind the last launch; texts are compared, the day of the "
                   "month first";
        case Frequency::Semanal:
            return "due when 7 days or more have passed since the last launch, and the weekday (Monday is 1) is the "
                   "one in Programacion or a later one";
        case Frequency::Quincenal:
            return "due when 15 days or more have passed since the last launch, but never on the 30th and 31st";
        case Frequency::Unknown:
            return "due never by itself: no conventional rule knows this frequency";
        default:
            break;
    }
    return "due when " + StepMonths(frequency) + (frequency == Frequency::Mensual ? " month has" : " months have") +
           " begun since the last launch and the day of the month in Programacion has come, or more months than that "
           "have begun";
}

/// Collects what a rule compares.
class Reader {
public:
    Reader(const Recordset& row, Date day) : row_(row), day_(day), last_(LastLaunch(row)) {}

    Reader& Column(std::string_view name) {
        facts_.push_back({std::string(name), Zontara::ToText(row_.Valor(name))});
        return *this;
    }
    Reader& Number(std::string name, std::int32_t value) {
        facts_.push_back({std::move(name), std::to_string(value)});
        return *this;
    }
    Reader& LastLaunchAndDaysSince() {
        Column("Fecha_Ultimo_Lanzamiento");
        return last_ ? Number("days since", Zontara::DaysBetween(*last_, day_)) : *this;
    }
    Reader& LastLaunchAndMonthsSince() {
        Column("Fecha_Ultimo_Lanzamiento");
        return last_ ? Number("months begun since", Zontara::MonthsBetween(*last_, day_)) : *this;
    }
    Reader& Weeks() {
        Column("Semana");
        return Number("week of the year", Zontara::WeekOfYear(day_));
    }
    Reader& DayOfMonth() { return Number("day of the month", Zontara::CivilOf(day_).day); }
    /// The day and the last launch as texts.
    Reader& Texts() {
        facts_.push_back({"day", Zontara::Format(day_, kCompared)});
        facts_.push_back(
            {"last launch", Zontara::Format(Zontara::ToText(row_.Valor("Fecha_Ultimo_Lanzamiento")), kCompared)});
        return *this;
    }
    std::vector<Fact> Facts() { return std::move(facts_); }

private:
    static constexpr std::string_view kCompared = "dd/mm/yyyy";

    static std::optional<Date> LastLaunch(const Recordset& row) {
        return Zontara::CurrentRegional().Read(Zontara::ToText(row.Valor("Fecha_Ultimo_Lanzamiento")));
    }

    const Recordset& row_;
    Date day_;
    std::optional<Date> last_;
    std::vector<Fact> facts_;
};

void ReadSynchronised(Reader& reader, Frequency frequency, Date day) {
    if (Zontara::calendar::IsLong(frequency)) {
        reader.LastLaunchAndMonthsSince().Column("Programacion").Number("month", Zontara::CivilOf(day).month);
    } else if (frequency != Frequency::Unknown && frequency != Frequency::Fecha) {
        reader.Weeks();
        if (frequency == Frequency::Quincenal || frequency == Frequency::Mensual) {
            reader.Column("Programacion").Number("week of the month", Zontara::calendar::CalcularSemanaMes(day));
        }
    }
}

void ReadConventional(Reader& reader, Frequency frequency, Date day) {
    switch (frequency) {
        case Frequency::Unknown:
            break;
        case Frequency::Fecha:
            reader.Column("Programacion").Texts();
            break;
        case Frequency::Diaria:
            reader.Texts();
            break;
        case Frequency::Semanal:
            reader.LastLaunchAndDaysSince().Column("Programacion").Number("weekday", Zontara::WeekdayOf(day));
            break;
        case Frequency::Quincenal:
            reader.LastLaunchAndDaysSince().DayOfMonth();
            break;
        default:
            reader.LastLaunchAndMonthsSince().Column("Programacion").DayOfMonth();
    }
}

}  // namespace

std::string CalendarRule(Kind kind, const std::string& frequency) {
    const Frequency known = Zontara::calendar::FrequencyOf(frequency);
    return kind == Kind::Synchronised ? SynchronisedRule(known) : ConventionalRule(known);
}

std::vector<Fact> CalendarFacts(Kind kind, const Recordset& row, Date day) {
    const Frequency frequency = Zontara::calendar::FrequencyOf(Zontara::ToText(row.Valor("frecuencia")));
    Reader reader(row, day);
    if (kind == Kind::Synchronised) {
        ReadSynchronised(reader, frequency, day);
    } else {
        ReadConventional(reader, frequency, day);
    }
    return reader.Facts();
}

std::string MeterRule() {
    return "due when the accumulated reading has grown by the interval since the assignment's reference level";
}

}  // namespace planning
