#pragma once

#include "frame/export.h"
#include "frame/object.h"
#include "frame/value.h"

#include <functional>
#include <span>
#include <string>
#include <string_view>
#include <vector>

namespace Zontara {

/// Types that an argument or a result can have.
enum class TypeWord { None, Text, Int16, Int32, Byte, Float32, Bool, Money, Date, Variant, Object };

/// A type, and for an object the name of its class.
struct TypeOf {
    TypeWord word = TypeWord::None;
    std::string_view className;
};

/// The type in a word: "text", "int32", ..., "variant", the class of an object; "nothing" for none.
ZONTARA_EXPORT std::string WordOf(const TypeOf& type);

/// How a member is reached. Both kinds of put write a property; `PutRef` assigns an object by reference.
enum class MemberKind { Method, Get, Put, PutRef };

struct Argument {
    std::string_view name;
    TypeOf type;
    bool byRef = false;
    bool optional = false;
    /// What an optional argument that was left out becomes.
    Value defaultValue;
};

/// Calls a member on an object with all its arguments, in order and each convertible to its type. By-reference
/// arguments that the member changed stand changed in `arguments` afterwards.
using Invoker = std::function<Value(Object& object, std::span<Value> arguments)>;

struct Member {
    std::string_view name;
    MemberKind kind = MemberKind::Method;
    std::vector<Argument> arguments;
    TypeOf result;
    Invoker invoke;
};

struct Event {
    std::string_view name;
    std::vector<Argument> arguments;
};

/// Which type library a class belongs to.
enum class Library { Zontara, dhRichClient3, Perluma };

/// Everything that late binding, the type library and the bridge know of a class, in interface order.
struct ClassTable {
    std::string_view name;
    std::string_view interfaceName;
    Library library = Library::Zontara;
    bool appObject = false;
    std::vector<Member> members;
    std::vector<Event> events;
    /// Makes a new object; empty for a class that clients can't create.
    std::function<Ref<Object>()> create;

    /// The member of that name and kind, without regard to case; none if there is no such member.
    ZONTARA_EXPORT const Member* Find(std::string_view memberName, MemberKind kind) const;
    /// Whether any member has that name, of whatever kind.
    ZONTARA_EXPORT bool Has(std::string_view memberName) const;
};

/// Whether two names are the same without regard to the case of ASCII letters.
ZONTARA_EXPORT bool SameName(std::string_view left, std::string_view right);

}  // namespace Zontara
