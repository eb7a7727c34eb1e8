#include "frame/money.h"

#include "frame/raised_error.h"

#include <array>
#include <charconv>
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
    std::array<char, 32> text;
    char* end = text.data();
    if (negative) *end++ = '-';
    end = std::to_chars(end, text.data() + text.size(), magnitude / kUnit).ptr;
    auto rest = static_cast<std::int64_t>(magnitude % kUnit);
    if (rest != 0) *end++ = '.';
    for (std::int64_t unit = kUnit / 10; rest != 0; rest %= unit, unit /= 10)
        *end++ = static_cast<char>('0' + rest / unit);
    return {text.data(), end};
}

}  // namespace Zontara
