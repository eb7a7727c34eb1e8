#pragma once

#include "frame/export.h"
#include "frame/money.h"
#include "frame/neighbours.h"
#include "frame/notices.h"
#include "frame/object.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace Zontara {

/// The maintenance tasks, table `Gama`: the standing routine with its instructions, cost, time, crew, safety notes and
/// frequency in words. Assignments point at a task through `SC_Gama`.
///
/// An instance keeps one thing, its list of notices; a session must be open. Of the texts, `Tipo_Gama` and
/// `Tiempo_Necesario` go into statements as they come, so that a single quote in them breaks the statement;
/// `Especialista` does so in `Nuevo` only. All others may hold quotes. Operations with arguments report their failures
/// with a call-stack line of their own; `ProximoNumeroGama` lets them pass as they came.
class ZONTARA_EXPORT CGama : public Object {
public:
    static constexpr std::string_view kTypeName = "CGama";
    static const ClassTable& ClassMembers();
    const ClassTable* Table() const override;

    /// Writes a new task and gives its key. One transaction, nested in the caller's if there is one; the notice comes
    /// after it, so when the notice fails the task is written all the same. After any other failure the transaction
    /// stays open and there is no notice. No digital file is written: the column takes its default. `Equipo_Parado`: 1
    /// when the equipment must stand still. `NumeroGama`: the number for people, see `ProximoNumeroGama`.
    /// `Tiempo_Necesario`: the time as a free text.
    std::int32_t Nuevo(const std::string& Descripcion, const std::string& Texto_Mantenimiento,
                       std::uint8_t Equipo_Parado, std::int32_t SC_Grupo_Gama, std::int32_t SC_Ejecutor_Gama,
                       std::int32_t NumeroGama, const std::string& Tipo_Gama, Money Costo_Actual,
                       const std::string& Tiempo_Necesario, const std::string& Esquema,
                       const std::string& Coordinaciones, const std::string& Seguridades,
                       const std::string& Materiales_Herramientas, std::int32_t SC_Contratista,
                       std::uint8_t Hombres_Necesarios, const std::string& Especialista,
                       const std::string& Frecuencia_Gama);

    /// Deletes a task and sends a notice. Its materials and assignments stay. An unknown key is no error, and is told
    /// of all the same. No transaction of its own.
    void Borrar(std::int32_t SC_Gama);

    /// The tasks with the name of their group, as `Grupo`; a task whose group is missing isn't found. The default
    /// columns hold no `SC_Ejecutor_Gama`. Empty when none fits. `SC_Grupo_Gama`: one group; 0 and below mean all.
    /// `sColumnas`: columns instead of the default ones. `Tipo_Gama`: one type; empty means all. `sOrdenResultado`: the
    /// caller's sort; without it no order is promised.
    Ref<Recordset> Seleccionar(std::int32_t SC_Grupo_Gama, const std::string& sColumnas = "",
                               const std::string& Tipo_Gama = "", const std::string& sOrdenResultado = "");

    /// Writes every column of a task but its key, those left empty included, and sends a notice. An unknown key changes
    /// nothing. No transaction of its own: when the notice fails the change is done.
    void Salvar(std::int32_t SC_Gama, const std::string& Descripcion, const std::string& Texto_Mantenimiento,
                std::uint8_t Equipo_Parado, std::int32_t SC_Grupo_Gama, std::int32_t SC_Ejecutor_Gama,
                std::int32_t Numero_Gama, const std::string& Tipo_Gama, Money Costo_Actual,
                const std::string& Tiempo_Necesario, const std::string& Esquema, const std::string& Coordinaciones,
                const std::string& Seguridades, const std::string& Materiales_Herramientas, std::int32_t SC_Contratista,
                std::uint8_t Hombres_Necesarios, const std::string& Especialista, std::int32_t SC_Archivo_Digital,
                const std::string& Frecuencia_Gama);

    /// One task, with the caller's columns or the default ones; empty for an unknown key.
    Ref<Recordset> Buscar(std::int32_t SC_Gama, const std::string& sColumnas = "");

    /// The tasks of one executor, in no promised order; empty when there is none.
    Ref<Recordset> SeleccionarPorEjecutor(std::int32_t SC_Ejecutor_Gama, const std::string& sColumnas = "");

    /// Whether a group has a task of that number. Only numbers up to 255 can be asked about.
    bool ExisteNumero(std::uint8_t NumeroGama, std::int32_t CodigoGrupoGama);

    /// The largest number of any task of any group and one more; 1 when there is none. The number isn't reserved: two
    /// callers that ask before either has written get the same. Error 6 behind the largest 32-bit number.
    std::int32_t ProximoNumeroGama();

    /// The notices of this instance: an empty text for each `Nuevo`, `Salvar` and `Borrar` that got past its statement.
    /// Made at first use, never emptied here.
    Ref<ListaCambios> ListaDeTareasCambio();

private:
    NoticeList listaDeTareasCambio_;
};

}  // namespace Zontara
