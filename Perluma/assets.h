#pragma once

#include "Perluma/session.h"
#include "frame/neighbours.h"

#include <cstdint>
#include <string>

namespace Perluma {

/// The assets, in the table `Activo`. Each call is one statement on the session's connection, in whatever transaction
/// is open there; none commits. Keys of assets are compared exactly, case included. An unknown asset is no error: it is
/// not found, and writing to it changes nothing. Failures are the engine's errors.
class ServicioActivos : public Zontara::ServicioActivos {
public:
    explicit ServicioActivos(Zontara::Ref<Sesion> session);

    /// The asset's row with the columns named, separated by commas as in a SELECT; all columns for the empty text.
    Zontara::Ref<Zontara::Recordset> BuscarActivo(const std::string& ID_Activo, const std::string& columnas) override;

    /// `ID_Activo`, `Descripcion` and `Acumulado_Lectura` of the assets of a launch, by `ID_Activo`. Each of these
    /// limits the selection: a chapter that isn't empty, to the assets whose key begins with that character;
    /// `enServicio`, to those in service, whose status is not 3, 4, 5 or 7; a project above 0, to its assets. The two
    /// numbers between limit nothing.
    Zontara::Ref<Zontara::Recordset> SeleccionarActivos(const std::string& ID_Capitulo, std::int32_t cero1,
                                                        std::int32_t cero2, bool enServicio,
                                                        std::int32_t CodigoProyecto) override;

    /// Sets the accumulated reading, the counter that the due tests read. The result says nothing.
    Zontara::Value FijarAcumulado(const std::string& ID_Activo, std::int32_t valor) override;

    /// Keeps a reading, rounded to a whole number, as the asset's last whole reading. `Ultima_Lectura`, the exact one,
    /// stays. The result says nothing.
    Zontara::Value FijarLectura(const std::string& ID_Activo, std::int32_t valor) override;

    /// The accumulated reading, a half rounded to the even neighbour; 0 for an unknown asset and for one that has none.
    /// Error 6 when it doesn't fit.
    std::int32_t AcumuladoActual(const std::string& ID_Activo) override;

    /// Keeps the note of a reading, the empty one too, in place of the one before. The result says nothing.
    Zontara::Value AnotarLectura(const std::string& ID_Activo, const std::string& nota) override;

private:
    Zontara::Ref<Sesion> session_;
};

}  // namespace Perluma
