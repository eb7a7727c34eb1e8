#include "bench/harness.h"

#include <fmt/format.h>

#include <algorithm>
#include <cstdio>
#include <cstdlib>
#include <ctime>

namespace bench {

namespace {

double ProcessorSeconds() {
    std::timespec time{};
    clock_gettime(CLOCK_PROCESS_CPUTIME_ID, &time);
    return static_cast<double>(time.tv_sec) + static_cast<double>(time.tv_nsec) * 1e-9;
}

std::string Number(double number) {
    return number < 10 ? fmt::format("{:.2f}", number) : fmt::format("{:.1f}", number);
}

std::string Seconds(double seconds) {
    return seconds < 0.1 ? fmt::format("{:.2f} ms", seconds * 1e3) : fmt::format("{:.3f} s", seconds);
}

}  // namespace

std::vector<std::vector<double>> Alternate(int rounds, const std::vector<Side>& sides) {
    std::vector<std::vector<double>> times(sides.size());
    for (int round = 0; round < rounds; ++round) {
        for (std::size_t i = 0; i < sides.size(); ++i) {
            if (sides[i].prepare) sides[i].prepare();
            const double begun = ProcessorSeconds();
            sides[i].run();
            times[i].push_back(ProcessorSeconds() - begun);
        }
    }
    return times;
}

double Median(std::vector<double> values) {
    std::sort(values.begin(), values.end());
    return values[values.size() / 2];
}

double Ratio(const std::vector<double>& side, const std::vector<double>& beside) {
    std::vector<double> ratios;
    for (std::size_t i = 0; i < side.size(); ++i)
        ratios.push_back(side[i] / beside[i]);
    return Median(std::move(ratios));
}

void Require(bool holds, const std::string& what) {
    if (holds) return;
    std::fprintf(stderr, "The measurement would say nothing: %s\n", what.c_str());
    std::exit(1);
}

void Table::Head(const std::string& engine) const {
    fmt::print("{}\n\n", engine);
    fmt::print("{:<10} {:<72} {:>10} {:>10} {:>7} {:>7}  {}\n", "item", "what", "ours", "beside", "figure", "target",
               "met");
    fmt::print("{:-<10} {:-<72} {:->10} {:->10} {:->7} {:->7}  {}\n", "", "", "", "", "", "", "---");
}

void Table::Add(const Line& line) {
    const bool judged = line.target > 0;
    const bool met = line.atLeast ? line.figure >= line.target : line.figure <= line.target;
    if (judged && !met) allMet_ = false;
    const std::string target = judged ? (line.atLeast ? ">= " : "") + Number(line.target) : "";
    fmt::print("{:<10} {:<72} {:>10} {:>10} {:>7} {:>7}  {}\n", line.item, line.what, line.ours, line.beside,
               Number(line.figure), target, judged ? (met ? "yes" : "NO") : "");
    std::fflush(stdout);
}

void Table::AddRatio(const std::string& item, const std::string& what, const std::vector<double>& ours,
                     const std::vector<double>& beside, double target, bool atLeast) {
    Add({item, what, Seconds(Median(ours)), Seconds(Median(beside)), Ratio(ours, beside), target, atLeast});
}

void Progress(const std::string& what) { std::fprintf(stderr, "... %s\n", what.c_str()); }

}  // namespace bench
