#pragma once

#include "frame/convert.h"
#include "frame/member_table.h"
#include "frame/raised_error.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <tuple>
#include <type_traits>
#include <utility>
#include <vector>

namespace Zontara {

namespace table_detail {

template <class T> using Stored = std::remove_cv_t<std::remove_reference_t<T>>;

template <class T>
inline constexpr bool kWritesBack = std::is_lvalue_reference_v<T> && !std::is_const_v<std::remove_reference_t<T>>;

/// The type word of a C++ type. A reference to an object brings its class's name.
template <class T> struct TypeWordOf;
template <> struct TypeWordOf<void> { static constexpr TypeOf value{TypeWord::None, {}}; };
template <> struct TypeWordOf<std::string> { static constexpr TypeOf value{TypeWord::Text, {}}; };
template <> struct TypeWordOf<std::int16_t> { static constexpr TypeOf value{TypeWord::Int16, {}}; };
template <> struct TypeWordOf<std::int32_t> { static constexpr TypeOf value{TypeWord::Int32, {}}; };
template <> struct TypeWordOf<std::uint8_t> { static constexpr TypeOf value{TypeWord::Byte, {}}; };
template <> struct TypeWordOf<float> { static constexpr TypeOf value{TypeWord::Float32, {}}; };
template <> struct TypeWordOf<bool> { static constexpr TypeOf value{TypeWord::Bool, {}}; };
template <> struct TypeWordOf<Money> { static constexpr TypeOf value{TypeWord::Money, {}}; };
template <> struct TypeWordOf<Date> { static constexpr TypeOf value{TypeWord::Date, {}}; };
template <> struct TypeWordOf<Value> { static constexpr TypeOf value{TypeWord::Variant, {}}; };
template <class T> struct TypeWordOf<Ref<T>> { static constexpr TypeOf value{TypeWord::Object, T::kTypeName}; };

/// Takes an argument out of its tagged value. An object must be of the parameter's class, or none.
template <class T> struct Taken {
    static T From(const Value& value) { return ConvertTo<T>(value); }
};
template <class T> struct Taken<Ref<T>> {
    static Ref<T> From(const Value& value) {
        const Ref<Object> object = ConvertTo<Ref<Object>>(value);
        if (!object) return {};
        Ref<T> typed = std::dynamic_pointer_cast<T>(object);
        if (!typed) Raise(RunTimeError::TypeMismatch);
        return typed;
    }
};

template <class C, class Function, class R, class... A, std::size_t... I>
Value Call(C& object, Function function, std::span<Value> arguments, std::index_sequence<I...>) {
    std::tuple<Stored<A>...> taken{Taken<Stored<A>>::From(arguments[I])...};
    const auto writeBack = [&] {
        (
            [&] {
                if constexpr (kWritesBack<A>) arguments[I] = Value(std::get<I>(taken));
            }(),
            ...);
    };
    if constexpr (std::is_void_v<R>) {
        (object.*function)(std::get<I>(taken)...);
        writeBack();
        return Value();
    } else {
        Value result((object.*function)(std::get<I>(taken)...));
        writeBack();
        return result;
    }
}

template <class C, class R, class... A, class Function> Invoker MakeInvoker(Function function) {
    return [function](Object& object, std::span<Value> arguments) {
        return Call<C, Function, R, A...>(dynamic_cast<C&>(object), function, arguments,
                                          std::index_sequence_for<A...>());
    };
}

}  // namespace table_detail

/// How an argument is declared in a table: its name, and what the C++ signature can't say of it.
struct In {
    std::string_view name;
    bool byRef = false;
    bool optional = false;
    Value defaultValue = {};
};
/// By reference.
inline In ByRef(std::string_view name) { return {name, true}; }
/// Optional, with the value that it becomes when it is left out.
inline In Optional(std::string_view name, Value defaultValue) { return {name, false, true, std::move(defaultValue)}; }
/// By reference and optional.
inline In OptionalByRef(std::string_view name, Value defaultValue) {
    return {name, true, true, std::move(defaultValue)};
}

/// Writes a class's member table, one call a member, in interface order. The types come from the member functions.
///
///     TableBuilder<CUnidadLectura>()
///         .Method("Borrar", &CUnidadLectura::Borrar, {{"SC_Unidad_Lectura"}})
///         .Build();
template <class C> class TableBuilder {
public:
    /// A class of Zontara that clients create: its name is `C::kTypeName`, its interface the same with a leading
    /// underscore, which the caller gives as text.
    explicit TableBuilder(std::string_view interfaceName) {
        table_.name = C::kTypeName;
        table_.interfaceName = interfaceName;
    }

    /// Clients can create the class.
    TableBuilder& Creatable() {
        table_.create = []() -> Ref<Object> { return std::make_shared<C>(); };
        return *this;
    }
    TableBuilder& In(Library library) {
        table_.library = library;
        return *this;
    }
    TableBuilder& AppObject() {
        table_.appObject = true;
        return *this;
    }

    template <class R, class... A>
    TableBuilder& Method(std::string_view name, R (C::*function)(A...), std::vector<Zontara::In> arguments = {}) {
        return Add<R, A...>(name, MemberKind::Method, function, std::move(arguments));
    }
    template <class R, class... A>
    TableBuilder& Method(std::string_view name, R (C::*function)(A...) const, std::vector<Zontara::In> arguments = {}) {
        return Add<R, A...>(name, MemberKind::Method, function, std::move(arguments));
    }
    template <class R> TableBuilder& Get(std::string_view name, R (C::*function)() const) {
        return Add<R>(name, MemberKind::Get, function, {});
    }
    template <class R> TableBuilder& Get(std::string_view name, R (C::*function)()) {
        return Add<R>(name, MemberKind::Get, function, {});
    }
    template <class A>
    TableBuilder& Put(std::string_view name, void (C::*function)(A), std::string_view argument = "value") {
        return Add<void, A>(name, MemberKind::Put, function, {{argument}});
    }
    template <class A>
    TableBuilder& PutRef(std::string_view name, void (C::*function)(A), std::string_view argument = "value") {
        return Add<void, A>(name, MemberKind::PutRef, function, {{argument}});
    }
    /// An event of the outgoing interface with one tagged value by reference.
    TableBuilder& Raises(std::string_view name, std::string_view argument) {
        table_.events.push_back({name, {{argument, {TypeWord::Variant, {}}, true, false, {}}}});
        return *this;
    }

    ClassTable Build() { return std::move(table_); }

private:
    template <class R, class... A, class Function>
    TableBuilder& Add(std::string_view name, MemberKind kind, Function function, std::vector<Zontara::In> arguments) {
        using namespace table_detail;
        const std::vector<TypeOf> types{TypeWordOf<Stored<A>>::value...};
        if (types.size() != arguments.size()) Raise(RunTimeError::InvalidCall, "Member table: " + std::string(name));
        Member member{name, kind, {}, TypeWordOf<Stored<R>>::value, MakeInvoker<C, R, A...>(function)};
        for (std::size_t i = 0; i < types.size(); ++i) {
            member.arguments.push_back({arguments[i].name, types[i], arguments[i].byRef, arguments[i].optional,
                                        std::move(arguments[i].defaultValue)});
        }
        table_.members.push_back(std::move(member));
        return *this;
    }

    ClassTable table_;
};

}  // namespace Zontara
