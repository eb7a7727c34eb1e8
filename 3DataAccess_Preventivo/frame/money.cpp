#include "frame/money.h"

#include "frame/raised_error.h"

#include <cmath>
#include <limits>

namespace Zontara {

namespace {

constexpr std::int64_t kUnit = 10000;

}  // namespace

Money Money::FromNumber(double number) {
    const double scaled = std::nearbyint(number * static_cast<double>(kUnit));
    constexpr double kLimit = 9223372036854775808.0;
    if (!(scaled >= -kLimit && scaled < kLimit)) Raise(RunTimeError::Overflow);
    return FromTenThousandths(static_cast<std::int64_t>(scaled));
}

double Money::ToNumber() const { return static_cast<double>(tenThousandths_) / static_cast<double>(kUnit); }

std::string Money::ToText() const {
    const bool negative = tenThousandths_ < 0;
    const std::uint64_t magnitude =
        negative ? 0 - static_cast<std::uint64_t>(tenThousandths_) : static_cast<std::uint64_t>(tenThousandths_);
    std::string text = negative ? "-" : "";
    text += std::to_string(magnitude / kUnit);
    std::string decimals = std::to_string(kUnit + static_cast<std::int64_t>(magnitude % kUnit)).substr(1);
    decimals.erase(decimals.find_last_not_of('0') + 1);
    if (!decimals.empty()) text += "." + decimals;
    return text;
}

}  // namespace Zontara
