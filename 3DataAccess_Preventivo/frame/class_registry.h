#pragma once

#include "frame/export.h"
#include "frame/member_table.h"

#include <array>
#include <cstdint>
#include <span>
#include <string>
#include <string_view>

namespace Zontara {

/// A 128-bit identifier of a class, an interface or a library.
struct Guid {
    std::uint32_t data1 = 0;
    std::uint16_t data2 = 0;
    std::uint16_t data3 = 0;
    std::array<std::uint8_t, 8> data4{};

    friend bool operator==(const Guid&, const Guid&) = default;
};

/// As text without braces: "5B0E4D10-7C1A-4F2B-9E35-84A0C1D20001".
ZONTARA_EXPORT std::string ToText(const Guid& guid);

/// One public class as the component registers it.
struct RegisteredClass {
    Guid classId;
    Guid interfaceId;
    /// Of the outgoing interface; all zero for a class without events.
    Guid eventsId;
    const ClassTable& (*table)();
};

/// What the component is: its type library and its classes in registration order.
struct ComponentDescriptor {
    std::string_view libraryName;
    std::string_view helpText;
    std::int32_t versionMajor;
    std::int32_t versionMinor;
    std::int32_t locale;
    Guid libraryId;
    std::span<const RegisteredClass> classes;
};

/// The one descriptor of the component.
ZONTARA_EXPORT const ComponentDescriptor& Descriptor();

/// The class of that name ("CBoletin" or "Zontara.CBoletin", case ignored); none for an unknown one.
ZONTARA_EXPORT const RegisteredClass* FindClass(std::string_view name);
/// The class of that identifier; none for an unknown one.
ZONTARA_EXPORT const RegisteredClass* FindClass(const Guid& classId);

/// A new object of a public class by its name. Error 429 for an unknown one.
ZONTARA_EXPORT Ref<Object> CreateByName(std::string_view name);

}  // namespace Zontara
