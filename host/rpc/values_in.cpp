#include "frame/convert.h"
#include "frame/raised_error.h"
#include "host/rpc/values.h"

#include <fmt/format.h>

#include <cmath>
#include <limits>

namespace host::rpc {

namespace {

using Zontara::Date;
using Zontara::Object;
using Zontara::Ref;
using Zontara::TypeOf;
using Zontara::TypeWord;
using Zontara::Value;

/// The first double that is nearer to twice the largest float32 than to the largest: it rounds to infinity.
constexpr double kBeyondFloat32 = 340282356779733661637539395458142568448.0;

/// The whole number, none for one with a fraction or beyond 32 bits.
std::optional<std::int32_t> Whole(const Input& json) {
    constexpr auto kLeast = std::numeric_limits<std::int32_t>::min();
    constexpr auto kMost = std::numeric_limits<std::int32_t>::max();
    if (json.is_number_unsigned()) {
        const auto number = json.get<std::uint64_t>();
        if (number > static_cast<std::uint64_t>(kMost)) return std::nullopt;
        return static_cast<std::int32_t>(number);
    }
    if (json.is_number_integer()) {
        const auto number = json.get<std::int64_t>();
        if (number < kLeast || number > kMost) return std::nullopt;
        return static_cast<std::int32_t>(number);
    }
    if (!json.is_number_float()) return std::nullopt;
    const double number = json.get<double>();
    if (!(number >= kLeast && number <= kMost) || std::trunc(number) != number) return std::nullopt;
    return static_cast<std::int32_t>(number);
}

template <class T> std::optional<Value> Integer(const Input& json) {
    const std::optional<std::int32_t> whole = Whole(json);
    if (!whole || *whole < std::numeric_limits<T>::min() || *whole > std::numeric_limits<T>::max()) return std::nullopt;
    return Value(static_cast<T>(*whole));
}

std::optional<Value> Float32(const Input& json) {
    if (!json.is_number()) return std::nullopt;
    const auto number = json.get<double>();
    if (!(std::fabs(number) < kBeyondFloat32)) return std::nullopt;
    return Value(static_cast<float>(number));
}

std::optional<Value> Amount(const Input& json) {
    if (!json.is_number()) return std::nullopt;
    const auto number = json.get<double>();
    try {
        const Zontara::Money amount = Zontara::Money::FromNumber(number);
        if (Zontara::ToText(amount.ToNumber()) != Zontara::ToText(number)) return std::nullopt;
        return Value(amount);
    } catch (const Zontara::RaisedError&) {
        return std::nullopt;
    }
}

std::optional<Value> Tagged(const Input& json) {
    if (json.is_string()) return Value(json.get_ref<const std::string&>());
    if (json.is_boolean()) return Value(json.get<bool>());
    if (json.is_number_float()) return Value(json.get<double>());
    if (const std::optional<std::int32_t> whole = Whole(json)) return Value(*whole);
    if (json.is_number()) return Value(json.get<double>());
    return std::nullopt;
}

std::optional<Value> DateValue(const Input& json) {
    if (!json.is_string()) return std::nullopt;
    const std::optional<Date> date = ReadDate(json.get_ref<const std::string&>());
    return date ? std::optional<Value>(*date) : std::nullopt;
}

/// An object as it came in an answer may come back with its rows or notices, which say nothing new.
bool IsReference(const Input& json) {
    if (!json.is_object() || !json.contains("object") || !json["object"].is_string()) return false;
    return json.size() == 1 || (json.size() == 2 && (json.contains("recordset") || json.contains("list")));
}

std::optional<Value> Reference(const Input& json, const TypeOf& type, const Handles& handles) {
    if (json.is_null()) return Value(Ref<Object>());
    if (!IsReference(json)) return std::nullopt;
    const Ref<Object> object = handles.Find(json["object"].get<std::string>());
    if (!object || object->Table() == nullptr || object->Table()->name != type.className) return std::nullopt;
    return Value(object);
}

std::optional<Value> Converted(const Input& json, const TypeOf& type, const Handles& handles) {
    switch (type.word) {
        case TypeWord::None:
            return std::nullopt;
        case TypeWord::Text:
            return json.is_string() ? std::optional<Value>(json.get_ref<const std::string&>()) : std::nullopt;
        case TypeWord::Int16:
            return Integer<std::int16_t>(json);
        case TypeWord::Int32:
            return Integer<std::int32_t>(json);
        case TypeWord::Byte:
            return Integer<std::uint8_t>(json);
        case TypeWord::Float32:
            return Float32(json);
        case TypeWord::Bool:
            return json.is_boolean() ? std::optional<Value>(json.get<bool>()) : std::nullopt;
        case TypeWord::Money:
            return Amount(json);
        case TypeWord::Date:
            return DateValue(json);
        case TypeWord::Variant:
            return Tagged(json);
        case TypeWord::Object:
            return Reference(json, type, handles);
    }
    return std::nullopt;
}

std::string_view Expected(const TypeOf& type) {
    switch (type.word) {
        case TypeWord::Text:
            return "a text";
        case TypeWord::Int16:
            return "a whole number from -32768 to 32767";
        case TypeWord::Int32:
            return "a whole number from -2147483648 to 2147483647";
        case TypeWord::Byte:
            return "a whole number from 0 to 255";
        case TypeWord::Float32:
            return "a number in the range of a float32";
        case TypeWord::Bool:
            return "true or false";
        case TypeWord::Money:
            return "a number with at most four decimals";
        case TypeWord::Date:
            return "a date, as \"2026-03-05\" or \"2026-03-05T08:00:00\"";
        case TypeWord::Variant:
            return "a text, a number, true or false";
        case TypeWord::Object:
            return "{\"object\":HANDLE} or null, the object being of class";
        case TypeWord::None:
            return "nothing";
    }
    return "";
}

/// The digits at a place of a text as a number; none when one of them is no digit.
std::optional<std::int32_t> Digits(std::string_view text, std::size_t at, std::size_t count) {
    std::int32_t number = 0;
    for (const char c : text.substr(at, count)) {
        if (c < '0' || c > '9') return std::nullopt;
        number = number * 10 + (c - '0');
    }
    return number;
}

std::optional<Zontara::TimeOfDay> ReadTime(std::string_view text) {
    if (text.size() != 9 || text[0] != 'T' || text[3] != ':' || text[6] != ':') return std::nullopt;
    const auto hour = Digits(text, 1, 2);
    const auto minute = Digits(text, 4, 2);
    const auto second = Digits(text, 7, 2);
    if (!hour || !minute || !second || *hour > 23 || *minute > 59 || *second > 59) return std::nullopt;
    return Zontara::TimeOfDay{*hour, *minute, *second};
}

}  // namespace

std::optional<Date> ReadDate(std::string_view text) {
    if (text.size() < 10 || text[4] != '-' || text[7] != '-') return std::nullopt;
    const auto year = Digits(text, 0, 4);
    const auto month = Digits(text, 5, 2);
    const auto day = Digits(text, 8, 2);
    if (!year || !month || !day || !Zontara::IsCalendarDay(*year, *month, *day)) return std::nullopt;
    const Date date = Zontara::DateOf(*year, *month, *day);
    if (text.size() == 10) return date;
    const std::optional<Zontara::TimeOfDay> time = ReadTime(text.substr(10));
    return time ? std::optional<Date>(Zontara::WithTime(date, *time)) : std::nullopt;
}

Value FromJson(const Input& json, const TypeOf& type, const Handles& handles, std::string_view argument) {
    if (std::optional<Value> value = Converted(json, type, handles)) return std::move(*value);
    throw Refusal(Code::WrongParameters, fmt::format("{} takes {}{}{}", argument, Expected(type),
                                                     type.word == TypeWord::Object ? " " : "", type.className));
}

}  // namespace host::rpc
