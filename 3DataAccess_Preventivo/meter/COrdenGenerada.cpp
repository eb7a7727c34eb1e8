#include "meter/COrdenGenerada.h"

#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/sql.h"

namespace Zontara {

const ClassTable* COrdenGenerada::Table() const { return &ClassMembers(); }

std::int32_t COrdenGenerada::Nuevo(std::int32_t SC_Orden_Trabajo, std::int32_t SC_Imputacion, Date Fecha_Generacion) {
    return Trap(
        "COrdenGenerada.Nuevo(SC_Orden_Trabajo,SC_Imputacion,Fecha_Generacion)",
        [&] {
            Libreria::IniciarTransaccion();
            const std::int32_t SC_Orden_Generada = Libreria::ProximaClave("Orden_Generada");
            Libreria::Ejecutar(
                Sql({"  INSERT Into orden_generada (SC_Orden_Generada ,SC_Orden_Trabajo "
                     ",SC_Imputacion_Sistematica,Fecha_Generacion )",
                     " VALUES (", SC_Orden_Generada, ",", SC_Orden_Trabajo, ",", SC_Imputacion, ",'", Fecha_Generacion,
                     "')"}));
            Libreria::TerminarTransaccion();
            return SC_Orden_Generada;
        },
        [&] { return Arguments(SC_Orden_Trabajo, SC_Imputacion, Fecha_Generacion); });
}

void COrdenGenerada::Borrar(std::int32_t SC_Orden_Generada) {
    Trap(
        "COrdenGenerada.Borrar(SC_Orden_Generada)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Orden_Generada", " WHERE SC_Orden_Generada =", SC_Orden_Generada}));
        },
        [&] { return Arguments(SC_Orden_Generada); });
}

Ref<Recordset> COrdenGenerada::Seleccionar(std::int32_t SC_Imputacion_Sistematica) {
    return Trap(
        "COrdenGenerada.Seleccionar(SC_Imputacion_Sistematica)",
        [&] {
            return Libreria::Abierto(Sql({"SELECT * ", " FROM Orden_Generada ",
                                          " WHERE SC_Imputacion_Sistematica =", SC_Imputacion_Sistematica}));
        },
        [&] { return Arguments(SC_Imputacion_Sistematica); });
}

void COrdenGenerada::Salvar(std::int32_t SC_Orden_Generada, std::int32_t SC_Orden_Trabajo, std::int32_t SC_Imputacion,
                            Date Fecha_Generacion) {
    Trap(
        "COrdenGenerada.Salvar(SC_Orden_Generada,SC_Orden_Trabajo,SC_Imputacion,"
        "Fecha_Generacion)",
        [&] {
            Libreria::Ejecutar(Sql({"  UPDATE Orden_Generada SET ", "SC_Orden_Trabajo =", SC_Orden_Trabajo, ",",
                                    "SC_Imputacion =", SC_Imputacion, ",", "Fecha_Generacion ='", Fecha_Generacion, "'",
                                    " WHERE SC_Orden_Generada =", SC_Orden_Generada}));
        },
        [&] { return Arguments(SC_Orden_Generada, SC_Orden_Trabajo, SC_Imputacion, Fecha_Generacion); });
}

Ref<Recordset> COrdenGenerada::SeleccionarPorFecha(std::int32_t SC_Imputacion_Sistematica, Date Fecha_Generacion,
                                                   const std::string& UnOperador) {
    return Trap(
        "COrdenGenerada.SeleccionarPorFecha(SC_Imputacion_Sistematica,Fecha_Generacion,"
        "UnOperador)",
        [&] {
            return Libreria::Abierto(Sql({"SELECT * ", " FROM Orden_Generada ",
                                          " WHERE SC_Imputacion_Sistematica =", SC_Imputacion_Sistematica, " and ",
                                          "Fecha_Generacion ", UnOperador, "'", Fecha_Generacion, "'"}));
        },
        [&] { return Arguments(SC_Imputacion_Sistematica, Fecha_Generacion, UnOperador); });
}

std::string COrdenGenerada::SeleccionarPorSemana(std::int16_t SemanaDelAno, std::int32_t Ano) {
    return Trap(
        "COrdenGenerada.SeleccionarPorSemana(SemanaDelAno,Ano)",
        [&] {
            // The engine's week has two digits and the number goes in as it is: one digit matches nothing, on purpose.
            const Ref<Recordset> rs =
                Libreria::Abierto(Sql({"SELECT SC_Orden_Trabajo ", " FROM Orden_Generada ",
                                       " WHERE strftime('%W',Fecha_Generacion,'weekday 1') ='", SemanaDelAno,
                                       "' and  strftime('%Y',Fecha_Generacion) ='", Ano, "'"}));
            std::string ordenes;
            if (Libreria::ExistenRegistros(rs)) {
                for (rs->MoverPrimero(); !rs->FinDeDatos(); rs->MoverSiguiente()) {
                    ordenes += ToText(rs->Valor("SC_Orden_Trabajo")) + ",";
                }
            }
            if (!ordenes.empty()) ordenes.pop_back();
            return ordenes;
        },
        [&] { return Arguments(SemanaDelAno, Ano); });
}

}  // namespace Zontara
