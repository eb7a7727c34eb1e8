#pragma once

#include "frame/export.h"
#include "frame/object.h"
#include "frame/value.h"

#include <cstdint>
#include <string>
#include <string_view>

/// What the component expects of the two libraries beside it. They implement these interfaces, tests put doubles in
/// their place, a tracer wraps them. Failures come back as raised errors, never as status codes.
namespace Zontara {

/// One field of the current row of a recordset.
class ZONTARA_EXPORT Campo : public Object {
public:
    static constexpr std::string_view kTypeName = "Campo";
    const ClassTable* Table() const override;
    /// The value in the current row; null where the column holds none. Error 3021 when there is no current row.
    virtual Value Valor() const = 0;
};

/// The fields of the current row.
class ZONTARA_EXPORT Campos : public Object {
public:
    static constexpr std::string_view kTypeName = "Campos";
    const ClassTable* Table() const override;
    /// The field of a name, without regard to case. It follows the cursor. Error 3265 for an unknown name.
    virtual Ref<Campo> Item(const Value& name) = 0;
    /// The value of a field in the current row. As `Item(name)->Valor()` without an object for it.
    virtual Value Valor(std::string_view name) const = 0;
};

class Conexion;

/// Rows of a query, all fetched, which stay readable without a connection. A cursor stands on one of them, at first
/// on the first.
class ZONTARA_EXPORT Recordset : public Object {
public:
    static constexpr std::string_view kTypeName = "Recordset";
    const ClassTable* Table() const override;
    /// Binds the recordset to a connection, or with none takes the connection off it.
    virtual void ConexionActiva(const Ref<Conexion>& conexion) = 0;
    /// The statement that `Abrir` runs.
    virtual void TextoSQL(const std::string& texto) = 0;
    /// Runs the statement and fetches all rows. The three arguments are always "", absent and 0.
    virtual void Abrir(const std::string& texto, const Value& opcion, std::int32_t modo) = 0;
    virtual std::int32_t TotalRegistros() const = 0;
    /// To the first row. No error when there is none.
    virtual void MoverPrimero() = 0;
    /// To the next row, or behind the last.
    virtual void MoverSiguiente() = 0;
    /// Whether the cursor stands behind the last row.
    virtual bool FinDeDatos() const = 0;
    /// The fields of the current row: the same object as long as the recordset lives.
    virtual Ref<Campos> LosCampos() = 0;

    /// The value of a field in the current row; the short way through `LosCampos`.
    virtual Value Valor(std::string_view campo) const = 0;
    /// Names of the columns, in order.
    virtual std::int32_t TotalColumnas() const = 0;
    virtual std::string NombreColumna(std::int32_t posicion) const = 0;
    /// Value of a column by its position, from 0, in the current row.
    virtual Value ValorEn(std::int32_t posicion) const = 0;
};

/// The one shared connection. A text that is passed on is always empty.
class ZONTARA_EXPORT Conexion : public Object {
public:
    static constexpr std::string_view kTypeName = "Conexion";
    std::string TypeName() const override;
    virtual void IniciarTrans(const std::string& texto) = 0;
    virtual void ConfirmarTrans(const std::string& texto) = 0;
    virtual void RevertirTrans(const std::string& texto, std::int32_t modo) = 0;
    /// Runs one statement that returns no rows.
    virtual void Ejecutar(const std::string& sql) = 0;
};

class ZONTARA_EXPORT GeneradorClaves : public Object {
public:
    static constexpr std::string_view kTypeName = "GeneradorClaves";
    /// The next unused key of a table. Each call hands out a new one.
    virtual std::int32_t ProximaClave(const std::string& tabla) = 0;
};

/// The session: the connection, the depth of the nesting transactions, the keys. Outlives every object.
class ZONTARA_EXPORT SesionGlobal : public Object {
public:
    static constexpr std::string_view kTypeName = "SesionGlobal";
    std::string TypeName() const override;
    virtual Ref<Conexion> LaConexion() = 0;
    /// Open nesting levels; 0 means that no database transaction is open.
    virtual std::uint8_t ProfundidadTransaccion() const = 0;
    virtual void ProfundidadTransaccion(std::uint8_t profundidad) = 0;
    virtual Ref<GeneradorClaves> ElGeneradorClaves() = 0;
    /// The text made fit to stand between single quotes in a statement.
    virtual std::string TextoParaSQL(const std::string& texto) const = 0;
};

/// A list of change notices, each one text. The component only adds; the application reads or subscribes.
class ZONTARA_EXPORT ListaCambios : public Object {
public:
    static constexpr std::string_view kTypeName = "ListaCambios";
    const ClassTable* Table() const override;
    virtual void Agregar(const std::string& texto) = 0;
    /// Number of notices so far.
    virtual std::int32_t Total() const = 0;
    /// A notice by its position, from 1. Error 9 outside the list.
    virtual std::string Elemento(std::int32_t posicion) const = 0;
};

/// The fifteen arguments that create a work order, in the order of the call.
struct DatosOrden {
    std::int32_t Reservado = 0;
    std::string Descripcion;
    std::string FechaSolicitud;
    std::string FechaDeseada;
    std::int32_t Origen = 0;
    std::int32_t EjecutorInterno = 0;
    std::string TextoTrabajo;
    std::int32_t UsuarioDestino = 0;
    std::int16_t Prioridad = 0;
    std::string ID_Activo;
    std::int32_t TipoIntervencion = 0;
    std::int32_t SC_Proceso = 0;
    std::int32_t EjecutorExterno = 0;
    std::int32_t SC_Imputacion_Sistematica = 0;
    std::int32_t SC_Gama = 0;

    friend bool operator==(const DatosOrden&, const DatosOrden&) = default;
};

/// Work orders. Runs on the session's connection inside the caller's transaction and never commits.
class ZONTARA_EXPORT OrdenTrabajo : public Object {
public:
    static constexpr std::string_view kTypeName = "OrdenTrabajo";
    /// Creates a work order and gives its key. Process 0 and no executor at all are in order.
    virtual std::int32_t CrearOrden(const DatosOrden& datos) = 0;
    /// Records crew size and time on an order.
    virtual void AsignarManoObra(std::int32_t numeroOT, std::int16_t hombres, float tiempo) = 0;
};

class ZONTARA_EXPORT ServicioProcesos : public Object {
public:
    static constexpr std::string_view kTypeName = "ServicioProcesos";
    /// The process for new orders: fields `SC_Proceso` and `Estatus_Valido`; may be empty. The argument is always 1.
    virtual Ref<Recordset> SeleccionarProcesos(std::int32_t cuales) = 0;
};

class ZONTARA_EXPORT ServicioMaterialesOT : public Object {
public:
    static constexpr std::string_view kTypeName = "ServicioMaterialesOT";
    /// Adds one line of material to a work order.
    virtual void AgregarItemOT(std::int16_t linea, const std::string& descripcion, Money costoUnitario, float cantidad,
                               std::int32_t numeroOT) = 0;
};

class ZONTARA_EXPORT ServicioActivos : public Object {
public:
    static constexpr std::string_view kTypeName = "ServicioActivos";
    /// One asset with the columns named; empty for an unknown one.
    virtual Ref<Recordset> BuscarActivo(const std::string& ID_Activo, const std::string& columnas) = 0;
    /// The assets of a launch, at least `ID_Activo` and `Acumulado_Lectura`, by `ID_Activo`.
    virtual Ref<Recordset> SeleccionarActivos(const std::string& ID_Capitulo, std::int32_t cero1, std::int32_t cero2,
                                              bool enServicio, std::int32_t CodigoProyecto) = 0;
    virtual Value FijarAcumulado(const std::string& ID_Activo, std::int32_t valor) = 0;
    virtual Value FijarLectura(const std::string& ID_Activo, std::int32_t valor) = 0;
    /// The asset's accumulated reading; 0 for an unknown asset.
    virtual std::int32_t AcumuladoActual(const std::string& ID_Activo) = 0;
    virtual Value AnotarLectura(const std::string& ID_Activo, const std::string& nota) = 0;
};

/// Hands out the services of the sibling library.
class ZONTARA_EXPORT GlobalPerluma : public Object {
public:
    static constexpr std::string_view kTypeName = "GlobalPerluma";
    virtual Ref<ServicioMaterialesOT> MaterialesOT() = 0;
    virtual Ref<ServicioProcesos> Procesos() = 0;
    virtual Ref<OrdenTrabajo> OrdenesTrabajo() = 0;
    virtual Ref<ServicioActivos> Activos() = 0;
};

}  // namespace Zontara
