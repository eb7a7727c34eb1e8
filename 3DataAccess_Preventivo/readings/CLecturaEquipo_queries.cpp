#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/regional.h"
#include "frame/sql.h"
#include "readings/CLecturaEquipo.h"

#include <algorithm>

namespace Zontara {

namespace {

/// Length in characters.
std::int32_t LengthOf(const std::string& utf8) {
    return static_cast<std::int32_t>(
        std::count_if(utf8.begin(), utf8.end(), [](char c) { return (static_cast<unsigned char>(c) & 0xC0) != 0x80; }));
}

/// What both reports of a range of days share: their tables, the range and the filters that were asked for.
void AppendFilters(std::string& sql, Date DesdeFecha, Date HastaFecha, const std::string& ID_Capitulo,
                   std::int32_t ID_Localizacion, std::int32_t id_Lectura, const std::string& ListaActivos) {
    Append(sql, {" FROM Lectura_Equipo,activo WHERE activo.ID_Activo = Lectura_Equipo.ID_Equipo and  "
                 "strftime('%Y%m%d',Lectura_Equipo.fecha)>='",
                 Format(DesdeFecha, "YYYYMMDD"), "'  and strftime('%Y%m%d',Lectura_Equipo.fecha) <='",
                 Format(HastaFecha, "YYYYMMDD"), "' "});
    // The engine takes the length as a set of characters to trim, not as a number of them.
    if (!ID_Capitulo.empty()) {
        Append(sql, {" and ltrim(activo.ID_Activo,", LengthOf(ID_Capitulo), ")='", ID_Capitulo, "'"});
    }
    if (ID_Localizacion > 0) Append(sql, {" and activo.id_localidad_fisica=", ID_Localizacion});
    if (id_Lectura > 0) Append(sql, {" and activo.sc_unidad_lectura=", id_Lectura});
    if (!ListaActivos.empty()) Append(sql, {" and activo.ID_Activo in (", ListaActivos, ")"});
}

}  // namespace

Ref<Recordset> CLecturaEquipo::Seleccionar(const std::string& ID_Equipo, const std::string& sColumnas) {
    return Trap(
        "CLecturaEquipo.Seleccionar(ID_Equipo,sColumnas)",
        [&] {
            std::string sql = SelectHead(
                "SELECT SC_Lectura ,Fecha ,SC_Unidad_Lectura ,Valor_Real ,Nota,Lectura ,Lectura_Anterior ", sColumnas);
            Append(sql, {" FROM Lectura_Equipo WHERE ID_Equipo ='", ID_Equipo, "'"});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(ID_Equipo, sColumnas); });
}

Ref<Recordset> CLecturaEquipo::Buscar(std::int32_t SC_Lectura, const std::string& sColumnas) {
    return Trap(
        "CLecturaEquipo.Buscar(SC_Lectura,sColumnas)",
        [&] {
            std::string sql = SelectHead(
                "SELECT Activo.ID_Activo,Descripcion,SC_Lectura ,Numero_Vale,Fecha ,Lectura_Equipo.SC_Unidad_Lectura "
                ",Valor_Del_Vale_Salida,Valor_Real ,Nota,Lectura ,Lectura_Anterior,Combustible_Consumido, "
                "Departamento_A_Quien_Se_Carga ",
                sColumnas);
            Append(sql, {" FROM Lectura_Equipo,Activo WHERE SC_Lectura =", SC_Lectura,
                         " and Activo.ID_Activo = Lectura_Equipo.ID_Equipo "});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(SC_Lectura, sColumnas); });
}

Ref<Recordset> CLecturaEquipo::SeleccionarTodos(const std::string& sCondicion, const std::string& sColumnas) {
    return Trap(
        "CLecturaEquipo.SeleccionarTodos(sCondicion,sColumnas)",
        [&] {
            std::string sql = SelectHead(
                "SELECT SC_Lectura ,Fecha ,Lectura_Equipo.SC_Unidad_Lectura ,Valor_Real ,Nota,Lectura "
                ",Lectura_Anterior,Combustible_Consumido ",
                sColumnas);
            Append(sql, {" FROM Lectura_Equipo,Unidad_Lectura,Activo  Where  Lectura_Equipo.Sc_Unidad_Lectura = "
                         "Unidad_Lectura.SC_Unidad_Lectura  and Lectura_Equipo.ID_Equipo = Activo.ID_Activo "});
            if (!sCondicion.empty()) Append(sql, {" and ", sCondicion});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(sCondicion, sColumnas); });
}

Ref<Recordset> CLecturaEquipo::Ultimas10Lecturas(const std::string& ID_Equipo, const std::string& sColumnas) {
    return Trap(
        "CLecturaEquipo.Ultimas10Lecturas(ID_Equipo,sColumnas)",
        [&] {
            std::string sql = SelectHead(
                "SELECT Activo.ID_Activo,Descripcion,SC_Lectura ,Fecha ,SC_Unidad_Lectura "
                ",numero_vale,valor_del_vale_salida,Valor_Real ,Lectura ,Nota,Lectura_Anterior,Combustible_Consumido ",
                sColumnas);
            Append(sql, {" FROM Lectura_Equipo,Activo WHERE Activo.ID_Activo = Lectura_Equipo.ID_Equipo and  "
                         "Activo.ID_Activo ='",
                         ID_Equipo, "' order by Lectura_Equipo.SC_lectura DESC limit 10"});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(ID_Equipo, sColumnas); });
}

Ref<Recordset> CLecturaEquipo::ObtenerLecturas(Date DesdeFecha, Date HastaFecha, std::string& ID_Capitulo,
                                               std::int32_t ID_Localizacion, std::int32_t id_Lectura,
                                               const std::string& sColumnas, const std::string& ListaActivos) {
    return Trap(
        "CLecturaEquipo.ObtenerLecturas(DesdeFecha,HastaFecha,ID_Capitulo,ID_Localizacion,id_Lectura,sColumnas,"
        "ListaActivos)",
        [&] {
            if (ID_Capitulo == "0") ID_Capitulo.clear();
            std::string sql = SelectHead(
                "SELECT Activo.ID_Activo,Descripcion,SC_Lectura ,Fecha ,SC_Unidad_Lectura "
                ",numero_vale,valor_del_vale_salida,Valor_Real ,Lectura ,Nota,Lectura_Anterior,Combustible_Consumido ",
                sColumnas);
            AppendFilters(sql, DesdeFecha, HastaFecha, ID_Capitulo, ID_Localizacion, id_Lectura, ListaActivos);
            Append(sql, {" order by Lectura_Equipo.ID_Equipo "});
            return Libreria::Abierto(sql);
        },
        [&] {
            return Arguments(DesdeFecha, HastaFecha, ID_Capitulo, ID_Localizacion, id_Lectura, sColumnas, ListaActivos);
        });
}

Ref<Recordset> CLecturaEquipo::ObtenerLecturas(Date DesdeFecha, Date HastaFecha, const std::string& ID_Capitulo,
                                               std::int32_t ID_Localizacion, std::int32_t id_Lectura,
                                               const std::string& sColumnas, const std::string& ListaActivos) {
    std::string capitulo = ID_Capitulo;
    return ObtenerLecturas(DesdeFecha, HastaFecha, capitulo, ID_Localizacion, id_Lectura, sColumnas, ListaActivos);
}

Ref<Recordset> CLecturaEquipo::ObtenerLecturasPorMes(Date DesdeFecha, Date HastaFecha, std::string& ID_Capitulo,
                                                     std::int32_t ID_Localizacion, std::int32_t id_Lectura,
                                                     const std::string& sColumnas, const std::string& ListaActivos) {
    return Trap(
        "CLecturaEquipo.ObtenerLecturasPorMes(DesdeFecha,HastaFecha,ID_Capitulo,ID_Localizacion,id_Lectura,"
        "sColumnas,ListaActivos)",
        [&] {
            if (ID_Capitulo == "0") ID_Capitulo.clear();
            std::string sql =
                "SELECT ID_Activo,Descripcion, strftime('%Y%m',Fecha) as mes ,0 as sc_lectura, "
                "sum(valor_del_vale_salida) as valor_del_vale_salida,sum(Valor_Real) as Valor_Real "
                ",sum(Combustible_Consumido) as Combustible_Consumido";
            AppendFilters(sql, DesdeFecha, HastaFecha, ID_Capitulo, ID_Localizacion, id_Lectura, ListaActivos);
            Append(sql, {" group by 1,2,3,4  order by Lectura_Equipo.ID_Equipo "});
            return Libreria::Abierto(sql);
        },
        [&] {
            return Arguments(DesdeFecha, HastaFecha, ID_Capitulo, ID_Localizacion, id_Lectura, sColumnas, ListaActivos);
        });
}

Ref<Recordset> CLecturaEquipo::ObtenerLecturasPorMes(Date DesdeFecha, Date HastaFecha, const std::string& ID_Capitulo,
                                                     std::int32_t ID_Localizacion, std::int32_t id_Lectura,
                                                     const std::string& sColumnas, const std::string& ListaActivos) {
    std::string capitulo = ID_Capitulo;
    return ObtenerLecturasPorMes(DesdeFecha, HastaFecha, capitulo, ID_Localizacion, id_Lectura, sColumnas,
                                 ListaActivos);
}

}  // namespace Zontara
