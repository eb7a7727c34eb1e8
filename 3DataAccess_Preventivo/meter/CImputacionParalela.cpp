#include "meter/CImputacionParalela.h"

#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/creation.h"
#include "frame/sql.h"
#include "meter/CImputacionSistematica.h"

namespace Zontara {

const ClassTable* CImputacionParalela::Table() const { return &ClassMembers(); }

std::int32_t CImputacionParalela::Nuevo(std::int32_t SC_Imputacion_Sistematica, std::int32_t SC_Paralela) {
    return Trap(
        "CImputacionParalela.Nuevo(SC_Imputacion_Sistematica,SC_Paralela)",
        [&] {
            Libreria::IniciarTransaccion();
            const std::int32_t SC_Imputacion_Paralela = Libreria::ProximaClave("Imputacion_Paralela");
            Libreria::Ejecutar(
                Sql({"  INSERT Into Imputacion_Paralela (SC_Imputacion_Paralela "
                     ",SC_Imputacion_Sistematica ,SC_Paralela )",
                     " VALUES (", SC_Imputacion_Paralela, ",", SC_Imputacion_Sistematica, ",", SC_Paralela, ")"}));
            Libreria::TerminarTransaccion();
            return SC_Imputacion_Paralela;
        },
        [&] { return Arguments(SC_Imputacion_Sistematica, SC_Paralela); });
}

void CImputacionParalela::Borrar(std::int32_t SC_Imputacion_Paralela) {
    Trap(
        "CImputacionParalela.Borrar(SC_Imputacion_Paralela)",
        [&] {
            Libreria::Ejecutar(
                Sql({"  DELETE From Imputacion_Paralela", " WHERE SC_Imputacion_Paralela =", SC_Imputacion_Paralela}));
        },
        [&] { return Arguments(SC_Imputacion_Paralela); });
}

Ref<Recordset> CImputacionParalela::Seleccionar(std::int32_t SC_Imputacion_Sistematica, const std::string& sColumnas) {
    return Trap(
        "CImputacionParalela.Seleccionar(SC_Imputacion_Sistematica,sColumnas)",
        [&] {
            constexpr std::string_view kHead =
                "SELECT Imputacion_Paralela.SC_Imputacion_Paralela, "
                "Imputacion_Paralela.SC_Imputacion_Sistematica ,"
                "Imputacion_Paralela.SC_Paralela ";
            return Libreria::Abierto(Sql({SelectHead(kHead, sColumnas),
                                          " FROM Imputacion_Paralela, "
                                          "Ejecutor_Gama,Gama,Unidad_Lectura,"
                                          "Imputacion_Sistematica "
                                          " WHERE "
                                          "Imputacion_Paralela.SC_Paralela ="
                                          " Imputacion_Sistematica.SC_Imputacion_Sistematica and "
                                          " Gama.SC_Gama = Imputacion_Sistematica.SC_Gama and "
                                          " Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and "
                                          " Unidad_Lectura.SC_Unidad_Lectura = "
                                          " Imputacion_Sistematica.SC_Unidad_Lectura  and "
                                          "Imputacion_Paralela.SC_Imputacion_Sistematica =",
                                          SC_Imputacion_Sistematica}));
        },
        [&] { return Arguments(SC_Imputacion_Sistematica, sColumnas); });
}

void CImputacionParalela::Salvar(std::int32_t SC_Imputacion_Paralela, std::int32_t SC_Imputacion_Sistematica,
                                 std::int32_t SC_Paralela) {
    Trap(
        "CImputacionParalela.Salvar(SC_Imputacion_Paralela,SC_Imputacion_Sistematica,"
        "SC_Paralela)",
        [&] {
            Libreria::Ejecutar(
                Sql({"  UPDATE Imputacion_Paralela SET ", "SC_Imputacion_Sistematica =", SC_Imputacion_Sistematica, ",",
                     "SC_Paralela =", SC_Paralela, " WHERE SC_Imputacion_Paralela =", SC_Imputacion_Paralela}));
        },
        [&] { return Arguments(SC_Imputacion_Paralela, SC_Imputacion_Sistematica, SC_Paralela); });
}

void CImputacionParalela::ResetearParalelas(std::int32_t SC_Imputacion_Sistematica, Date Fecha_Lanzamiento) {
    Trap(
        "CImputacionParalela.ResetearParalelas(SC_Imputacion_Sistematica,Fecha_Lanzamiento)",
        [&] {
            Ref<CImputacionSistematica> imputaciones = Create<CImputacionSistematica>();
            Ref<Recordset> paralelas = Seleccionar(SC_Imputacion_Sistematica, "");
            if (Libreria::ExistenRegistros(paralelas)) {
                for (paralelas->MoverPrimero(); !paralelas->FinDeDatos(); paralelas->MoverSiguiente()) {
                    imputaciones->Resetear(ConvertTo<std::int32_t>(paralelas->Valor("SC_Paralela")), Fecha_Lanzamiento);
                }
            }
            paralelas.reset();
            Release(imputaciones);
        },
        [&] { return Arguments(SC_Imputacion_Sistematica, Fecha_Lanzamiento); });
}

}  // namespace Zontara
