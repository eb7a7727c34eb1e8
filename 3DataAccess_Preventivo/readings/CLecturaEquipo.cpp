#include "readings/CLecturaEquipo.h"

#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/creation.h"
#include "frame/provider.h"
#include "frame/regional.h"
#include "frame/sql.h"
#include "meter/CImputacionSistematica.h"

namespace Zontara {

using Libreria::TextoParaSQL;

Ref<ListaCambios> CLecturaEquipo::ListaLecturasModificada() { return listaLecturasModificada_.Get(); }

void CLecturaEquipo::ListaLecturasModificada(const Ref<ListaCambios>& value) { listaLecturasModificada_.Set(value); }

std::int32_t CLecturaEquipo::Nuevo(const std::string& Fecha, const std::string& ID_Equipo,
                                   std::int32_t SC_Unidad_Lectura, float Valor_Real, float Lectura,
                                   float Lectura_Anterior, float CombustibleConsumido, const std::string& Nota,
                                   const std::string& CodigoDepartamento, Money ValorValeSalida,
                                   const std::string& NumeroVale) {
    return Trap(
        "CLecturaEquipo.Nuevo(Fecha,ID_Equipo,SC_Unidad_Lectura,Valor_Real,Lectura,Lectura_Anterior,"
        "CombustibleConsumido,Nota,CodigoDepartamento,ValorValeSalida,NumeroVale)",
        [&] {
            Ref<CImputacionSistematica> sistematica = Create<CImputacionSistematica>();
            Libreria::IniciarTransaccion();
            const std::int32_t clave = Libreria::ProximaClave("Lectura_Equipo");
            std::string sql =
                Sql({"  INSERT Into Lectura_Equipo (SC_Lectura ,Fecha ,ID_Equipo ,SC_Unidad_Lectura ,Valor_Real "
                     ",Lectura ,Lectura_Anterior,Combustible_Consumido,Nota,Departamento_A_Quien_Se_Carga,"
                     "Valor_Del_Vale_Salida,Numero_Vale )",
                     " VALUES (", clave, ",'", SqlDate(Fecha), "','", ID_Equipo, "',", SC_Unidad_Lectura, ","});
            Append(sql, {Valor_Real, ",", Lectura, ",", Lectura_Anterior, ",", CombustibleConsumido, ",'"});
            Append(sql, {TextoParaSQL(Nota), "','", TextoParaSQL(CodigoDepartamento), "',", ValorValeSalida, ",'",
                         TextoParaSQL(NumeroVale), "')"});
            Libreria::Ejecutar(sql);
            sistematica->ActualizarAcumulado(ID_Equipo, SC_Unidad_Lectura, ToDate(Fecha), Valor_Real, Lectura);
            Neighbours().Perluma().Activos()->AnotarLectura(ID_Equipo, Nota);
            Neighbours().Perluma().Activos()->FijarLectura(ID_Equipo, RoundToInt32(Lectura));
            listaLecturasModificada_.Send();
            Libreria::TerminarTransaccion();
            Release(sistematica);
            return clave;
        },
        [&] {
            return Arguments(Fecha, ID_Equipo, SC_Unidad_Lectura, Valor_Real, Lectura, Lectura_Anterior,
                             CombustibleConsumido, Nota, CodigoDepartamento, ValorValeSalida, NumeroVale);
        });
}

void CLecturaEquipo::Borrar(std::int32_t SC_Lectura) {
    Trap(
        "CLecturaEquipo.Borrar(SC_Lectura)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Lectura_Equipo", " WHERE SC_Lectura =", SC_Lectura}));
            listaLecturasModificada_.Send();
        },
        [&] { return Arguments(SC_Lectura); });
}

void CLecturaEquipo::Salvar(std::int32_t SC_Lectura, const std::string& Fecha, const std::string& ID_Equipo,
                            std::int32_t SC_Unidad_Lectura, float Valor_Real, float Lectura, float Lectura_Anterior,
                            float CombustibleConsumido, const std::string& Nota, const std::string& CodigoDepartamento,
                            Money ValorValeSalida, const std::string& NumeroVale, std::int32_t LecturaRealADisminuir) {
    Trap(
        "CLecturaEquipo.Salvar(SC_Lectura,Fecha,ID_Equipo,SC_Unidad_Lectura,Valor_Real,Lectura,Lectura_Anterior,"
        "CombustibleConsumido,Nota,CodigoDepartamento,ValorValeSalida,NumeroVale,LecturaRealADisminuir)",
        // Day, value and note of a reading are fixed once it is entered; only fuel and voucher change.
        [&] {
            const std::string sql = Sql(
                {"  UPDATE Lectura_Equipo SET ", "Departamento_A_Quien_Se_Carga ='", TextoParaSQL(CodigoDepartamento),
                 "',Combustible_Consumido =", CombustibleConsumido, ",Valor_Del_Vale_Salida =", ValorValeSalida,
                 ",Numero_Vale ='", TextoParaSQL(NumeroVale), "'   WHERE SC_Lectura =", SC_Lectura});
            Libreria::IniciarTransaccion();
            Libreria::Ejecutar(sql);
            listaLecturasModificada_.Send();
            Libreria::TerminarTransaccion();
        },
        [&] {
            return Arguments(SC_Lectura, Fecha, ID_Equipo, SC_Unidad_Lectura, Valor_Real, Lectura, Lectura_Anterior,
                             CombustibleConsumido, Nota, CodigoDepartamento, ValorValeSalida, NumeroVale,
                             LecturaRealADisminuir);
        });
}

}  // namespace Zontara
