#pragma once

#include "frame/date.h"
#include "frame/export.h"
#include "frame/money.h"
#include "frame/neighbours.h"
#include "frame/notices.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

/// The readings of assets' meters, table `Lectura_Equipo`: a day, the value read, the amount that it stands for, the
/// reading before, and the fuel and voucher of a refuelling. A new reading is what drives meter-based maintenance:
/// only `Nuevo` moves the accumulators and tells the asset; changing or deleting a reading touches its row alone.
/// What is called `ID_Equipo` here is the key of an asset.
///
/// An instance keeps one thing, its list of notices; a session must be open. `ID_Equipo` goes into statements as it
/// comes, so that a single quote in it breaks the statement; note, department and voucher number may hold quotes. Every
/// operation reports its failures with a call-stack line of its own.
class ZONTARA_EXPORT CLecturaEquipo : public Object {
public:
    static constexpr std::string_view kTypeName = "CLecturaEquipo";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// The notices: an empty text for each `Nuevo`, `Salvar` and `Borrar` that got that far. Made at first use.
    /// Assigning puts the caller's list in its place, so that several objects can share one.
    Ref<ListaCambios> ListaLecturasModificada();
    void ListaLecturasModificada(const Ref<ListaCambios>& value);

    /// Records a reading and gives its key: writes the row, moves the accumulators of the asset and its assignments,
    /// gives the asset the note and the whole reading (a half goes to the even neighbour), and sends a notice. All of
    /// it in one transaction, nested in the caller's if there is one; after a failure of any step that transaction
    /// stays open. `Fecha`: the day; a text that is no date is error 13, after the row has gone in. `Valor_Real`: what
    /// the reading adds to the accumulated reading. `Lectura`: what the meter shows. `Lectura_Anterior`: the reading
    /// before, as the caller knows it. `ValorValeSalida`, `NumeroVale`: the voucher.
    std::int32_t Nuevo(const std::string& Fecha, const std::string& ID_Equipo, std::int32_t SC_Unidad_Lectura,
                       float Valor_Real, float Lectura, float Lectura_Anterior, float CombustibleConsumido,
                       const std::string& Nota, const std::string& CodigoDepartamento, Money ValorValeSalida,
                       const std::string& NumeroVale);

    /// Deletes a reading and sends a notice. Accumulators and the asset's last reading stay as they were. An unknown
    /// key is no error, and is told of all the same. No transaction of its own.
    void Borrar(std::int32_t SC_Lectura);

    /// The readings of one asset, with the caller's columns or the default ones, in no promised order.
    Ref<Recordset> Seleccionar(const std::string& ID_Equipo, const std::string& sColumnas = "");

    /// Writes department, fuel, and value and number of the voucher of a reading, and sends a notice, in one
    /// transaction, nested in the caller's if there is one. The other arguments change nothing: value and day of a
    /// reading are fixed once it is entered. An unknown key changes nothing. After a failure the transaction stays
    /// open.
    void Salvar(std::int32_t SC_Lectura, const std::string& Fecha, const std::string& ID_Equipo,
                std::int32_t SC_Unidad_Lectura, float Valor_Real, float Lectura, float Lectura_Anterior,
                float CombustibleConsumido, const std::string& Nota, const std::string& CodigoDepartamento,
                Money ValorValeSalida, const std::string& NumeroVale, std::int32_t LecturaRealADisminuir);

    /// One reading with the name of its asset; empty for an unknown key and for a reading whose asset is missing.
    Ref<Recordset> Buscar(std::int32_t SC_Lectura, const std::string& sColumnas = "");

    /// The readings that have both their unit and their asset, in no promised order.
    /// `sCondicion`: the caller's SQL, joined by "and"; none when empty.
    Ref<Recordset> SeleccionarTodos(const std::string& sCondicion, const std::string& sColumnas = "");

    /// The ten readings of an asset that were entered last, newest first. Entry counts, not the day of the reading.
    Ref<Recordset> Ultimas10Lecturas(const std::string& ID_Equipo, const std::string& sColumnas = "");

    /// The readings of a range of days, both bounds included and times of day ignored, by asset.
    /// `ID_Capitulo`: matched against what is left of the asset's key when the digits of the chapter's own length are
    /// trimmed from its left; empty and "0" mean all, and "0" is written back as the empty text.
    /// `ID_Localizacion`: one place; 0 and below mean all. `id_Lectura`: one unit, of the asset and not of the reading;
    /// 0 and below mean all. `sColumnas`: columns instead of the default ones. `ListaActivos`: quoted keys of assets,
    /// separated by commas; empty means all.
    Ref<Recordset> ObtenerLecturas(Date DesdeFecha, Date HastaFecha, std::string& ID_Capitulo,
                                   std::int32_t ID_Localizacion = 0, std::int32_t id_Lectura = 0,
                                   const std::string& sColumnas = "", const std::string& ListaActivos = "");
    /// The same for a chapter that nothing is written back to.
    Ref<Recordset> ObtenerLecturas(Date DesdeFecha, Date HastaFecha, const std::string& ID_Capitulo = "",
                                   std::int32_t ID_Localizacion = 0, std::int32_t id_Lectura = 0,
                                   const std::string& sColumnas = "", const std::string& ListaActivos = "");

    /// Sums of the readings of a range of days, one row for an asset and a month (`mes`, six digits), by asset: voucher
    /// value, real value, fuel. The arguments are those of `ObtenerLecturas`, but `sColumnas` is ignored.
    Ref<Recordset> ObtenerLecturasPorMes(Date DesdeFecha, Date HastaFecha, std::string& ID_Capitulo,
                                         std::int32_t ID_Localizacion = 0, std::int32_t id_Lectura = 0,
                                         const std::string& sColumnas = "", const std::string& ListaActivos = "");
    /// The same for a chapter that nothing is written back to.
    Ref<Recordset> ObtenerLecturasPorMes(Date DesdeFecha, Date HastaFecha, const std::string& ID_Capitulo = "",
                                         std::int32_t ID_Localizacion = 0, std::int32_t id_Lectura = 0,
                                         const std::string& sColumnas = "", const std::string& ListaActivos = "");

private:
    NoticeList listaLecturasModificada_;
};

}  // namespace Zontara
