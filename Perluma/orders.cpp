#include "Perluma/orders.h"

#include "Perluma/reading.h"
#include "frame/regional.h"

#include <string_view>
#include <utility>

namespace Perluma {

using Zontara::Ref;

OrdenTrabajo::OrdenTrabajo(Ref<Sesion> session) : session_(std::move(session)) {}

std::int32_t OrdenTrabajo::CrearOrden(const Zontara::DatosOrden& datos) {
    const std::int32_t key = session_->ElGeneradorClaves()->ProximaClave("Orden_Trabajo");
    auto insert = session_->Connection()->Prepare(
        "INSERT INTO Orden_Trabajo (SC_Orden_Trabajo, Descripcion, Fecha_Solicitud, Fecha_Deseada, Origen,"
        " SC_Ejecutor_Interno, Texto_Trabajo, SC_Usuario_Destino, Prioridad, ID_Activo, SC_Tipo_Intervencion,"
        " SC_Proceso, SC_Ejecutor_Externo, SC_Imputacion_Sistematica, SC_Gama)"
        " VALUES (?1, ?2, ?3, ?4, ?5, ?6, ?7, ?8, ?9, ?10, ?11, ?12, ?13, ?14, ?15)");
    insert.Bind(1, key)
        .BindKept(2, datos.Descripcion)
        .BindKept(3, Zontara::SqlDate(datos.FechaSolicitud))
        .BindKept(4, Zontara::SqlDate(datos.FechaDeseada))
        .Bind(5, datos.Origen)
        .Bind(6, datos.EjecutorInterno)
        .BindKept(7, datos.TextoTrabajo)
        .Bind(8, datos.UsuarioDestino)
        .Bind(9, std::int32_t{datos.Prioridad})
        .BindKept(10, datos.ID_Activo)
        .Bind(11, datos.TipoIntervencion)
        .Bind(12, datos.SC_Proceso)
        .Bind(13, datos.EjecutorExterno)
        .Bind(14, datos.SC_Imputacion_Sistematica)
        .Bind(15, datos.SC_Gama)
        .Run();
    return key;
}

void OrdenTrabajo::AsignarManoObra(std::int32_t numeroOT, std::int16_t hombres, float tiempo) {
    session_->Connection()
        ->Prepare("UPDATE Orden_Trabajo SET Hombres = ?2, Tiempo = ?3 WHERE SC_Orden_Trabajo = ?1")
        .Bind(1, numeroOT)
        .Bind(2, std::int32_t{hombres})
        .Bind(3, tiempo)
        .Run();
}

ServicioMaterialesOT::ServicioMaterialesOT(Ref<Sesion> session) : session_(std::move(session)) {}

void ServicioMaterialesOT::AgregarItemOT(std::int16_t linea, const std::string& descripcion,
                                         Zontara::Money costoUnitario, float cantidad, std::int32_t numeroOT) {
    const std::int32_t key = session_->ElGeneradorClaves()->ProximaClave("Material_OT");
    session_->Connection()
        ->Prepare(
            "INSERT INTO Material_OT (SC_Material_OT, SC_Orden_Trabajo, Linea, Descripcion, Costo_Unitario, Cantidad)"
            " VALUES (?1, ?2, ?3, ?4, ?5, ?6)")
        .Bind(1, key)
        .Bind(2, numeroOT)
        .Bind(3, std::int32_t{linea})
        .BindKept(4, descripcion)
        .Bind(5, costoUnitario)
        .Bind(6, cantidad)
        .Run();
}

ServicioProcesos::ServicioProcesos(Ref<Sesion> session) : session_(std::move(session)) {}

Ref<Zontara::Recordset> ServicioProcesos::SeleccionarProcesos(std::int32_t cuales) {
    static const std::string all = "SELECT SC_Proceso, Estatus_Valido FROM Proceso ORDER BY SC_Proceso";
    static const std::string active =
        "SELECT SC_Proceso, Estatus_Valido FROM Proceso WHERE Activo <> 0 ORDER BY SC_Proceso";
    return Opened(*session_, cuales == 1 ? active : all);
}

}  // namespace Perluma
