#include "bench/items/items.h"
#include "errors/trap.h"
#include "frame/sql.h"

#include <cstdint>
#include <string>

namespace bench {

namespace {

constexpr int kCalls = 2'000'000;
int gathered = 0;

/// The work of a small method: the text of a statement.
std::size_t Work(std::int32_t key) {
    return Zontara::Sql({"  DELETE From Boletin", " WHERE SC_Boletin =", key}).size();
}

[[gnu::noinline]] std::size_t Bare(std::int32_t key) { return Work(key); }

[[gnu::noinline]] std::size_t Trapped(std::int32_t key) {
    return Zontara::Trap(
        "CBoletin.Borrar(SC_Boletin)", [&] { return Work(key); },
        [&] {
            ++gathered;
            return Zontara::Arguments(key);
        });
}

template <class Method> void CallOften(Method method) {
    std::size_t length = 0;
    for (int i = 0; i < kCalls; ++i)
        length += method(i);
    Require(length > kCalls, "texts");
}

}  // namespace

void MeasureTraps(const Scale& scale, Table& table) {
    Progress("traps");
    const auto times = Alternate(scale.rounds, {{{}, [] { CallOften(Trapped); }}, {{}, [] { CallOften(Bare); }}});
    Require(gathered == 0, "no argument values");
    table.AddRatio("8", "a method that works, " + std::to_string(kCalls) + " calls: with its trap : without", times[0],
                   times[1], 1.05);
}

}  // namespace bench
