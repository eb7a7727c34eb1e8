#include "frame/class_registry.h"

#include "bulletins/CBoletin.h"
#include "bulletins/CConfiguracionOTBoletin.h"
#include "calendar/CImputacionPreventiva.h"
#include "catalogues/CDocumentoEquipo.h"
#include "catalogues/CEjecutorGama.h"
#include "catalogues/CEquipo.h"
#include "catalogues/CGama.h"
#include "catalogues/CGrupoGama.h"
#include "catalogues/CMaterialGama.h"
#include "catalogues/CUnidadLectura.h"
#include "catalogues/CUsuarioEjecutorGama.h"
#include "frame/CGlobalPreventivo.h"
#include "frame/raised_error.h"
#include "meter/CImputacionParalela.h"
#include "meter/CImputacionSistematica.h"
#include "meter/COrdenGenerada.h"
#include "readings/CLecturaEquipo.h"

#include <algorithm>
#include <cstdio>

namespace Zontara {

namespace {

/// The component's identifiers share their stem: `kind` is 0 for the library, 1 classes, 2 interfaces, 3 events, and
/// `position` the place in registration order. They are fixed for ever: clients have them compiled in.
constexpr Guid Identifier(std::uint8_t kind, std::uint8_t position) {
    return {0x5B0E4D10, 0x7C1A, 0x4F2B, {0x9E, 0x35, 0x84, 0xA0, 0xC1, 0xD2, kind, position}};
}

template <class C> constexpr RegisteredClass Registered(std::uint8_t position, bool events = false) {
    return {Identifier(1, position), Identifier(2, position), events ? Identifier(3, position) : Guid{},
            &C::ClassMembers};
}

constexpr std::array<RegisteredClass, 16> kClasses{
    Registered<CMaterialGama>(1),
    Registered<CConfiguracionOTBoletin>(2),
    Registered<CEjecutorGama>(3),
    Registered<CUsuarioEjecutorGama>(4),
    Registered<CUnidadLectura>(5),
    Registered<COrdenGenerada>(6),
    Registered<CLecturaEquipo>(7),
    Registered<CImputacionSistematica>(8),
    Registered<CImputacionPreventiva>(9, true),
    Registered<CImputacionParalela>(10),
    Registered<CGrupoGama>(11),
    Registered<CGama>(12),
    Registered<CEquipo>(13),
    Registered<CDocumentoEquipo>(14),
    Registered<CBoletin>(15),
    Registered<CGlobalPreventivo>(16),
};

constexpr ComponentDescriptor kDescriptor{
    "Zontara", "Fendral: Acceso Datos Preventivo-Sistematico", 84, 0, 1033, Identifier(0, 0), kClasses};

constexpr std::string_view kPrefix = "Zontara.";

}  // namespace

std::string ToText(const Guid& guid) {
    char text[37];
    std::snprintf(text, sizeof text, "%08X-%04X-%04X-%02X%02X-%02X%02X%02X%02X%02X%02X",
                  static_cast<unsigned>(guid.data1), guid.data2, guid.data3, guid.data4[0], guid.data4[1],
                  guid.data4[2], guid.data4[3], guid.data4[4], guid.data4[5], guid.data4[6], guid.data4[7]);
    return text;
}

const ComponentDescriptor& Descriptor() { return kDescriptor; }

const RegisteredClass* FindClass(std::string_view name) {
    if (SameName(name.substr(0, kPrefix.size()), kPrefix)) name.remove_prefix(kPrefix.size());
    const auto found = std::find_if(kClasses.begin(), kClasses.end(),
                                    [name](const RegisteredClass& each) { return SameName(each.table().name, name); });
    return found == kClasses.end() ? nullptr : &*found;
}

const RegisteredClass* FindClass(const Guid& classId) {
    const auto found = std::find_if(kClasses.begin(), kClasses.end(),
                                    [&](const RegisteredClass& each) { return each.classId == classId; });
    return found == kClasses.end() ? nullptr : &*found;
}

Ref<Object> CreateByName(std::string_view name) {
    const RegisteredClass* known = FindClass(name);
    if (known == nullptr) {
        Raise(RunTimeError::CannotCreate, TextOf(RunTimeError::CannotCreate) + ": " + std::string(name));
    }
    return known->table().create();
}

}  // namespace Zontara
