#pragma once

#include "frame/export.h"
#include "frame/value.h"

#include <cstdint>
#include <memory>
#include <string>
#include <string_view>

namespace Zontara {

struct ClassTable;

/// Base of everything that a client can hold. Shared by reference count and told apart by identity (its address).
/// One thread at a time may be inside any object of a session.
class ZONTARA_EXPORT Object : public std::enable_shared_from_this<Object> {
public:
    Object();
    Object(const Object&) = delete;
    Object& operator=(const Object&) = delete;
    virtual ~Object();

    /// The member table of the object's class, or none when no client can call it by name.
    virtual const ClassTable* Table() const;

    /// Name of the object's type as reports show it: "CBoletin", "Recordset".
    virtual std::string TypeName() const;

    /// Late binding with no arguments: reads, writes or calls a member by its name. Error 438 for an unknown one.
    /// These serve the release of data objects on error; a class with a table answers from it.
    virtual Value ReadMember(std::string_view name);
    virtual void WriteMember(std::string_view name, const Value& value);
    virtual Value CallMember(std::string_view name);

    /// Number of objects that exist at this moment, of all classes.
    static std::int64_t Living();
};

}  // namespace Zontara
