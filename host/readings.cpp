#include "host/readings.h"

#include "frame/convert.h"
#include "host/failure.h"
#include "readings/CLecturaEquipo.h"

#include <fmt/format.h>

namespace host {

std::string BackwardsText(float shown, float previous) {
    return fmt::format("the meter shows {} after {}; if it was exchanged or turned over, say how much was added",
                       Zontara::ToText(shown), Zontara::ToText(previous));
}

std::int32_t RecordReading(Plant& plant, const Reading& reading) {
    auto find = plant.Database().Prepare("SELECT SC_Unidad_Lectura, Ultima_Lectura FROM Activo WHERE ID_Activo = ?1");
    if (!find.Bind(1, reading.asset).Step()) {
        throw Failure(fmt::format("there is no asset '{}'. Check the identifier; case counts.", reading.asset));
    }
    const std::int32_t unit = reading.unit.value_or(find.Int(0));
    const float previous = reading.previous.value_or(static_cast<float>(find.Real(1)));
    find.Reset();

    if (!reading.added && reading.shown < previous) throw Failure(BackwardsText(reading.shown, previous) + ".");
    const float added = reading.added.value_or(reading.shown - previous);
    return plant.Component().LecturaEquipo()->Nuevo(reading.date, reading.asset, unit, added, reading.shown, previous,
                                                    reading.fuel, reading.note, reading.department,
                                                    reading.voucherValue, reading.voucher);
}

}  // namespace host
