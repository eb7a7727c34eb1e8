#pragma once

#include "Perluma/session.h"
#include "frame/neighbours.h"

#include <cstdint>
#include <string>

namespace Perluma {

/// Work orders, in the table `Orden_Trabajo`. Each call is one statement on the session's connection, in whatever
/// transaction is open there; none commits. Failures are the engine's errors.
class OrdenTrabajo : public Zontara::OrdenTrabajo {
public:
    explicit OrdenTrabajo(Zontara::Ref<Sesion> session);

    /// Writes one order and gives its key. The argument `Reservado` is ignored; `Origen` is kept: 0 for an order of the
    /// calendar, 1 for one of a meter. Texts that read as dates are stored as YYYY-MM-DD, others as they come. Nothing
    /// is checked: process 0, no executor, an unknown asset are in order.
    std::int32_t CrearOrden(const Zontara::DatosOrden& datos) override;

    /// Sets crew size and time, in place of what was set before. An unknown order changes nothing.
    void AsignarManoObra(std::int32_t numeroOT, std::int16_t hombres, float tiempo) override;

private:
    Zontara::Ref<Sesion> session_;
};

/// The materials of work orders, in the table `Material_OT`, under the same terms.
class ServicioMaterialesOT : public Zontara::ServicioMaterialesOT {
public:
    explicit ServicioMaterialesOT(Zontara::Ref<Sesion> session);

    /// Adds one line. Line numbers are kept as given, several lines of one number too. The order isn't looked for.
    void AgregarItemOT(std::int16_t linea, const std::string& descripcion, Zontara::Money costoUnitario, float cantidad,
                       std::int32_t numeroOT) override;

private:
    Zontara::Ref<Sesion> session_;
};

/// The processes that work orders go through, in the table `Proceso`.
class ServicioProcesos : public Zontara::ServicioProcesos {
public:
    explicit ServicioProcesos(Zontara::Ref<Sesion> session);

    /// `SC_Proceso` and `Estatus_Valido` by `SC_Proceso`: with 1 those of the active processes, else of all. May be
    /// empty.
    Zontara::Ref<Zontara::Recordset> SeleccionarProcesos(std::int32_t cuales) override;

private:
    Zontara::Ref<Sesion> session_;
};

}  // namespace Perluma
