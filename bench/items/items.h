#pragma once

#include "bench/harness.h"

#include <functional>

namespace bench {

// One of these stands in each file of this folder. They add their lines to the table.

void MeasureBulletins(const Scale& scale, Table& table);
void MeasureOrders(const Scale& scale, Table& table);
void MeasureRows(const Scale& scale, Table& table);
void MeasureOverdue(const Scale& scale, Table& table);
void MeasureReadings(const Scale& scale, Table& table);
void MeasureGrowth(const Scale& scale, Table& table);
void MeasureColdStart(const Scale& scale, Table& table);
void MeasureTraps(const Scale& scale, Table& table);
void MeasureSettings(const Scale& scale, Table& table);
void MeasureCommand(const Scale& scale, Table& table);

}  // namespace bench
