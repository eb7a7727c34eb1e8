#pragma once

#include "frame/date.h"
#include "frame/export.h"
#include "frame/money.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

namespace Zontara {

class Object;

/// A shared reference to an object; an empty one is "none".
template <class T> using Ref = std::shared_ptr<T>;

/// Nothing was ever assigned.
struct Empty {
    friend constexpr bool operator==(Empty, Empty) = default;
};
/// The null of the database: a value that is not known. No comparison with it holds.
struct Null {
    friend constexpr bool operator==(Null, Null) = default;
};
/// An optional argument that the caller left out.
struct Absent {
    friend constexpr bool operator==(Absent, Absent) = default;
};

class Value;
using Array = std::vector<Value>;

/// A value that carries its own type. Cheap to copy but for long texts and arrays.
class Value {
public:
    /// In this order in the variant, so that a kind is an index.
    enum class Kind {
        Empty,
        Null,
        Absent,
        Bool,
        Byte,
        Int16,
        Int32,
        Float32,
        Float64,
        Money,
        Date,
        Text,
        Object,
        List
    };

    Value() = default;
    /// By way of an assignment: when a copy of a variant of these types runs out of memory half-way, GCC 12's library
    /// destroys an alternative that isn't there.
    Value(const Value& other) : Value() { *this = other; }
    Value(Value&&) = default;
    Value& operator=(const Value&) = default;
    Value& operator=(Value&&) = default;
    ~Value() = default;
    Value(Empty) {}
    Value(Null) : held_(Null{}) {}
    Value(Absent) : held_(Absent{}) {}
    Value(bool value) : held_(value) {}
    Value(std::uint8_t value) : held_(value) {}
    Value(std::int16_t value) : held_(value) {}
    Value(std::int32_t value) : held_(value) {}
    Value(float value) : held_(value) {}
    Value(double value) : held_(value) {}
    Value(Money value) : held_(value) {}
    Value(Date value) : held_(value) {}
    Value(std::string value) : held_(std::move(value)) {}
    Value(std::string_view value) : held_(std::string(value)) {}
    Value(const char* value) : held_(std::string(value)) {}
    Value(Array value) : held_(std::move(value)) {}

    /// An object of any class, or none.
    template <class T>
    requires std::is_base_of_v<Object, T> Value(Ref<T> value)
        : held_(std::in_place_type<Ref<Object>>, std::move(value)) {}
    Value(std::nullptr_t) : held_(Ref<Object>()) {}

    /// No pointer turns into a bool behind anyone's back.
    template <class T> Value(T*) = delete;

    Kind kind() const { return static_cast<Kind>(held_.index()); }
    bool IsNull() const { return kind() == Kind::Null; }
    bool IsAbsent() const { return kind() == Kind::Absent; }

    template <class T> bool Is() const { return std::holds_alternative<T>(held_); }
    /// What is held, which must be of just this type.
    template <class T> const T& Get() const { return std::get<T>(held_); }

    friend bool operator==(const Value&, const Value&) = default;

private:
    std::variant<Empty, Null, Absent, bool, std::uint8_t, std::int16_t, std::int32_t, float, double, Money, Date,
                 std::string, Ref<Object>, Array>
        held_;
};

}  // namespace Zontara
