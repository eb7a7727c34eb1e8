#pragma once

#include "frame/export.h"
#include "frame/value.h"

#include <cstdint>
#include <optional>
#include <string>
#include <string_view>

namespace Zontara {

/// The value as a T, by the rules of late binding:
///   - a number goes to a narrower number rounded half to even, and out of its range is error 6;
///   - a text goes to a number or a bool only if it reads as one, else error 13, and to a date as `Regional` reads it;
///   - a bool is -1 or 0 as a number (255 as a byte), and any number but 0 is true;
///   - empty is 0, false, the zero date or the empty text; null is error 94; absent and arrays are error 13;
///   - an object converts to nothing but an object reference (error 13), and none to nothing at all (error 91).
/// Specialised for bool, std::uint8_t, std::int16_t, std::int32_t, float, double, Money, Date, std::string,
/// Ref<Object> and Value.
template <class T> T ConvertTo(const Value& value);

template <> ZONTARA_EXPORT bool ConvertTo<bool>(const Value&);
template <> ZONTARA_EXPORT std::uint8_t ConvertTo<std::uint8_t>(const Value&);
template <> ZONTARA_EXPORT std::int16_t ConvertTo<std::int16_t>(const Value&);
template <> ZONTARA_EXPORT std::int32_t ConvertTo<std::int32_t>(const Value&);
template <> ZONTARA_EXPORT float ConvertTo<float>(const Value&);
template <> ZONTARA_EXPORT double ConvertTo<double>(const Value&);
template <> ZONTARA_EXPORT Money ConvertTo<Money>(const Value&);
template <> ZONTARA_EXPORT Date ConvertTo<Date>(const Value&);
template <> ZONTARA_EXPORT std::string ConvertTo<std::string>(const Value&);
template <> ZONTARA_EXPORT Ref<Object> ConvertTo<Ref<Object>>(const Value&);
template <> ZONTARA_EXPORT Value ConvertTo<Value>(const Value&);

/// The default text of a value; null gives the empty text. Everything else as `ConvertTo<std::string>`.
ZONTARA_EXPORT std::string ToText(const Value& value);

/// Shortest text that reads back as the same number: plain digits from 1E-5 up to 1E+15, else an exponent of at
/// least two digits. A point, no trailing zeros, "0" for -0. Error 6 for what is no finite number.
ZONTARA_EXPORT std::string ToText(float number);
/// The same into room for `kLongestText` characters; gives the end.
ZONTARA_EXPORT char* WriteText(float number, char* room);
inline constexpr std::size_t kLongestText = 32;
/// Likewise, with at most 15 significant digits.
ZONTARA_EXPORT std::string ToText(double number);

/// The number that the default text of a float reads as, which is what a statement's literal stores: 0.1 for 0.1F.
ZONTARA_EXPORT double NumberAsWritten(float number);

/// The number that a text reads as: blanks around it, a sign, a point and an exponent are allowed, nothing else.
ZONTARA_EXPORT std::optional<double> NumberIn(std::string_view text);

/// Half goes to the even neighbour. Error 6 outside the range of the result.
ZONTARA_EXPORT std::int32_t RoundToInt32(double number);
ZONTARA_EXPORT std::int16_t RoundToInt16(double number);

/// A whole number that must fit 16 bits or 8. Error 6 otherwise.
ZONTARA_EXPORT std::int16_t NarrowToInt16(std::int64_t number);
ZONTARA_EXPORT std::int32_t NarrowToInt32(std::int64_t number);

/// Comparisons of tagged values. None of them holds when either side is null. A text beside a number is read as a
/// number (error 13 if it is none); two texts compare byte by byte.
ZONTARA_EXPORT bool Equal(const Value& left, const Value& right);
ZONTARA_EXPORT bool Differ(const Value& left, const Value& right);

}  // namespace Zontara
