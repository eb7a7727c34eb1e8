#include "host/load/problems.h"

#include <fmt/format.h>
#include <algorithm>
#include <iterator>

namespace host::load {

void Problems::Sort(const std::vector<std::string>& files) {
    const auto place = [&](const Problem& problem) {
        return std::distance(files.begin(), std::find(files.begin(), files.end(), problem.file));
    };
    std::stable_sort(problems_.begin(), problems_.end(), [&](const Problem& left, const Problem& right) {
        const auto leftPlace = place(left);
        const auto rightPlace = place(right);
        return leftPlace != rightPlace ? leftPlace < rightPlace : left.line < right.line;
    });
}

std::string Problems::Text() const {
    std::string text;
    for (std::size_t i = 0; i < std::min(problems_.size(), kListed); ++i) {
        const Problem& problem = problems_[i];
        if (i > 0) text += '\n';
        text += problem.file;
        if (problem.line > 0) text += fmt::format(", line {}", problem.line);
        if (!problem.column.empty()) text += fmt::format(", column {}", problem.column);
        text += ": " + problem.reason;
    }
    if (problems_.size() > kListed) text += fmt::format("\n... and {} more", problems_.size() - kListed);
    return text;
}

}  // namespace host::load
