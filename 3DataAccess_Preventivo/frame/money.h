#pragma once

#include "frame/export.h"

#include <compare>
#include <cstdint>
#include <string>

namespace Zontara {

/// An exact amount with four decimals, held as a whole number of ten-thousandths.
/// Range: about 922 million million to either side of zero.
class Money {
public:
    constexpr Money() = default;

    /// The amount of so many ten-thousandths: `Money::FromTenThousandths(25000)` is 2.5.
    static constexpr Money FromTenThousandths(std::int64_t tenThousandths) { return Money(tenThousandths); }

    /// The nearest amount to a number; half a ten-thousandth goes to the even neighbour.
    /// Error 6 when the number is out of range or is no number at all.
    ZONTARA_EXPORT static Money FromNumber(double number);

    constexpr std::int64_t TenThousandths() const { return tenThousandths_; }
    ZONTARA_EXPORT double ToNumber() const;

    /// Plain digits with a point, no trailing zeros: "2.5", "-0.0001", "10".
    ZONTARA_EXPORT std::string ToText() const;

    friend constexpr auto operator<=>(const Money&, const Money&) = default;

private:
    constexpr explicit Money(std::int64_t tenThousandths) : tenThousandths_(tenThousandths) {}

    std::int64_t tenThousandths_ = 0;
};

}  // namespace Zontara
