// Measures launches side by side with the practical limit of the engine, in alternated rounds of one run.
#include "Perluma/provider.h"
#include "bench/bound.h"
#include "bench/plant.h"
#include "calendar/CImputacionPreventiva.h"
#include "frame/date.h"

#include <algorithm>
#include <chrono>
#include <cstdio>
#include <cstdlib>
#include <exception>
#include <functional>
#include <vector>

namespace {

constexpr int kRounds = 7;

double SecondsOf(const std::function<void()>& work) {
    const auto begun = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begun).count();
}

double Median(std::vector<double> seconds) {
    std::sort(seconds.begin(), seconds.end());
    return seconds[seconds.size() / 2];
}

void Require(int launched, int expected) {
    if (launched == expected) return;
    std::fprintf(stderr, "%d were launched and not %d: the measurement would say nothing\n", launched, expected);
    std::exit(1);
}

/// A launch of all assignments of a plant on a file, by the component and by the limit in turns.
void MeasureLaunch(int assignments) {
    const bench::ScratchFile file(std::to_string(assignments));
    dhRichClient3::Options options;
    options.mode = dhRichClient3::Options::Mode::Create;
    const auto connection = dhRichClient3::Connection::Open(file.Path(), options);
    bench::FillPlant(*connection, assignments);
    Perluma::OpenSession(connection);
    Zontara::CImputacionPreventiva calendar;

    std::vector<double> component;
    std::vector<double> limit;
    for (int round = 0; round < kRounds; ++round) {
        bench::MakeDue(*connection);
        component.push_back(SecondsOf(
            [&] { Require(calendar.LanzarPreventivo(Zontara::DateOf(2026, 3, 2), 7, "Breve"), assignments); }));
        bench::MakeDue(*connection);
        limit.push_back(SecondsOf([&] { Require(bench::LaunchBound(file.Path()), assignments); }));
    }
    Zontara::InstallProvider(nullptr);
    const double ours = Median(component);
    const double bound = Median(limit);
    std::printf("%-38s %9d %10.3f %10.3f %7.2f\n", "LanzarPreventivo into bulletins, file", assignments, ours, bound,
                ours / bound);
    std::fflush(stdout);
}

}  // namespace

int main() {
    try {
        std::printf("%-38s %9s %10s %10s %7s\n", "median of 7 alternated rounds", "rows", "seconds", "limit", "ratio");
        MeasureLaunch(10000);
        MeasureLaunch(100000);
    } catch (const std::exception& error) {
        std::fprintf(stderr, "%s\n", error.what());
        return 1;
    }
    return 0;
}
