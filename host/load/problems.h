#pragma once

#include <cstddef>
#include <ostream>
#include <string>
#include <vector>

namespace host::load {

/// What is wrong with one cell or line of a file.
struct Problem {
    std::string file;
    /// 0 when the file as a whole is meant.
    std::size_t line = 0;
    /// Empty when the line as a whole is meant.
    std::string column;
    std::string reason;
};

/// The problems of an import, gathered over all its files so that all can be mended at once.
class Problems {
public:
    /// Most problems that are listed; the others are only counted.
    static constexpr std::size_t kListed = 50;

    void Add(Problem problem) { problems_.push_back(std::move(problem)); }
    bool Empty() const { return problems_.empty(); }
    const std::vector<Problem>& All() const { return problems_; }

    /// Orders them by file, in the order of `files`, and by line.
    void Sort(const std::vector<std::string>& files);

    /// One line each, "assets.csv, line 7, column ID_Activo: ...", up to `kListed` of them.
    std::string Text() const;

private:
    std::vector<Problem> problems_;
};

}  // namespace host::load
