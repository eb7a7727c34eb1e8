#include "frame/convert.h"

#include "frame/object.h"
#include "frame/raised_error.h"
#include "frame/regional.h"

#include <array>
#include <charconv>
#include <cmath>
#include <limits>

namespace Zontara {

namespace {

using Kind = Value::Kind;

/// What stands behind a conversion that can't be made.
[[noreturn]] void Refuse(const Value& value) {
    if (value.IsNull()) Raise(RunTimeError::InvalidUseOfNull);
    if (value.Is<Ref<Object>>() && !value.Get<Ref<Object>>()) Raise(RunTimeError::ObjectNotSet);
    Raise(RunTimeError::TypeMismatch);
}

bool IsBlank(char c) { return c == ' ' || c == '\t' || c == '\r' || c == '\n'; }

/// True or False as a bool's text, without regard to case.
std::optional<bool> BoolIn(std::string_view text) {
    const auto is = [text](std::string_view word) {
        if (text.size() != word.size()) return false;
        for (std::size_t i = 0; i < word.size(); ++i) {
            if ((text[i] | 0x20) != word[i]) return false;
        }
        return true;
    };
    if (is("true")) return true;
    if (is("false")) return false;
    return std::nullopt;
}

double NumberOf(const Value& value) {
    switch (value.kind()) {
        case Kind::Empty:
            return 0.0;
        case Kind::Bool:
            return value.Get<bool>() ? -1.0 : 0.0;
        case Kind::Byte:
            return value.Get<std::uint8_t>();
        case Kind::Int16:
            return value.Get<std::int16_t>();
        case Kind::Int32:
            return value.Get<std::int32_t>();
        case Kind::Float32:
            return value.Get<float>();
        case Kind::Float64:
            return value.Get<double>();
        case Kind::Money:
            return value.Get<Money>().ToNumber();
        case Kind::Date:
            return value.Get<Date>().days;
        case Kind::Text: {
            const std::optional<double> number = NumberIn(value.Get<std::string>());
            if (!number) Raise(RunTimeError::TypeMismatch);
            return *number;
        }
        default:
            Refuse(value);
    }
}

/// Half to even, checked against the range of T. `nearbyint` rounds so in the default rounding mode.
template <class T> T Rounded(double number) {
    const double whole = std::nearbyint(number);
    if (!(whole >= static_cast<double>(std::numeric_limits<T>::min()) &&
          whole <= static_cast<double>(std::numeric_limits<T>::max()))) {
        Raise(RunTimeError::Overflow);
    }
    return static_cast<T>(whole);
}

/// The significant digits of a number, without trailing zeros, and the exponent of the first one.
struct Digits {
    std::string digits;
    int exponent = 0;
};

/// Takes apart what stands in the form 1.23e+45.
Digits DigitsIn(std::string_view text) {
    const std::size_t mark = text.find('e');
    Digits result;
    result.digits = text.front();
    if (mark > 2) result.digits.append(text.substr(2, mark - 2));
    const std::string_view exponent = text.substr(text[mark + 1] == '+' ? mark + 2 : mark + 1);
    std::from_chars(exponent.data(), exponent.data() + exponent.size(), result.exponent);
    const std::size_t last = result.digits.find_last_not_of('0');
    result.digits.erase(last == std::string::npos ? 1 : last + 1);
    return result;
}

/// The number rounded to so many significant digits.
Digits DigitsOf(double magnitude, int precision) {
    std::array<char, 40> buffer;
    const auto end = std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude,
                                   std::chars_format::scientific, precision - 1)
                         .ptr;
    return DigitsIn({buffer.data(), static_cast<std::size_t>(end - buffer.data())});
}

/// The fewest digits that any text of the number has which reads back as it.
template <class T> Digits FewestDigits(T magnitude) {
    std::array<char, 40> buffer;
    const auto end =
        std::to_chars(buffer.data(), buffer.data() + buffer.size(), magnitude, std::chars_format::scientific).ptr;
    return DigitsIn({buffer.data(), static_cast<std::size_t>(end - buffer.data())});
}

std::string Written(bool negative, const Digits& number, int lastPlainExponent) {
    std::string text = negative ? "-" : "";
    const int count = static_cast<int>(number.digits.size());
    if (number.exponent < -5 || number.exponent > lastPlainExponent) {
        text += number.digits.substr(0, 1);
        if (count > 1) text += "." + number.digits.substr(1);
        const int magnitude = std::abs(number.exponent);
        text += number.exponent < 0 ? "E-" : "E+";
        if (magnitude < 10) text += "0";
        return text + std::to_string(magnitude);
    }
    if (number.exponent < 0) {
        return text + "0." + std::string(static_cast<std::size_t>(-number.exponent - 1), '0') + number.digits;
    }
    if (count <= number.exponent + 1) {
        return text + number.digits +
               std::string(static_cast<std::size_t>(number.exponent) + 1 - number.digits.size(), '0');
    }
    const auto whole = static_cast<std::size_t>(number.exponent) + 1;
    return text + number.digits.substr(0, whole) + "." + number.digits.substr(whole);
}

/// The largest exponent that is still written in plain digits: 1E+15 itself is not.
constexpr int kLastPlainExponent = 14;

template <class T> bool ReadsBackAs(T magnitude, const Digits& digits) {
    const std::string text =
        digits.digits + "e" + std::to_string(digits.exponent - static_cast<int>(digits.digits.size()) + 1);
    T back{};
    std::from_chars(text.data(), text.data() + text.size(), back);
    return back == magnitude;
}

/// The number rounded to the fewest digits with which it reads back.
template <class T> Digits ShortestDigits(T magnitude, int mostDigits) {
    Digits fewest = FewestDigits(magnitude);
    auto precision = static_cast<int>(fewest.digits.size());
    // A power of two has its neighbour below nearer than the one above: there the fewest digits need not be the
    // nearest.
    int exponent = 0;
    if (precision < mostDigits && std::frexp(magnitude, &exponent) != T{0.5}) return fewest;
    for (; precision < mostDigits; ++precision) {
        Digits digits = DigitsOf(static_cast<double>(magnitude), precision);
        if (ReadsBackAs(magnitude, digits)) return digits;
    }
    return DigitsOf(static_cast<double>(magnitude), mostDigits);
}

template <class T> std::string ShortestText(T number, int mostDigits) {
    if (!std::isfinite(number)) Raise(RunTimeError::Overflow);
    if (number == T{0}) return "0";
    return Written(number < T{0}, ShortestDigits(std::fabs(number), mostDigits), kLastPlainExponent);
}

/// The thousandths that a float's text says, if they can be told without a search for the fewest digits: a number of at
/// most six digits, since no other one of so few has the same float, or one that is whole in thousandths, as long as
/// floats lie so close that a digit less would be another one.
std::optional<std::int32_t> ThousandthsOf(float number) {
    constexpr double kSixDigits = 999'999;
    constexpr double kCloserThanTwoThousandths = 32'768;
    const double exact = number;
    const double size = std::fabs(exact);
    if (!(size < kSixDigits / 10)) return std::nullopt;
    const std::int32_t unit = size < kSixDigits / 1000 ? 1000 : size < kSixDigits / 100 ? 100 : 10;
    const auto rounded = static_cast<std::int32_t>(exact * unit + (exact < 0 ? -0.5 : 0.5));
    if (static_cast<float>(static_cast<double>(rounded) / unit) == number) return rounded * (1000 / unit);
    const double thousandths = exact * 1000;
    if (size >= kCloserThanTwoThousandths) return std::nullopt;
    const auto whole = static_cast<std::int32_t>(thousandths);
    return whole == thousandths ? std::optional(whole) : std::nullopt;
}

/// Puts thousandths that are no whole number behind each other; gives the end.
char* WriteThousandths(std::int32_t thousandths, char* end) {
    if (thousandths < 0) *end++ = '-';
    end = std::to_chars(end, end + kLongestText, std::abs(thousandths) / 1000).ptr;
    const std::int32_t rest = std::abs(thousandths) % 1000;
    *end++ = '.';
    *end++ = static_cast<char>('0' + rest / 100);
    if (rest % 100 != 0) *end++ = static_cast<char>('0' + rest / 10 % 10);
    if (rest % 10 != 0) *end++ = static_cast<char>('0' + rest % 10);
    return end;
}

template <class T> bool IsWholeBelow(T number, T limit) {
    return std::fabs(number) < limit && std::trunc(number) == number;
}

}  // namespace

std::optional<double> NumberIn(std::string_view text) {
    while (!text.empty() && IsBlank(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlank(text.back()))
        text.remove_suffix(1);
    if (!text.empty() && text.front() == '+') {
        text.remove_prefix(1);
        if (!text.empty() && (text.front() == '-' || text.front() == '+')) return std::nullopt;
    }
    const std::string_view digits = !text.empty() && text.front() == '-' ? text.substr(1) : text;
    // The library's reader also knows words for infinity and for no number.
    if (digits.empty() || !((digits.front() >= '0' && digits.front() <= '9') || digits.front() == '.')) {
        return std::nullopt;
    }
    double number = 0.0;
    const auto [end, error] = std::from_chars(text.data(), text.data() + text.size(), number);
    if (error != std::errc() || end != text.data() + text.size()) return std::nullopt;
    return number;
}

char* WriteText(float number, char* room) {
    // Whole numbers and those of a few decimals are the common case in statements, and need no search for the fewest
    // digits.
    constexpr float kWholeNumbers = 16777216.0F;
    if (std::fabs(number) < kWholeNumbers && static_cast<float>(static_cast<std::int32_t>(number)) == number) {
        return std::to_chars(room, room + kLongestText, static_cast<std::int32_t>(number)).ptr;
    }
    if (const auto thousandths = ThousandthsOf(number)) return WriteThousandths(*thousandths, room);
    const std::string text = ShortestText(number, 9);
    return std::copy(text.begin(), text.end(), room);
}

std::string ToText(float number) {
    std::array<char, kLongestText> room;
    return {room.data(), WriteText(number, room.data())};
}

double NumberAsWritten(float number) {
    if (const auto thousandths = ThousandthsOf(number)) return *thousandths / 1000.0;
    return NumberIn(ToText(number)).value_or(0.0);
}

std::string ToText(double number) {
    if (IsWholeBelow(number, 1E15)) return std::to_string(static_cast<std::int64_t>(number));
    return ShortestText(number, 15);
}

std::int32_t RoundToInt32(double number) { return Rounded<std::int32_t>(number); }
std::int16_t RoundToInt16(double number) { return Rounded<std::int16_t>(number); }

std::int16_t NarrowToInt16(std::int64_t number) {
    if (number < std::numeric_limits<std::int16_t>::min() || number > std::numeric_limits<std::int16_t>::max()) {
        Raise(RunTimeError::Overflow);
    }
    return static_cast<std::int16_t>(number);
}

std::int32_t NarrowToInt32(std::int64_t number) {
    if (number < std::numeric_limits<std::int32_t>::min() || number > std::numeric_limits<std::int32_t>::max()) {
        Raise(RunTimeError::Overflow);
    }
    return static_cast<std::int32_t>(number);
}

template <> bool ConvertTo<bool>(const Value& value) {
    if (value.Is<bool>()) return value.Get<bool>();
    if (value.Is<std::string>()) {
        if (const std::optional<bool> word = BoolIn(value.Get<std::string>())) return *word;
    }
    return NumberOf(value) != 0.0;
}

template <> std::uint8_t ConvertTo<std::uint8_t>(const Value& value) {
    if (value.Is<bool>()) return value.Get<bool>() ? 255 : 0;
    return Rounded<std::uint8_t>(NumberOf(value));
}

template <> std::int16_t ConvertTo<std::int16_t>(const Value& value) { return Rounded<std::int16_t>(NumberOf(value)); }

template <> std::int32_t ConvertTo<std::int32_t>(const Value& value) {
    if (value.Is<std::int32_t>()) return value.Get<std::int32_t>();
    return Rounded<std::int32_t>(NumberOf(value));
}

template <> float ConvertTo<float>(const Value& value) {
    if (value.Is<float>()) return value.Get<float>();
    const double number = NumberOf(value);
    if (std::fabs(number) > static_cast<double>(std::numeric_limits<float>::max())) Raise(RunTimeError::Overflow);
    return static_cast<float>(number);
}

template <> double ConvertTo<double>(const Value& value) { return NumberOf(value); }

template <> Money ConvertTo<Money>(const Value& value) {
    if (value.Is<Money>()) return value.Get<Money>();
    return Money::FromNumber(NumberOf(value));
}

template <> Date ConvertTo<Date>(const Value& value) {
    if (value.Is<Date>()) return value.Get<Date>();
    if (value.Is<std::string>()) return ToDate(value.Get<std::string>());
    const Date date{NumberOf(value)};
    CivilOf(date);
    return date;
}

template <> std::string ConvertTo<std::string>(const Value& value) {
    switch (value.kind()) {
        case Kind::Empty:
            return {};
        case Kind::Bool:
            return value.Get<bool>() ? "True" : "False";
        case Kind::Byte:
            return std::to_string(value.Get<std::uint8_t>());
        case Kind::Int16:
            return std::to_string(value.Get<std::int16_t>());
        case Kind::Int32:
            return std::to_string(value.Get<std::int32_t>());
        case Kind::Float32:
            return ToText(value.Get<float>());
        case Kind::Float64:
            return ToText(value.Get<double>());
        case Kind::Money:
            return value.Get<Money>().ToText();
        case Kind::Date:
            return CurrentRegional().ToText(value.Get<Date>());
        case Kind::Text:
            return value.Get<std::string>();
        default:
            Refuse(value);
    }
}

template <> Ref<Object> ConvertTo<Ref<Object>>(const Value& value) {
    if (value.Is<Ref<Object>>()) return value.Get<Ref<Object>>();
    if (value.Is<Empty>() || value.IsAbsent()) return {};
    Refuse(value);
}

template <> Value ConvertTo<Value>(const Value& value) { return value; }

std::string ToText(const Value& value) { return value.IsNull() ? std::string() : ConvertTo<std::string>(value); }

namespace {

/// Whether two values that are not null are the same.
bool Same(const Value& left, const Value& right) {
    if (left.Is<std::string>() && right.Is<std::string>()) return left.Get<std::string>() == right.Get<std::string>();
    return NumberOf(left) == NumberOf(right);
}

}  // namespace

bool Equal(const Value& left, const Value& right) { return !left.IsNull() && !right.IsNull() && Same(left, right); }

bool Differ(const Value& left, const Value& right) { return !left.IsNull() && !right.IsNull() && !Same(left, right); }

}  // namespace Zontara
