#include "calendar/CImputacionPreventiva.h"
#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/regional.h"
#include "frame/sql.h"

#include <string_view>

namespace Zontara {

namespace {

// In the order of the table's columns.
constexpr std::string_view kInsert =
    "  INSERT Into Imputacion_Preventiva (SC_Imputacion_Preventiva ,ID_Activo ,SC_Gama ,Fecha_Imputacion ,"
    "Anulada ,SC_Usuario ,"
    "Frecuencia ,Intervalo_Frecuencia ,Numero_Repeticion_Ciclo ,Acumulado_Ciclo ,Fecha_Inicio ,"
    "Fecha_Ultimo_Lanzamiento ,"
    "Fecha_Ultima_Modificacion ,Causa_Modificacion ,Semana,Finaliza,Programacion,Es_Sincronizada,"
    "Descripcion_Breve )";

}  // namespace

Ref<ListaCambios> CImputacionPreventiva::CatalogoModificado() { return catalogoModificado_.Get(); }

Ref<ListaCambios> CImputacionPreventiva::OTPreventivaGenerada() { return otPreventivaGenerada_.Get(); }

void CImputacionPreventiva::OTPreventivaGenerada(const Ref<ListaCambios>& lista) { otPreventivaGenerada_.Set(lista); }

std::int32_t CImputacionPreventiva::Nuevo(
    const std::string& ID_Activo, std::int32_t SC_Gama, const std::string& Fecha_Imputacion, std::uint8_t Anulada,
    std::int32_t SC_Usuario, const std::string& frecuencia, std::int32_t Intervalo_Frecuencia,
    std::int32_t Numero_Repeticion_Ciclo, std::int32_t Acumulado_Ciclo, const std::string& Fecha_Inicio,
    const std::string& Fecha_Ultimo_Lanzamiento, const std::string& Fecha_Ultima_Modificacion,
    const std::string& Causa_Modificacion, std::int32_t Semana, std::uint8_t Finaliza, const std::string& Programacion,
    bool EsProgramacionSincronizada, const std::string& Breve_Descripcion) {
    // No trap here, unlike everywhere else: clients get the failure itself, and abort what is open.
    Libreria::IniciarTransaccion();
    const std::int32_t key = Libreria::ProximaClave("Imputacion_Preventiva");
    std::string insert(kInsert);
    Append(insert, {" VALUES (", key, ",'", ID_Activo, "',", SC_Gama});
    Append(insert, {",'", SqlDate(Fecha_Imputacion), "',", Anulada, ",", SC_Usuario, ",'", frecuencia, "'"});
    Append(insert, {",", Intervalo_Frecuencia, ",", Numero_Repeticion_Ciclo, ",", Acumulado_Ciclo});
    Append(insert, {",'", SqlDate(Fecha_Inicio), "','", SqlDate(Fecha_Ultimo_Lanzamiento), "'"});
    Append(insert, {",'", SqlDate(Fecha_Ultima_Modificacion), "','", Causa_Modificacion, "',", Semana});
    Append(insert, {",", Finaliza, ",'", Programacion, "',", EsProgramacionSincronizada ? 1 : 0});
    Append(insert, {",'", Breve_Descripcion, "')"});
    Libreria::Ejecutar(insert);
    Libreria::TerminarTransaccion();
    catalogoModificado_.Send();
    return key;
}

void CImputacionPreventiva::Borrar(std::int32_t SC_Imputacion_Preventiva) {
    Trap(
        "CImputacionPreventiva.Borrar(SC_Imputacion_Preventiva)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Imputacion_Preventiva",
                                    " WHERE SC_Imputacion_Preventiva =", SC_Imputacion_Preventiva}));
            catalogoModificado_.Send();
        },
        [&] { return Arguments(SC_Imputacion_Preventiva); });
}

void CImputacionPreventiva::Salvar(std::int32_t SC_Imputacion_Preventiva, const std::string& ID_Activo,
                                   std::int32_t SC_Gama, const std::string& Fecha_Imputacion, std::uint8_t Anulada,
                                   std::int32_t SC_Usuario, const std::string& frecuencia,
                                   std::int32_t Intervalo_Frecuencia, std::int32_t Numero_Repeticion_Ciclo,
                                   const std::string& Fecha_Inicio, std::uint8_t Finaliza, std::uint8_t Programacion,
                                   const std::string& Fecha_Ultimo_Lanzamiento) {
    Trap(
        "CImputacionPreventiva.Salvar(SC_Imputacion_Preventiva,ID_Activo,SC_Gama,Fecha_Imputacion,"
        "Anulada,SC_Usuario,Frecuencia,Intervalo_Frecuencia,Numero_Repeticion_Ciclo,Fecha_Inicio,Finaliza,"
        "Programacion,Fecha_Ultimo_Lanzamiento)",
        [&] {
            // The anchor is a number here and goes in bare, where `Nuevo` writes a text in quotes.
            std::string update = "  UPDATE Imputacion_Preventiva SET ";
            Append(update, {"ID_Activo ='", ID_Activo, "',", "SC_Gama =", SC_Gama, ","});
            Append(update, {"Fecha_Imputacion ='", SqlDate(Fecha_Imputacion), "' ,"});
            Append(update, {"Fecha_Ultimo_Lanzamiento ='", SqlDate(Fecha_Ultimo_Lanzamiento), "' ,"});
            Append(update, {"Anulada =", Anulada, ",", "SC_Usuario =", SC_Usuario, ","});
            Append(update, {"Frecuencia ='", frecuencia, "' ,", "Finaliza =", Finaliza, " ,"});
            Append(update, {"Programacion =", Programacion, " ,"});
            Append(update, {"Intervalo_Frecuencia =", Intervalo_Frecuencia, ","});
            Append(update, {"Numero_Repeticion_Ciclo =", Numero_Repeticion_Ciclo, ","});
            Append(update, {"Fecha_Inicio ='", SqlDate(Fecha_Inicio), "' "});
            Append(update, {" WHERE SC_Imputacion_Preventiva =", SC_Imputacion_Preventiva});
            Libreria::Ejecutar(update);
            catalogoModificado_.Send();
        },
        [&] {
            return Arguments(SC_Imputacion_Preventiva, ID_Activo, SC_Gama, Fecha_Imputacion, Anulada, SC_Usuario,
                             frecuencia, Intervalo_Frecuencia, Numero_Repeticion_Ciclo, Fecha_Inicio, Finaliza,
                             Programacion, Fecha_Ultimo_Lanzamiento);
        });
}

void CImputacionPreventiva::Anular(std::int32_t SC_Imputacion_Preventiva) {
    Trap(
        "CImputacionPreventiva.Anular(SC_Imputacion_Preventiva)",
        [&] {
            Libreria::Ejecutar(Sql({"  UPDATE Imputacion_Preventiva SET ", "Anulada =1 ",
                                    " WHERE SC_Imputacion_Preventiva =", SC_Imputacion_Preventiva}));
        },
        [&] { return Arguments(SC_Imputacion_Preventiva); });
}

void CImputacionPreventiva::AnularPorEquipo(const std::string& ID_Activo) {
    Trap(
        "CImputacionPreventiva.AnularPorEquipo(ID_Activo)",
        [&] {
            Libreria::Ejecutar(
                Sql({"  UPDATE Imputacion_Preventiva SET ", "Anulada =1 ", " WHERE ID_Activo ='", ID_Activo, "'"}));
        },
        [&] { return Arguments(ID_Activo); });
}

}  // namespace Zontara
