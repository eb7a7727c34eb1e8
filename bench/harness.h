#pragma once

#include <cstddef>
#include <functional>
#include <string>
#include <vector>

namespace bench {

/// How much is measured.
struct Scale {
    int rounds = 7;
    /// Divides the numbers of rows.
    int divisor = 1;

    int Rows(int full) const { return full / divisor; }
};

/// Something that is measured in turns with others.
struct Side {
    /// Brings everything back to the beginning; not measured. May be empty.
    std::function<void()> prepare;
    std::function<void()> run;
};

/// Processor seconds that each side took in each round, in turns: one round of all sides, then the next. The time that
/// the process spends, in the kernel too, and not that on the clock, so that a busy machine disturbs less.
std::vector<std::vector<double>> Alternate(int rounds, const std::vector<Side>& sides);

double Median(std::vector<double> values);

/// The median of what one side took as a multiple of another in the same round.
double Ratio(const std::vector<double>& side, const std::vector<double>& beside);

/// Ends the program when a measured run didn't do what it was to do: its figure would say nothing.
void Require(bool holds, const std::string& what);

/// One line of the table.
struct Line {
    std::string item;
    std::string what;
    /// What was measured and what it stands beside, with units; may be empty.
    std::string ours;
    std::string beside;
    double figure = 0;
    /// Largest figure in order; smallest with `atLeast`; 0 for a figure that is only told.
    double target = 0;
    bool atLeast = false;
};

/// The one table on standard output; progress goes to standard error.
class Table {
public:
    /// Names the engine, and the columns.
    void Head(const std::string& engine) const;
    void Add(const Line& line);
    /// Adds the ratio of the first two sides' times, with the medians in seconds.
    void AddRatio(const std::string& item, const std::string& what, const std::vector<double>& ours,
                  const std::vector<double>& beside, double target, bool atLeast = false);
    bool AllMet() const { return allMet_; }

private:
    bool allMet_ = true;
};

/// Tells on standard error what is being measured.
void Progress(const std::string& what);

/// A part of the benchmarks, found by its name.
struct Item {
    std::string name;
    std::function<void(const Scale&, Table&)> measure;
};

}  // namespace bench
