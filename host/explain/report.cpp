#include "host/explain/report.h"

#include "frame/regional.h"
#include "host/text/colour.h"
#include "host/text/wrap.h"

#include <fmt/format.h>
#include <nlohmann/json.hpp>

namespace host::explain {

namespace {

using planning::AverageUse;
using planning::Explanation;
using planning::Fact;
using planning::Kind;
using State = Explanation::State;
using nlohmann::ordered_json;
using text::Tone;

std::string Iso(Zontara::Date day) { return Zontara::Format(day, "yyyy-mm-dd"); }

std::string_view TitleOf(Kind kind) {
    switch (kind) {
        case Kind::Synchronised:
            return "Synchronised";
        case Kind::Conventional:
            return "Conventional";
        case Kind::Meter:
            return "Meter";
    }
    return {};
}

std::string_view NameOf(State state) {
    switch (state) {
        case State::Due:
            return "due";
        case State::NotDue:
            return "not due";
        case State::NotBegun:
            return "not begun";
        case State::Cancelled:
            return "cancelled";
        case State::Unreadable:
            return "unreadable";
    }
    return {};
}

Tone ToneOf(State state) {
    if (state == State::Due) return Tone::Warning;
    if (state == State::Unreadable) return Tone::Bad;
    return state == State::NotDue ? Tone::Good : Tone::Faint;
}

std::string Told(const Fact& fact) {
    return fact.name + " " + (fact.value.empty() ? std::string("(empty)") : fact.value);
}

std::string Told(const std::vector<Fact>& facts) {
    std::string line;
    for (const Fact& fact : facts)
        line += (line.empty() ? "" : ", ") + Told(fact);
    return line;
}

/// What a meter's next day goes by.
std::string Told(const AverageUse& use, const std::string& unit) {
    if (!use.Known())
        return "not known: the year before has no readings of two days, so the meter is taken to stand still";
    return fmt::format("{:.2f} {} a day, by {} readings from {} to {}", use.perDay, unit, use.readings, Iso(use.first),
                       Iso(use.last));
}

std::string NextOf(const Explanation& each) {
    switch (each.state) {
        case State::Cancelled:
            return "never: it is cancelled";
        case State::Unreadable:
            return "not known; mend the row, since it stops the launch that looks at it";
        default:
            break;
    }
    if (!each.next) return fmt::format("never within {} years", planning::kYearsAhead);
    return Iso(*each.next) + (each.use && each.state != State::Due ? ", at the average use" : "");
}

constexpr std::size_t kWidth = 110;

class Paragraph {
public:
    Paragraph(std::ostream& out, const Explanation& each) : out_(out), each_(each) {}

    void Print() {
        const std::string state(NameOf(each_.state));
        out_ << fmt::format("\n{} assignment {}, task {} ({}), {}: {}\n", TitleOf(each_.kind), each_.key, each_.task,
                            each_.taskName, each_.frequency, text::Paint(out_, ToneOf(each_.state), state));
        Line("Rule", each_.rule);
        Line("Read", Told(each_.facts));
        if (!each_.reached.name.empty()) {
            Line("Threshold", fmt::format("{} where {} asks for {}", Told(each_.reached), each_.threshold.name,
                                          each_.threshold.value));
        }
        if (!each_.failure.empty()) Line("Failure", each_.failure);
        if (each_.books) Line("Books", Iso(*each_.books));
        if (each_.use && each_.state != State::Cancelled) Line("Use", Told(*each_.use, each_.unit));
        Line("Next", NextOf(each_));
    }

private:
    void Line(std::string_view name, const std::string& what) {
        if (what.empty()) return;
        const std::string head = fmt::format("  {:<10}", name);
        out_ << head << text::Wrapped(what, kWidth, head.size()).substr(head.size());
    }

    std::ostream& out_;
    const Explanation& each_;
};

ordered_json ToJson(const std::vector<Fact>& facts) {
    ordered_json object = ordered_json::object();
    for (const Fact& fact : facts) {
        if (!fact.name.empty()) object[fact.name] = fact.value;
    }
    return object;
}

ordered_json DayOrNull(const std::optional<Zontara::Date>& day) {
    return day ? ordered_json(Iso(*day)) : ordered_json(nullptr);
}

ordered_json ToJson(const Explanation& each) {
    ordered_json json = {{"kind", NameOf(each.kind)},
                         {"key", each.key},
                         {"asset", each.asset},
                         {"task", each.task},
                         {"task_name", each.taskName},
                         {"frequency", each.frequency},
                         {"state", NameOf(each.state)},
                         {"due", each.state == State::Due},
                         {"in_service", each.inService},
                         {"rule", each.rule},
                         {"values", ToJson(each.facts)},
                         {"reached", ToJson(std::vector<Fact>{each.reached})},
                         {"threshold", ToJson(std::vector<Fact>{each.threshold})},
                         {"books", DayOrNull(each.books)},
                         {"next", DayOrNull(each.next)}};
    if (each.use) {
        json["use_a_day"] = each.use->Known() ? ordered_json(each.use->perDay) : ordered_json(nullptr);
        json["unit"] = each.unit;
    }
    if (!each.failure.empty()) json["failure"] = each.failure;
    return json;
}

}  // namespace

void Print(std::ostream& out, Zontara::Date on, const std::vector<Explanation>& told) {
    std::string asset;
    for (const Explanation& each : told) {
        if (each.asset != asset) {
            out << fmt::format("{}Asset {} on {} (week {})\n", asset.empty() ? "" : "\n", each.asset, Iso(on),
                               Zontara::WeekOfYear(on));
            if (!each.inService) out << "It is out of service: no launch looks at it, due or not.\n";
            asset = each.asset;
        }
        Paragraph(out, each).Print();
    }
}

ordered_json ToJson(Zontara::Date on, const std::vector<Explanation>& told) {
    ordered_json assignments = ordered_json::array();
    for (const Explanation& each : told)
        assignments.push_back(ToJson(each));
    return {{"on", Iso(on)}, {"assignments", std::move(assignments)}};
}

}  // namespace host::explain
