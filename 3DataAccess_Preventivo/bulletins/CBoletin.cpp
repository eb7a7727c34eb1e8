#include "bulletins/CBoletin.h"

#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/convert.h"
#include "frame/regional.h"
#include "frame/sql.h"

namespace Zontara {

namespace {

/// The keys of all rows, joined by commas.
std::string ClavesDe(const Ref<Recordset>& boletines) {
    std::string lista;
    if (Libreria::ExistenRegistros(boletines)) {
        boletines->MoverPrimero();
        while (!boletines->FinDeDatos()) {
            lista += ToText(boletines->Valor("SC_Boletin")) + ",";
            boletines->MoverSiguiente();
        }
    }
    if (!lista.empty()) lista.pop_back();
    return lista;
}

}  // namespace

std::int32_t CBoletin::Nuevo(std::int32_t SC_Imputacion_Preventiva, const std::string& ID_Equipo,
                             const std::string& Fecha_Lanzamiento, const std::string& Fecha_Entrega,
                             const std::string& Fecha_Real_Entrega, const std::string& Lunes, const std::string& Martes,
                             const std::string& Miercoles, const std::string& Jueves, const std::string& Viernes,
                             const std::string& Sabado, const std::string& Domingo, std::int16_t Semana_Del_Ano,
                             std::int32_t SC_Usuario) {
    return Trap(
        "CBoletin.Nuevo(SC_Imputacion_Preventiva,ID_Equipo,Fecha_Lanzamiento,Fecha_Entrega,Fecha_Real_Entrega,"
        "Lunes,Martes,Miercoles,Jueves,Viernes,Sabado,Domingo,Semana_Del_Ano,SC_Usuario)",
        [&] {
            Libreria::IniciarTransaccion();
            const std::int32_t clave = Libreria::ProximaClave("Boletin");
            std::string sql =
                Sql({"  INSERT Into Boletin (SC_Boletin ,SC_Imputacion_Preventiva ,ID_Equipo ,Fecha_Lanzamiento "
                     ",Fecha_Entrega ,Fecha_Real_Entrega ,Lunes ,Martes ,Miercoles ,Jueves ,Viernes ,Sabado ,Domingo "
                     ",Semana_Del_Ano ,SC_Usuario )",
                     " VALUES (", clave, ",", SC_Imputacion_Preventiva, ",'", ID_Equipo, "',"});
            Append(sql, {"'", SqlDate(Fecha_Lanzamiento), "','", SqlDate(Fecha_Entrega), "','",
                         SqlDate(Fecha_Real_Entrega), "',"});
            Append(sql, {"'", Lunes, "','", Martes, "','", Miercoles, "','", Jueves, "','", Viernes, "',"});
            Append(sql, {"'", Sabado, "','", Domingo, "',", Semana_Del_Ano, ",", SC_Usuario, ")"});
            Libreria::Ejecutar(sql);
            Libreria::TerminarTransaccion();
            return clave;
        },
        [&] {
            return Arguments(SC_Imputacion_Preventiva, ID_Equipo, Fecha_Lanzamiento, Fecha_Entrega, Fecha_Real_Entrega,
                             Lunes, Martes, Miercoles, Jueves, Viernes, Sabado, Domingo, Semana_Del_Ano, SC_Usuario);
        });
}

void CBoletin::Borrar(std::int32_t SC_Boletin) {
    Trap(
        "CBoletin.Borrar(SC_Boletin)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Boletin", " WHERE SC_Boletin =", SC_Boletin}));
        },
        [&] { return Arguments(SC_Boletin); });
}

Ref<Recordset> CBoletin::Seleccionar(const std::string& sCondicion, const std::string& sColumnas,
                                     const std::string& TipoFrecuencia) {
    return Trap(
        "CBoletin.Seleccionar(sCondicion,sColumnas,TipoFrecuencia)",
        [&] {
            std::string sql = SelectHead(
                "SELECT SC_Imputacion_Preventiva ,Boletin.ID_Equipo ,Fecha_Lanzamiento ,Fecha_Entrega "
                ",Fecha_Real_Entrega ,Lunes ,Martes ,Miercoles ,Jueves ,Viernes ,Sabado ,Domingo ,Semana_Del_Ano "
                ",Boletin.SC_Usuario,boletin_realizado ",
                sColumnas);
            Append(sql,
                   {" FROM Boletin,Gama,Ejecutor_Gama,Equipo,Imputacion_Preventiva,Grupo_Gama ", " Where  ",
                    " Imputacion_Preventiva.SC_Imputacion_Preventiva = ", " Boletin.SC_Imputacion_Preventiva and ",
                    " Gama.SC_Gama = Imputacion_Preventiva.SC_Gama and ",
                    " Ejecutor_Gama.SC_Ejecutor_Gama = Gama.SC_Ejecutor_Gama and ",
                    " Grupo_Gama.SC_Grupo_Gama = Gama.SC_Grupo_Gama and ", " Equipo.ID_Equipo = Boletin.ID_Equipo "});
            if (!sCondicion.empty()) Append(sql, {" and ", sCondicion});
            if (TipoFrecuencia == "Breve") {
                Append(sql, {" and Frecuencia in ('Diaria','Semanal','Quincenal','Mensual') "});
            } else if (TipoFrecuencia == "Larga") {
                Append(sql, {" and Frecuencia in ('Bimestral','Trimestral','Semestral','Anual') "});
            }
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(sCondicion, sColumnas, TipoFrecuencia); });
}

void CBoletin::Salvar(std::int32_t SC_Boletin, const std::string& Lunes, const std::string& Martes,
                      const std::string& Miercoles, const std::string& Jueves, const std::string& Viernes,
                      const std::string& Sabado, const std::string& Domingo, Date Fecha_Real_Entrega,
                      const std::string& Nota, std::int16_t Estatus, std::int32_t OrdenTrabajo) {
    Trap(
        "CBoletin.Salvar(SC_Boletin,Lunes,Martes,Miercoles,Jueves,Viernes,Sabado,Domingo,Fecha_Real_Entrega)",
        [&] {
            std::string sql = Sql({"  UPDATE Boletin SET "});
            Append(sql, {"Lunes ='", Lunes, "' ,", "Martes ='", Martes, "' ,"});
            Append(sql, {"Miercoles ='", Miercoles, "' ,", "Jueves ='", Jueves, "' ,"});
            Append(sql, {"Viernes ='", Viernes, "' ,", "Sabado ='", Sabado, "' ,", "Domingo ='", Domingo, "', "});
            Append(sql, {"Nota ='", Nota, "' ,", "Estatus =", Estatus, " ,"});
            Append(sql, {"sc_Orden_Trabajo =", OrdenTrabajo, " ,"});
            Append(sql, {"Fecha_Real_Entrega ='", Fecha_Real_Entrega, "' ", " WHERE SC_Boletin =", SC_Boletin});
            Libreria::Ejecutar(sql);
        },
        // Note, status and work order stay out of the report.
        [&] {
            return Arguments(SC_Boletin, Lunes, Martes, Miercoles, Jueves, Viernes, Sabado, Domingo,
                             Fecha_Real_Entrega);
        });
}

Ref<Recordset> CBoletin::Buscar(std::int32_t SC_Boletin, const std::string& sColumnas) {
    return Trap(
        "CBoletin.Buscar(SC_Boletin,sColumnas)",
        [&] {
            std::string sql = SelectHead(
                "SELECT SC_Imputacion_Preventiva ,ID_Equipo ,Fecha_Lanzamiento ,Fecha_Entrega ,Fecha_Real_Entrega "
                ",Lunes ,Martes ,Miercoles ,Jueves ,Viernes ,Sabado ,Domingo ,Semana_Del_Ano ,SC_Usuario ",
                sColumnas);
            Append(sql, {" FROM Boletin WHERE SC_Boletin =", SC_Boletin});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(SC_Boletin, sColumnas); });
}

std::string CBoletin::SeleccionarPorSemana(std::uint8_t SemanaDelAno, std::int32_t Ano) {
    return Trap(
        "CBoletin.SeleccionarPorSemana(SemanaDelAno,Ano)",
        [&] {
            return ClavesDe(Libreria::Abierto(
                Sql({"SELECT Boletin.SC_Boletin ", " From Boletin ", " where  ", " Semana_Del_Ano  =", SemanaDelAno,
                     " and strftime('%Y',Fecha_Lanzamiento) ='", Ano, "'"})));
        },
        [&] { return Arguments(SemanaDelAno, Ano); });
}

std::int16_t CBoletin::UltimaSemanaLanzada(std::int32_t AnoActual) {
    return Trap(
        "CBoletin.UltimaSemanaLanzada(AnoActual)",
        [&]() -> std::int16_t {
            const Ref<Recordset> boletines =
                Libreria::Abierto(Sql({"select max(semana_del_ano) as Ultima ",
                                       " from boletin where strftime('%Y',fecha_lanzamiento)= '", AnoActual, "'"}));
            std::int16_t ultima = 0;
            if (Libreria::ExistenRegistros(boletines)) {
                const Value valor = boletines->Valor("Ultima");
                // Clients are used to the 0 that this comparison always leads to.
                if (Differ(valor, Null{})) ultima = ConvertTo<std::int16_t>(valor);
            }
            return ultima;
        },
        [&] { return Arguments(AnoActual); });
}

bool CBoletin::ExistenBoletinesParaEditar(std::uint8_t SemanaDelAno, std::int32_t Ano, const std::string& ID_Activo) {
    return Libreria::ExistenRegistros(Libreria::Abierto(Sql(
        {"SELECT Boletin.SC_Boletin ", " From Boletin ", " where  ", " Semana_Del_Ano  =", SemanaDelAno,
         " and strftime('%Y',Fecha_Lanzamiento) ='", Ano, "' and id_equipo ='", ID_Activo, "' and ", " estatus =0 "})));
}

std::string CBoletin::SeleccionarBoletines(std::int16_t Estatus) {
    return ClavesDe(
        Libreria::Abierto(Sql({"SELECT Boletin.SC_Boletin ", " From Boletin ", " where Estatus =", Estatus})));
}

void CBoletin::MarcarBoletinEnEjecucion(std::int32_t SC_Boletin) {
    Libreria::Ejecutar(Sql({"  UPDATE Boletin SET ", "Boletin_En_Ejecucion =1 ", " WHERE SC_Boletin =", SC_Boletin}));
}

void CBoletin::MarcarBoletinEjecutado(std::int32_t SC_Boletin) {
    Libreria::Ejecutar(Sql({"  UPDATE Boletin SET ", "Boletin_Realizado = 1 ", " WHERE SC_Boletin =", SC_Boletin}));
}

std::string CBoletin::Estatus(std::int16_t idEstatus) const {
    switch (idEstatus) {
        case 0:
            return "Pendiente";
        case 1:
            return "En Ejecucion";
        case 2:
            return "Ejecutado";
        default:
            return "";
    }
}

void CBoletin::AsignarOTAlBoletin(std::int32_t SC_Boletin, const std::string& Nota, std::int16_t Estatus,
                                  std::int32_t OrdenTrabajo) {
    Libreria::Ejecutar(Sql({"  UPDATE Boletin SET ", "Nota ='", Nota, "' ,", "Estatus =", Estatus, " ,",
                            "sc_Orden_Trabajo =", OrdenTrabajo, " ", " WHERE SC_Boletin =", SC_Boletin}));
}

}  // namespace Zontara
