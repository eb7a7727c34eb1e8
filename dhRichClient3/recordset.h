#pragma once

#include "dhRichClient3/connection.h"
#include "frame/neighbours.h"

namespace dhRichClient3 {

/// A new recordset, not yet opened. Its `ConexionActiva` takes any connection that is a `RowSource` as well. `Abrir`
/// runs the text of `TextoSQL` (the three arguments have no effect) and fetches all rows into one compact store; the
/// cursor then stands on the first. From there on the connection is not needed any more.
///
/// Values: an INTEGER is an int32, or a float64 when it doesn't fit; REAL a float64, TEXT and BLOB a text, NULL null.
/// A field is found by name without regard to case; of several columns of one name the first is meant. Finding one
/// costs a few comparisons of characters, reading one a copy of the value.
///
/// Fields read with no current row are error 3021, an unknown name is 3265 with the name in the text. `Abrir`
/// with no connection, or with one that gives no rows, is error 91. A failing `Abrir` leaves the rows that were there.
/// Fields that a client keeps (`LosCampos`, `Item`) keep the rows alive.
Zontara::Ref<Zontara::Recordset> NewRecordset();

}  // namespace dhRichClient3
