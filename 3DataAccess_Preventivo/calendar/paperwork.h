#pragma once

#include "bulletins/CConfiguracionOTBoletin.h"
#include "catalogues/CMaterialGama.h"
#include "frame/date.h"
#include "frame/neighbours.h"
#include "meter/COrdenGenerada.h"

#include <cstdint>
#include <string>
#include <utility>

/// What a launch writes for a due row: a bulletin, or a work order with all that belongs to it.
namespace Zontara::calendar {

/// Writes the bulletin of the current row, for the day that was booked.
void GeneroBoletin(const Ref<Recordset>& rs, Date Fecha_Lanzamiento, std::int32_t SC_Usuario,
                   const std::string& Frecuencia);

/// Writes the work orders of one launch. It lives as long as the launch, and so do its executors, its process, which
/// stays when a later look-up finds none, and its helpers, made at first use.
class OrderWriter {
public:
    explicit OrderWriter(Ref<CConfiguracionOTBoletin> configuration) : configuration_(std::move(configuration)) {}

    /// Creates the order of the current row, logs it and copies the task's materials and labour onto it.
    void Write(const Recordset& row, Date booked, const std::string& frecuencia);
    /// Lets go of the helpers.
    void Release();

private:
    std::int32_t CreateOrder(const Recordset& row, std::int32_t SC_Gama, const std::string& ID_Activo,
                             const std::string& work);
    void FindProcess();
    void TellDays(Date asked, std::int32_t daysToWait);

    Ref<CConfiguracionOTBoletin> configuration_;
    Ref<COrdenGenerada> log_;
    Ref<CMaterialGama> materials_;
    std::int32_t internalExecutor_ = 0;
    std::int32_t externalExecutor_ = 0;
    std::int32_t process_ = 0;
    /// What the texts of the latest order's days were made from, and the texts.
    Date asked_;
    std::int32_t daysToWait_ = 0;
    std::string form_;
    std::string askedText_;
    std::string wantedText_;
};

}  // namespace Zontara::calendar
