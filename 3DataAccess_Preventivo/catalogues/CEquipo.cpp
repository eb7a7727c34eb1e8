#include "catalogues/CEquipo.h"

#include "errors/trap.h"
#include "frame/Libreria.h"
#include "frame/regional.h"
#include "frame/sql.h"

namespace Zontara {

using Libreria::TextoParaSQL;

std::int32_t CEquipo::Nuevo(const std::string& ID_Equipo, const std::string& Descripcion, std::int16_t Nivel,
                            const std::string& Equipo_Padre, const std::string& ID_Activo,
                            const std::string& Fecha_Ultimo_Mantenimiento, const std::string& Foto) {
    return Trap(
        "CEquipo.Nuevo(ID_Equipo,Descripcion,Nivel,Equipo_Padre,ID_Activo,Fecha_Ultimo_Mantenimiento,Foto)",
        [&] {
            Libreria::IniciarTransaccion();
            Libreria::Ejecutar(
                Sql({"  INSERT Into Equipo (ID_Equipo ,Descripcion ,Nivel ,Equipo_Padre ,ID_Activo "
                     ",Fecha_Ultimo_Mantenimiento,Foto,SC_Archivo_Digital )",
                     " VALUES ('", ID_Equipo, "','", TextoParaSQL(Descripcion), "',", Nivel, ",'", Equipo_Padre, "','",
                     ID_Activo, "','", SqlDate(Fecha_Ultimo_Mantenimiento), "','", Foto, "',0)"}));
            Libreria::TerminarTransaccion();
            // The key is the caller's own, so there is none to tell.
            return std::int32_t{0};
        },
        [&] {
            return Arguments(ID_Equipo, Descripcion, Nivel, Equipo_Padre, ID_Activo, Fecha_Ultimo_Mantenimiento, Foto);
        });
}

void CEquipo::Borrar(const std::string& ID_Equipo) {
    Trap(
        "CEquipo.Borrar(ID_Equipo)",
        [&] {
            Libreria::Ejecutar(Sql({"  DELETE From Equipo WHERE ID_Equipo = '", ID_Equipo, "'"}));
        },
        [&] { return Arguments(ID_Equipo); });
}

Ref<Recordset> CEquipo::Seleccionar(const std::string& sColumnas, const std::string& sGrupoActivo) {
    return Trap(
        "CEquipo.Seleccionar(sColumnas,sGrupoActivo)",
        [&] {
            std::string sql = SelectHead(
                "SELECT Equipo.ID_Activo,Equipo.ID_Equipo ,Equipo.Descripcion ,Activo.Descripcion as "
                "Descripcion_Activo ,Nivel ,Equipo_Padre "
                ",Fecha_Ultimo_Mantenimiento,Equipo.Foto,Equipo.SC_Archivo_Digital ",
                sColumnas);
            Append(sql, {"FROM Equipo,Activo  Where Equipo.ID_Activo=Activo.ID_Activo  and Nivel =1 "});
            if (!sGrupoActivo.empty()) Append(sql, {" and Activo.ID_Grupo_Activo ='", sGrupoActivo, "'"});
            Append(sql, {" Order by Equipo.ID_Activo "});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(sColumnas, sGrupoActivo); });
}

void CEquipo::Salvar(const std::string& ID_Equipo, const std::string& Descripcion, std::int16_t Nivel,
                     const std::string& Equipo_Padre, const std::string& ID_Activo, const std::string& Foto,
                     std::int32_t SC_Archivo_Digital) {
    Trap(
        "CEquipo.Salvar(ID_Equipo,Descripcion,Nivel,Equipo_Padre,ID_Activo,Foto,SC_Archivo_Digital)",
        [&] {
            Libreria::Ejecutar(Sql({"  UPDATE Equipo SET ID_Equipo ='", ID_Equipo, "',Descripcion ='",
                                    TextoParaSQL(Descripcion), "' ,ID_Activo ='", ID_Activo, "' ,Nivel =", Nivel,
                                    ",Foto ='", Foto, "',SC_Archivo_Digital =", SC_Archivo_Digital, ",Equipo_Padre ='",
                                    Equipo_Padre, "'  WHERE ID_Equipo = '", ID_Equipo, "'"}));
        },
        [&] { return Arguments(ID_Equipo, Descripcion, Nivel, Equipo_Padre, ID_Activo, Foto, SC_Archivo_Digital); });
}

Ref<Recordset> CEquipo::Buscar(const std::string& ID_Equipo, const std::string& sColumnas) {
    return Trap(
        "CEquipo.Buscar(ID_Equipo,sColumnas)",
        [&] {
            std::string sql = SelectHead(
                "SELECT  Equipo.ID_Activo,ID_Equipo ,Equipo.Descripcion ,Activo.Descripcion as Descripcion_Activo, "
                "Nivel ,Equipo_Padre ,Fecha_Ultimo_Mantenimiento,Equipo.Foto,Equipo.SC_Archivo_Digital ",
                sColumnas);
            Append(sql, {" FROM Equipo,Activo  WHERE Equipo.ID_Activo = Activo.ID_Activo and ID_Equipo = '", ID_Equipo,
                         "'"});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(ID_Equipo, sColumnas); });
}

Ref<Recordset> CEquipo::BuscarHijos(const std::string& Equipo_Padre, std::int16_t Nivel, const std::string& sColumnas) {
    return Trap(
        "CEquipo.BuscarHijos(Equipo_Padre,Nivel,sColumnas)",
        [&] {
            std::string sql = SelectHead(
                "SELECT  Equipo.ID_Activo,ID_Equipo ,Equipo.Descripcion ,Activo.Descripcion as  "
                "Descripcion_Activo,Nivel ,Equipo_Padre ,Fecha_Ultimo_Mantenimiento ",
                sColumnas);
            Append(sql, {" FROM Equipo,Activo  WHERE  Equipo.ID_Activo = Activo.ID_Activo and Nivel = ", Nivel,
                         " and  Equipo_Padre = '", Equipo_Padre, "'"});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(Equipo_Padre, Nivel, sColumnas); });
}

void CEquipo::ActualizarFecha(const std::string& ID_Equipo, const std::string& Fecha_Ultimo_Mantenimiento) {
    Trap(
        "CEquipo.ActualizarFecha(ID_Equipo,Fecha_Ultimo_Mantenimiento)",
        [&] {
            Libreria::Ejecutar(Sql({"  UPDATE Equipo SET Fecha_Ultimo_Mantenimiento ='",
                                    SqlDate(Fecha_Ultimo_Mantenimiento), "'  WHERE ID_Equipo = '", ID_Equipo, "'"}));
        },
        [&] { return Arguments(ID_Equipo, Fecha_Ultimo_Mantenimiento); });
}

bool CEquipo::Existe(const std::string& ID_Activo) {
    return Trap(
        "CEquipo.Existe(ID_Activo)",
        [&] {
            return Libreria::ExistenRegistros(
                Libreria::Abierto(Sql({" Select ID_Activo FROM Equipo ", "WHERE ID_Activo = '", ID_Activo, "'"})));
        },
        [&] { return Arguments(ID_Activo); });
}

bool CEquipo::ExisteEquipo(const std::string& ID_Equipo) {
    return Trap(
        "CEquipo.ExisteEquipo(ID_Equipo)",
        [&] {
            return Libreria::ExistenRegistros(
                Libreria::Abierto(Sql({" Select ID_Activo FROM Equipo ", "WHERE ID_Equipo = '", ID_Equipo, "'"})));
        },
        [&] { return Arguments(ID_Equipo); });
}

Ref<Recordset> CEquipo::Sistematicos(const std::string& sColumnas) {
    return Trap(
        "CEquipo.SeleccionarSistematicos(sColumnas)",
        [&] {
            std::string sql = SelectHead(
                "SELECT Equipo.ID_Activo,Equipo.ID_Equipo ,Equipo.Descripcion "
                ",Equipo.Foto,Equipo.SC_Archivo_Digital ",
                sColumnas);
            Append(sql, {"FROM Equipo,imputacion_Sistematica  Where Equipo.ID_equipo=imputacion_Sistematica.ID_equipo "
                         " Group by Equipo.ID_Equipo  Order by Equipo.ID_Equipo "});
            return Libreria::Abierto(sql);
        },
        [&] { return Arguments(sColumnas); });
}

}  // namespace Zontara
