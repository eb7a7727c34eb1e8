#include "meter/CImputacionSistematica.h"

#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/provider.h"
#include "frame/regional.h"
#include "frame/sql.h"

namespace Zontara {

const ClassTable* CImputacionSistematica::Table() const { return &ClassMembers(); }

std::int32_t CImputacionSistematica::Nuevo(const std::string& ID_Activo, std::int32_t SC_Gama,
                                           const std::string& Fecha_Imputacion, std::uint8_t Anulada,
                                           std::int32_t SC_Usuario, const std::string& Fecha_Inicio,
                                           const std::string& Fecha_Fin, std::int32_t Acumulado_Lectura,
                                           std::int32_t Ultima_Lectura, std::int32_t Aproximacion_Lectura,
                                           const std::string& Fecha_Ultimo_Lanzamiento,
                                           const std::string& Fecha_Ultima_Modificacion,
                                           const std::string& Causa_Modificacion, std::int32_t Lectura_Limite) {
    return Trap(
        "CImputacionSistematica.Nuevo(ID_Activo,SC_Gama,Fecha_Imputacion,Anulada,SC_Usuario,"
        "Fecha_Inicio,Fecha_Fin,Acumulado_Lectura,Ultima_Lectura,Aproximacion_Lectura,Fecha_Ultimo_Lanzamiento,"
        "Fecha_Ultima_Modificacion,Causa_Modificacion,Lectura_Limite)",
        [&] {
            Libreria::IniciarTransaccion();
            const std::int32_t SC_Imputacion_Sistematica = Libreria::ProximaClave("Imputacion_Sistematica");
            Ref<ServicioActivos> activos = Neighbours().NewServicioActivos();
            const std::int32_t Ultimo_Acumulado = activos->AcumuladoActual(ID_Activo);
            Libreria::Ejecutar(
                Sql({"  INSERT Into Imputacion_Sistematica (SC_Imputacion_Sistematica ,ID_Activo ,"
                     "SC_Gama ,Fecha_Imputacion ,Anulada ,SC_Usuario ,Fecha_Inicio ,Fecha_Fin ,"
                     "Aproximacion_Lectura ,Fecha_Ultima_Modificacion ,Causa_Modificacion,Lectura_Limite,"
                     "ultimo_acumulado )"
                     " VALUES (",
                     SC_Imputacion_Sistematica,
                     ",'",
                     ID_Activo,
                     "',",
                     SC_Gama,
                     ",",
                     "'",
                     SqlDate(Fecha_Imputacion),
                     "'",
                     ",",
                     Anulada,
                     ",",
                     SC_Usuario,
                     ",",
                     "'",
                     SqlDate(Fecha_Inicio),
                     "'",
                     ",",
                     "'",
                     SqlDate(Fecha_Fin),
                     "',",
                     Aproximacion_Lectura,
                     ",",
                     "'",
                     SqlDate(Fecha_Ultima_Modificacion),
                     "'",
                     ",",
                     "'",
                     Causa_Modificacion,
                     "'",
                     ",",
                     Lectura_Limite,
                     ",",
                     Ultimo_Acumulado,
                     ")"}));
            Libreria::TerminarTransaccion();
            activos.reset();
            catalogoModificado_.Send();
            return SC_Imputacion_Sistematica;
        },
        [&] {
            return Arguments(ID_Activo, SC_Gama, Fecha_Imputacion, Anulada, SC_Usuario, Fecha_Inicio, Fecha_Fin,
                             Acumulado_Lectura, Ultima_Lectura, Aproximacion_Lectura, Fecha_Ultimo_Lanzamiento,
                             Fecha_Ultima_Modificacion, Causa_Modificacion, Lectura_Limite);
        });
}

void CImputacionSistematica::Borrar(std::int32_t SC_Imputacion_Sistematica) {
    Trap(
        "CImputacionSistematica.Borrar(SC_Imputacion_Sistematica)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Imputacion_Sistematica",
                                    " WHERE SC_Imputacion_Sistematica =", SC_Imputacion_Sistematica}));
            catalogoModificado_.Send();
        },
        [&] { return Arguments(SC_Imputacion_Sistematica); });
}

void CImputacionSistematica::Salvar(std::int32_t SC_Imputacion_Sistematica, const std::string& ID_Activo,
                                    std::int32_t SC_Gama, const std::string& Fecha_Imputacion, std::uint8_t Anulada,
                                    std::int32_t SC_Usuario, const std::string& Fecha_Inicio,
                                    const std::string& Fecha_Fin, std::int32_t Aproximacion_Lectura,
                                    std::int32_t Lectura_Limite) {
    Trap(
        "CImputacionSistematica.Salvar(SC_Imputacion_Sistematica,ID_Activo,SC_Gama,"
        "Fecha_Imputacion,Anulada,SC_Usuario,Fecha_Inicio,Fecha_Fin,Aproximacion_Lectura,Lectura_Limite)",
        [&] {
            Libreria::Ejecutar(Sql({"  UPDATE Imputacion_Sistematica SET ",
                                    "ID_Activo ='",
                                    ID_Activo,
                                    "',",
                                    "SC_Gama =",
                                    SC_Gama,
                                    ",",
                                    "Fecha_Imputacion ='",
                                    SqlDate(Fecha_Imputacion),
                                    "' ,",
                                    "Anulada =",
                                    Anulada,
                                    ",",
                                    "SC_Usuario =",
                                    SC_Usuario,
                                    ",",
                                    "Fecha_Inicio ='",
                                    SqlDate(Fecha_Inicio),
                                    "' ,",
                                    "Fecha_Fin ='",
                                    SqlDate(Fecha_Fin),
                                    "' ,",
                                    "Lectura_Limite =",
                                    Lectura_Limite,
                                    ",",
                                    "Aproximacion_Lectura =",
                                    Aproximacion_Lectura,
                                    " WHERE SC_Imputacion_Sistematica =",
                                    SC_Imputacion_Sistematica}));
            catalogoModificado_.Send();
        },
        [&] {
            return Arguments(SC_Imputacion_Sistematica, ID_Activo, SC_Gama, Fecha_Imputacion, Anulada, SC_Usuario,
                             Fecha_Inicio, Fecha_Fin, Aproximacion_Lectura, Lectura_Limite);
        });
}

void CImputacionSistematica::AnularPorEquipo(const std::string& ID_Activo) {
    Trap(
        "CImputacionSistematica.AnularPorEquipo(ID_Activo)",
        [&] {
            Libreria::Ejecutar(
                Sql({"  UPDATE Imputacion_Sistematica SET ", "Anulada =1 ", " WHERE ID_Activo ='", ID_Activo, "'"}));
            catalogoModificado_.Send();
        },
        [&] { return Arguments(ID_Activo); });
}

void CImputacionSistematica::Anular(std::int32_t SC_Imputacion_Sistematica) {
    Trap(
        "CImputacionSistematica.Anular(SC_Imputacion_Sistematica)",
        [&] {
            Libreria::Ejecutar(Sql({"  UPDATE Imputacion_Sistematica SET ", "Anulada =1 ",
                                    " WHERE SC_Imputacion_Sistematica =", SC_Imputacion_Sistematica}));
            catalogoModificado_.Send();
        },
        [&] { return Arguments(SC_Imputacion_Sistematica); });
}

Ref<ListaCambios> CImputacionSistematica::ActivoReprogramado() { return activoReprogramado_.Get(); }

void CImputacionSistematica::ActivoReprogramado(const Ref<ListaCambios>& value) { activoReprogramado_.Set(value); }

Ref<ListaCambios> CImputacionSistematica::OrdenesSistematicasGeneradas() { return ordenesSistematicasGeneradas_.Get(); }

void CImputacionSistematica::OrdenesSistematicasGeneradas(const Ref<ListaCambios>& value) {
    ordenesSistematicasGeneradas_.Set(value);
}

Ref<ListaCambios> CImputacionSistematica::CatalogoModificado() { return catalogoModificado_.Get(); }

void CImputacionSistematica::CatalogoModificado(const Ref<ListaCambios>& value) { catalogoModificado_.Set(value); }

}  // namespace Zontara
